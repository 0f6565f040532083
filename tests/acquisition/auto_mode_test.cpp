#include "acquisition/run_modes_fixture.h"

namespace {

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

} // namespace
