#include "acquisition/acquisition_rig.h"
#include "frame/record/record.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

class TriggerTest : public testing::Test {
  protected:
    TriggerTest() {
        // TriggerLine and its twin hang over a canvas; here they hang over nothing.
        rig.TriggerLine.hide();
        rig.LargeTriggerLine.hide();
    }

    AcquisitionRig rig;
    ScriptedDriver& script = rig.script;
    Record& record = rig.record;
    AcquisitionState& state = rig.state;
};

TEST_F(TriggerTest, ModeStepsThroughAutoNormAndFree) {
    record.TrigType = 3;
    record.ScopeInUse[2] = false;
    const CallList none = Each({1, 3, 4}, "SetNormTrig(#, 0)") + Calls("SetDefaultLayering");
    rig.trigger.TrigModeButton_Click();
    EXPECT_EQ(rig.Take(), Each({1, 3, 4}, "SetNormTrig(#, -1)") + Each({1, 3, 4}, "SetPreTrigDepth(#, 0.5)") +
                              Calls("SetDefaultLayering"));
    EXPECT_EQ(record.TrigMode, 1);
    EXPECT_EQ(record.TriggerMark, 1);
    EXPECT_EQ(rig.TrigModeButton.ButtonCaption(), "norm");
    EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), "3");
    rig.trigger.TrigModeButton_Click();
    EXPECT_EQ(rig.Take(), none);
    EXPECT_EQ(record.TriggerMark, -1);
    EXPECT_EQ(rig.TrigModeButton.ButtonCaption(), "free");
    EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), " ");
    rig.trigger.TrigModeButton_Click();
    EXPECT_EQ(rig.Take(), none);
    EXPECT_EQ(record.TrigMode, 0);
    EXPECT_EQ(rig.TrigModeButton.ButtonCaption(), "auto");
    EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), "3");
}

TEST_F(TriggerTest, ModeChangeRestartsTheQuarterSecondAndAsksForAProbe) {
    rig.AutoTriggerTimer.setInterval(250);
    SetTextColour(rig.TriggerStatusLabel, kStatusRed);
    rig.trigger.TrigModeButton_Click();
    EXPECT_TRUE(rig.AutoTriggerTimer.isActive());
    EXPECT_EQ(rig.AutoTriggerTimer.interval(), 250);
    EXPECT_EQ(state.AutoTicks, 19);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
}

TEST_F(TriggerTest, ModeChangeBeginsTheTimeAnewWhileItRuns) {
    constexpr int kWhole = 600000; // ms
    rig.AutoTriggerTimer.setTimerType(Qt::PreciseTimer);
    rig.AutoTriggerTimer.setInterval(kWhole);
    rig.AutoTriggerTimer.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return rig.AutoTriggerTimer.remainingTime() <= kWhole - 100; }));
    const int before = rig.AutoTriggerTimer.remainingTime();
    bool more = false;
    // What is left grows only by a new beginning; a machine that holds the test up may hide it once.
    for (int attempt = 0; attempt < 50 && !more; ++attempt) {
        rig.trigger.TrigModeButton_Click();
        more = rig.AutoTriggerTimer.remainingTime() > before;
    }
    EXPECT_TRUE(more);
}

TEST_F(TriggerTest, InRISTheModeStepsButTheMarkStaysOff) {
    record.RISMode = true;
    rig.trigger.TrigModeButton_Click();
    EXPECT_EQ(record.TrigMode, 1);
    EXPECT_EQ(record.TriggerMark, -1);
    EXPECT_EQ(script.Count("SetPreTrigDepth"), 0);
    EXPECT_EQ(script.settings[1].normTrig, -1);
}

TEST_F(TriggerTest, TypeStepsThroughFourAndReachesEveryModuleInUse) {
    record.ScopeInUse[1] = false;
    for (int type : {1, 2, 3, 0}) {
        rig.trigger.TrigTypeButton_Click();
        EXPECT_EQ(rig.Take(), Each({2, 3, 4}, "SetTrigType(#, " + std::to_string(type) + ")") +
                                  Calls("SetDefaultLayering"));
        EXPECT_EQ(record.TrigType, type);
        EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), QString::number(type));
    }
}

TEST_F(TriggerTest, TypeDoesNothingInFreeMode) {
    record.TrigMode = 2;
    rig.TrigTypeButton.SetButtonCaption(" ");
    rig.trigger.TrigTypeButton_Click();
    EXPECT_EQ(rig.Take(), Calls());
    EXPECT_EQ(record.TrigType, 0);
    EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), " ");
}

