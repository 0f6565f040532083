#pragma once

#include "acquisition/acquisition_rig.h"
#include "frame/record/record.h"

#include <gtest/gtest.h>

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
