#include "acquisition/acquisition_rig.h"
#include "frame/record/record.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

/// The run loop in the ways it starts, stops and guards itself; the modes have tests of their own.
class RunLoopTest : public testing::Test {
  protected:
    AcquisitionRig rig;
    ScriptedDriver& script = rig.script;
    Record& record = rig.record;
    AcquisitionState& state = rig.state;
};

TEST_F(RunLoopTest, LoadSetsTheValuesOfTheMainFormsLoad) {
    state.PassCount = 5;
    state.WaitTicks = state.AutoTicks = 4;
    state.FreeRunning = false;
    record.TracesStale = true;
    record.DisplayExpansion = record.HeldZoom = record.HeldSamplePeriod = 9;
    record.TriggerMark = 1;
    rig.loop.Load();
    EXPECT_EQ(state.PassCount, 0);
    EXPECT_EQ(state.WaitTicks, 0);
    EXPECT_EQ(state.AutoTicks, 0);
    EXPECT_TRUE(state.FreeRunning);
    EXPECT_FALSE(record.TracesStale);
    EXPECT_EQ(record.DisplayExpansion, 1);
    EXPECT_EQ(record.HeldZoom, 1);
    EXPECT_EQ(record.HeldSamplePeriod, 1);
    EXPECT_EQ(record.TriggerMark, -1);
}

TEST_F(RunLoopTest, StartArmsFreeRunningAndAsksForAProbe) {
    record.HeldZoom = 3;
    state.FreeRunning = false;
    rig.loop.RunButton_Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3, 4}, "SetNormTrig(#, 0)"));
    EXPECT_TRUE(record.Running);
    EXPECT_EQ(record.TriggerMark, -1);
    EXPECT_EQ(rig.StatusColour(), kStatusGrey);
    EXPECT_TRUE(state.FreeRunning);
    EXPECT_EQ(rig.RunButton.ButtonFillColor(), ToQColor(0xFF00));
    EXPECT_EQ(rig.RunButton.ButtonCaption(), "running");
    EXPECT_EQ(record.HeldZoom, 1);
    EXPECT_TRUE(rig.RunTimer.isActive());
    EXPECT_EQ(state.AutoTicks, 19);
}

TEST_F(RunLoopTest, StartInNormMarksTheTrigger) {
    record.TrigMode = 1;
    record.ScopeInUse[3] = false;
    rig.loop.RunButton_Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 4}, "SetNormTrig(#, -1)"));
    EXPECT_EQ(record.TriggerMark, 1);
}

TEST_F(RunLoopTest, StopHoldsTheDataAndTheirScales) {
    rig.Run();
    record.ScopeInUse[4] = false;
    record.SampleData(1, 0) = 5;
    record.SampleData(6, kSampleRow) = 7;
    record.HeldVoltsPerDiv[4] = 11;
    record.HeldVoltsPerDiv[5] = 12;
    rig.scales[2].voltsPerDiv = 0.3F;
    rig.scales[2].offset = -40;
    script.samplePeriod.Always(2e-7F);
    state.Acquiring = true;
    state.RollPosition = 500;
    rig.loop.RunButton_Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3}, "AcquisitionEnd(#)") + Calls("GetSamplePeriod(-1, 0)"));
    EXPECT_FALSE(record.Running);
    EXPECT_EQ(rig.RunButton.ButtonFillColor(), ToQColor(0x808080));
    EXPECT_EQ(rig.RunButton.ButtonCaption(), "stopped");
    EXPECT_FALSE(rig.RunTimer.isActive());
    EXPECT_FALSE(state.Acquiring);
    EXPECT_EQ(state.RollPosition, 0);
    EXPECT_EQ(record.HeldSampleData(1, 0), 5);
    EXPECT_EQ(record.HeldSampleData(6, kSampleRow), 7);
    EXPECT_EQ(static_cast<float>(record.HeldSamplePeriod), 2e-7F);
    EXPECT_EQ(record.HeldVoltsPerDiv[2], 0.3F);
    EXPECT_EQ(record.HeldOffset[2], -40);
    EXPECT_EQ(record.HeldVoltsPerDiv[4], 11) << "a channel without a module keeps what it held";
    EXPECT_EQ(record.HeldVoltsPerDiv[5], 0) << "no math panel: no volts";
}

