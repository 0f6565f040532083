#include "display/cursor_bars.h"

#include "controls/accessibility.h"
#include "controls/form.h"
#include "display/cursor_tab_design.h"
#include "display/plot_canvas.h"
#include "frame/record/record.h"
#include "frame/window/main_form_design.h"
#include "support/call_lists.h"
#include "support/scripted_driver.h"

#include <QAccessible>
#include <QCheckBox>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kPeriod = 1e-6;
constexpr double kRecord = kSampleDepth * kPeriod;

/// The two bars on the face, with the boxes of the cursor tab.
class CursorBarsTest : public testing::Test {
  protected:
    CursorBarsTest() {
        InstallAccessibility();
        record.SampleDepth = kSampleDepth;
        record.Running = true;
        instrument.script.samplePeriod.Always(static_cast<float>(kPeriod));
        bars = std::make_unique<CursorBars>(
            record, instrument.driver, CursorBars::Controls::Of(main, tab),
            CursorBars::Calls{.PlotNow = Note("PlotNow"), .SetDefaultLayering = Note("Layering")});
        bars->Connect();
    }
    ~CursorBarsTest() override { EXPECT_EQ(instrument.script.violations, CallList{}); }

    std::function<void()> Note(const std::string& name) {
        return [this, name] { calls.push_back(name); };
    }
    Picture* Bar(const char* axis) { return main.control<Picture>(QByteArray(axis) + "CursorBar"); }
    Picture* Handle(const char* axis, int cursor) {
        return main.control<Picture>(QByteArray(axis) + "CursorHandle", cursor);
    }
    QCheckBox* Box(const char* axis, int cursor) {
        return tab.control<QCheckBox>(QByteArray(axis) + "CursorEn", cursor);
    }
    QTimer* CursTimer() { return main.timer("CursTimer"); }
    void SwitchAllOn() {
        for (int i = 0; i < kCursors; ++i) {
            Box("Vert", i)->setChecked(true);
            Box("Horiz", i)->setChecked(true);
        }
        calls.clear();
    }
    QPoint MiddleOf(const Picture* handle) { return handle->geometry().center(); }
    double Period() const { return static_cast<double>(static_cast<float>(kPeriod)); }

    Record record;
    ScriptedInstrument instrument;
    Form main{MainFormDesign(), nullptr, kPlotCanvas};
    Form tab{CursorTabDesign()};
    CallList calls;
    std::unique_ptr<CursorBars> bars;
};

TEST_F(CursorBarsTest, ALeftDragJumpsTheCursorToTheMouse) {
    SwitchAllOn();
    Picture* bar = Bar("Vert");
    emit bar->MouseDown(Qt::LeftButton, MiddleOf(Handle("Vert", 1)));
    EXPECT_EQ(bars->VertCursorDragIndex(), 1);
    EXPECT_EQ(record.VertCursorTime[1], 0) << "the press alone moves nothing";
    emit bar->MouseMove(Qt::LeftButton, {200, 3});
    EXPECT_DOUBLE_EQ(record.VertCursorTime[1], kSampleDepth * Period() * 200 / bar->width());
    EXPECT_EQ(Handle("Vert", 1)->x(), std::nearbyint(200.0 / bar->width() * (bar->width() - 3) - 5.5));
    emit bar->MouseUp(Qt::LeftButton, {200, 3});
    EXPECT_EQ(bars->VertCursorDragIndex(), -1);
    EXPECT_EQ(calls, Calls("Layering"));
    emit bar->MouseMove(Qt::LeftButton, {10, 3});
    EXPECT_DOUBLE_EQ(record.VertCursorTime[1], kSampleDepth * Period() * 200 / bar->width());
}

