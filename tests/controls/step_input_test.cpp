#include "controls/step_input.h"

#include <QKeyEvent>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

using Kind = StepRequest::Kind;

std::optional<StepRequest> Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return StepOfKey(QKeyEvent(QEvent::KeyPress, key, modifiers));
}

QWheelEvent Turn(QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return {QPointF(), QPointF(), QPoint(), angle, Qt::NoButton, modifiers, Qt::NoScrollPhase, false};
}

} // namespace

TEST(StepOfKey, ArrowsMoveOneStepAndTenWithShiftOrCtrl) {
    EXPECT_EQ(Key(Qt::Key_Up), (StepRequest{Kind::Step, 1}));
    EXPECT_EQ(Key(Qt::Key_Right), (StepRequest{Kind::Step, 1}));
    EXPECT_EQ(Key(Qt::Key_Down), (StepRequest{Kind::Step, -1}));
    EXPECT_EQ(Key(Qt::Key_Left), (StepRequest{Kind::Step, -1}));
    EXPECT_EQ(Key(Qt::Key_Up, Qt::ShiftModifier), (StepRequest{Kind::Step, 10}));
    EXPECT_EQ(Key(Qt::Key_Left, Qt::ControlModifier), (StepRequest{Kind::Step, -10}));
    EXPECT_EQ(Key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier), (StepRequest{Kind::Step, -10}));
    EXPECT_EQ(Key(Qt::Key_Up, Qt::KeypadModifier), (StepRequest{Kind::Step, 1}));
}

TEST(StepOfKey, PagesAndEnds) {
    EXPECT_EQ(Key(Qt::Key_PageUp), (StepRequest{Kind::Page, 1}));
    EXPECT_EQ(Key(Qt::Key_PageDown), (StepRequest{Kind::Page, -1}));
    EXPECT_EQ(Key(Qt::Key_Home)->kind, Kind::ToLow);
    EXPECT_EQ(Key(Qt::Key_End)->kind, Kind::ToHigh);
}

TEST(StepOfKey, LeavesOtherKeysAndWindowShortcutsAlone) {
    EXPECT_FALSE(Key(Qt::Key_A));
    EXPECT_FALSE(Key(Qt::Key_Tab));
    EXPECT_FALSE(Key(Qt::Key_Up, Qt::AltModifier));
    EXPECT_FALSE(Key(Qt::Key_Left, Qt::MetaModifier));
}

TEST(WheelSteps, OneNotchIsOneStep) {
    WheelSteps wheel;
    EXPECT_EQ(wheel.Take(Turn({0, 120})), (StepRequest{Kind::Step, 1}));
    EXPECT_EQ(wheel.Take(Turn({0, -120})), (StepRequest{Kind::Step, -1}));
    EXPECT_EQ(wheel.Take(Turn({0, 360})), (StepRequest{Kind::Step, 3}));
    EXPECT_EQ(wheel.Take(Turn({0, 120}, Qt::ShiftModifier)), (StepRequest{Kind::Step, 10}));
    EXPECT_EQ(wheel.Take(Turn({0, -120}, Qt::ControlModifier)), (StepRequest{Kind::Step, -10}));
}

TEST(WheelSteps, ASidewaysTurnCountsWhenThereIsNoOther) {
    WheelSteps wheel;
    EXPECT_EQ(wheel.Take(Turn({120, 0})), (StepRequest{Kind::Step, 1}));
    EXPECT_EQ(wheel.Take(Turn({-240, 120})), (StepRequest{Kind::Step, 1}));
    EXPECT_FALSE(wheel.Take(Turn({0, 0})));
}

TEST(WheelSteps, GathersFractionsOfANotch) {
    WheelSteps wheel;
    EXPECT_FALSE(wheel.Take(Turn({0, 50})));
    EXPECT_FALSE(wheel.Take(Turn({0, 50})));
    EXPECT_EQ(wheel.Take(Turn({0, 50})), (StepRequest{Kind::Step, 1}));
    // 30 eighths are left over; turning back starts from nothing.
    EXPECT_FALSE(wheel.Take(Turn({0, -100})));
    EXPECT_EQ(wheel.Take(Turn({0, -20})), (StepRequest{Kind::Step, -1}));
}

TEST(WheelSteps, AnEventWithoutATurnLosesNoFraction) {
    WheelSteps wheel;
    EXPECT_FALSE(wheel.Take(Turn({0, -100})));
    EXPECT_FALSE(wheel.Take(Turn({0, 0})));
    EXPECT_EQ(wheel.Take(Turn({0, -20})), (StepRequest{Kind::Step, -1}));
    EXPECT_FALSE(wheel.Take(Turn({0, 100})));
    EXPECT_FALSE(wheel.Take(Turn({0, 0})));
    EXPECT_EQ(wheel.Take(Turn({0, 20})), (StepRequest{Kind::Step, 1}));
}

TEST(WheelSteps, SurvivesAbsurdDeltas) {
    WheelSteps wheel;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(wheel.Take(Turn({0, 2147483647}))->count, 100);
    }
    EXPECT_EQ(wheel.Take(Turn({0, -2147483647 - 1}))->count, -100);
}
