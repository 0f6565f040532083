#include "about/about_tab_design.h"
#include "acquisition/horizontal_tab_design.h"
#include "analysis/measurement_design.h"
#include "analysis/spectrum_design.h"
#include "channels/channel_tab_design.h"
#include "channels/math_tab_design.h"
#include "channels/offset_null_design.h"
#include "display/cursor_tab_design.h"
#include "display/large_time_design.h"
#include "display/plot_canvas.h"
#include "export/data_tab_design.h"
#include "frame/instrument/instrument.h"
#include "frame/window/main_form_design.h"
#include "frame/window/splash_design.h"
#include "skin/surface.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QWindow>
#include <algorithm>

// The windows of the instrument, each from its table.

namespace {

/// A window of its own beside the panel: without a frame, and with no place in the task bar of its own.
std::unique_ptr<Form> Satellite(const FormDesign& design, QWidget* owner) {
    auto form = std::make_unique<Form>(design, owner, kPlotCanvas);
    form->setWindowFlags(owner != nullptr ? Qt::Tool | Qt::FramelessWindowHint
                                          : Qt::Window | Qt::FramelessWindowHint);
    // It comes beside the panel or behind it: the keys stay with the panel.
    form->setAttribute(Qt::WA_ShowWithoutActivating);
    return form;
}

/// Windows are placed by a compositor and not by the program.
bool ByCompositor() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

// Only a child surface of the panel's window stands by it there.
void HoldBesidePanel(QWidget& satellite, QWidget& panel) {
    if (ByCompositor()) {
        const QPoint beside = satellite.pos() - panel.pos();
        panel.winId();
        satellite.winId();
        satellite.windowHandle()->setParent(panel.windowHandle());
        satellite.move(beside);
    }
}

} // namespace

void Instrument::CreateSplash() {
    forms.SplashForm = std::make_unique<Form>(SplashDesign());
    forms.SplashForm->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
}

void Instrument::SplashLine(int index, const QString& text) {
    forms.SplashForm->control<QLabel>("Label1", index)->setText(text);
}

void Instrument::CreateMainForm() {
    forms.surface = std::make_unique<Surface>();
    forms.EmptyForm = new Form(
        {.name = QStringLiteral("Corvantine_EmptyForm"), .caption = {}, .size = {1, 1}}, forms.surface.get());
    forms.EmptyForm->hide();
    forms.TabForm.fill(forms.EmptyForm);
    forms.MainForm = new Form(MainFormDesign(), forms.surface.get(), kPlotCanvas);
}

void Instrument::CreateTabForms() {
    QWidget* surface = forms.surface.get();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        forms.TabForm[channel] = new Form(ChannelTabDesign(channel, record.ChannelColour[channel]), surface);
        forms.TabForm[channel]->Tag = QString::number(channel);
    }
    forms.TabForm[kMathTab] = new Form(MathTabDesign(), surface);
    forms.TabForm[kDataTab] = new Form(DataTabDesign(), surface);
    forms.TabForm[kCursTab] = new Form(CursorTabDesign(), surface);
    forms.TabForm[kHorzTab] = new Form(HorizontalTabDesign(), surface);
    forms.TabForm[kAboutTab] = new Form(AboutTabDesign(), surface);

    std::vector<Form*> panels;
    for (Form* form : forms.TabForm) {
        if (form != forms.EmptyForm) {
            form->hide();
            panels.push_back(form);
        }
    }
    forms.surface->Carry(*forms.MainForm, panels);
    forms.surface->MakeRoom(forms.MainForm->control<QWidget>("TabSliderAnchorImage")->geometry());
}

void Instrument::CreateSatellites() {
    forms.StatsForm = Satellite(MeasurementDesign(), forms.surface.get());
    if (!ByCompositor()) {
        // It comes in front after nearly everything that a hand does, and some window managers give the keys
        // to whatever comes in front.
        forms.StatsForm->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    }
    forms.OffsetNullForm = Satellite(OffsetNullDesign(), forms.surface.get());
    forms.FFTForm = Satellite(SpectrumDesign(), nullptr);
    forms.FullScreenTimeForm = Satellite(LargeTimeDesign(), nullptr);
    PlaceWindows();
    HoldBesidePanel(*forms.StatsForm, *forms.surface);
}

// Of several instances side by side each has its module in the titles of its windows.
void Instrument::NameWindows() {
    const QString own = QStringLiteral("Corvantine");
    const QString& suffix = record.SettingsSuffix;
    forms.MainForm->setWindowTitle(own + suffix);
    forms.surface->setWindowTitle(own + suffix);
    for (Form* form : {forms.StatsForm.get(), forms.OffsetNullForm.get(), forms.FFTForm.get(),
                       forms.FullScreenTimeForm.get()}) {
        QString title = form->windowTitle();
        title.insert(title.startsWith(own) ? own.size() : title.size(), suffix);
        form->setWindowTitle(title);
    }
}

// Where the windows stand until a run has left others: the panel in the middle with the measurements below
// it, the others beside it or over it, wherever the screen has room.
void Instrument::PlaceWindows() {
    constexpr int kGap = 12;
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize face = forms.MainForm->size();
    const int group = face.height() + kGap + forms.StatsForm->height();
    const int left = screen.left() + std::max(0, (screen.width() - forms.surface->width()) / 2);
    const int top = screen.top() + std::max(0, (screen.height() - group) / 2);
    forms.surface->MoveTo(left, top);
    const auto put = [&screen](Form& form, int x, int y) {
        form.move(std::clamp(x, screen.left(), std::max(screen.left(), screen.right() + 1 - form.width())),
                  std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() + 1 - form.height())));
    };
    put(*forms.StatsForm, left, top + face.height() + kGap);
    put(*forms.FFTForm, left + forms.surface->width() + kGap, top);
    put(*forms.OffsetNullForm, left + forms.surface->width() + kGap, top + face.height() / 2);
    put(*forms.FullScreenTimeForm, screen.left(), screen.top());
}
