#include "acquisition/acquisition_rig.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

/// One cycle of the run loop in each of its modes, by the driver's calls in order.
class RunModes : public testing::Test {
  protected:
    CallList Tick() {
        rig.loop.RunTimer_Timer();
        return rig.Take();
    }
    void QuarterSeconds(int count) {
        for (int i = 0; i < count; ++i) {
            rig.loop.AutoTriggerTimer_Timer();
        }
        script.Clear();
    }
    /// Answers of the next polls of the state.
    void States(std::initializer_list<std::int32_t> answers) { script.acquistionState.Then(answers); }

    const CallList begin{"Yield", "GetAcquistionState(1)"};
    const CallList starts = Each({2, 3, 4, 1}, "AcquisitionStart(#)");
    const CallList ends = Each({1, 2, 3, 4}, "AcquisitionEnd(#)");
    const CallList look{"Sleep(1)", "GetAcquistionState(1)"};
    const CallList readBlocks{"GetBufferBlocksMultiChan(1, 4, 6)", "DoMaths"};
    const CallList plot{"PlotNow"};
    const CallList triggered{"GetTriggeredStatus(1)"};

    AcquisitionRig rig;
    ScriptedDriver& script = rig.script;
    Record& record = rig.record;
    AcquisitionState& state = rig.state;
};

TEST_F(RunModes, AutoArmsWaitsAcquiresAndReads) {
    rig.Run();
    States({0, 1});
    EXPECT_EQ(Tick(), begin + starts + look + triggered);
    EXPECT_TRUE(state.Acquiring);
    EXPECT_EQ(rig.StatusText(), "trigger ?.");
    EXPECT_EQ(state.PassCount, 1);

    States({1});
    EXPECT_EQ(Tick(), begin + triggered);
    EXPECT_EQ(rig.StatusText(), "trigger ?..");
    EXPECT_EQ(state.PassCount, 1) << "a busy instrument is no pass";

    States({1});
    script.triggeredStatus.Then({1});
    EXPECT_EQ(Tick(), begin + triggered);
    EXPECT_EQ(rig.StatusText(), "acquiring");
    EXPECT_TRUE(state.SawTrigger);

    States({1});
    EXPECT_EQ(Tick(), begin + triggered);
    EXPECT_EQ(rig.StatusText(), "acquiring") << "once seen, the trigger stays seen";

    state.WaitTicks = 3;
    record.TracesStale = true;
    States({0, 0});
    EXPECT_EQ(Tick(), begin + look + ends + readBlocks + plot);
    EXPECT_EQ(rig.StatusText(), "trigger !");
    EXPECT_EQ(rig.StatusColour(), kStatusGrey) << "still free running";
    EXPECT_FALSE(state.Acquiring);
    EXPECT_FALSE(record.TracesStale);
    EXPECT_EQ(state.WaitTicks, 0);
    EXPECT_EQ(state.PlotCount, 1);
    EXPECT_EQ(state.PassCount, 2);
}

TEST_F(RunModes, ReadyAtOnceIsReadInTheSameTick) {
    rig.Run();
    EXPECT_EQ(Tick(), begin + starts + look + ends + readBlocks + plot);
}

TEST_F(RunModes, SourceOfTheTriggerIsArmedLastAndChannelsThatAreOffNotAtAll) {
    record.TriggerChannel = 3;
    record.ChannelOn[2] = false;
    record.ScopeInUse[4] = false;
    rig.Run();
    States({0, 1});
    EXPECT_EQ(Tick(), begin + Each({1, 3}, "AcquisitionStart(#)") + look + triggered);
    States({0, 0});
    EXPECT_EQ(Tick(), begin + look + Each({1, 3}, "AcquisitionEnd(#)") + readBlocks + plot);
}

TEST_F(RunModes, DotsCountToFiveAndBeginAnew) {
    rig.Run();
    script.acquistionState.Then({0});
    script.acquistionState.Always(1);
    QStringList texts;
    for (int i = 0; i < 7; ++i) {
        Tick();
        texts << rig.StatusText();
    }
    EXPECT_EQ(texts, (QStringList{"trigger ?.", "trigger ?..", "trigger ?...", "trigger ?....", "trigger ?",
                                  "trigger ?.", "trigger ?.."}));
}