TEST_F(CursorBarsTest, AnotherButtonMovesAHundredthFromThePress) {
    SwitchAllOn();
    Picture* bar = Bar("Horiz");
    const QPoint press = MiddleOf(Handle("Horiz", 2));
    emit bar->MouseDown(Qt::RightButton, press);
    emit bar->MouseMove(Qt::RightButton, press + QPoint(0, 50));
    const double fraction = (press.y() + 0.5) / bar->height();
    EXPECT_DOUBLE_EQ(record.HorizCursorVolts[2], (0.5 - fraction) * 252);
}

TEST_F(CursorBarsTest, ADragBeyondTheEndStopsAtTheEnd) {
    SwitchAllOn();
    emit Bar("Vert")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Vert", 0)));
    emit Bar("Vert")->MouseMove(Qt::LeftButton, {5000, 3});
    EXPECT_DOUBLE_EQ(record.VertCursorTime[0], kSampleDepth * Period());
    EXPECT_EQ(Handle("Vert", 0)->x(), std::nearbyint(354 - 5.5));
    emit Bar("Vert")->MouseMove(Qt::LeftButton, {-5000, 3});
    EXPECT_EQ(record.VertCursorTime[0], 0);
    emit Bar("Horiz")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Horiz", 0)));
    emit Bar("Horiz")->MouseMove(Qt::LeftButton, {3, 5000});
    EXPECT_EQ(record.HorizCursorVolts[0], -126);
    emit Bar("Horiz")->MouseMove(Qt::LeftButton, {3, -5000});
    EXPECT_EQ(record.HorizCursorVolts[0], 126);
}

TEST_F(CursorBarsTest, BothEdgesOfAHandleAreHandle) {
    SwitchAllOn();
    const QRect place = Handle("Vert", 2)->geometry();
    for (const auto& [x, index] :
         {std::pair(place.left() - 1, -1), std::pair(place.left(), 2),
          std::pair(place.left() + place.width(), 2), std::pair(place.left() + place.width() + 1, -1)}) {
        emit Bar("Vert")->MouseDown(Qt::LeftButton, {x, 3});
        EXPECT_EQ(bars->VertCursorDragIndex(), index) << x;
        emit Bar("Vert")->MouseUp(Qt::LeftButton, {x, 3});
    }
}

TEST_F(CursorBarsTest, WhereHandlesOverlapTheLowerNumberIsTakenAndSeen) {
    SwitchAllOn();
    record.VertCursorTime[1] = record.VertCursorTime[2] = kRecord / 2;
    bars->MoveVertCursorHandle(1, kRecord / 2);
    bars->MoveVertCursorHandle(2, kRecord / 2);
    const QPoint middle = MiddleOf(Handle("Vert", 1));
    EXPECT_EQ(Bar("Vert")->childAt(middle), Handle("Vert", 1));
    emit Bar("Vert")->MouseDown(Qt::LeftButton, middle);
    EXPECT_EQ(bars->VertCursorDragIndex(), 1);
}

TEST_F(CursorBarsTest, APressIsServedWhileCursor0IsHeldAndNotWhileAnotherIs) {
    SwitchAllOn();
    Picture* bar = Bar("Vert");
    emit bar->MouseDown(Qt::LeftButton, MiddleOf(Handle("Vert", 0)));
    emit bar->MouseDown(Qt::RightButton, MiddleOf(Handle("Vert", 1)));
    EXPECT_EQ(bars->VertCursorDragIndex(), 1);
    emit bar->MouseDown(Qt::RightButton, MiddleOf(Handle("Vert", 2)));
    EXPECT_EQ(bars->VertCursorDragIndex(), 1);
}

TEST_F(CursorBarsTest, ACursorThatIsOffCannotBeTaken) {
    Box("Vert", 1)->setChecked(true);
    emit Bar("Vert")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Vert", 0)));
    EXPECT_EQ(bars->VertCursorDragIndex(), -1);
}

