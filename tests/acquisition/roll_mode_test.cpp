#include "acquisition/run_modes_fixture.h"

#include <limits>

namespace {

TEST_F(RunModes, RollWaitsForTheBeginAndReadsIncrements) {
    record.RollMode = true;
    script.sample = [](int ch, int i) { return static_cast<float>(ch * 5000 + i); };
    rig.Run();
    record.ChannelOn[2] = false;
    record.OffsetNull(1, 2) = 1;
    record.SampleData(2, 0) = 77;
    States({0, 0, 0, 1, 1});
    script.samplesSinceTrigger.Then({10});
    const CallList poll{"GetAcquistionState(1)"};
    const CallList since{"GetSamplesSinceTrigger(1)"};
    EXPECT_EQ(Tick(),
              begin + Each({3, 4, 1}, "AcquisitionStart(#)") + poll + poll + poll + look + triggered + since)
        << "ten samples are not worth a plot";
    EXPECT_EQ(state.RollPosition, 0);

    States({1});
    script.samplesSinceTrigger.Then({11});
    record.TracesStale = true;
    EXPECT_EQ(Tick(), begin + triggered + since + Each({1, 3, 4}, "GetBufferIncremental(#, 11, 0)") + plot +
                          Calls("Yield"));
    EXPECT_EQ(state.RollPosition, 11);
    EXPECT_FALSE(record.TracesStale);
    EXPECT_EQ(state.PlotCount, 0) << "only finished records count for the update rate";
    EXPECT_EQ(record.SampleData(1, 0), 4999.0F);
    EXPECT_EQ(record.SampleData(3, 10), 15010.0F);
    EXPECT_EQ(record.SampleData(3, 11), 0);
    EXPECT_EQ(record.SampleData(2, 0), 77) << "a channel that is off keeps its samples";

    States({1});
    script.samplesSinceTrigger.Then({31});
    EXPECT_EQ(Tick(), begin + triggered + since + Each({1, 3, 4}, "GetBufferIncremental(#, 20, 11)") + plot +
                          Calls("Yield"));
    EXPECT_EQ(record.SampleData(4, 30), 20030.0F);

    States({0, 0});
    EXPECT_EQ(Tick(), begin + look + Each({1, 3, 4}, "AcquisitionEnd(#)") + readBlocks + plot);
    EXPECT_EQ(record.SampleData(4, 2999), 22999.0F);
    States({0, 1, 1});
    script.samplesSinceTrigger.Then({0});
    Tick();
    EXPECT_EQ(state.RollPosition, 0) << "the next record begins at its left end";
}

TEST_F(RunModes, RollAsksTheMasterAndArmsTheSourceLast) {
    record.RollMode = true;
    record.MasterChannel = 2;
    record.TriggerChannel = 4;
    rig.Run();
    // Only the master tells; the others say the opposite.
    int polls = 0;
    script.acquistionState.By([&](int ch) { return ch == 2 ? (++polls < 3 ? 0 : 1) : (polls < 3 ? 1 : 0); });
    script.triggeredStatus.By([](int ch) { return ch == 2 ? 1 : 0; });
    script.samplesSinceTrigger.By([](int ch) { return ch == 2 ? 40 : 900; });
    const CallList poll{"GetAcquistionState(2)"};
    EXPECT_EQ(Tick(), Calls("Yield") + poll + Each({1, 2, 3, 4}, "AcquisitionStart(#)") + poll + poll +
                          Calls("Sleep(1)") + poll +
                          Calls("GetTriggeredStatus(2)", "GetSamplesSinceTrigger(2)") +
                          Each({1, 2, 3, 4}, "GetBufferIncremental(#, 40, 0)") + plot + Calls("Yield"));
    EXPECT_EQ(rig.StatusText(), "acquiring");
    EXPECT_EQ(state.RollPosition, 40);
    EXPECT_EQ(Tick(), Calls("Yield") + poll + Calls("GetTriggeredStatus(2)", "GetSamplesSinceTrigger(2)"))
        << "no more than there is";
}

/// A roll in whose next yield behind a plot something happens.
class RollYield : public RunModes {
  protected:
    void RollTo(int position, std::function<void()> happens) {
        rig.timebase.Connect();
        rig.TimeBaseKnob.SetKnobValue(22);
        script.sample = [](int, int i) { return static_cast<float>(i); };
        rig.Run();
        script.acquistionState.Then({0});
        script.acquistionState.Always(1);
        script.triggeredStatus.Always(1);
        script.samplesSinceTrigger.Always(position);
        rig.duringYield = [this, happens = std::move(happens)] {
            if (++yields == 2) { // the first is that of the tick's begin
                rig.duringYield = [] {};
                script.Clear();
                happens();
            }
        };
        rig.loop.RunTimer_Timer();
        EXPECT_FALSE(state.RunTimerBusy);
        EXPECT_EQ(yields, 2);
    }