TEST_F(TriggerTest, ThresholdGoesOutAsPercentAndShowsItsLine) {
    rig.TriggerLineTimer.setInterval(2000);
    rig.TriggerKnob.SetKnobValue(-37);
    rig.TriggerLineTimer.start();
    rig.Take();
    rig.trigger.TriggerKnob_Change();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3, 4}, "SetTrigThresh(#, -37)") + Calls("PlotNow"));
    EXPECT_FALSE(rig.TriggerLineTimer.isActive());
    EXPECT_FALSE(rig.TriggerLine.isHidden());
    EXPECT_FALSE(rig.LargeTriggerLine.isHidden());
    EXPECT_EQ(state.AutoTicks, 19);
    rig.trigger.TriggerKnob_Done();
    EXPECT_TRUE(rig.TriggerLineTimer.isActive());
    rig.trigger.TriggerLineTimer_Timer();
    EXPECT_FALSE(rig.TriggerLineTimer.isActive());
    EXPECT_TRUE(rig.TriggerLine.isHidden());
    EXPECT_TRUE(rig.LargeTriggerLine.isHidden());
}

TEST_F(TriggerTest, PretriggerActsOnlyWhileTheMarkIsOn) {
    rig.PretriggerSlider.SetSliderValue(0.25F);
    record.TriggerMark = -1;
    rig.trigger.PretriggerSlider_Change();
    EXPECT_EQ(rig.Take(), Calls());
    EXPECT_EQ(rig.PretriggerSlider.toolTip(), "");
    record.TriggerMark = 1;
    record.ScopeInUse[4] = false;
    rig.trigger.PretriggerSlider_Change();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3}, "SetPreTrigDepth(#, 0.25)"));
    EXPECT_EQ(rig.PretriggerSlider.toolTip(), "Current trigger position: 25.0%");
}

TEST_F(TriggerTest, PretriggerJumpsBackFromItsEnd) {
    record.TriggerMark = 1;
    rig.trigger.Connect();
    rig.PretriggerSlider.SetSliderValue(1.0F);
    EXPECT_EQ(rig.PretriggerSlider.SliderValue(), 0.99F);
    const CallList sent = rig.Take();
    EXPECT_GE(sent.size(), 8U) << "the put raised Change once more";
    for (const std::string& call : sent) {
        EXPECT_TRUE(call.ends_with(", 0.99)")) << call;
    }
    EXPECT_EQ(rig.PretriggerSlider.toolTip(), "Current trigger position: 99.0%");
}

TEST_F(TriggerTest, SourceIsMarkedOnEveryPanel) {
    rig.trigger.Connect();
    emit rig.HorzTrigChanButton[3].Click();
    EXPECT_EQ(record.TriggerChannel, 3);
    EXPECT_EQ(rig.Take(), Each({1, 2, 3, 4}, "SetTrigMaster(#, 0)") + Calls("SetTrigMaster(3, -1)"));
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        const Colour mark = FromQColor(rig.UpdateRateMarkerLabel[ch].palette().color(QPalette::Window));
        EXPECT_EQ(mark, ch == 3 ? record.ChannelColour[3] : 0xC0C0C0U);
        EXPECT_EQ(rig.TabTrigChanButton[ch].ButtonFillColor(),
                  ToQColor(ch == 3 ? record.ChannelColour[3] : 0xFFFFFFU));
        EXPECT_EQ(rig.TriggerChannelLine[ch].isHidden(), ch != 3);
    }
    EXPECT_EQ(record.MasterChannel, 1) << "the master stays";
}

TEST_F(TriggerTest, SourceThatIsNotInUseBecomesTheMaster) {
    record.MasterChannel = 2;
    record.ScopeInUse[4] = false;
    for (int wanted : {4, 0, -1, 5, 6, 70000}) {
        int channel = wanted;
        rig.trigger.TrigChanButton_Click(channel);
        EXPECT_EQ(channel, 2) << wanted;
        EXPECT_EQ(record.TriggerChannel, 2) << wanted;
    }
    int channel = 3;
    rig.trigger.TrigChanButton_Click(channel);
    EXPECT_EQ(channel, 3);
}

TEST_F(TriggerTest, ControlsReachTheirHandlers) {
    rig.trigger.Connect();
    emit rig.TrigModeButton.Click();
    EXPECT_EQ(record.TrigMode, 1);
    emit rig.TrigTypeButton.Click();
    EXPECT_EQ(record.TrigType, 1);
    rig.Take();
    rig.TriggerLineTimer.setInterval(0);
    rig.TriggerKnob.SetKnobValue(12);
    EXPECT_EQ(script.settings[4].threshold, 12);
    EXPECT_FALSE(rig.TriggerLine.isHidden());
    EXPECT_TRUE(QTest::qWaitFor([&] { return rig.TriggerLine.isHidden(); }));
}

} // namespace
