#include "controls/knob_state_fixture.h"

#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

} // namespace

TEST_F(KnobStateTest, TheChangePathPlacesTranslatesAndRaisesInThisOrder) {
    EXPECT_TRUE(state.RunChangePath());
    EXPECT_THAT(events.take(), ElementsAre("pointer", "Xlate", "text", "Change", "Done"));
}

TEST_F(KnobStateTest, PositionFollowsTheScrollerAndValueItsSense) {
    design.KnobMax = 27;
    design.KnobAnticlock = true;
    state.UpdateScrollerLimits();
    state.PutKnobValue(7);
    EXPECT_EQ(state.ScrollerValue(), 20);
    EXPECT_EQ(state.KnobValue(), 7);
    state.RunChangePath();
    EXPECT_EQ(state.Value(), 7);
    EXPECT_FLOAT_EQ(state.Position(), 20.0F / 27.0F);
    EXPECT_EQ(events.xlated, 7);
}

TEST_F(KnobStateTest, AnAnticlockwiseKnobAtItsStartAngleReportsItsMaximum) {
    design.KnobAnticlock = true;
    press(0.5);
    EXPECT_EQ(state.ScrollerValue(), 0);
    EXPECT_EQ(state.KnobValue(), 100);
    EXPECT_EQ(state.Value(), 100);
}

TEST_F(KnobStateTest, WithoutARangeThePositionStays) {
    design.KnobMin = design.KnobMax = 5;
    state.UpdateScrollerLimits();
    press(135);
    EXPECT_FLOAT_EQ(state.Position(), 0.5F);
    EXPECT_EQ(state.KnobValue(), 5);
    state.RunChangePath();
    EXPECT_FLOAT_EQ(state.Position(), 0.5F);
}

TEST_F(KnobStateTest, ARangeUpsideDownTakesNoValue) {
    design.KnobMin = 10;
    design.KnobMax = -10;
    state.UpdateScrollerLimits();
    EXPECT_FALSE(state.PutKnobValue(0));
    EXPECT_EQ(state.KnobValue(), 10);
    press(100);
    move(200);
    EXPECT_EQ(state.KnobValue(), 10);
}

TEST_F(KnobStateTest, LargeChangeIsATenthOfTheRange) {
    const auto large = [&](int min, int max) {
        design.KnobMin = min;
        design.KnobMax = max;
        state.UpdateScrollerLimits();
        return state.LargeChange();
    };
    EXPECT_EQ(large(0, 100), 10);
    EXPECT_EQ(large(0, 9), 1);
    EXPECT_EQ(large(0, 10), 1);
    EXPECT_EQ(large(-127, 127), 25);
    EXPECT_EQ(large(-32768, 32767), 6553);
    EXPECT_EQ(large(-100, 0), 6553); // a maximum of 0 leaves it alone
}

// Puts

TEST_F(KnobStateTest, ValuesOutOfRangeAreIgnoredAndTheDragEnds) {
    EXPECT_TRUE(state.PutKnobValue(40));
    drag(135);
    EXPECT_TRUE(state.Dragging());
    EXPECT_FALSE(state.PutKnobValue(101));
    EXPECT_FALSE(state.Dragging());
    EXPECT_FALSE(state.PutKnobValue(-1));
    EXPECT_EQ(state.KnobValue(), 50);
    EXPECT_TRUE(state.PutKnobValue(100));
    EXPECT_TRUE(state.PutKnobValue(0));
    EXPECT_FALSE(state.PutKnobValue(0)); // no change
}

TEST_F(KnobStateTest, TheScrollerHoldsSixteenBits) {
    design.KnobMin = std::numeric_limits<int>::min();
    design.KnobMax = std::numeric_limits<int>::max();
    state.UpdateScrollerLimits();
    EXPECT_TRUE(state.PutKnobValue(1'000'000));
    EXPECT_EQ(state.KnobValue(), 32767);
    design.KnobAnticlock = true;
    EXPECT_TRUE(state.PutKnobValue(std::numeric_limits<int>::max()));
    EXPECT_EQ(state.ScrollerValue(), -32768);
    EXPECT_EQ(state.KnobValue(), 32767);
    press(10);
    move(260);
    state.RunChangePath();
}

