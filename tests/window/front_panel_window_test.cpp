#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "controls/symbol_font.h"
#include "display/plot_canvas.h"
#include "driver/library_backend.h"
#include "frame/instrument.h"
#include "frame/shut_down.h"
#include "frame/start_up.h"
#include "real_mouse.h"

#include <QLabel>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>
#include <cmath>
#include <numbers>

using testing::Test;

namespace {

constexpr int kPatience = 30000; ///< ms for anything that has to come true

/// The program on four simulated modules, in a real window, worked as a person works it.
class FrontPanel : public Test {
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

} // namespace

TEST_F(FrontPanel, ShowsFourTracesOnTheScreen) {
    Start();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const QColor colour = ToQColor(record->ChannelColour[channel]);
        EXPECT_TRUE(Until([&] { return PixelsOnScreen(colour) > 300; })) << "channel " << channel;
    }
    EXPECT_FALSE(Main<QLabel>("DemoLabel")->isVisible());
    ShutDown(*instrument);
}

TEST_F(FrontPanel, APersonFindsATraceTriggersOnItScalesItAndFindsItAgain) {
    Start();
    EXPECT_TRUE(Until([&] { return StatusIsRed() && Status() == QStringLiteral("trigger !"); }));

    // Time base: from 1us/div towards the slow end and on to a setting with several periods in view.
    auto* timeBase = Main<KnobControl1>("TimeBaseKnob");
    Turn(*timeBase, 20.0 / 27, 18.0 / 27);
    EXPECT_TRUE(Until([&] { return timeBase->KnobXlatedValue() == QStringLiteral("4us/div"); }))
        << qPrintable(timeBase->KnobXlatedValue());
    EXPECT_TRUE(Main<QLabel>("AcqModeLabel")->text().contains(QStringLiteral("40ns, refresh mode")));

    // The trigger level leaves the signal and comes back to it.
    auto* level = Main<KnobControl1>("TriggerKnob");
    Turn(*level, 0.5, 0.95);
    EXPECT_TRUE(Until([&] { return level->KnobValue() > 80; }));
    EXPECT_TRUE(Until([&] { return !StatusIsRed(); }));
    Turn(*level, 0.95, 0.55);
    EXPECT_TRUE(Until([&] { return level->KnobValue() > 0 && level->KnobValue() < 20; }));
    EXPECT_TRUE(Until([&] { return StatusIsRed() && Status() == QStringLiteral("trigger !"); }));
    const int keptLevel = level->KnobValue();

    // Channel 2 by its panel: pulled out, less sensitive, inverted.
    real_mouse::Click(*Tab<QWidget>(2, "Image1"));
    EXPECT_TRUE(Until([&] { return record->TabOpen[2]; }));
    auto* volts = Tab<KnobControl1>(2, "VoltsKnob");
    EXPECT_TRUE(Until([&] {
        const QPoint at = volts->mapToGlobal(volts->rect().center());
        return QApplication::widgetAt(at) == volts || volts->isAncestorOf(QApplication::widgetAt(at));
    })) << "the panel did not come out from under the face";
    Turn(*volts, 1.0, 0.5);
    EXPECT_TRUE(Until([&] { return volts->KnobXlatedValue() == QStringLiteral("3V/div"); }))
        << qPrintable(volts->KnobXlatedValue());
    real_mouse::Click(*Tab<QWidget>(2, "InvertButton"));
    EXPECT_TRUE(Until([&] { return record->ChannelInvert[2]; }));
    // A right click on a header switches its channel.
    real_mouse::Click(*Tab<QWidget>(4, "Image1"), 3);
    EXPECT_TRUE(Until([&] { return !record->ChannelOn[4]; }));
    EXPECT_TRUE(Until([&] { return PixelsOnScreen(ToQColor(record->ChannelColour[4])) < 100; }));

    real_mouse::Click(*Main<QWidget>("TrigTypeButton"));
    EXPECT_TRUE(Until([&] { return record->TrigType == 0; }));
    real_mouse::Click(*Main<QWidget>("CloseButton"));
    EXPECT_TRUE(Until([&] { return instrument->closing.Served(); }));

    Start();
    EXPECT_EQ(Main<KnobControl1>("TimeBaseKnob")->KnobXlatedValue(), QStringLiteral("4us/div"));
    EXPECT_EQ(Main<KnobControl1>("TriggerKnob")->KnobValue(), keptLevel);
    EXPECT_EQ(Tab<KnobControl1>(2, "VoltsKnob")->KnobXlatedValue(), QStringLiteral("3V/div"));
    EXPECT_TRUE(record->ChannelInvert[2]);
    EXPECT_FALSE(record->ChannelOn[4]);
    EXPECT_EQ(record->TrigType, 0);
    EXPECT_EQ(record->TrigMode, 0);
    ShutDown(*instrument);
}

TEST_F(FrontPanel, TheWindowIsMovedByItsPictureAndComesBackWhereItWas) {
    Start();
    const QPoint before(instrument->forms.surface->Left(), instrument->forms.surface->Top());
    auto* face = Main<Picture>("Image1");
    const QPointF grip(200, 24); // between the name and the window buttons
    real_mouse::Drag(*face, {grip, grip + QPointF(10, 8), grip + QPointF(40, 30), grip + QPointF(60, 50)});
    EXPECT_TRUE(Until([&] { return instrument->forms.surface->Left() > before.x() + 20; }));
    const QPoint moved(instrument->forms.surface->Left(), instrument->forms.surface->Top());
    EXPECT_GT(moved.y(), before.y());
    ShutDown(*instrument);

    Start();
    EXPECT_TRUE(Until([&] {
        return QPoint(instrument->forms.surface->Left(), instrument->forms.surface->Top()) == moved;
    })) << instrument->forms.surface->Left()
        << ", " << instrument->forms.surface->Top() << " instead of " << moved.x() << ", " << moved.y();
    ShutDown(*instrument);
}