TEST_F(RunLoopTest, StopWithStaleTracesFlattensThemAtTheirOffsets) {
    rig.Run();
    record.ScopeInUse[3] = false;
    rig.offsetKnobs[3].SetKnobValue(33);
    rig.offsetKnobs[1].SetKnobValue(-127);
    record.SampleData(3, 10) = 5;
    record.SampleData(3, 3000) = record.SampleData(3, 3001) = 6;
    record.SampleData(5, 10) = 7;
    record.TracesStale = true;
    rig.loop.RunButton_Click();
    EXPECT_EQ(record.SampleData(1, 0), -127);
    EXPECT_EQ(record.SampleData(3, 0), 33);
    EXPECT_EQ(record.SampleData(3, 10), 33) << "in use or not";
    EXPECT_EQ(record.SampleData(3, 2999), 33);
    EXPECT_EQ(record.SampleData(3, 3000), 33) << "for a cursor at the end";
    EXPECT_EQ(record.SampleData(3, 3001), 6);
    EXPECT_EQ(record.SampleData(5, 10), 7);
    EXPECT_EQ(record.HeldSampleData(3, 10), 5) << "held before the traces were flattened";
    EXPECT_EQ(script.Count("PlotNow"), 1);
    EXPECT_TRUE(record.TracesStale);
}

TEST_F(RunLoopTest, TickWhileATickWaitsReturnsAtOnce) {
    rig.Run();
    const auto ticks = state.TickCount;
    rig.duringYield = [&] {
        rig.duringYield = [] {};
        rig.loop.RunTimer_Timer();
        EXPECT_EQ(rig.Take(), Calls("Yield"));
    };
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(state.TickCount, ticks + 1);
    EXPECT_FALSE(state.RunTimerBusy);
    EXPECT_GT(script.Count("AcquisitionStart"), 0);
}

TEST_F(RunLoopTest, StopServedInTheYieldEndsTheTick) {
    rig.Run();
    rig.duringYield = [&] {
        EXPECT_TRUE(state.RunTimerBusy);
        rig.loop.RunButton_Click();
        script.Clear();
    };
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(rig.Take(), Calls());
    EXPECT_EQ(state.PassCount, 0);
    EXPECT_FALSE(state.RunTimerBusy);
    EXPECT_FALSE(state.Acquiring);
}

TEST_F(RunLoopTest, StopServedInTheYieldEndsADemoTickToo) {
    record.DemoMode = true;
    rig.Run();
    rig.duringYield = [&] {
        rig.loop.RunButton_Click();
        script.Clear();
    };
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(rig.Take(), Calls());
}

TEST_F(RunLoopTest, StopAndStartServedInOneYieldEndTheTickToo) {
    rig.Run();
    rig.duringYield = [&] {
        rig.duringYield = [] {};
        rig.loop.RunButton_Click();
        rig.loop.RunButton_Click();
        script.Clear();
    };
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(rig.Take(), Calls());
    EXPECT_TRUE(rig.RunTimer.isActive());
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(script.Count("AcquisitionStart"), 4) << "the next tick goes on";
}

TEST_F(RunLoopTest, CloseServedInTheYieldEndsTheTick) {
    rig.Run();
    rig.duringYield = [&] { rig.RunTimer.stop(); };
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(rig.Take(), Calls("Yield"));
    EXPECT_FALSE(state.RunTimerBusy);
}