TEST_F(RunModes, AutoIsReleasedAfterSixQuarterSecondsWithoutATrigger) {
    rig.Run();
    state.FreeRunning = false;
    SetTextColour(rig.TriggerStatusLabel, kStatusRed);
    States({0, 1});
    Tick();
    QuarterSeconds(5);
    States({1});
    EXPECT_EQ(Tick(), begin + triggered) << "not before 1.5 s";
    EXPECT_EQ(rig.StatusColour(), kStatusRed);
    QuarterSeconds(1);
    States({1});
    CallList release;
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        release = release + Each({ch}, "SetNormTrig(#, 0)") + Each({ch}, "AcquisitionEnd(#)");
    }
    EXPECT_EQ(Tick(), begin + triggered + release);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
    EXPECT_TRUE(state.FreeRunning);
    EXPECT_EQ(state.WaitTicks, 6);
    QuarterSeconds(3);
    States({1});
    Tick();
    EXPECT_EQ(state.WaitTicks, 6) << "held";
}

TEST_F(RunModes, ReleaseTouchesOnlyChannelsInUse) {
    rig.Run();
    record.ScopeInUse[2] = false;
    record.ChannelOn[3] = false;
    States({0, 1});
    state.WaitTicks = 6;
    Tick();
    EXPECT_EQ(script.settings[2].normTrig, 0);
    States({1});
    EXPECT_EQ(Tick(), begin + triggered +
                          Calls("SetNormTrig(1, 0)", "AcquisitionEnd(1)", "SetNormTrig(3, 0)",
                                "AcquisitionEnd(3)", "SetNormTrig(4, 0)", "AcquisitionEnd(4)"))
        << "switched off or not";
}

TEST_F(RunModes, TriggeredAutoStaysRedAndIsNotProbed) {
    rig.Run();
    state.FreeRunning = false;
    state.AutoTicks = 30;
    EXPECT_EQ(Tick(), begin + starts + look + ends + readBlocks + plot);
    EXPECT_EQ(rig.StatusColour(), kStatusRed);
    EXPECT_EQ(state.AutoTicks, 20) << "held";
}

TEST_F(RunModes, ProbeThatFindsATriggerTurnsTheDisplayRed) {
    rig.Run();
    script.samplePeriod.Always(20e-6F); // 20 us times 4500 over ten looks: 9 ms
    QuarterSeconds(1);
    script.triggeredStatus.Then({0, 0, 1, 1});
    state.Acquiring = true; // abandoned by the probe
    EXPECT_EQ(Tick(), begin + Calls("PretriggerSlider_Change 1") + Each({1, 2, 3, 4}, "SetNormTrig(#, -1)") +
                          starts +
                          Calls("GetSamplePeriod(-1, 1)", "GetTriggeredStatus(1)", "Sleep(9)",
                                "GetTriggeredStatus(1)", "Sleep(9)", "GetTriggeredStatus(1)",
                                "GetTriggeredStatus(1)", "PretriggerSlider_Change 1") +
                          ends + look)
        << "nothing is read or plotted";
    EXPECT_EQ(rig.StatusText(), "trigger ?");
    EXPECT_EQ(rig.StatusColour(), kStatusRed);
    EXPECT_EQ(record.TriggerMark, 1);
    EXPECT_FALSE(state.FreeRunning);
    EXPECT_FALSE(state.Acquiring);
    EXPECT_EQ(state.AutoTicks, 0);
    EXPECT_EQ(state.WaitTicks, 0);
    EXPECT_EQ(Tick(), begin + starts + look + ends + readBlocks + plot) << "the next tick starts anew";
    EXPECT_EQ(rig.StatusColour(), kStatusRed);
}

TEST_F(RunModes, ProbeThatFindsNoneGoesBackToFreeRunning) {
    rig.Run();
    script.samplePeriod.Always(1e-3F); // held to 100 ms
    state.AutoTicks = 20;
    CallList waits;
    for (int i = 0; i < 10; ++i) {
        waits = waits + Calls("GetTriggeredStatus(1)", "Sleep(100)");
    }
    EXPECT_EQ(Tick(), begin + Calls("PretriggerSlider_Change 1") + Each({1, 2, 3, 4}, "SetNormTrig(#, -1)") +
                          starts + Calls("GetSamplePeriod(-1, 1)") + waits +
                          Calls("GetTriggeredStatus(1)", "PretriggerSlider_Change 1") +
                          Each({1, 2, 3, 4}, "SetNormTrig(#, 0)") + ends + look);
    EXPECT_EQ(record.TriggerMark, -1);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
    EXPECT_TRUE(state.FreeRunning);
    EXPECT_EQ(state.AutoTicks, 0);
}

