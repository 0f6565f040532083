#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "frame/instrument/instrument_fixture.h"
#include "real_mouse.h"

#include <QProcess>
#include <QScreen>

namespace {

constexpr int kPatience = 30000; ///< ms
constexpr int kHalf = 1920;      ///< device pixels of each screen

/// The whole instrument on a left and a right screen, the left one being the primary. The right one may have
/// a finer scale. Places of the X server are in device pixels.
class TwoScreens : public InstrumentTest {
  protected:
    void SetUp() override {
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
        LoadSymbolFont();
        ApplyFaceStyle(*qApp);
        InstrumentTest::SetUp();
        const auto screens = QGuiApplication::screens();
        ASSERT_EQ(screens.size(), 2);
        right = screens[0] == QGuiApplication::primaryScreen() ? screens[1] : screens[0];
        ASSERT_EQ(right->geometry().left(), kHalf);
        Begin();
    }
    void Begin() {
        Start(2);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Face(), kPatience));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Stats(), kPatience));
    }
    Surface& Face() { return *instrument->forms.surface; }
    Form& Stats() { return *instrument->forms.StatsForm; }
    static bool Until(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, kPatience);
    }
    static QString Output(const QString& command) {
        QProcess process;
        process.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        EXPECT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kPatience));
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    /// Place and size of a window.
    static QRect OnServer(const QWidget& window) {
        const QString info = Output(QStringLiteral("xwininfo -id %1").arg(window.winId()));
        const auto number = [&info](const char* after) {
            return info.section(QLatin1String(after), 1).trimmed().section(QLatin1Char('\n'), 0, 0).toInt();
        };
        return {number("Absolute upper-left X:"), number("Absolute upper-left Y:"), number("Width:"),
                number("Height:")};
    }
    static QSize Shape(const QWidget& window) {
        const QString info = Output(QStringLiteral("xwininfo -shape -id %1").arg(window.winId()));
        const QString extents = info.section(QLatin1String("Window shape extents:"), 1).trimmed();
        return {extents.section('x', 0, 0).toInt(), extents.section('x', 1).section('+', 0, 0).toInt()};
    }
    double RightScale() const { return right->devicePixelRatio(); }

    QScreen* right = nullptr;
};

TEST_F(TwoScreens, TheFirstStartCentresOnThePrimary) {
    const QRect place = OnServer(Face());
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_NEAR(place.center().x(), room.center().x(), 2);
    const QRect group = place.united(OnServer(Stats()));
    EXPECT_NEAR(group.center().y(), room.center().y(), 20);
}

TEST_F(TwoScreens, WindowsComeBackToTheSecondScreen) {
    const QPoint corner = right->geometry().topLeft();
    Face().MoveTo(corner.x() + 30, 20);
    Stats().move(corner + QPoint(50, 400));
    ASSERT_TRUE(Until([&] { return OnServer(Face()).left() > kHalf && Face().screen() == right; }));
    ASSERT_TRUE(Until([&] { return OnServer(Stats()).left() > kHalf && Stats().screen() == right; }));
    const QRect face = OnServer(Face());
    const QRect stats = OnServer(Stats());
    ShutDown(*instrument);
    Begin();
    EXPECT_TRUE(Until([&] { return OnServer(Face()) == face && OnServer(Stats()) == stats; }))
        << OnServer(Face()).left() << "," << OnServer(Face()).top() << " for " << face.left() << ","
        << face.top() << "; " << OnServer(Stats()).left() << "," << OnServer(Stats()).top() << " for "
        << stats.left() << "," << stats.top();
    EXPECT_EQ(Face().screen(), right);
}

TEST_F(TwoScreens, APlaceOutsideBothComesToThePrimary) {
    Face().MoveTo(2 * kHalf + 500, 200); // as on a third screen, which is then gone
    Stats().move(3000, 5000);
    ShutDown(*instrument);
    Begin();
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(Until([&] { return room.contains(OnServer(Stats())); }));
    EXPECT_TRUE(Until([&] {
        return room.contains(QRect(QPoint(Face().Left(), Face().Top()), instrument->forms.MainForm->size()));
    }));
}

TEST_F(TwoScreens, AChangeOfScreenTakesTheOutlineAnew) {
    ASSERT_TRUE(Until([&] { return Shape(Face()).width() > 0; }));
    const QSize before = Shape(Face());
    Face().MoveTo(right->geometry().left() + 10, 10);
    ASSERT_TRUE(Until([&] { return Face().screen() == right; }));
    const auto scaled = [&] { return QSizeF(before) * RightScale(); };
    EXPECT_TRUE(Until([&] {
        const QSizeF off = QSizeF(Shape(Face())) - scaled();
        return std::abs(off.width()) <= RightScale() && std::abs(off.height()) <= RightScale();
    })) << Shape(Face()).width()
        << "x" << Shape(Face()).height() << " for " << scaled().width() << "x" << scaled().height();
}

TEST_F(TwoScreens, AHandCarriesTheWindowFromOneToTheOther) {
    Stats().move(1500, 300);
    ASSERT_TRUE(Until([&] { return OnServer(Stats()).topLeft() == QPoint(1500, 300); }));
    // Device pixels, as the hand sees them: on the headings, over the edge and 700 pixels on.
    QStringList words{"mousemove", "1504", "306", "sleep", "0.1", "mousedown", "1"};
    for (int x = 1504; x <= 2600; x += 20) {
        words += {"mousemove", QString::number(x), QString::number(306 + (x - 1504) / 5), "sleep", "0.01"};
    }
    real_mouse::Do(words + QStringList{"sleep", "0.2", "mouseup", "1"});
    // The pointer is where it took the window.
    const int x = 1504 + (2600 - 1504) / 20 * 20;
    const QPoint pointer(x, 306 + (x - 1504) / 5);
    const QPoint held(static_cast<int>(4 * RightScale()), static_cast<int>(6 * RightScale()));
    EXPECT_TRUE(Until([&] {
        const QPoint off = OnServer(Stats()).topLeft() + held - pointer;
        return off.manhattanLength() <= 2 * RightScale() && Stats().screen() == right;
    })) << OnServer(Stats()).left()
        << "," << OnServer(Stats()).top() << " under " << pointer.x() << "," << pointer.y();
    EXPECT_NEAR(OnServer(Stats()).width(), Stats().width() * RightScale(), RightScale());
}

} // namespace