TEST_F(RunLoopTest, QuarterSecondTickShowsTheRateAndCounts) {
    state.PlotCount = 7;
    state.WaitTicks = 2;
    state.AutoTicks = 3;
    rig.loop.AutoTriggerTimer_Timer();
    EXPECT_EQ(rig.UpdateRateLabel.text(), "28");
    EXPECT_EQ(rig.Take(), Calls("UpdateStats"));
    EXPECT_EQ(state.PlotCount, 0);
    EXPECT_EQ(state.WaitTicks, 3);
    EXPECT_EQ(state.AutoTicks, 4);
    rig.loop.AutoTriggerTimer_Timer();
    EXPECT_EQ(rig.UpdateRateLabel.text(), "0");
}

TEST_F(RunLoopTest, FiguresLetThePlotOfADraggedCursorGoFirst) {
    rig.loop.Connect();
    rig.CursTimer.start(0);
    rig.loop.AutoTriggerTimer_Timer();
    EXPECT_EQ(rig.Take(), Calls()) << "the plot is still owed";
    QObject::connect(&rig.CursTimer, &QTimer::timeout, [&] {
        rig.CursTimer.stop();
        EXPECT_EQ(rig.Take(), Calls()) << "not in the tick that plots: the picture is not painted yet";
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return script.Count("UpdateStats") > 0; }));
    EXPECT_EQ(rig.Take(), Calls("UpdateStats"));
    rig.CursTimer.start(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !rig.CursTimer.isActive(); }));
    EXPECT_EQ(rig.Take(), Calls()) << "none was due";
}

TEST_F(RunLoopTest, FiguresWaitNoLongerThanToTheNextTick) {
    rig.loop.Connect();
    rig.CursTimer.start(1'000'000); // moved without a rest: no plot comes
    for (int pair = 0; pair < 2; ++pair) {
        rig.loop.AutoTriggerTimer_Timer();
        EXPECT_EQ(rig.Take(), Calls());
        rig.loop.AutoTriggerTimer_Timer();
        EXPECT_EQ(rig.Take(), Calls("UpdateStats"));
    }
}

TEST_F(RunLoopTest, QuarterSecondTickHoldsTheCountersInNormRISAndDemo) {
    for (int mode = 0; mode < 4; ++mode) {
        record.TrigMode = mode == 0 ? 1 : 0;
        record.RISMode = mode == 1;
        record.DemoMode = mode == 2;
        state.WaitTicks = state.AutoTicks = 3;
        rig.loop.AutoTriggerTimer_Timer();
        EXPECT_EQ(state.WaitTicks, mode < 3 ? 0 : 4) << mode;
        EXPECT_EQ(state.AutoTicks, mode < 3 ? 0 : 4) << mode;
    }
    record.TrigMode = 2;
    rig.loop.AutoTriggerTimer_Timer();
    EXPECT_EQ(state.WaitTicks, 5) << "free mode has its limit of 1.5 s";
}

TEST_F(RunLoopTest, ControlsReachTheirHandlers) {
    rig.loop.Connect();
    emit rig.RunButton.Click();
    EXPECT_TRUE(record.Running);
    emit rig.RunButton.Init();
    EXPECT_FALSE(record.Running);
    emit rig.OnceButton.Click();
    EXPECT_TRUE(state.OnceMode);
    emit rig.OnceButton.Init();
    EXPECT_FALSE(state.OnceMode);
    rig.AutoTriggerTimer.start(0);
    rig.RunTimer.start(0);
    const auto ticks = state.TickCount;
    EXPECT_TRUE(QTest::qWaitFor([&] { return state.TickCount > ticks && script.Count("UpdateStats") > 0; }));
}

TEST_F(RunLoopTest, MasterNotInUseIsPolledAndOnlyTheSourceStarts) {
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        record.ScopeInUse[ch] = false;
    }
    record.TriggerChannel = 2;
    rig.Run();
    script.acquistionState.Always(0);
    rig.loop.RunTimer_Timer();
    EXPECT_EQ(rig.Take(),
              (Calls("Yield", "GetAcquistionState(1)", "AcquisitionStart(2)", "Sleep(1)",
                     "GetAcquistionState(1)", "GetBufferBlocksMultiChan(1, 4, 6)", "DoMaths", "PlotNow")));
}

} // namespace