TEST_F(CursorBarsTest, TheHandlesThemselvesTakeARealMouse) {
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    Box("Vert", 0)->setChecked(true);
    Picture* handle = Handle("Vert", 0);
    const int x = handle->x();
    QTest::mousePress(handle, Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(bars->VertCursorDragIndex(), 0);
    QTest::mouseMove(handle, {105, 5});
    EXPECT_DOUBLE_EQ(record.VertCursorTime[0], kSampleDepth * Period() * (x + 105) / Bar("Vert")->width());
    QTest::mouseRelease(handle, Qt::LeftButton, {}, {105, 5});
    EXPECT_EQ(bars->VertCursorDragIndex(), -1);
}

TEST_F(CursorBarsTest, ADragWhoseReleaseWentElsewhereEndsWithTheNextMove) {
    SwitchAllOn();
    for (const char* axis : {"Vert", "Horiz"}) {
        emit Bar(axis)->MouseDown(Qt::LeftButton, MiddleOf(Handle(axis, 1)));
        emit Bar(axis)->MouseMove(Qt::LeftButton, {100, 100}); // and here a message came in between
        const double time = record.VertCursorTime[1];
        const double level = record.HorizCursorVolts[1];
        calls.clear();
        emit Bar(axis)->MouseMove(Qt::NoButton, {150, 150});
        EXPECT_EQ(calls, Calls("Layering")) << axis;
        emit Bar(axis)->MouseMove(Qt::NoButton, {200, 200});
        EXPECT_EQ(record.VertCursorTime[1], time) << axis;
        EXPECT_EQ(record.HorizCursorVolts[1], level) << axis;
    }
    EXPECT_EQ(bars->VertCursorDragIndex(), -1);
    EXPECT_EQ(bars->HorizCursorDragIndex(), -1);
}

TEST_F(CursorBarsTest, TheSecondPressOfADoubleClickTakesAHandleToo) {
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    Box("Vert", 0)->setChecked(true);
    Picture* handle = Handle("Vert", 0);
    const int x = handle->x();
    QTest::mousePress(handle, Qt::LeftButton, {}, {5, 5});
    QTest::mouseRelease(handle, Qt::LeftButton, {}, {5, 5});
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(5, 5), handle->mapToGlobal(QPointF(5, 5)),
                       Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(handle, &second);
    EXPECT_EQ(bars->VertCursorDragIndex(), 0);
    QMouseEvent move(QEvent::MouseMove, QPointF(65, 5), handle->mapToGlobal(QPointF(65, 5)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(handle, &move);
    EXPECT_DOUBLE_EQ(record.VertCursorTime[0], kSampleDepth * Period() * (x + 65) / Bar("Vert")->width());
}

TEST_F(CursorBarsTest, EachMoveStartsTheTimerAgainAndItsTickPlotsOnce) {
    SwitchAllOn();
    EXPECT_FALSE(CursTimer()->isActive());
    emit Bar("Horiz")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Horiz", 0)));
    emit Bar("Horiz")->MouseMove(Qt::LeftButton, {3, 40});
    EXPECT_TRUE(CursTimer()->isActive());
    emit Bar("Horiz")->MouseMove(Qt::LeftButton, {3, 41});
    EXPECT_TRUE(CursTimer()->isActive());
    EXPECT_EQ(calls, CallList{});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !calls.empty(); }, 30000));
    EXPECT_EQ(calls, Calls("PlotNow"));
    EXPECT_FALSE(CursTimer()->isActive());
}

TEST_F(CursorBarsTest, AMoveWithoutADragDoesNothing) {
    SwitchAllOn();
    emit Bar("Vert")->MouseMove(Qt::NoButton, {100, 3});
    EXPECT_FALSE(CursTimer()->isActive());
    EXPECT_EQ(record.VertCursorTime[0], 0);
}

