#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/knob_control.h"
#include "controls/symbol_font.h"
#include "display/plot_canvas.h"
#include "frame/instrument/instrument_fixture.h"
#include "frame/record/record.h"
#include "real_mouse.h"

#include <QProcess>
#include <tuple>

using testing::IsEmpty;

namespace {

constexpr int kPatience = 30000; ///< ms

QString Output(const QString& command) {
    QProcess process;
    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
    EXPECT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kPatience));
    return QString::fromUtf8(process.readAllStandardOutput());
}

struct CloseCounter : QObject {
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Close ? 1 : 0;
        return false;
    }
};

/// The windows of the whole instrument under a window manager, on a scripted driver. The timers of the run
/// stand still: what reaches the driver, a test or a window has sent.
class Satellites : public InstrumentTest {
  protected:
    void SetUp() override {
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
        LoadSymbolFont();
        ApplyFaceStyle(*qApp);
        InstrumentTest::SetUp();
        Start(2);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Face(), kPatience));
        instrument->forms.MainForm->timer("RunTimer")->stop();
        instrument->forms.MainForm->timer("AutoTriggerTimer")->stop();
        Face().MoveTo(60, 60);
        Stats().move(80, 620);
        Spectrum().setGeometry(1100, 100, 500, 350);
        LargeTime().setGeometry(900, 500, 600, 400);
        record->ChannelFFT[1] = true;
        instrument->plotter->PlotNow();
        instrument->shell->FullScreenButton_Click();
        Null().move(1300, 300);
        Null().show();
        for (Form* window : {&Spectrum(), &LargeTime(), &Null(), &Stats()}) {
            ASSERT_TRUE(QTest::qWaitForWindowExposed(window, kPatience))
                << window->objectName().toStdString();
        }
        ASSERT_TRUE(Until([&] { return Face().pos() == Place(Face()); }));
    }
    Form& Spectrum() { return *instrument->forms.FFTForm; }
    Form& LargeTime() { return *instrument->forms.FullScreenTimeForm; }
    Form& Stats() { return *instrument->forms.StatsForm; }
    Form& Null() { return *instrument->forms.OffsetNullForm; }
    Surface& Face() { return *instrument->forms.surface; }
    std::vector<QWidget*> AllWindows() { return {&Face(), &Spectrum(), &LargeTime(), &Stats(), &Null()}; }

    template <class Condition> static bool Until(Condition condition) {
        return QTest::qWaitFor(condition, kPatience);
    }
    static QString Id(const QWidget& window) { return QString::number(window.winId()); }
    /// Where the X server has the window, which the program learns later.
    static QPoint Place(const QWidget& window) {
        const QString info = Output(QStringLiteral("xwininfo -id ") + Id(window));
        const auto number = [&info](const char* after) {
            return info.section(QLatin1String(after), 1).trimmed().section(QLatin1Char('\n'), 0, 0).toInt();
        };
        return {number("Absolute upper-left X:"), number("Absolute upper-left Y:")};
    }
    static bool Iconic(const QWidget& window) {
        return Output(QStringLiteral("xprop -id %1 WM_STATE").arg(Id(window)))
            .contains(QLatin1String("Iconic"));
    }
    static void Press(ButtonControl1* button) { real_mouse::Click(*button); }
    /// The windows from the back to the front, as the window manager keeps them.
    QStringList Stack() {
        const QString list = Output(QStringLiteral("xprop -root _NET_CLIENT_LIST_STACKING"));
        QStringList names;
        for (const QString& id : list.section(QLatin1Char('#'), 1).split(QLatin1Char(','))) {
            for (const QWidget* window : AllWindows()) {
                if (window->winId() == id.trimmed().toULongLong(nullptr, 16)) {
                    names += window->objectName();
                }
            }
        }
        return names;
    }
    bool Behind(const QWidget& back, const QWidget& front) {
        const QStringList stack = Stack();
        return stack.contains(back.objectName()) &&
               stack.indexOf(back.objectName()) < stack.indexOf(front.objectName());
    }

    std::vector<std::string> CallsButPlots() {
        auto calls = script().CallsButPolls();
        std::erase_if(calls, [](const std::string& call) { return call.starts_with("FFT("); });
        return calls;
    }
    /// Alt and F4, as every window manager here has it; again if the keys went before the focus did.
    static void AskToClose(QWidget& window) {
        CloseCounter asked;
        window.installEventFilter(&asked);
        for (int attempt = 0; attempt < 5 && asked.count == 0; ++attempt) {
            real_mouse::Do({QStringLiteral("windowfocus"), QStringLiteral("--sync"), Id(window),
                            QStringLiteral("sleep"), QStringLiteral("0.2"), QStringLiteral("key"),
                            QStringLiteral("alt+F4")});
            std::ignore = QTest::qWaitFor([&] { return asked.count > 0; }, 3000);
        }
        EXPECT_GT(asked.count, 0) << window.objectName().toStdString();
    }

    void ExpectBackInPlace(const std::vector<QPoint>& places) {
        const auto windows = AllWindows();
        for (std::size_t i = 0; i < windows.size(); ++i) {
            EXPECT_TRUE(Until([&] { return windows[i]->isVisible() && Place(*windows[i]) == places[i]; }))
                << windows[i]->objectName().toStdString() << " at " << Place(*windows[i]).x() << ","
                << Place(*windows[i]).y() << " for " << places[i].x() << "," << places[i].y();
        }
        EXPECT_TRUE(Until([&] {
            return Behind(Spectrum(), Face()) && Behind(LargeTime(), Face()) && Behind(Face(), Stats());
        })) << Stack().join(' ').toStdString();
    }
    std::vector<QPoint> Places() {
        std::vector<QPoint> places;
        for (const QWidget* window : AllWindows()) {
            places.push_back(Place(*window));
        }
        return places;
    }
};

