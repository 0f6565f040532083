#pragma once

#include "acquisition/colours.h"
#include "acquisition/run_loop.h"
#include "acquisition/timebase.h"
#include "acquisition/trigger.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "support/call_lists.h"
#include "support/scripted_driver.h"

#include <QLabel>
#include <QTimer>
#include <array>
#include <functional>

/// A channel's scale with numbers that a test sets.
struct PlainScale : ChannelScale {
    float voltsPerDiv = 3;
    float offset = 0;
    int range = 2;
    float GetVoltsPerDiv() const override { return voltsPerDiv; }
    float GetVoltsPerADCStep() const override { return voltsPerDiv * 10 / 127; }
    float GetOffset() const override { return offset; }
    int GetRange() const override { return range; }
};

inline Colour TextColourOf(const QLabel& label) {
    return FromQColor(label.palette().color(QPalette::WindowText));
}

/// One control for each instrument channel.
template <class T> struct OneEach {
    T& operator[](int channel) { return items.at(static_cast<std::size_t>(channel - 1)); }
    PerScope<T*> Pointers() {
        PerScope<T*> pointers;
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            pointers[ch] = &(*this)[ch];
        }
        return pointers;
    }

  private:
    std::array<T, kScopeChannels> items;
};

/// Controls of their own for the acquisition parts, a record after a start-up on four modules, and the
/// scripted driver. What the parts call beyond the driver, and their waits, stand among the driver's calls.
struct AcquisitionRig {
    explicit AcquisitionRig(int modules = kScopeChannels) : instrument(modules) {
        record.SampleDepth = kSampleDepth;
        record.MasterChannel = 1;
        record.TriggerChannel = 1;
        record.TrigModeCaption[0] = QStringLiteral("auto");
        record.TrigModeCaption[1] = QStringLiteral("norm");
        record.TrigModeCaption[2] = QStringLiteral("free");
        for (int ch = 1; ch <= kAllChannels; ++ch) {
            record.ScopeInUse[ch] = ch <= modules || ch > kScopeChannels;
            record.ChannelOn[ch] = true;
            record.ChannelColour[ch] = 0x101010U * static_cast<Colour>(ch);
        }
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            offsetKnobs[ch].SetKnobMin(-127);
            offsetKnobs[ch].SetKnobMax(127);
        }
        TimeBaseKnob.SetKnobMax(27);
        DelayKnob.SetKnobMin(-32768);
        DelayKnob.SetKnobMax(32767);
        DelayKnob.SetKnobValue(-32768);
        TriggerKnob.SetKnobMin(-100);
        TriggerKnob.SetKnobMax(100);
        PretriggerSlider.SetSliderValueQuantized(0.0001F);
        PretriggerSlider.SetSliderValue(0.5F);
        loop.Load();
        script.Clear();
    }

    CallList Take() { return script.TakeCalls(); }
    std::function<void()> Note(const char* text) {
        return [this, text] { script.Note(text); };
    }
    QString StatusText() const { return TriggerStatusLabel.text(); }
    Colour StatusColour() const { return TextColourOf(TriggerStatusLabel); }
    /// Begins a run; the calls that it makes are forgotten.
    void Run() {
        loop.RunButton_Click();
        script.Clear();
    }

    ScriptedInstrument instrument;
    ScriptedDriver& script = instrument.script;
    Driver& driver = instrument.driver;
    Record record;
    AcquisitionState state;
    std::function<void()> duringYield = [] {};
    std::function<void(int)> duringSleep = [](int) {};

    QTimer RunTimer;
    QTimer AutoTriggerTimer;
    QTimer TriggerLineTimer;
    ButtonControl1 RunButton;
    ButtonControl1 OnceButton;
    ButtonControl1 TrigModeButton;
    ButtonControl1 TrigTypeButton;
    QLabel TriggerStatusLabel;
    QLabel UpdateRateLabel;
    QLabel AcqModeLabel;
    QLabel DelayLabel;
    KnobControl1 TimeBaseKnob;
    KnobControl1 DelayKnob;
    KnobControl1 TriggerKnob;
    SliderControl1 PretriggerSlider;
    SliderControl1 UpdateRateSlider;
    QWidget TriggerLine;
    QWidget LargeTriggerLine;
    OneEach<KnobControl1> offsetKnobs;
    OneEach<ButtonControl1> HorzTrigChanButton;
    OneEach<ButtonControl1> TabTrigChanButton;
    OneEach<QLabel> UpdateRateMarkerLabel;
    OneEach<QWidget> TriggerChannelLine;
    OneEach<PlainScale> scales;

    RunLoop loop{record,
                 driver,
                 state,
                 {&RunTimer, &AutoTriggerTimer, &RunButton, &OnceButton, &TriggerStatusLabel,
                  &UpdateRateLabel, offsetKnobs.Pointers()},
                 Scales(),
                 {Note("PlotNow"), Note("DoMaths"),
                  [this] { script.Note("PretriggerSlider_Change " + std::to_string(record.TriggerMark)); },
                  Note("UpdateStats"), Note("SetDefaultLayering")},
                 {[this](int milliseconds) {
                      script.Note("Sleep(" + std::to_string(milliseconds) + ")");
                      duringSleep(milliseconds);
                  },
                  [this] {
                      script.Note("Yield");
                      const auto act = duringYield; // which may replace itself
                      act();
                  }}};

    Trigger trigger{record,
                    driver,
                    state,
                    {&AutoTriggerTimer, &TriggerLineTimer, &TrigModeButton, &TrigTypeButton, &TriggerKnob,
                     &PretriggerSlider, &TriggerStatusLabel, &TriggerLine, &LargeTriggerLine, Sources()},
                    {Note("PlotNow"), Note("SetDefaultLayering")}};

    Colour skin = 0x304050;
    Timebase timebase{record,
                      driver,
                      state,
                      {&TimeBaseKnob, &DelayKnob, &UpdateRateSlider, &DelayLabel, &AcqModeLabel, &RunTimer},
                      {[this] { trigger.TrigModeButton_Click(); },
                       [this](int cursor, double seconds) {
                           script.Note("MoveVertCursorHandle(" + std::to_string(cursor) + ", " +
                                       QString::number(seconds).toStdString() + ")");
                       },
                       Note("PlotNow"), Note("RedrawSettings"), [this](const QWidget*) { return skin; }}};

  private:
    RunLoop::Scales Scales() {
        RunLoop::Scales result;
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            result[ch] = &scales[ch];
        }
        return result;
    }
    PerScope<Trigger::SourceMarks> Sources() {
        PerScope<Trigger::SourceMarks> result;
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            result[ch] = {&HorzTrigChanButton[ch], &UpdateRateMarkerLabel[ch], &TabTrigChanButton[ch],
                          &TriggerChannelLine[ch]};
        }
        return result;
    }
};
