#include "controls/knob_state_fixture.h"

namespace {

using testing::ElementsAre;

} // namespace

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