TEST_F(Satellites, AMinimiseByTheButtonTakesThemAwayAndARestoreBringsThemBack) {
    const auto places = Places();
    script().Clear();
    Press(instrument->forms.MainForm->control<ButtonControl1>("MinimiseButton"));
    ASSERT_TRUE(Until([&] { return Iconic(Face()); }));
    script().Clear();
    for (int plot = 0; plot < 5; ++plot) {
        instrument->plotter->PlotNow();
        QTest::qWait(20);
    }
    for (const Form* window : {&Spectrum(), &LargeTime(), &Stats(), &Null()}) {
        EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
    }
    real_mouse::Do({QStringLiteral("windowactivate"), Id(Face())});
    ExpectBackInPlace(places);
    EXPECT_THAT(CallsButPlots(), IsEmpty());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Face(), kPatience)) << "the keys belong to the panel";
}

TEST_F(Satellites, AMinimiseByTheWindowManagerTakesThemAlong) {
    const auto places = Places();
    for (int round = 0; round < 2; ++round) {
        real_mouse::Do({QStringLiteral("windowminimize"), Id(Face())});
        ASSERT_TRUE(Until([&] { return Iconic(Face()) && !Spectrum().isVisible() && !Stats().isVisible(); }));
        script().Clear();
        instrument->plotter->PlotNow();
        EXPECT_FALSE(Spectrum().isVisible());
        real_mouse::Do({QStringLiteral("windowactivate"), Id(Face())});
        ExpectBackInPlace(places);
        EXPECT_THAT(CallsButPlots(), IsEmpty());
    }
}

TEST_F(Satellites, TheWindowManagersCloseIsTheButtonOfEach) {
    for (Form* window : {&LargeTime(), &Null(), &Stats(), &Spectrum()}) {
        AskToClose(*window);
    }
    EXPECT_TRUE(Until([&] { return !LargeTime().isVisible() && !Null().isVisible(); }));
    EXPECT_FALSE(instrument->shell->FullScreenOn);
    EXPECT_TRUE(Stats().isVisible());
    EXPECT_TRUE(Spectrum().isVisible());
    AskToClose(Face());
    EXPECT_TRUE(Until([&] { return !Face().isVisible(); }));
}

TEST_F(Satellites, AResizeOfTheMainFormSendsTheLargeTimeWindowToTheBack) {
    LargeTime().raise();
    ASSERT_TRUE(Until([&] { return Behind(Face(), LargeTime()); }));
    instrument->forms.MainForm->resize(instrument->forms.MainForm->size() + QSize(1, 0));
    EXPECT_TRUE(Until([&] { return Behind(LargeTime(), Face()) && Behind(LargeTime(), Spectrum()); }));
}

TEST_F(Satellites, EachIsMovedByTheLeftButtonAlone) {
    struct Grip {
        QWidget* window;
        QWidget* by;
        QPointF at;
    };
    const std::vector<Grip> grips{
        {&Face(), instrument->forms.MainForm->control<QWidget>("Image1"), {200, 24}},
        {&Stats(), Stats().control<QWidget>("Picture1"), {4, 6}},
        {&Spectrum(), Spectrum().control<QWidget>("Canvas"), {200, 100}},
        {&LargeTime(), LargeTime().control<QWidget>("Canvas"), {200, 150}},
        {&Null(), &Null(), {4, 4}},
    };
    for (Form* window : {&Stats(), &Spectrum(), &LargeTime(), &Null()}) {
        window->hide();
    }
    for (const Grip& grip : grips) {
        const std::string name = grip.window->objectName().toStdString();
        const QPoint start = grip.window == &Face() ? QPoint(60, 60) : QPoint(1150, 620); // side by side
        const QPoint end = start + QPoint(60, 40);
        grip.window->show();
        grip.window->move(start);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(grip.window, kPatience)) << name;
        ASSERT_TRUE(Until([&] { return Place(*grip.window) == start; })) << name;
        const QPointF step(30, 20);
        real_mouse::Drag(*grip.by, {grip.at, grip.at + step / 2, grip.at + step, grip.at + 2 * step});
        EXPECT_TRUE(Until([&] { return Place(*grip.window) == end && grip.window->pos() == end; }))
            << name << " at " << Place(*grip.window).x() << "," << Place(*grip.window).y();
        // A click and a press of another button leave it where it is, and no pointer takes it along.
        real_mouse::Click(*grip.by, grip.at);
        real_mouse::Do(real_mouse::To(*grip.by, grip.at) +
                       QStringList{QStringLiteral("mousedown"), QStringLiteral("2")} +
                       real_mouse::To(*grip.by, grip.at + step) +
                       real_mouse::To(*grip.by, grip.at + 2 * step) +
                       QStringList{QStringLiteral("mouseup"), QStringLiteral("2")} +
                       real_mouse::To(*grip.by, grip.at + 3 * step));
        QApplication::processEvents();
        EXPECT_EQ(Place(*grip.window), end) << name;
        if (grip.window != &Face()) {
            grip.window->hide();
        }
    }
}

TEST_F(Satellites, ADoubleClickOnTheLargePlotFillsTheScreen) {
    LargeTime().move(600, 500);
    LargeTime().raise();
    ASSERT_TRUE(Until([&] { return Place(LargeTime()) == QPoint(600, 500); }));
    real_mouse::Do(real_mouse::To(LargeTime(), {300, 200}) +
                   QStringList{QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                               QStringLiteral("--delay"), QStringLiteral("60"), QStringLiteral("1")});
    EXPECT_TRUE(Until([&] { return LargeTime().width() == 1920; })) << LargeTime().width();
}

} // namespace
