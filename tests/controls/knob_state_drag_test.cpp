#include "controls/knob_state_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

} // namespace

TEST_F(KnobStateTest, APressJumpsAndRaisesChangeAndDone) {
    press(135);
    EXPECT_EQ(state.KnobValue(), 50);
    EXPECT_FALSE(state.Dragging());
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobStateTest, AClickWithoutMotionRaisesDoneTwice) {
    press(135);
    state.MouseRelease();
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done", "Done"));
}

TEST_F(KnobStateTest, AClickThatKeepsTheIntegerRaisesNoChange) {
    state.PutKnobValue(50);
    press(135.4); // 50.15
    state.MouseRelease();
    EXPECT_THAT(events.events(), ElementsAre("Done", "Done"));
}

TEST_F(KnobStateTest, AClickBeyondALimitThatIsReachedRaisesNoChange) {
    design.KnobApplyLimit = true;
    state.PutUpperLimit(50);
    state.PutKnobValue(50);
    press(200);
    EXPECT_EQ(state.KnobValue(), 50);
    EXPECT_THAT(events.events(), ElementsAre("Done"));
}

TEST_F(KnobStateTest, TheFirstMotionBeginsTheDragAndTheNextAreSilent) {
    press(135);
    events.take();
    move(140);
    EXPECT_TRUE(state.Dragging());
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done")); // the drag had not begun
    move(145);
    move(150);
    EXPECT_THAT(events.take(), ElementsAre("pointer", "pointer"));
    EXPECT_EQ(state.KnobValue(), 56); // 55.56
}

TEST_F(KnobStateTest, ReleaseAfterADragRaisesChangeThenDone) {
    drag(135);
    move(200);
    events.take();
    state.MouseRelease();
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done"));
    EXPECT_FALSE(state.Dragging());
    EXPECT_EQ(state.LastAngle(), 0);
    EXPECT_FALSE(state.Stuck().any());
}

TEST_F(KnobStateTest, ReleaseLetsGoOfAStop) {
    drag(200);
    move(290);
    EXPECT_TRUE(state.Stuck().StuckHigh);
    state.MouseRelease();
    EXPECT_FALSE(state.Stuck().any());
    drag(60);
    EXPECT_EQ(state.KnobValue(), 22);
}

TEST_F(KnobStateTest, RoundsToTheNearestIntegerWithTiesToEven) {
    design.KnobStartAngle = -90;
    design.KnobStopAngle = 90;
    design.KnobMax = 2;
    state.UpdateScrollerLimits();
    state.PutKnobValue(2);
    state.MousePress(kLeft, {100 - 12.5, 100 + 12.5}); // exactly 0.5
    EXPECT_EQ(state.KnobValue(), 0);
    state.MousePress(kLeft, {100 - 12.5, 100 - 12.5}); // exactly 1.5
    EXPECT_EQ(state.KnobValue(), 2);
    press(134);
    EXPECT_EQ(state.KnobValue(), 1);
}

TEST_F(KnobStateTest, APressInTheDeadArcIsRefused) {
    state.PutKnobValue(40);
    press(300);
    EXPECT_THAT(events.take(), IsEmpty());
    EXPECT_EQ(state.KnobValue(), 40);
    EXPECT_FALSE(events.timeout);
    // The same drag becomes live in the active arc.
    move(310);
    EXPECT_THAT(events.take(), IsEmpty());
    move(100);
    EXPECT_EQ(state.KnobValue(), 37);
    EXPECT_TRUE(state.Dragging());
}

TEST_F(KnobStateTest, APressOnTheExactStartAngleIsRefused) {
    state.PutKnobValue(40);
    state.MousePress(kLeft, {100 - 12.5, 100 + 12.5});
    EXPECT_THAT(events.take(), IsEmpty());
    EXPECT_EQ(state.KnobValue(), 40);
}

TEST_F(KnobStateTest, OtherButtonsTurnNothing) {
    state.MousePress(kRight, at(135));
    state.MouseMove(kRight, 0, at(150));
    EXPECT_EQ(state.KnobValue(), 0);
    EXPECT_THAT(events.take(), IsEmpty());
    state.MouseRelease();
    EXPECT_THAT(events.take(), ElementsAre("Done"));
}

TEST_F(KnobStateTest, TheSamePlaceIsNoMotion) {
    press(135);
    events.take();
    move(135);
    EXPECT_FALSE(state.Dragging());
    EXPECT_THAT(events.take(), IsEmpty());
    state.MouseRelease();
    events.take();
    press(135); // where the mouse was last
    EXPECT_THAT(events.take(), IsEmpty());
}

