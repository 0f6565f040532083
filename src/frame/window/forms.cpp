#include "frame/window/forms.h"

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
#include "frame/record/record.h"
#include "frame/window/main_form_design.h"
#include "frame/window/splash_design.h"
#include "skin/surface.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace {

/// A window of its own beside the panel: without a frame, and with no place in the task bar of its own. One
/// without an owner is the caller's.
Form* Satellite(const FormDesign& design, QWidget* owner) {
    auto* form = new Form(design, owner, kPlotCanvas);
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

Forms::Forms(DebugLog& log) : SharedDIB(log), MainRegion(log) {
    for (auto& region : TabRegion) {
        region = std::make_unique<cDIBSectionRegion>(log);
    }
}

void Forms::CreateSplash() {
    SplashForm = std::make_unique<Form>(SplashDesign());
    SplashForm->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
}

void Forms::SplashLine(int index, const QString& text) {
    SplashForm->control<QLabel>("Label1", index)->setText(text);
}

void Forms::CreateMainForm() {
    surface = std::make_unique<Surface>();
    EmptyForm = new Form({.name = QStringLiteral("Corvantine_EmptyForm"), .caption = {}, .size = {1, 1}},
                         surface.get());
    EmptyForm->hide();
    TabForm.fill(EmptyForm);
    MainForm = new Form(MainFormDesign(), surface.get(), kPlotCanvas);
}

void Forms::CreateTabForms(const Record& record) {
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        TabForm[channel] = new Form(ChannelTabDesign(channel, record.ChannelColour[channel]), surface.get());
        TabForm[channel]->Tag = QString::number(channel);
    }
    TabForm[kMathTab] = new Form(MathTabDesign(), surface.get());
    TabForm[kDataTab] = new Form(DataTabDesign(), surface.get());
    TabForm[kCursTab] = new Form(CursorTabDesign(), surface.get());
    TabForm[kHorzTab] = new Form(HorizontalTabDesign(), surface.get());
    TabForm[kAboutTab] = new Form(AboutTabDesign(), surface.get());

    std::vector<Form*> panels;
    for (Form* form : TabForm) {
        if (form != EmptyForm) {
            form->hide();
            panels.push_back(form);
        }
    }
    surface->Carry(*MainForm, panels);
    surface->MakeRoom(MainForm->control<QWidget>("TabSliderAnchorImage")->geometry());
}

void Forms::CreateSatellites() {
    StatsForm = Satellite(MeasurementDesign(), surface.get());
    if (!ByCompositor()) {
        // It comes in front after nearly everything that a hand does, and some window managers give the keys
        // to whatever comes in front.
        StatsForm->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    }
    OffsetNullForm = Satellite(OffsetNullDesign(), surface.get());
    FFTForm.reset(Satellite(SpectrumDesign(), nullptr));
    FullScreenTimeForm.reset(Satellite(LargeTimeDesign(), nullptr));
    PlaceWindows();
    HoldBesidePanel(*StatsForm, *surface);
}

// Of several instances side by side each has its module in the titles of its windows.
void Forms::NameWindows(const QString& suffix) {
    const QString own = QStringLiteral("Corvantine");
    MainForm->setWindowTitle(own + suffix);
    surface->setWindowTitle(own + suffix);
    for (Form* form : {StatsForm, OffsetNullForm, FFTForm.get(), FullScreenTimeForm.get()}) {
        QString title = form->windowTitle();
        title.insert(title.startsWith(own) ? own.size() : title.size(), suffix);
        form->setWindowTitle(title);
    }
}

// Where the windows stand until a run has left others: the panel in the middle with the measurements below
// it, the others beside it or over it, wherever the screen has room.
void Forms::PlaceWindows() {
    constexpr int kGap = 12;
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize face = MainForm->size();
    const int group = face.height() + kGap + StatsForm->height();
    const int left = screen.left() + std::max(0, (screen.width() - surface->width()) / 2);
    const int top = screen.top() + std::max(0, (screen.height() - group) / 2);
    surface->MoveTo(left, top);
    const auto put = [&screen](Form& form, int x, int y) {
        form.move(std::clamp(x, screen.left(), std::max(screen.left(), screen.right() + 1 - form.width())),
                  std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() + 1 - form.height())));
    };
    put(*StatsForm, left, top + face.height() + kGap);
    put(*FFTForm, left + surface->width() + kGap, top);
    put(*OffsetNullForm, left + surface->width() + kGap, top + face.height() / 2);
    put(*FullScreenTimeForm, screen.left(), screen.top());
}

ChannelForms Forms::Channels() const {
    ChannelForms forms;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        forms[channel] = TabForm[channel];
    }
    return forms;
}

TabPanels::Windows Forms::Windows() const {
    return {.main = MainForm,
            .TabSliderAnchorImage = MainForm->control<QWidget>("TabSliderAnchorImage"),
            .TabTimer = MainForm->timer("TabTimer"),
            .TabForm = TabForm,
            .StatsForm = StatsForm,
            .FFTForm = FFTForm.get(),
            .FullScreenTimeForm = FullScreenTimeForm.get(),
            .OffsetNullForm = OffsetNullForm};
}