TEST_F(CursorBarsTest, ABoxShowsItsHandleWhereItStoodAndPlots) {
    const QPoint place = Handle("Vert", 2)->pos();
    record.VertCursorTime[2] = kRecord / 2;
    bars->MoveVertCursorHandle(2, kRecord / 2);
    EXPECT_EQ(Handle("Vert", 2)->pos(), place) << "a cursor that is off is not moved";
    Box("Vert", 2)->click();
    EXPECT_EQ(calls, Calls("PlotNow"));
    EXPECT_FALSE(Handle("Vert", 2)->isHidden());
    EXPECT_EQ(Handle("Vert", 2)->pos(), place);
    EXPECT_EQ(Handle("Vert", 2)->toolTip(), QStringLiteral("1.500ms"));
    bars->MoveVertCursorHandle(2, kRecord / 2);
    EXPECT_EQ(Handle("Vert", 2)->x(), std::nearbyint(177 - 5.5));
    Box("Vert", 2)->click();
    EXPECT_TRUE(Handle("Vert", 2)->isHidden());
}

TEST_F(CursorBarsTest, SwitchingACursorOffEndsItsDrag) {
    SwitchAllOn();
    emit Bar("Horiz")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Horiz", 1)));
    Box("Horiz", 1)->setChecked(false);
    EXPECT_EQ(bars->HorizCursorDragIndex(), -1);
}

TEST_F(CursorBarsTest, APeriodOfZeroIsNotTakenFromADriver) {
    SwitchAllOn();
    emit Bar("Vert")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Vert", 0)));
    emit Bar("Vert")->MouseMove(Qt::LeftButton, {100, 3});
    instrument.script.samplePeriod.Always(0); // in the middle of a drag
    emit Bar("Vert")->MouseMove(Qt::LeftButton, {200, 3});
    EXPECT_DOUBLE_EQ(record.VertCursorTime[0], kSampleDepth * Period() * 200 / 357) << "by the last period";
    EXPECT_EQ(Handle("Vert", 0)->x(), std::nearbyint(200.0 / 357 * 354 - 5.5));
}

TEST_F(CursorBarsTest, ABarOfNoSizeMovesNothing) {
    SwitchAllOn();
    record.HorizCursorVolts[0] = 20;
    emit Bar("Horiz")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Horiz", 0)));
    Bar("Horiz")->resize(14, 0);
    emit Bar("Horiz")->MouseMove(Qt::LeftButton, {3, 5});
    EXPECT_EQ(record.HorizCursorVolts[0], 20);
    QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    emit Handle("Horiz", 0)->KeyDown(&up);
    EXPECT_EQ(record.HorizCursorVolts[0], 20);
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
}

TEST_F(CursorBarsTest, ValuesThatAreNoPlaceLeaveTheHandlesInTheBar) {
    SwitchAllOn();
    const double endless = std::numeric_limits<double>::infinity();
    for (const double value : {endless, -endless, std::nan(""), 1e300, -1e300}) {
        bars->MoveVertCursorHandle(0, value);
        bars->MoveHorizCursorHandle(0, value);
        EXPECT_GE(Handle("Vert", 0)->x(), -6);
        EXPECT_LE(Handle("Vert", 0)->x(), 357);
        EXPECT_GE(Handle("Horiz", 0)->y(), -6);
        EXPECT_LE(Handle("Horiz", 0)->y(), 240);
    }
}