TEST_F(RunModes, ProbeLooksAtTheSourceAndThePollAtTheMaster) {
    record.MasterChannel = 2;
    record.TriggerChannel = 3;
    rig.Run();
    state.AutoTicks = 20;
    Tick();
    rig.loop.RunTimer_Timer();
    script.triggeredStatus.Always(0);
    state.AutoTicks = 20;
    state.FreeRunning = true;
    rig.loop.RunTimer_Timer();
    EXPECT_GT(script.CallsOf({"GetTriggeredStatus"}).size(), 10U);
    for (const std::string& call : script.CallsOf({"GetTriggeredStatus"})) {
        EXPECT_EQ(call, "GetTriggeredStatus(3)");
    }
    for (const std::string& call : script.CallsOf({"GetAcquistionState"})) {
        EXPECT_EQ(call, "GetAcquistionState(2)");
    }
}

TEST_F(RunModes, ProbeShowsItsQuestionWhileItWaits) {
    rig.Run();
    state.AutoTicks = 20;
    QString during;
    rig.duringSleep = [&](int) {
        if (during.isEmpty()) {
            during = rig.StatusText();
        }
    };
    Tick();
    EXPECT_EQ(during, "auto?");
}

TEST_F(RunModes, NormTellsEveryChannelEachTimeAndWaitsForEver) {
    record.TrigMode = 1;
    record.ScopeInUse[4] = false;
    rig.Run();
    state.AutoTicks = 20;
    const CallList idle = Each({1, 2, 3, 4}, "SetNormTrig(#, -1)");
    States({0, 1});
    EXPECT_EQ(Tick(), begin + idle + Each({2, 3, 1}, "AcquisitionStart(#)") + look + triggered)
        << "in use or not";
    EXPECT_EQ(record.TriggerMark, 1);
    EXPECT_EQ(state.AutoTicks, 0);
    for (int i = 0; i < 20; ++i) {
        QuarterSeconds(1);
        States({1});
        EXPECT_EQ(Tick(), begin + triggered) << "never released";
    }
    States({0, 0});
    EXPECT_EQ(Tick(), begin + idle + look + Each({1, 2, 3}, "AcquisitionEnd(#)") + readBlocks + plot);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
    EXPECT_TRUE(state.FreeRunning);
}

TEST_F(RunModes, FreeIsNeverProbedYetReleasedAfterItsLimit) {
    record.TrigMode = 2;
    rig.Run();
    state.AutoTicks = 20;
    const CallList idle = Each({1, 2, 3, 4}, "SetNormTrig(#, 0)");
    States({0, 0});
    EXPECT_EQ(Tick(), begin + idle + starts + look + ends + readBlocks + plot);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
    EXPECT_EQ(record.TriggerMark, -1);
    EXPECT_EQ(state.AutoTicks, 0);
    States({0, 1});
    Tick();
    QuarterSeconds(6);
    States({1});
    EXPECT_EQ(Tick().size(), (begin + triggered).size() + 8);
    EXPECT_FALSE(state.FreeRunning);
    States({0, 0});
    Tick();
    EXPECT_TRUE(state.FreeRunning) << "set by each idle branch";
}