// Limits

TEST_F(KnobStateTest, LimitsAreTheRangeUntilTheyArePut) {
    design.KnobApplyLimit = true;
    design.KnobLowerLimit = 20; // design data alone have no effect
    design.KnobUpperLimit = 30;
    state.PutKnobValue(90);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 90);
    state.PutUpperLimit(30);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 30);
    state.PutKnobValue(3);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 3);
    state.PutLowerLimit(20);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 20);
    EXPECT_FLOAT_EQ(state.Position(), 0.2F); // the scale of angles stays
}

TEST_F(KnobStateTest, LimitsNeedKnobApplyLimit) {
    state.PutUpperLimit(30);
    state.PutKnobValue(90);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 90);
}

TEST_F(KnobStateTest, AnAnticlockwiseKnobCountsItsLimitsFromTheOtherEnd) {
    design.KnobApplyLimit = design.KnobAnticlock = true;
    state.PutLowerLimit(20);
    state.PutUpperLimit(30);
    state.PutKnobValue(5);
    state.RunChangePath();
    EXPECT_EQ(state.ScrollerValue(), 80);
    EXPECT_EQ(state.KnobValue(), 20);
    state.PutKnobValue(95);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 30);
}

TEST_F(KnobStateTest, LimitsOutsideTheRangeNeverLeaveIt) {
    design.KnobApplyLimit = true;
    state.PutLowerLimit(std::numeric_limits<int>::min());
    state.PutUpperLimit(std::numeric_limits<int>::max());
    state.PutKnobValue(50);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 50);
    state.PutLowerLimit(500);
    state.RunChangePath();
    EXPECT_EQ(state.KnobValue(), 100);
    design.KnobAnticlock = true;
    state.PutLowerLimit(std::numeric_limits<int>::min());
    state.PutUpperLimit(std::numeric_limits<int>::min());
    state.RunChangePath();
    EXPECT_GE(state.KnobValue(), 0);
    EXPECT_LE(state.KnobValue(), 100);
}

TEST_F(KnobStateTest, ADragStopsAtTheLimits) {
    design.KnobApplyLimit = true;
    state.PutUpperLimit(50);
    drag(100);
    move(200);
    EXPECT_EQ(state.KnobValue(), 50);
    move(40);
    EXPECT_NEAR(state.KnobValue(), 15, 1);
}

// Scroller and steps

TEST_F(KnobStateTest, TheScrollerRunsThePathOnlyForAChange) {
    state.MoveScroller(30);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done"));
    state.MoveScroller(30);
    EXPECT_THAT(events.events(), IsEmpty());
    state.MoveScroller(500);
    EXPECT_EQ(state.ScrollerValue(), 100);
}

TEST_F(KnobStateTest, StepsGoInTheKnobsOwnSense) {
    state.PutKnobValue(50);
    state.Step(10);
    EXPECT_EQ(state.KnobValue(), 60);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done"));
    design.KnobAnticlock = true;
    state.PutKnobValue(50);
    state.Step(1);
    EXPECT_EQ(state.KnobValue(), 51);
    EXPECT_EQ(state.ScrollerValue(), 49);
}

TEST_F(KnobStateTest, StepsEndAtTheEndsAndAtTheLimits) {
    state.PutKnobValue(95);
    state.Step(10);
    EXPECT_EQ(state.KnobValue(), 100);
    events.take();
    state.Step(1);
    EXPECT_THAT(events.take(), IsEmpty());
    state.Step(std::numeric_limits<int>::min());
    EXPECT_EQ(state.KnobValue(), 0);
    design.KnobApplyLimit = true;
    state.PutUpperLimit(30);
    state.Step(100);
    EXPECT_EQ(state.KnobValue(), 30);
    events.take();
    state.Step(1);
    EXPECT_THAT(events.take(), IsEmpty());
}
