#include "controls/window_mover.h"
#include "real_mouse.h"

namespace {

constexpr int kPatience = 30000; ///< ms

/// A window without a frame, moved by a real pointer through the window manager.
class MovedWindow : public testing::Test {
  protected:
    void SetUp() override {
        window.setWindowFlags(Qt::FramelessWindowHint);
        window.setGeometry(300, 200, 240, 160);
        new WindowMover(window);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window, kPatience));
        ASSERT_TRUE(StandsAt({300, 200}));
    }
    bool StandsAt(QPoint place) {
        return QTest::qWaitFor([&] { return window.pos() == place; }, kPatience);
    }
    static void Do(const QString& words) {
        real_mouse::Do(words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    static QString To(QPoint place) {
        return QStringLiteral("mousemove %1 %2 ").arg(place.x()).arg(place.y());
    }
    /// The window does not follow a pointer whose buttons are up.
    void ExpectLetGo(const char* after) {
        // Whatever the window manager has begun, it has begun once it has answered something later.
        const QPoint elsewhere = window.pos() == QPoint(300, 200) ? QPoint(310, 210) : QPoint(300, 200);
        Do(To({700, 500}) + QStringLiteral("sleep 0.1 ") + To({710, 520}) + QStringLiteral("sleep 0.1 ") +
           To({900, 650}) + QStringLiteral("sleep 0.1"));
        window.move(elsewhere);
        ASSERT_TRUE(StandsAt(elsewhere))
            << after << ": hangs on the pointer at " << window.x() << "," << window.y();
        Do(To({200, 700}) + QStringLiteral("sleep 0.1 ") + To({220, 690}));
        ASSERT_TRUE(StandsAt(elsewhere))
            << after << ": hangs on the pointer at " << window.x() << "," << window.y();
    }

    QWidget window;
};

TEST_F(MovedWindow, FollowsThePointerThatHoldsIt) {
    Do(To({350, 250}) + QStringLiteral("sleep 0.1 mousedown 1 sleep 0.1 ") + To({352, 253}) +
       QStringLiteral("sleep 0.05 ") + To({380, 280}) + QStringLiteral("sleep 0.2 ") + To({450, 320}) +
       QStringLiteral("sleep 0.2 mouseup 1"));
    EXPECT_TRUE(StandsAt({400, 270})) << window.x() << "," << window.y();
    ExpectLetGo("a drag");
}

TEST_F(MovedWindow, AQuickClickNeverLeavesItOnThePointer) {
    for (const int button : {1, 3, 2}) {
        for (int i = 0; i < 4; ++i) {
            const QPoint at = window.pos() + QPoint(60, 60);
            Do(To(at) + QStringLiteral("click %1 ").arg(button) + To(at + QPoint(90, 40)));
            ExpectLetGo("a click");
        }
    }
}

TEST_F(MovedWindow, AQuickFlickNeverLeavesItOnThePointer) {
    // The button is up before anybody can have taken the window over.
    for (int i = 0; i < 12; ++i) {
        const QPoint at = window.pos() + QPoint(60, 60);
        Do(To(at) + QStringLiteral("mousedown 1 ") + To(at + QPoint(8, 8)) + To(at + QPoint(25, 20)) +
           QStringLiteral("sleep %1 mouseup 1 ").arg(i % 4 * 0.004) + To(at + QPoint(90, 40)));
        ExpectLetGo("a flick");
    }
}

TEST_F(MovedWindow, TheRightButtonMovesNothing) {
    Do(To({350, 250}) + QStringLiteral("mousedown 3 sleep 0.1 ") + To({400, 280}) +
       QStringLiteral("sleep 0.1 ") + To({450, 320}) + QStringLiteral("sleep 0.1 mouseup 3"));
    EXPECT_EQ(window.pos(), QPoint(300, 200));
    ExpectLetGo("a drag by the right button");
}

} // namespace
