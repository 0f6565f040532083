#include "acquisition/acquisition_rig.h"
#include "acquisition/mode_text.h"
#include "acquisition/trigger_status.h"
#include "controls/accessibility.h"
#include "frame/record/record.h"

#include <gtest/gtest.h>

namespace {

class TimebaseTest : public testing::Test {
  protected:
    QString Turn(float index) {
        QString text = QStringLiteral("as it was");
        rig.timebase.TimeBaseKnob_KnobXlateValue(index, text);
        return text;
    }
    /// The calls of a handler, without the questions for the period and the cursor moves.
    CallList Deeds() {
        CallList calls;
        for (const std::string& call : rig.Take()) {
            if (!call.starts_with("GetSamplePeriod") && !call.starts_with("MoveVertCursorHandle")) {
                calls.push_back(call);
            }
        }
        return calls;
    }

    AcquisitionRig rig;
    ScriptedDriver& script = rig.script;
    Record& record = rig.record;
    AcquisitionState& state = rig.state;
    const CallList ends = Each({1, 2, 3, 4}, "AcquisitionEnd(#)");
    const CallList undelayed = Each({1, 2, 3, 4}, "SetTriggerDelay(#, 0)");
    const CallList finish = Calls("PlotNow", "RedrawSettings");
};

TEST_F(TimebaseTest, TheFirstChangeSendsClockAndRatio) {
    EXPECT_EQ(Turn(7), "1us/div");
    const CallList period = Calls("GetSamplePeriod(0, 1)");
    const CallList move =
        Calls("MoveVertCursorHandle(0, 0)", "GetSamplePeriod(0, 1)", "MoveVertCursorHandle(1, 0)",
              "GetSamplePeriod(0, 1)", "MoveVertCursorHandle(2, 0)");
    EXPECT_EQ(rig.Take(), ends + Each({1, 2, 3, 4}, "SetBaseAdcClk(#, 50)") + period + undelayed +
                              Each({1, 2, 3, 4}, "SetDecimationRatio(#, 1)") +
                              Each({1, 2, 3, 4}, "SetRISMode(#, 0)") + Calls("GetSamplePeriod(-1, 0)") +
                              period + move + period + undelayed +
                              Calls("GetSamplePeriod(0, 1)", "GetSamplePeriod(-1, 0)") + finish);
    EXPECT_EQ(record.DisplayExpansion, 2);
    EXPECT_EQ(rig.AcqModeLabel.text(), "Acquistion mode: Single-shot (sample interval: 20ns, refresh mode)");
}

TEST_F(TimebaseTest, SendsOnlyWhatDiffers) {
    Turn(10);
    rig.Take();
    Turn(11);
    EXPECT_EQ(Deeds(), ends + Each({1, 2, 3, 4}, "SetDecimationRatio(#, 2)") +
                           Each({1, 2, 3, 4}, "SetRISMode(#, 0)") + undelayed + finish);
    Turn(9);
    EXPECT_EQ(Deeds(), ends + Each({1, 2, 3, 4}, "SetBaseAdcClk(#, 25)") + undelayed +
                           Each({1, 2, 3, 4}, "SetDecimationRatio(#, 1)") +
                           Each({1, 2, 3, 4}, "SetRISMode(#, 0)") + undelayed + finish);
    Turn(9);
    EXPECT_EQ(Deeds(), ends + Each({1, 2, 3, 4}, "SetRISMode(#, 0)") + undelayed + finish);
}

TEST_F(TimebaseTest, SendsToChannelsInUseOnly) {
    record.ScopeInUse[1] = false;
    record.ScopeInUse[3] = false;
    Turn(22);
    EXPECT_EQ(Deeds(), Each({2, 4}, "AcquisitionEnd(#)") + Each({2, 4}, "SetBaseAdcClk(#, 10)") +
                           Each({2, 4}, "SetTriggerDelay(#, 0)") +
                           Each({2, 4}, "SetDecimationRatio(#, 10000)") + Each({2, 4}, "SetRISMode(#, 0)") +
                           Each({2, 4}, "SetTriggerDelay(#, 0)") + finish);
}

TEST_F(TimebaseTest, EverySettingReachesTheInstrumentAndTheRecord) {
    for (int i = 0; i < kTimebaseSettings; ++i) {
        const TimebaseSetting& setting = *FindTimebaseSetting(i);
        EXPECT_EQ(Turn(static_cast<float>(i)), setting.label);
        EXPECT_EQ(script.settings[2].clock, setting.clock) << setting.label;
        EXPECT_EQ(script.settings[2].decimation, setting.decimation) << setting.label;
        EXPECT_EQ(script.settings[2].ris, setting.mode == SamplingMode::RIS ? 1 : 0) << setting.label;
        EXPECT_EQ(record.RISMode, setting.mode == SamplingMode::RIS) << setting.label;
        EXPECT_EQ(record.RollMode, setting.mode == SamplingMode::Roll) << setting.label;
        EXPECT_EQ(record.DisplayExpansion, setting.displayExpansion) << setting.label;
    }
}

TEST_F(TimebaseTest, KnobValueIsRoundedAndBeyondTheTableTheDefaultsStand) {
    EXPECT_EQ(Turn(6.6F), "1us/div");
    Turn(26);
    EXPECT_EQ(Turn(28), "as it was");
    EXPECT_FALSE(record.RollMode);
    EXPECT_EQ(script.settings[1].clock, 50);
    EXPECT_EQ(script.settings[1].decimation, 1);
    EXPECT_EQ(record.DisplayExpansion, 1);
    for (float wild : {-1.0F, 1e30F, -1e30F}) {
        rig.Take();
        Turn(wild);
        EXPECT_EQ(script.settings[1].clock, 50);
    }
}

TEST_F(TimebaseTest, AChangeAbandonsTheAcquisitionAndAsksForAProbe) {
    rig.Run();
    state.Acquiring = true;
    state.RollPosition = 300;
    state.AutoTicks = 2;
    record.HeldZoom = 4;
    Turn(12);
    EXPECT_FALSE(state.Acquiring);
    EXPECT_EQ(state.RollPosition, 0);
    EXPECT_EQ(state.AutoTicks, 19);
    EXPECT_EQ(record.HeldZoom, 1);
    EXPECT_TRUE(record.TracesStale);
    EXPECT_TRUE(rig.RunTimer.isActive());
}

TEST_F(TimebaseTest, WhileStoppedNothingGetsStaleAndTheTimerStaysOff) {
    record.TracesStale = true;
    Turn(12);
    EXPECT_FALSE(record.TracesStale);
    EXPECT_FALSE(rig.RunTimer.isActive());
}

TEST_F(TimebaseTest, StoppedTraceIsStretchedBySettingAndNeverBelowAThousandth) {
    record.HeldSamplePeriod = 200e-9;
    Turn(12); // 400 ns
    EXPECT_NEAR(record.HeldZoom, 0.5, 1e-6);
    Turn(10); // 100 ns
    EXPECT_NEAR(record.HeldZoom, 2, 1e-6);
    Turn(27);
    EXPECT_EQ(record.HeldZoom, 0.001);
    record.PlotInhibit = true;
    Turn(12);
    EXPECT_EQ(record.HeldZoom, 1);
    record.PlotInhibit = false;
    record.Running = true;
    Turn(12);
    EXPECT_EQ(record.HeldZoom, 1);
}

TEST_F(TimebaseTest, EnteringRISForcesNormAndTakesTheDelayAway) {
    Turn(5);
    rig.DelayKnob.SetKnobValue(0);
    rig.Take();
    EXPECT_EQ(Turn(4), "100ns/div");
    EXPECT_EQ(Deeds(), ends + Each({1, 2, 3, 4}, "SetNormTrig(#, -1)") + Calls("SetDefaultLayering") +
                           Each({1, 2, 3, 4}, "SetRISMode(#, 1)") + undelayed + finish);
    EXPECT_EQ(record.TrigMode, 1);
    EXPECT_EQ(record.TriggerMark, -1);
    EXPECT_EQ(rig.DelayKnob.KnobValue(), -32768);
    EXPECT_EQ(rig.TimeBaseKnob.KnobFillColor(), ToQColor(0xFF));
    EXPECT_EQ(TextColourOf(rig.AcqModeLabel), 0xFFU);
    EXPECT_EQ(rig.TrigModeButton.ButtonCaption(), "norm");
    EXPECT_EQ(rig.AcqModeLabel.text(), "Acquistion mode: RIS (repetitive inputs, norm trig only, effective "
                                       "sample interval: 1ns)");
    Turn(3);
    EXPECT_EQ(Deeds(), ends + Each({1, 2, 3, 4}, "SetRISMode(#, 1)") + undelayed + finish)
        << "from RIS to RIS the trigger is left alone";
}

TEST_F(TimebaseTest, TheTextTellsTheIntervalInForceAfterTheChangeWhateverWasBefore) {
    for (int from = 0; from < kTimebaseSettings; ++from) {
        for (int to = 0; to < kTimebaseSettings; ++to) {
            Turn(static_cast<float>(from));
            Turn(static_cast<float>(to));
            const TimebaseSetting& setting = *FindTimebaseSetting(to);
            const QString told =
                ModeText(static_cast<float>(SamplePeriodOf(setting)), setting.mode == SamplingMode::RIS,
                         setting.mode == SamplingMode::Roll);
            ASSERT_EQ(rig.AcqModeLabel.text(), told)
                << FindTimebaseSetting(from)->label << " to " << setting.label;
        }
    }
    Turn(3);
    Turn(5);
    EXPECT_EQ(rig.AcqModeLabel.text(), "Acquistion mode: Single-shot (sample interval: 20ns, refresh mode)");
    Turn(0);
    Turn(22);
    EXPECT_EQ(rig.AcqModeLabel.text(), "Acquistion mode: Single-shot (sample interval: 1ms, roll mode)");
}

TEST_F(TimebaseTest, LeavingRISReturnsAutoToAutoAndNormOrFreeToFree) {
    for (int before : {0, 1, 2}) {
        Turn(8);
        record.TrigMode = before;
        Turn(4);
        rig.Take();
        EXPECT_EQ(Turn(5), "200ns/div");
        EXPECT_EQ(Deeds(), ends + Each({1, 2, 3, 4}, "SetRISMode(#, 0)") +
                               Each({1, 2, 3, 4}, "SetNormTrig(#, 0)") + Calls("SetDefaultLayering") +
                               undelayed + finish);
        EXPECT_EQ(record.TrigMode, before == 0 ? 0 : 2);
        EXPECT_EQ(rig.TimeBaseKnob.KnobFillColor(), ToQColor(0x506070));
        EXPECT_EQ(TextColourOf(rig.AcqModeLabel), 0xFFFFFFU);
    }
}

TEST_F(TimebaseTest, TheLabelTellsTheIntervalInForceAfterTheChange) {
    Turn(4);
    Turn(5);
    EXPECT_EQ(rig.AcqModeLabel.text(), "Acquistion mode: Single-shot (sample interval: 20ns, refresh mode)");
    Turn(0);
    Turn(27);
    EXPECT_EQ(rig.AcqModeLabel.text(), "Acquistion mode: Single-shot (sample interval: 40ms, roll mode)");
}

TEST_F(TimebaseTest, TheModeIsToldToAssistiveTechnology) {
    static QStringList heard;
    heard.clear();
    ListenToAnnouncements([](QAccessibleEvent& event) {
        if (event.type() == QAccessible::DescriptionChanged) {
            heard << qobject_cast<QLabel*>(event.object())->text();
        }
    });
    Turn(4);
    Turn(3); // another timebase of the same mode, as is a knob that is only painted anew
    Turn(5);
    Turn(6);
    ListenToAnnouncements(nullptr);
    EXPECT_EQ(rig.AcqModeLabel.accessibleName(), "Acquisition mode");
    EXPECT_EQ(heard, (QStringList{"Acquistion mode: RIS (repetitive inputs, norm trig only, effective sample "
                                  "interval: 1ns)",
                                  "Acquistion mode: Single-shot (sample interval: 20ns, refresh mode)"}));
}

TEST_F(TimebaseTest, TheTriggerStatusIsToldAsItChangesAndNotAtEveryDot) {
    static QStringList heard;
    heard.clear();
    QLabel label;
    TriggerStatus status(&label);
    ListenToAnnouncements([](QAccessibleEvent& event) {
        if (event.type() == QAccessible::DescriptionChanged) {
            heard << qobject_cast<QLabel*>(event.object())->text();
        }
    });
    status.Show(TriggerStatus::Text::AskTrigger);
    status.AddDot();
    status.Show(TriggerStatus::Text::AskTrigger);
    status.Show(TriggerStatus::Text::Acquiring);
    ListenToAnnouncements(nullptr);
    EXPECT_EQ(heard, (QStringList{"trigger ?", "acquiring"}));
}

TEST_F(TimebaseTest, BrightenedSkinColourIsHeldTo255) {
    rig.skin = 0xF01AE0;
    Turn(0);
    Turn(8);
    EXPECT_EQ(rig.TimeBaseKnob.KnobFillColor(), ToQColor(0xFF3AFF));
}

TEST_F(TimebaseTest, EnteringRISWhileRunningStretchesChannelOne) {
    Turn(5);
    rig.Run();
    for (int i = 0; i < kSampleDepth; ++i) {
        record.SampleData(1, i) = record.SampleData(2, i) = static_cast<float>(i);
    }
    Turn(0);
    EXPECT_EQ(record.SampleData(1, 19), 0);
    EXPECT_EQ(record.SampleData(1, 20), 1);
    EXPECT_EQ(record.SampleData(1, 2999), 149);
    EXPECT_EQ(record.SampleData(2, 2999), 2999);
    record.SampleData(1, 0) = 5;
    Turn(1);
    EXPECT_EQ(record.SampleData(1, 1), 0) << "only on entering";
}

TEST_F(TimebaseTest, EnteringRISWhileStoppedStretchesNothing) {
    record.SampleData(1, 1) = 5;
    Turn(0);
    EXPECT_EQ(record.SampleData(1, 1), 5);
    EXPECT_EQ(record.SampleData(1, 20), 0);
}

TEST_F(TimebaseTest, CursorsBeyondTheRecordMoveToTenSamplesBeforeItsEnd) {
    rig.Run();
    record.VertCursorTime[0] = 1e-5;
    record.VertCursorTime[1] = 2999 * 20e-9 * 1.01;
    record.VertCursorTime[2] = 5;
    Turn(8);
    EXPECT_EQ(record.VertCursorTime[0], 1e-5);
    EXPECT_NEAR(record.VertCursorTime[1], 2990 * 20e-9, 1e-12);
    EXPECT_NEAR(record.VertCursorTime[2], 2990 * 20e-9, 1e-12);
    const CallList moves = script.CallsOf({"MoveVertCursorHandle"});
    EXPECT_EQ(moves, Calls("MoveVertCursorHandle(0, 1e-05)", "MoveVertCursorHandle(1, 5.98e-05)",
                           "MoveVertCursorHandle(2, 5.98e-05)"));
}

TEST_F(TimebaseTest, DelayCountsSamplesOfThePeriodInForce) {
    rig.Run();
    script.samplePeriod.Always(1e-6F);
    rig.DelayKnob.SetKnobValue(32767);
    rig.timebase.DelayKnob_Change();
    EXPECT_EQ(record.TriggerDelay, static_cast<double>(1e-6F * 65535.0F));
    EXPECT_EQ(rig.DelayLabel.text(), "65.535ms");
    EXPECT_EQ(rig.Take(),
              Calls("GetSamplePeriod(-1, 1)") + Each({1, 2, 3, 4}, "SetTriggerDelay(#, 0.065535)"));
    rig.DelayKnob.SetKnobValue(-32768);
    rig.timebase.DelayKnob_Change();
    EXPECT_EQ(record.TriggerDelay, 0);
    EXPECT_EQ(rig.DelayLabel.text(), "0.0ns");
    rig.DelayKnob.SetKnobValue(-32768 + 100);
    rig.timebase.DelayKnob_Change();
    EXPECT_EQ(rig.DelayLabel.text(), "100.000us");
    for (float period : {1e-9F, 20e-9F, 1e-6F}) {
        script.samplePeriod.Always(period);
        for (int samples : {1, 50, 100, 999, 1000, 1001, 50000}) {
            rig.DelayKnob.SetKnobValue(-32768 + samples);
            rig.timebase.DelayKnob_Change();
            EXPECT_FALSE(rig.DelayLabel.text().startsWith("1000.")) << period << " " << samples;
        }
    }
    EXPECT_EQ(rig.DelayLabel.text(), "50.000ms");
}

TEST_F(TimebaseTest, DelayKnobShowsTheShareOfItsTravel) {
    QString text;
    rig.timebase.DelayKnob_KnobXlateValue(-32768, text);
    EXPECT_EQ(text, "0");
    rig.timebase.DelayKnob_KnobXlateValue(32767, text);
    EXPECT_EQ(text, "1");
    rig.timebase.DelayKnob_KnobXlateValue(0, text);
    EXPECT_NEAR(text.toDouble(), 32768.0 / 65535, 1e-12);
}

TEST_F(TimebaseTest, UpdateRateIsTenMillisecondsToAboutASecond) {
    rig.timebase.Connect();
    const std::pair<float, int> cases[] = {{0.0F, 10}, {0.05F, 60}, {0.5F, 510}, {1.0F, 1010}};
    for (const auto& [value, interval] : cases) {
        rig.UpdateRateSlider.SetSliderValue(value);
        EXPECT_EQ(rig.RunTimer.interval(), interval);
    }
}

TEST_F(TimebaseTest, ControlsReachTheirHandlers) {
    rig.timebase.Connect();
    rig.TimeBaseKnob.SetKnobValue(19);
    EXPECT_EQ(rig.TimeBaseKnob.KnobXlatedValue(), "10ms/div");
    EXPECT_EQ(script.settings[1].decimation, 1000);
    rig.Take();
    rig.DelayKnob.SetKnobValue(0);
    EXPECT_GT(script.Count("SetTriggerDelay"), 0);
    EXPECT_NEAR(rig.DelayKnob.KnobXlatedValue().toDouble(), 0.5, 1e-4);
}

} // namespace
