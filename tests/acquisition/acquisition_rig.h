#pragma once

#include "acquisition/colours.h"
#include "acquisition/run_loop.h"
#include "acquisition/timebase.h"
#include "acquisition/trigger.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/knob_control.h"
#include "controls/knob_instances.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"
#include "support/call_lists.h"
#include "support/plain_scale.h"
#include "support/scripted_driver.h"

#include <QLabel>
#include <QTimer>
#include <array>
#include <functional>

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

/// The acquisition parts on controls of their own, with a record as it is after the start-up. note is told
/// what the parts call beyond the driver, and of their waits.
struct AcquisitionParts {
    AcquisitionParts(Driver& partsDriver, int modules, std::function<void(std::string)> partsNote)
        : driver(partsDriver), note(std::move(partsNote)) {
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
            TakeLimits(offsetKnobs[ch], "OffsetKnob");
            scales[ch].range = 2;
        }
        TakeLimits(TimeBaseKnob, "TimeBaseKnob");
        TakeLimits(DelayKnob, "DelayKnob");
        DelayKnob.SetKnobValue(DelayKnob.KnobMin());
        TakeLimits(TriggerKnob, "TriggerKnob");
        PretriggerSlider.SetSliderValueQuantized(0.0001F);
        PretriggerSlider.SetSliderValue(0.5F);
        loop.Load();
    }

    std::function<void()> Note(const char* text) {
        return [this, text] { note(text); };
    }
    QString StatusText() const { return TriggerStatusLabel.text(); }
    Colour StatusColour() const { return TextColourOf(TriggerStatusLabel); }

    Driver& driver;
    std::function<void(std::string)> note;
    Record record;
    AcquisitionState state;
    std::function<void()> duringYield = [] {};
    std::function<void(int)> duringSleep = [](int) {};

    QTimer RunTimer;
    QTimer AutoTriggerTimer;
    QTimer CursTimer;
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
                 {&RunTimer, &AutoTriggerTimer, &CursTimer, &RunButton, &OnceButton, &TriggerStatusLabel,
                  &UpdateRateLabel, offsetKnobs.Pointers()},
                 Scales(),
                 {Note("PlotNow"), Note("DoMaths"),
                  [this] { note("PretriggerSlider_Change " + std::to_string(record.TriggerMark)); },
                  Note("UpdateStats"), Note("SetDefaultLayering"), [this] { timebase.DelayKnob_Change(); }},
                 {[this](int milliseconds) {
                      note("Sleep(" + std::to_string(milliseconds) + ")");
                      duringSleep(milliseconds);
                  },
                  [this] {
                      note("Yield");
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
                           note("MoveVertCursorHandle(" + std::to_string(cursor) + ", " +
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

/// The same on the scripted driver, among whose calls the notes stand.
struct AcquisitionRig : ScriptedInstrument, AcquisitionParts {
    explicit AcquisitionRig(int modules = kScopeChannels)
        : ScriptedInstrument(modules),
          AcquisitionParts(ScriptedInstrument::driver, modules,
                           [this](const std::string& text) { script.Note(text); }) {
        script.Clear();
    }
    using ScriptedInstrument::driver;

    CallList Take() { return script.TakeCalls(); }
    /// Begins a run; the calls that it makes are forgotten.
    void Run() {
        loop.RunButton_Click();
        script.Clear();
    }
};
