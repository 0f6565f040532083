#include "controls/window_mover.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

/// A window with a grip in its middle and a label on that, worked by mouse events of a test's own.
class WindowMoverTest : public testing::Test {
  protected:
    WindowMoverTest() : far(QGuiApplication::styleHints()->startDragDistance()) {
        window.setWindowFlags(Qt::FramelessWindowHint);
        window.setGeometry(100, 100, 200, 150);
        grip.setGeometry(20, 20, 100, 100);
        grip.setMouseTracking(true); // else moves without a button do not reach it
        label.setGeometry(10, 10, 40, 20);
        new WindowMover(grip, [this](QWindow& moved) {
            EXPECT_EQ(&moved, window.windowHandle());
            ++handedOver;
            return windowSystem;
        });
        window.show();
    }
    void Send(QWidget& to, QEvent::Type type, QPoint pointer, Qt::MouseButton button,
              Qt::MouseButtons buttons) {
        QMouseEvent event(type, to.mapFromGlobal(QPointF(pointer)), QPointF(pointer), button, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(&to, &event);
    }
    void Press(QPoint place, Qt::MouseButton button = Qt::LeftButton) {
        Send(grip, QEvent::MouseButtonPress, place, button, button);
    }
    void Drag(QPoint to, Qt::MouseButtons held = Qt::LeftButton) {
        Send(grip, QEvent::MouseMove, to, Qt::NoButton, held);
    }
    void Release(QPoint place, Qt::MouseButton button = Qt::LeftButton,
                 Qt::MouseButtons held = Qt::NoButton) {
        Send(grip, QEvent::MouseButtonRelease, place, button, held);
    }

    const int far; ///< the platform's drag distance
    QWidget window;
    QWidget grip{&window};
    QLabel label{&grip};
    int handedOver = 0;
    bool windowSystem = false;
    const QPoint start{100, 100};
    const QPoint at{150, 150};
};

TEST_F(WindowMoverTest, AClickMovesNothing) {
    Press(at);
    Release(at);
    Drag(at + QPoint(60, 60), Qt::NoButton);
    EXPECT_EQ(window.pos(), start);
    EXPECT_EQ(handedOver, 0);
}

TEST_F(WindowMoverTest, BeginsWhenThePointerHasGoneTheDragDistance) {
    Press(at);
    Drag(at + QPoint(far - 1, 0));
    EXPECT_EQ(window.pos(), start);
    EXPECT_EQ(handedOver, 0);
    Drag(at + QPoint(far, 0));
    EXPECT_EQ(handedOver, 1);
    EXPECT_EQ(window.pos(), start + QPoint(far, 0)) << "held where it was pressed";
}

TEST_F(WindowMoverTest, FollowsThePointerWhereNobodyElseMovesIt) {
    Press(at);
    Drag(at + QPoint(50, 30));
    EXPECT_EQ(window.pos(), start + QPoint(50, 30));
    Drag(at + QPoint(-20, 5));
    EXPECT_EQ(window.pos(), start + QPoint(-20, 5)) << "also back to nearer than the drag distance";
    Release(at + QPoint(-20, 5));
    Drag(at + QPoint(70, 70), Qt::NoButton);
    EXPECT_EQ(window.pos(), start + QPoint(-20, 5));
    EXPECT_EQ(handedOver, 1) << "asked once a drag";
}

TEST_F(WindowMoverTest, LeavesTheWayToTheWindowSystemThatTakesIt) {
    windowSystem = true;
    Press(at);
    Drag(at + QPoint(far, 0));
    Drag(at + QPoint(80, 80));
    EXPECT_EQ(window.pos(), start);
    EXPECT_EQ(handedOver, 1);
}

TEST_F(WindowMoverTest, OtherButtonsMoveNothing) {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
        Press(at, button);
        Drag(at + QPoint(60, 60), button);
        Release(at + QPoint(60, 60), button);
    }
    EXPECT_EQ(window.pos(), start);
    EXPECT_EQ(handedOver, 0);
}

TEST_F(WindowMoverTest, AnotherButtonNeitherBeginsNorEndsTheMoveOfTheLeftOne) {
    Press(at);
    Drag(at + QPoint(40, 0));
    Press(at + QPoint(40, 0), Qt::RightButton);
    Release(at + QPoint(40, 0), Qt::RightButton, Qt::LeftButton);
    Drag(at + QPoint(60, 0));
    EXPECT_EQ(window.pos(), start + QPoint(60, 0));
}

TEST_F(WindowMoverTest, AReleaseThatWentElsewhereEndsTheMove) {
    Press(at);
    Drag(at + QPoint(40, 0));
    Drag(at + QPoint(50, 0), Qt::NoButton);
    Drag(at + QPoint(60, 0)); // a button that was pressed elsewhere
    EXPECT_EQ(window.pos(), start + QPoint(40, 0));
}

TEST_F(WindowMoverTest, AWindowThatGoesAwayUnderThePointerIsLetGo) {
    Press(at);
    window.hide();
    window.show();
    Drag(at + QPoint(60, 0));
    EXPECT_EQ(window.pos(), start);
}

TEST_F(WindowMoverTest, MovesByTheLabelsOnItsGrip) {
    Send(label, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    Send(label, QEvent::MouseMove, at + QPoint(30, 0), Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(window.pos(), start + QPoint(30, 0));
}

} // namespace