TEST_F(KnobStateTest, APressDuringADragIsNoJump) {
    drag(135);
    state.MousePress(kLeft, at(20));
    EXPECT_EQ(state.KnobValue(), 50);
}

TEST_F(KnobStateTest, TheEndHoldsUntilTheMouseComesBack) {
    drag(200);
    move(265);
    move(290);
    EXPECT_EQ(state.KnobValue(), 100);
    EXPECT_TRUE(state.Stuck().StuckHigh);
    move(340);
    move(355);
    move(20); // through the dead arc to the other side
    move(60);
    EXPECT_EQ(state.KnobValue(), 100);
    move(200); // above a half, but on the way up
    EXPECT_EQ(state.KnobValue(), 100);
    move(190);
    EXPECT_EQ(state.KnobValue(), 70);
    EXPECT_FALSE(state.Stuck().any());
}

TEST_F(KnobStateTest, TheStartHoldsUntilTheMouseComesBack) {
    drag(60);
    move(5);
    move(-15);
    EXPECT_EQ(state.KnobValue(), 0);
    EXPECT_TRUE(state.Stuck().StuckLow);
    move(-60);
    move(-100);
    move(-160);
    EXPECT_EQ(state.KnobValue(), 0);
    move(100); // the wrong way
    EXPECT_EQ(state.KnobValue(), 0);
    move(110);
    EXPECT_EQ(state.KnobValue(), 41);
}

TEST_F(KnobStateTest, EveryInstanceTurnsFromEndToEnd) {
    for (const KnobInstance& k : KnobInstances()) {
        design = ReadKnobDesign(k.bag());
        design.KnobTimeout = 0;
        state.UpdateScrollerLimits();
        state.PutKnobValue(k.min);
        press(1);
        for (int turned = 2; turned < 360; ++turned) {
            move(turned);
            const double p = std::min(1.0, turned / static_cast<double>(k.sweep));
            const double expected = k.anticlock ? k.max - p * (k.max - k.min) : k.min + p * (k.max - k.min);
            EXPECT_NEAR(state.KnobValue(), expected, 0.51) << k << " at " << turned;
        }
        state.MouseRelease();
        press(k.sweep - 1);
        for (int turned = k.sweep - 2; turned > -(360 - k.sweep); --turned) {
            move(turned);
            const double p = std::max(0.0, turned / static_cast<double>(k.sweep));
            const double expected = k.anticlock ? k.max - p * (k.max - k.min) : k.min + p * (k.max - k.min);
            EXPECT_NEAR(state.KnobValue(), expected, 0.51) << k << " back at " << turned;
        }
        state.MouseRelease();
    }
}

TEST_F(KnobStateTest, StartEqualToStopTurnsAllTheWayRound) {
    design.KnobStopAngle = design.KnobStartAngle;
    press(180);
    EXPECT_EQ(state.KnobValue(), 50);
    design.KnobStartAngle = 360; // a sweep of 0: every place is refused
    design.KnobStopAngle = 0;
    events.take();
    state.MouseRelease();
    events.take();
    press(90);
    move(100);
    EXPECT_THAT(events.take(), IsEmpty());
    EXPECT_EQ(state.KnobValue(), 50);
}

TEST_F(KnobStateTest, ASweepThatVanishesDuringADragHoldsAnEnd) {
    drag(135);
    design.KnobStartAngle = 360;
    design.KnobStopAngle = 0;
    move(150);
    EXPECT_TRUE(state.KnobValue() == 0 || state.KnobValue() == 100);
}

TEST_F(KnobStateTest, MotionsEnableTimeoutOnlyWithAnInterval) {
    press(135);
    EXPECT_FALSE(events.timeout);
    state.MouseRelease();
    design.KnobTimeout = 20;
    press(100);
    EXPECT_TRUE(events.timeout);
}

TEST_F(KnobStateTest, TimeoutRaisesChangeDuringADrag) {
    design.KnobTimeout = 20;
    drag(135);
    move(150);
    events.take();
    state.Timeout();
    EXPECT_FALSE(events.timeout);
    EXPECT_THAT(events.take(), ElementsAre("pointer", "Xlate", "text", "Change"));
    EXPECT_TRUE(state.Dragging());
}

TEST_F(KnobStateTest, ReleaseDisablesTimeout) {
    design.KnobTimeout = 20;
    drag(135);
    EXPECT_TRUE(events.timeout);
    state.MouseRelease();
    EXPECT_FALSE(events.timeout);
}