TEST_F(RunModes, RISMakesFivePassesATickAndWeavesThemIn) {
    record.RISMode = true;
    record.TrigMode = 1;
    record.ScopeInUse[3] = false;
    record.OffsetNull(1, 2) = 0.5F;
    rig.Run();
    int pass = 0;
    script.risPass.By([&](int ch) {
        pass += ch == 1 ? 1 : 0;
        return RISPass{static_cast<float>(pass) + 0.5F, 0, 0};
    });
    script.sample = [&](int ch, int i) {
        return static_cast<float>(100 * ch + 10 * pass) + (i == 149 ? 1 : 0);
    };
    const CallList onePass = Each({2, 4, 1}, "AcquisitionStart(#)") + look +
                             Each({1, 2, 4}, "AcquisitionEnd(#)") + Each({1, 2, 4}, "GetBufferRIS(#, 150)") +
                             Calls("DoMaths");
    EXPECT_EQ(Tick(), begin + Each({1, 2, 3, 4}, "SetNormTrig(#, -1)") + onePass + onePass + onePass +
                          onePass + onePass + plot);
    EXPECT_EQ(record.TriggerMark, -1) << "in RIS no mode makes the position mean something";
    EXPECT_EQ(state.PassesPerTick, 5);
    EXPECT_EQ(state.PlotCount, 1);
    EXPECT_EQ(record.SampleData(1, 0), 0);
    for (int k = 1; k <= 5; ++k) {
        EXPECT_EQ(record.SampleData(1, k), static_cast<float>(100 + 10 * k) - 0.5F);
        EXPECT_EQ(record.SampleData(4, 20 * 149 + k), static_cast<float>(401 + 10 * k));
        EXPECT_EQ(record.SampleData(3, k), record.SampleData(2, k)) << "the buffer's old content";
    }
    EXPECT_EQ(record.SampleData(1, 6), 0);
    EXPECT_EQ(state.RISPosition, 5.5F);
    EXPECT_EQ(state.RISStatus, 0);
}

TEST_F(RunModes, RISPassThatIsNotReadyWaitsForTheNextTick) {
    record.RISMode = true;
    record.TrigMode = 1;
    rig.Run();
    States({0, 0, 1, 1, 1, 1});
    const CallList calls = Tick();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "AcquisitionStart(1)"), 2);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "DoMaths"), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "PlotNow"), 0);
    EXPECT_EQ(calls.back(), "GetTriggeredStatus(1)");
    EXPECT_TRUE(state.Acquiring);
}

TEST_F(RunModes, RISPassOfStatusMinusOneLeavesTheRecord) {
    record.RISMode = true;
    rig.Run();
    script.sample = [](int, int) { return 50.0F; };
    script.risPass.Always({0.5F, 0, -1});
    record.SampleData(1, 0) = 3;
    Tick();
    EXPECT_EQ(record.SampleData(1, 0), 3);
}

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

TEST_F(RunModes, DemoGeneratesAndEndsOnePassEveryTick) {
    record.DemoMode = true;
    script.demoMode = true;
    rig.offsetKnobs[2].SetKnobValue(-30);
    script.demoSample = [](int channel, int phase, int i) { return channel + phase + i * 0.5; };
    script.acquistionState.Always(1); // not asked in earnest
    rig.Run();
    state.PassCount = 3;
    state.AutoTicks = 20;
    const CallList generated{"MakeSampleData(3000, 0, 0, 30)", "MakeSampleData(3000, -30, 1, 30)",
                             "MakeSampleData(3000, 0, 2, 30)", "MakeSampleData(3000, 0, 3, 30)"};
    EXPECT_EQ(Tick(), Calls("Yield") + generated + Calls("GetAcquistionState(1)") +
                          Each({1, 2, 3, 4}, "SetNormTrig(#, 0)") + starts + look + ends + readBlocks + plot);
    EXPECT_EQ(record.SampleData(2, 100), -30 + 1 + 30 + 50.0F) << "the read-out leaves them";
    EXPECT_EQ(record.SampleData(1, 3000), 0);
    EXPECT_EQ(state.PassCount, 4);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
    EXPECT_EQ(rig.StatusText(), "trigger !");
    EXPECT_EQ(Tick()[1], "MakeSampleData(3000, 0, 0, 40)");
    EXPECT_EQ(state.PlotCount, 2);
}

TEST_F(RunModes, DemoPhaseNeverLeavesItsRange) {
    record.DemoMode = true;
    rig.Run();
    state.PassCount = kPassCountEnd - 1;
    Tick();
    EXPECT_EQ(state.PassCount, 0);
}

TEST_F(RunModes, DemoInRISStillAsksForPasses) {
    record.DemoMode = true;
    record.RISMode = true;
    script.demoMode = true;
    script.risPass.Always({0.5F, 0, -1});
    script.demoSample = [](int, int, int) { return 6.0; };
    rig.Run();
    const CallList calls = Tick();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "GetBufferRIS(2, 150)"), 5);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "PlotNow"), 1);
    EXPECT_EQ(record.SampleData(2, 0), 6);
}

