#pragma once

#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "controls/symbol_font.h"
#include "display/plot_canvas.h"
#include "driver/library_backend.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "window/real_mouse.h"

#include <QLabel>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>
#include <cmath>
#include <numbers>

inline constexpr int kPatience = 30000; ///< ms for anything that has to come true

/// The program on four simulated modules, in a real window, worked as a person works it.
class FrontPanel : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
        LoadSymbolFont();
        ApplyFaceStyle(*qApp);
        qputenv("CORVANTINE_STACK", SIMULATED_STACK_FILE);
    }

    void Start() {
        instrument.reset();
        LibraryBackend::Loaded loaded = LibraryBackend::Load(QStringLiteral(SIMULATED_STACK_LIBRARY));
        ASSERT_TRUE(loaded.backend) << qPrintable(loaded.reason);
        driver = std::make_unique<Driver>(std::move(loaded.backend));
        record = std::make_unique<Record>();
        Environment environment;
        environment.applicationFolder = QStringLiteral(APPLICATION_FOLDER);
        environment.settingsFolder = settings.path();
        environment.show = [](const QString& text) { ADD_FAILURE() << qPrintable(text); };
        environment.sleep = [](int ms) { QThread::msleep(static_cast<unsigned long>(ms)); };
        environment.yield = [] { QApplication::processEvents(); };
        instrument = std::make_unique<Instrument>(*record, *driver, std::move(environment));
        StartUp(*instrument);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(instrument->forms.surface.get(), kPatience));
    }

    template <class T> T* Main(const char* name) { return instrument->forms.MainForm->control<T>(name); }
    template <class T> T* Tab(int slot, const char* name, int index = -1) {
        return instrument->forms.TabForm[slot]->control<T>(name, index);
    }
    QString Status() { return Main<QLabel>("TriggerStatusLabel")->text(); }
    bool StatusIsRed() {
        return Main<QLabel>("TriggerStatusLabel")->palette().color(QPalette::WindowText) == QColor(255, 0, 0);
    }
    template <class Condition> bool Until(Condition condition) {
        return QTest::qWaitFor(condition, kPatience);
    }

    /// A place on the rim of a knob for a pointer place 0..1 of its sweep.
    static QPointF OnKnob(const KnobControl1& knob, double position) {
        const double span = knob.KnobStartAngle() - knob.KnobStopAngle();
        const double sweep = 360 - (span > 360 ? span - 360 : span < 0 ? span + 360 : span);
        const double angle = (knob.KnobStartAngle() + sweep * position) * std::numbers::pi / 180;
        const double radius = (knob.width() - 28) / 2.0; // the layout leaves 14 pixels on either side
        const QPointF centre(knob.width() / 2.0 - 1, 14 + radius - 1);
        return centre - QPointF(std::cos(angle), std::sin(angle)) * radius * 0.8;
    }
    void Turn(KnobControl1& knob, double from, double to) {
        QList<QPointF> way;
        constexpr int kSteps = 12;
        for (int i = 0; i <= kSteps; ++i) {
            way << OnKnob(knob, from + (to - from) * i / kSteps);
        }
        real_mouse::Drag(knob, way);
    }

    /// How many pixels of the screen, where the main canvas is, have about that colour.
    int PixelsOnScreen(QColor colour) {
        const QWidget* canvas = Main<QWidget>("MainPlotCanvas");
        const QPoint at = canvas->mapToGlobal(QPoint(0, 0));
        const QImage shot = QGuiApplication::primaryScreen()
                                ->grabWindow(0, at.x(), at.y(), canvas->width(), canvas->height())
                                .toImage();
        int found = 0;
        for (int y = 0; y < shot.height(); ++y) {
            for (int x = 0; x < shot.width(); ++x) {
                const QColor pixel = shot.pixelColor(x, y);
                found += std::abs(pixel.red() - colour.red()) < 16 &&
                                 std::abs(pixel.green() - colour.green()) < 16 &&
                                 std::abs(pixel.blue() - colour.blue()) < 16
                             ? 1
                             : 0;
            }
        }
        return found;
    }

    QTemporaryDir settings;
    std::unique_ptr<Record> record;
    std::unique_ptr<Driver> driver;
    std::unique_ptr<Instrument> instrument;
};
