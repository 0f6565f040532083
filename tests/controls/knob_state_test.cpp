#include "controls/knob_state.h"

#include "controls/knob_instances.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLeft = KnobState::kLeftButton;
constexpr int kRight = 0;

/// Writes down what the state asks for, in order. A hook may act as the owner's handler; one that returns
/// false has deleted the control.
class Recorder : public KnobEvents {
  public:
    using Log = std::vector<std::string>;
    using Hook = std::function<bool()>;

    void PlacePointer() override { log.emplace_back("pointer"); }
    void ShowText() override { log.emplace_back("text"); }
    bool RaiseChange() override { return raise("Change", onChange); }
    bool RaiseDone() override { return raise("Done", onDone); }
    bool RaiseXlateValue(float Value, QString& Display) override {
        xlated = Value;
        log.emplace_back("Xlate");
        return onXlate ? onXlate(Display) : true;
    }
    void EnableTimeout() override { timeout = true; }
    void DisableTimeout() override { timeout = false; }

    Log take() { return std::exchange(log, {}); }
    /// The events alone.
    Log events() {
        std::erase_if(log,
                      [](const std::string& e) { return e == "pointer" || e == "text" || e == "Xlate"; });
        return take();
    }

    Log log;
    Hook onChange;
    Hook onDone;
    std::function<bool(QString&)> onXlate;
    float xlated = 0;
    bool timeout = false;

  private:
    bool raise(const char* event, const Hook& hook) {
        log.emplace_back(event);
        return hook ? hook() : true;
    }
};

class KnobStateTest : public testing::Test {
  protected:
    KnobStateTest() {
        design.KnobStartAngle = -45;
        design.KnobStopAngle = 225;
        state.SetCentre({100, 100});
        state.UpdateScrollerLimits();
    }

    /// The mouse's place that many degrees behind the start angle, at a radius.
    QPointF at(double turned, double radius = 20) const {
        return knob::PointAt({100, 100}, radius, design.KnobStartAngle + turned);
    }
    bool press(double turned) { return state.MousePress(kLeft, at(turned)); }
    bool move(double turned) { return state.MouseMove(kLeft, 0, at(turned)); }
    /// A drag under way from that place, nothing written down.
    void drag(double turned) {
        press(turned);
        move(turned + 0.1);
        move(turned);
        events.take();
    }

    KnobDesign design;
    Recorder events;
    KnobState state{design, events};
};

} // namespace

// Change path

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

// Mouse

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

// Stops

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

// Timeout

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

// Value refresh

TEST_F(KnobStateTest, TheOwnerMayReplaceTheText) {
    state.PutKnobValue(5);
    state.RunChangePath();
    EXPECT_EQ(state.KnobXlatedValue(), "5");
    events.onXlate = [](QString& text) {
        text = "1us/div";
        return true;
    };
    events.take();
    state.RefreshValue();
    EXPECT_EQ(state.KnobXlatedValue(), "1us/div");
    EXPECT_EQ(events.xlated, 5);
    EXPECT_THAT(events.take(), ElementsAre("Xlate", "text"));
}

// Re-entry

TEST_F(KnobStateTest, ARefreshWithinTheTranslationOnlyShows) {
    events.onXlate = [&](QString&) { return state.RefreshValue(); };
    state.RefreshValue();
    EXPECT_THAT(events.take(), ElementsAre("Xlate", "text", "text"));
}

TEST_F(KnobStateTest, AChangeWithinChangeIsNotRaised) {
    events.onChange = [&] {
        state.PutKnobValue(70);
        return state.RunChangePath();
    };
    state.MoveScroller(30);
    EXPECT_EQ(state.KnobValue(), 70);
    EXPECT_EQ(state.Value(), 70);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done", "Done"));
    events.onChange = nullptr;
    state.MoveScroller(10);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done")); // the guard is down again
}

TEST_F(KnobStateTest, ADoneWithinDoneIsNotRaised) {
    events.onDone = [&] {
        state.PutKnobValue(state.KnobValue() + 1);
        return state.RunChangePath();
    };
    state.MoveScroller(30);
    EXPECT_EQ(state.KnobValue(), 31);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done", "Change"));
    events.onDone = nullptr;
    state.MoveScroller(10);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobStateTest, AReleaseWithinTheFirstChangeLeavesNoDragBehind) {
    press(100);
    events.onChange = [&] {
        events.onChange = nullptr;
        return state.MouseRelease();
    };
    design.KnobTimeout = 20;
    move(135);
    EXPECT_FALSE(state.Dragging());
    EXPECT_FALSE(events.timeout);
}

TEST_F(KnobStateTest, APutInsideTheDoneOfAClickThatKeptTheIntegerRaisesChange) {
    state.PutKnobValue(50);
    events.onDone = [&] {
        events.onDone = nullptr;
        state.PutKnobValue(70);
        return state.RunChangePath();
    };
    press(135.4); // 50.15
    EXPECT_EQ(state.KnobValue(), 70);
    EXPECT_EQ(events.xlated, 70);
    EXPECT_THAT(events.events(), ElementsAre("Done", "Change"));
}

TEST_F(KnobStateTest, AReleaseWithinDoneHasADoneOfItsOwn) {
    events.onDone = [&] {
        events.onDone = nullptr;
        return state.MouseRelease();
    };
    press(135);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done", "Done"));
    EXPECT_FALSE(state.Dragging());
    state.MoveScroller(10);
    EXPECT_THAT(events.events(), ElementsAre("Change", "Done")); // nothing is left over
}

// Deletion: after a false the state is gone and must not be touched

namespace {

class Deletion : public testing::Test {
  protected:
    Deletion() : state(std::make_unique<KnobState>(design, events)) {
        design.KnobTimeout = 20;
        state->SetCentre({100, 100});
    }
    bool gone() {
        state.reset();
        return false;
    }
    KnobDesign design;
    Recorder events;
    std::unique_ptr<KnobState> state;
};

} // namespace

TEST_F(Deletion, InChange) {
    events.onChange = [&] { return gone(); };
    EXPECT_FALSE(state->MousePress(kLeft, {100, 80}));
    EXPECT_THAT(events.events(), ElementsAre("Change"));
}

TEST_F(Deletion, InDone) {
    events.onDone = [&] { return gone(); };
    EXPECT_FALSE(state->MoveScroller(5));
}

TEST_F(Deletion, InTheTranslation) {
    events.onXlate = [&](QString& text) {
        const bool alive = gone();
        text = "late"; // the text outlives the knob
        return alive;
    };
    EXPECT_FALSE(state->RunChangePath());
}

TEST_F(Deletion, InTheChangeOfTheRelease) {
    state->MousePress(kLeft, {100, 80});
    state->MouseMove(kLeft, 0, {101, 80});
    events.onChange = [&] { return gone(); };
    EXPECT_FALSE(state->MouseRelease());
}

TEST_F(Deletion, InTheDoneOfTheRelease) {
    state->MousePress(kLeft, {100, 80});
    events.onDone = [&] { return gone(); };
    EXPECT_FALSE(state->MouseRelease());
}