    int yields = 0;
};

TEST_F(RollYield, AStopInItEndsTheRoll) {
    record.SampleData(2, 500) = 7;
    RollTo(500, [this] { rig.loop.RunButton_Click(); });
    EXPECT_EQ(rig.Take(), ends + Calls("GetSamplePeriod(-1, 0)")) << "nothing but the stop";
    EXPECT_FALSE(record.Running);
    EXPECT_FALSE(rig.RunTimer.isActive());
    EXPECT_FALSE(state.Acquiring);
    EXPECT_EQ(state.RollPosition, 0);
    EXPECT_EQ(record.HeldSampleData(2, 499), 499);
    EXPECT_EQ(record.HeldSampleData(2, 500), 7);

    rig.loop.RunButton_Click();
    script.acquistionState.Then({0});
    script.samplesSinceTrigger.Always(20);
    rig.Take();
    Tick();
    EXPECT_EQ(state.RollPosition, 20) << "a new record";
}

TEST_F(RollYield, ATurnOfTheTimebaseInItLeavesTheRoll) {
    RollTo(500, [this] { rig.TimeBaseKnob.SetKnobValue(8); });
    EXPECT_EQ(script.Count("GetSamplesSinceTrigger"), 0);
    EXPECT_EQ(script.Count("GetBufferIncremental"), 0);
    EXPECT_FALSE(record.RollMode);
    EXPECT_FALSE(state.Acquiring);
    EXPECT_EQ(state.RollPosition, 0);
    EXPECT_TRUE(rig.RunTimer.isActive());
    script.Clear();
    States({0, 0});
    EXPECT_EQ(Tick(), begin + starts + look + ends + readBlocks + plot) << "a record of the new setting";
}

TEST_F(RollYield, ATurnToASlowerRollBeginsAtTheLeftEnd) {
    RollTo(500, [this] { rig.TimeBaseKnob.SetKnobValue(24); });
    EXPECT_TRUE(record.RollMode);
    EXPECT_FALSE(state.Acquiring);
    EXPECT_EQ(state.RollPosition, 0);
    script.Clear();
    States({0, 1, 1});
    script.samplesSinceTrigger.Always(12);
    const CallList calls = Tick();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "GetBufferIncremental(1, 12, 0)"), 1);
    EXPECT_EQ(state.RollPosition, 12);
}

TEST_F(RunModes, RollGivesUpOnAnAcquisitionThatNeverBegins) {
    record.RollMode = true;
    rig.Run();
    const CallList calls = Tick();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "GetAcquistionState(1)"), 1 + 1001 + 1);
}

TEST_F(RunModes, RollStoppedHalfwayKeepsTheRecordAsFarAsItGot) {
    record.RollMode = true;
    script.sample = [](int, int) { return 9.0F; };
    record.SampleData(1, 1000) = 4;
    rig.Run();
    script.acquistionState.Then({0});
    script.acquistionState.Always(1);
    script.samplesSinceTrigger.Always(1000);
    Tick();
    rig.loop.RunButton_Click();
    EXPECT_EQ(record.HeldSampleData(1, 999), 9);
    EXPECT_EQ(record.HeldSampleData(1, 1000), 4) << "old data beyond";
    EXPECT_EQ(state.RollPosition, 0);
}

TEST_F(RunModes, RollSurvivesCountsThatMakeNoSense) {
    record.RollMode = true;
    rig.Run();
    script.acquistionState.Then({0});
    script.acquistionState.Always(1);
    using Limits = std::numeric_limits<std::int32_t>;
    for (std::int32_t count : {Limits::min(), -1, Limits::max(), 3073, 5, 1 << 20, Limits::min()}) {
        script.samplesSinceTrigger.Always(count);
        Tick();
        EXPECT_GE(state.RollPosition, 0);
        EXPECT_LE(state.RollPosition, kSampleRow + 1);
    }
    EXPECT_EQ(state.RollPosition, kSampleRow + 1);
}

} // namespace