TEST_F(RunModes, SingleStopsAfterItsFirstPlot) {
    rig.loop.OnceButton_Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3, 4}, "SetNormTrig(#, 0)") + Calls("SetDefaultLayering"));
    EXPECT_TRUE(state.OnceMode);
    EXPECT_TRUE(record.Running);
    EXPECT_EQ(rig.OnceButton.ButtonFillColor(), ToQColor(0xFF00));
    script.triggeredStatus.Always(0);
    script.acquistionState.Then({0});
    script.acquistionState.Always(1);
    for (int i = 0; i < 50; ++i) {
        Tick();
    }
    EXPECT_TRUE(record.Running) << "the dots run on until a trigger comes";
    script.acquistionState.Always(0);
    EXPECT_EQ(Tick(), begin + look + ends + readBlocks + plot + ends + Calls("GetSamplePeriod(-1, 0)") +
                          Calls("SetDefaultLayering"));
    EXPECT_FALSE(record.Running);
    EXPECT_FALSE(state.OnceMode);
    EXPECT_FALSE(rig.RunTimer.isActive());
    EXPECT_EQ(rig.OnceButton.ButtonFillColor(), ToQColor(0x808080));
    EXPECT_EQ(rig.RunButton.ButtonCaption(), "stopped");
    EXPECT_FALSE(state.RunTimerBusy);
}

TEST_F(RunModes, OnceWhileRunningContinuouslyDoesNothing) {
    rig.Run();
    rig.loop.OnceButton_Click();
    EXPECT_EQ(rig.Take(), Calls("SetDefaultLayering"));
    EXPECT_TRUE(record.Running);
    EXPECT_FALSE(state.OnceMode);
}

TEST_F(RunModes, OnceWhileArmedStops) {
    rig.loop.OnceButton_Click();
    rig.loop.OnceButton_Click();
    EXPECT_FALSE(record.Running);
    EXPECT_FALSE(state.OnceMode);
}

TEST_F(RunModes, StopByRunButtonLeavesOnceModeSoTheNextPressRunsContinuously) {
    rig.loop.OnceButton_Click();
    rig.loop.RunButton_Click();
    EXPECT_FALSE(record.Running);
    EXPECT_TRUE(state.OnceMode);
    EXPECT_EQ(rig.OnceButton.ButtonFillColor(), ToQColor(0xFF00));
    rig.loop.OnceButton_Click();
    EXPECT_TRUE(record.Running);
    EXPECT_FALSE(state.OnceMode);
    Tick();
    EXPECT_TRUE(record.Running) << "no single shot";
}

TEST_F(RunModes, NullAndBandwidthLimitWorkOnEachSample) {
    script.sample = [](int ch, int i) { return static_cast<float>(ch * 100 + i % 2); };
    record.ChannelBWLimit[2] = true;
    rig.scales[1].range = 0;
    record.OffsetNull(1, 0) = 7;
    record.OffsetNull(1, 2) = 99;
    rig.scales[3].range = 3; // no such range: no null
    rig.Run();
    Tick();
    EXPECT_EQ(record.SampleData(1, 1), 94);
    EXPECT_EQ(record.SampleData(2, 0), 200.5F);
    EXPECT_EQ(record.SampleData(2, 2999), 200.5F);
    EXPECT_EQ(record.SampleData(2, 3000), 200);
    EXPECT_EQ(record.SampleData(3, 1), 301);
}

TEST_F(RunModes, ChannelThatIsOffKeepsItsSamples) {
    script.sample = [](int, int) { return 1.0F; };
    record.ChannelOn[4] = false;
    record.SampleData(4, 8) = 42;
    rig.Run();
    Tick();
    EXPECT_EQ(record.SampleData(4, 8), 42);
    EXPECT_EQ(record.SampleData(3, 8), 1);
}

TEST_F(RunModes, AModuleThatNeverEndsNeverHangsTheLoop) {
    rig.Run();
    script.acquistionState.Always(-1);
    script.triggeredStatus.Always(-1);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(Tick(), begin);
    }
    EXPECT_FALSE(state.Acquiring);
}

} // namespace
