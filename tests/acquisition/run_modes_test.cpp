#include "acquisition/run_modes_fixture.h"

namespace {

TEST_F(RunModes, RISMakesFivePassesATickAndWeavesThemIn) {
    record.RISMode = true;
    record.TrigMode = 1;
    record.ScopeInUse[3] = false;
    record.OffsetNull(1, 2) = 0.5F;
    record.SampleData(1, 3000) = 77; // of the mode before
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
    EXPECT_EQ(record.SampleData(1, 3000), record.SampleData(1, 2999)) << "for a cursor at the end";
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
    EXPECT_EQ(record.SampleData(1, 3000), record.SampleData(1, 2999)) << "for a cursor at the end";
    EXPECT_NE(record.SampleData(1, 3000), 0);
    EXPECT_EQ(record.SampleData(1, 3001), 0);
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

TEST_F(RunModes, SingleDoesNotStopWhatNoTimerDrives) {
    rig.loop.OnceButton_Click();
    rig.RunTimer.stop();
    const CallList calls = Tick();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "PlotNow"), 1);
    EXPECT_TRUE(record.Running);
    EXPECT_TRUE(state.OnceMode);
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