TEST_F(CursorBarsTest, TheArrowKeysMoveByPixelsOfTheBar) {
    SwitchAllOn();
    main.show();
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    const double pixel = kSampleDepth * Period() / Bar("Vert")->width();
    Picture* handle = Handle("Vert", 1);
    handle->setFocus();
    QTest::keyClick(handle, Qt::Key_Right);
    EXPECT_NEAR(record.VertCursorTime[1], pixel, 1e-15);
    QTest::keyClick(handle, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_NEAR(record.VertCursorTime[1], 11 * pixel, 1e-15);
    QTest::keyClick(handle, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_NEAR(record.VertCursorTime[1], 10.99 * pixel, 1e-15);
    QTest::keyClick(handle, Qt::Key_End);
    EXPECT_NEAR(record.VertCursorTime[1], kSampleDepth * Period(), 1e-15);
    QTest::keyClick(handle, Qt::Key_Home);
    EXPECT_EQ(record.VertCursorTime[1], 0);
    EXPECT_TRUE(CursTimer()->isActive());

    const double step = 252.0 / Bar("Horiz")->height();
    Handle("Horiz", 2)->setFocus();
    QTest::keyClick(Handle("Horiz", 2), Qt::Key_Up);
    EXPECT_NEAR(record.HorizCursorVolts[2], step, 1e-12);
    QTest::keyClick(Handle("Horiz", 2), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_NEAR(record.HorizCursorVolts[2], -9 * step, 1e-12);
}

TEST_F(CursorBarsTest, AHandleTellsWhatItIsAndWhereItStands) {
    SwitchAllOn();
    record.VertCursorTime[0] = 3.2e-6;
    bars->MoveVertCursorHandle(0, 3.2e-6);
    Picture* handle = Handle("Vert", 0);
    EXPECT_EQ(handle->toolTip(), QStringLiteral("3.200us"));
    EXPECT_EQ(handle->cursor().shape(), Qt::SizeHorCursor);
    EXPECT_EQ(Handle("Horiz", 0)->cursor().shape(), Qt::SizeVerCursor);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(handle);
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("Time cursor 1"));
    EXPECT_EQ(spoken->text(QAccessible::Value), QStringLiteral("3.200us"));
    EXPECT_EQ(spoken->role(), QAccessible::Slider);
    ASSERT_NE(spoken->valueInterface(), nullptr);
    EXPECT_NEAR(spoken->valueInterface()->maximumValue().toDouble(), kRecord, 1e-9);
    spoken->valueInterface()->setCurrentValue(kRecord / 2);
    EXPECT_NEAR(record.VertCursorTime[0], kRecord / 2, 1e-9);

    record.HorizCursorVolts[1] = 31.5;
    bars->MoveHorizCursorHandle(1, 31.5);
    EXPECT_EQ(Handle("Horiz", 1)->toolTip(), QStringLiteral("2.50 div"));
    spoken = QAccessible::queryAccessibleInterface(Handle("Horiz", 1));
    EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("Level cursor 2"));
    EXPECT_EQ(spoken->valueInterface()->minimumValue().toDouble(), -126);
}

TEST_F(CursorBarsTest, TheKeyboardReachesTheHandlesThatShow) {
    main.show();
    main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    Box("Vert", 1)->setChecked(true);
    Handle("Vert", 1)->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(main.focusWidget(), Handle("Vert", 1));
    EXPECT_NE(Handle("Vert", 1)->focusPolicy() & Qt::TabFocus, 0);
    EXPECT_EQ(Bar("Vert")->focusPolicy(), Qt::NoFocus);
}

TEST_F(CursorBarsTest, TheLinesMarkThePartInView) {
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    EXPECT_EQ(main.control<QWidget>("VertWorldLine", 0)->pos(), QPoint(0, 0));
    EXPECT_EQ(main.control<QWidget>("VertWorldLine", 1)->pos(), QPoint(354, 0));
    EXPECT_EQ(main.control<QWidget>("HorizWorldLine", 0)->y(), std::nearbyint(237.0 * (1 - 253.0 / 254)));
    EXPECT_EQ(main.control<QWidget>("HorizWorldLine", 1)->y(), std::nearbyint(237.0 * (1 - 1.0 / 254)));
    bars->WorldLineUpdate(750, 1500, 63, 0);
    EXPECT_EQ(main.control<QWidget>("VertWorldLine", 0)->x(), std::nearbyint(750.0 / 2999 * 354));
    EXPECT_EQ(main.control<QWidget>("VertWorldLine", 1)->x(), std::nearbyint(1500.0 / 2999 * 354));
    EXPECT_EQ(main.control<QWidget>("HorizWorldLine", 0)->y(), std::nearbyint(237.0 * (1 - 190.0 / 254)));
    EXPECT_EQ(main.control<QWidget>("HorizWorldLine", 1)->y(), std::nearbyint(237.0 * 0.5));
}

TEST_F(CursorBarsTest, TheLowerLineMarksAWholeStep) {
    bars->WorldLineUpdate(0, kSampleDepth - 1, -62.5, -62.5);
    EXPECT_EQ(main.control<QWidget>("HorizWorldLine", 0)->y(), std::nearbyint(237.0 * (1 - 64.5 / 254)));
    EXPECT_EQ(main.control<QWidget>("HorizWorldLine", 1)->y(), std::nearbyint(237.0 * (1 - 65.0 / 254)));
}

TEST_F(CursorBarsTest, AStopLeavesACursorAtTheEndOfTheRecordWhereItIs) {
    SwitchAllOn();
    bars->PlaceHandles();
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    instrument.script.samplePeriod.Always(static_cast<float>(2 * kPeriod)); // the timebase is turned
    for (int i = 0; i < kCursors; ++i) {
        bars->MoveVertCursorHandle(i, record.VertCursorTime[i]);
    }
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    emit Bar("Vert")->MouseDown(Qt::LeftButton, MiddleOf(Handle("Vert", 0)));
    emit Bar("Vert")->MouseMove(Qt::LeftButton, {5000, 3});
    emit Bar("Vert")->MouseUp(Qt::LeftButton, {5000, 3});
    const double end = record.VertCursorTime[0];
    EXPECT_DOUBLE_EQ(end, 2 * kSampleDepth * Period());
    record.Running = false;
    record.HeldSamplePeriod = 2 * Period();
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    EXPECT_EQ(record.VertCursorTime[0], end);
}

TEST_F(CursorBarsTest, APeriodThatComesIntoForceBetweenTwoPlotsMovesTheHandlesAndIsPlotted) {
    SwitchAllOn();
    record.Running = false;
    record.HeldSamplePeriod = Period();
    record.VertCursorTime = {kRecord / 2, kRecord / 200, kRecord / 50};
    bars->PlaceHandles();
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    CursTimer()->stop();
    // Turned while stopped, then run and stopped before anything triggered.
    instrument.script.samplePeriod.Always(static_cast<float>(kPeriod / 100));
    record.HeldSamplePeriod = Period() / 100;
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    EXPECT_NEAR(record.VertCursorTime[0], (kSampleDepth - 10) * Period() / 100, 1e-12);
    EXPECT_EQ(Handle("Vert", 1)->x(), std::nearbyint(354 / 2.0 - 5.5));
    EXPECT_TRUE(CursTimer()->isActive()) << "the plot just now had the cursor where it was before";
    CursTimer()->stop();
    bars->WorldLineUpdate(0, kSampleDepth - 1, 126, -126);
    EXPECT_FALSE(CursTimer()->isActive());
}

TEST_F(CursorBarsTest, TheStartPlacesAllSixAndBringsATimeBackIntoTheRecord) {
    SwitchAllOn();
    record.VertCursorTime[0] = kSampleDepth * Period();
    record.VertCursorTime[1] = 2 * kRecord;
    record.HorizCursorVolts[2] = -63;
    bars->PlaceHandles();
    EXPECT_DOUBLE_EQ(record.VertCursorTime[0], kSampleDepth * Period()) << "the end of the record is a place";
    EXPECT_DOUBLE_EQ(record.VertCursorTime[1], (kSampleDepth - 10) * Period());
    EXPECT_EQ(Handle("Vert", 0)->x(), std::nearbyint(354 - 5.5));
    EXPECT_EQ(Handle("Horiz", 2)->y(), std::nearbyint(0.75 * 237 - 5.5));
}

} // namespace
