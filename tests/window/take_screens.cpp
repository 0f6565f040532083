// Starts the program on a real screen as a person sees it, puts on every skin, pulls out every panel, opens
// every window, and leaves a picture of each. Usage, under tests/window/on_display.sh:
//   corvantine_screens FOLDER PREFIX

#include "controls/face_style.h"
#include "controls/picture.h"
#include "controls/symbol_font.h"
#include "driver/driver_choice.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "support/live_environment.h"
#include "support/open_everything.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QPixmap>
#include <QRadioButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest/qtestsystem.h>
#include <cstdio>

namespace {

constexpr int kSettle = 700; ///< ms until a picture has reached the screen and a few plots were drawn

class Photographer {
  public:
    explicit Photographer(QString prefix) : prefix_(std::move(prefix)) {}

    /// The windows that show, and a little of what lies around them.
    void Take(const QString& name, std::initializer_list<const QWidget*> windows) const {
        QTest::qWait(kSettle);
        QRect area;
        for (const QWidget* window : windows) {
            area |= window->frameGeometry();
        }
        const QScreen* screen = QGuiApplication::primaryScreen();
        area = area.adjusted(-8, -8, 8, 8) & screen->geometry();
        const QPixmap shot =
            const_cast<QScreen*>(screen)->grabWindow(0, area.x(), area.y(), area.width(), area.height());
        const QString file = prefix_ + name + QStringLiteral(".png");
        std::printf("%s %s\n", shot.save(file) ? "took" : "could not write", qPrintable(file));
    }

  private:
    QString prefix_;
};

void TakePanels(Instrument& instrument, const Photographer& photographer) {
    const Forms& forms = instrument.forms;
    for (int slot = 1; slot <= kTabSlots; ++slot) {
        if (forms.TabForm[slot] == forms.EmptyForm || !forms.TabForm[slot]->isVisible()) {
            continue;
        }
        auto* header = forms.TabForm[slot]->control<Picture>("Image1");
        emit header->MouseDown(Qt::LeftButton, {});
        photographer.Take(QStringLiteral("panel_") + forms.TabForm[slot]->objectName().section('_', 1),
                          {forms.surface.get()});
        emit header->MouseDown(Qt::LeftButton, {});
    }
}

/// All six spectra in both plots, in the window's own size and in others, and the rows of the math channels.
void TakeSpectra(Instrument& instrument, const Photographer& photographer) {
    const Forms& forms = instrument.forms;
    const Form& math = *forms.TabForm[kMathTab];
    OpenSpectra(instrument);
    for (auto& tab : instrument.channelTabs) {
        tab->BWLimitButton_Click();
    }
    for (int cursor = 0; cursor < kCursors; ++cursor) {
        forms.TabForm[kCursTab]->control<QCheckBox>("VertCursorEn", cursor)->setChecked(true);
        forms.TabForm[kCursTab]->control<QCheckBox>("HorizCursorEn", cursor)->setChecked(true);
    }
    photographer.Take(QStringLiteral("measurements_math"), {forms.StatsForm});
    const QSize own = forms.FFTForm->size();
    for (const QSize size : {own, QSize(520, 260), QSize(960, 540)}) {
        for (int option : {0, 1}) {
            math.control<QRadioButton>("FFTPlotType", option)->setChecked(true);
            forms.FFTForm->resize(size);
            forms.FFTForm->raise();
            photographer.Take(
                QStringLiteral("spectrum_%1_%2").arg(size.width()).arg(option == 0 ? "dB" : "V"),
                {forms.FFTForm.get()});
        }
    }
    for (auto& tab : instrument.channelTabs) {
        tab->FFTButton_Click();
    }
    instrument.mathTab->FFTButton_Click(0);
    instrument.mathTab->FFTButton_Click(1);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Corvantine"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3 || !QDir().mkpath(arguments[1])) {
        std::fprintf(stderr, "usage: corvantine_screens FOLDER PREFIX\n");
        return 2;
    }
    LoadSymbolFont();
    ApplyFaceStyle(application);
    const QTemporaryDir settings;
    const Photographer photographer(arguments[1] + '/' + arguments[2]);

    Environment environment = LiveEnvironment(settings.path());
    Driver driver(ChooseDriver(NamedDriver(), environment.applicationFolder).backend);
    Record record;
    Instrument instrument(record, driver, std::move(environment));
    StartUp(instrument);
    Forms& forms = instrument.forms;
    photographer.Take(QStringLiteral("main"), {forms.surface.get(), forms.StatsForm});

    const auto* skins = forms.MainForm->control<QListWidget>("SkinColourList");
    for (int i = 0; i < skins->count(); ++i) {
        instrument.skins->SkinColourImage_Click();
        photographer.Take(QStringLiteral("skin_") + skins->item(instrument.skins->SkinIndex)->text(),
                          {forms.surface.get()});
    }
    TakePanels(instrument, photographer);

    instrument.shell->FullScreenButton_Click();
    forms.FullScreenTimeForm->resize(960, 540);
    forms.FullScreenTimeForm->raise();
    photographer.Take(QStringLiteral("large_time"), {forms.FullScreenTimeForm.get()});
    instrument.shell->FullScreenButton_Click();
    forms.OffsetNullForm->show();
    photographer.Take(QStringLiteral("offset_null"), {forms.OffsetNullForm});
    forms.OffsetNullForm->hide();
    photographer.Take(QStringLiteral("measurements"), {forms.StatsForm});
    TakeSpectra(instrument, photographer);
    forms.SplashForm->show();
    photographer.Take(QStringLiteral("splash"), {forms.SplashForm.get()});
    ShutDown(instrument);
    return 0;
}
