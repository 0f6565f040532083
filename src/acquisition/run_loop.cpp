#include "acquisition/run_loop.h"

#include "acquisition/auto_trigger.h"
#include "acquisition/colours.h"
#include "acquisition/trigger_modes.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/knob_control.h"
#include "frame/record/channel_sets.h"
#include "frame/record/record.h"

#include <QTimer>
#include <algorithm>
#include <utility>

namespace {

constexpr int kRollPolls = 1001; ///< until a roll acquisition must have begun

} // namespace

RunLoop::Controls RunLoop::Controls::Of(const Form& main, const Form& about, const ChannelForms& channels) {
    Controls controls{.RunTimer = main.timer("RunTimer"),
                      .AutoTriggerTimer = main.timer("AutoTriggerTimer"),
                      .CursTimer = main.timer("CursTimer"),
                      .RunButton = main.control<ButtonControl1>("RunButton"),
                      .OnceButton = main.control<ButtonControl1>("OnceButton"),
                      .TriggerStatusLabel = main.control<QLabel>("TriggerStatusLabel"),
                      .UpdateRateLabel = about.control<QLabel>("UpdateRateLabel"),
                      .OffsetKnob = {}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        controls.OffsetKnob[channel] = channels[channel]->control<KnobControl1>("OffsetKnob");
    }
    return controls;
}

RunLoop::RunLoop(Record& record, Driver& driver, AcquisitionState& state, const Controls& controls,
                 const Scales& scales, Calls calls, Waiting waiting)
    : record_(record), driver_(driver), state_(state), controls_(controls), scales_(scales),
      calls_(std::move(calls)), waiting_(std::move(waiting)), status_(controls.TriggerStatusLabel),
      BlockBuffer(static_cast<std::size_t>(kScopeChannels) * kSampleRow), ChannelBuffer(kSampleRow + 1),
      DemoBuffer(kSampleDepth) {
    statsSoon_.setSingleShot(true);
    statsSoon_.setInterval(0); // when all else is done, the painting of the plot too
}

void RunLoop::Load() {
    state_.PassCount = 0;
    state_.WaitTicks = 0;
    state_.AutoTicks = 0;
    state_.FreeRunning = true;
    record_.DisplayExpansion = 1;
    record_.HeldZoom = 1;
    record_.HeldSamplePeriod = 1;
    record_.TriggerMark = -1;
    record_.TracesStale = false;
}

void RunLoop::Connect() {
    connect(controls_.RunTimer, &QTimer::timeout, this, &RunLoop::RunTimer_Timer);
    connect(controls_.AutoTriggerTimer, &QTimer::timeout, this, &RunLoop::AutoTriggerTimer_Timer);
    connect(controls_.CursTimer, &QTimer::timeout, this, [this] {
        if (statsWait_) {
            statsSoon_.start();
        }
    });
    connect(&statsSoon_, &QTimer::timeout, this, [this] {
        if (statsWait_) {
            RefreshStats();
        }
    });
    connect(controls_.RunButton, &ButtonControl1::Click, this, &RunLoop::RunButton_Click);
    connect(controls_.RunButton, &ButtonControl1::Init, this, [this] { record_.Running = false; });
    connect(controls_.OnceButton, &ButtonControl1::Click, this, &RunLoop::OnceButton_Click);
    connect(controls_.OnceButton, &ButtonControl1::Init, this, [this] { state_.OnceMode = false; });
}

void RunLoop::RunTimer_Timer() {
    if (state_.RunTimerBusy) {
        return;
    }
    state_.RunTimerBusy = true;
    ++state_.TickCount;
    if (!StoppedWhileYielding()) {
        PollMaster();
    }
    state_.RunTimerBusy = false;
}

bool RunLoop::StoppedWhileYielding() {
    const int stops = stops_;
    const bool timed = controls_.RunTimer->isActive();
    waiting_.Yield();
    // The close of the program stops the timer without a press of RunButton.
    return stops_ != stops || (timed && !controls_.RunTimer->isActive());
}

void RunLoop::PollMaster() {
    if (record_.DemoMode) {
        FillDemoData();
    }
    state_.PassesPerTick = record_.RISMode ? kRISPassesPerTick : 1;
    const bool idle = driver_.GetAcquistionState(record_.MasterChannel) == 0;
    if (idle || record_.DemoMode) {
        PrepareIdle();
        for (int pass = 0; pass < state_.PassesPerTick; ++pass) {
            Pass();
        }
        if (!state_.Acquiring && !state_.ProbeDone) {
            Plot();
            if (state_.OnceMode && controls_.RunTimer->isActive()) {
                OnceButton_Click();
            }
        }
        state_.PassCount = (state_.PassCount + 1) % kPassCountEnd;
    }
    if (state_.Acquiring) {
        ShowWaiting();
    }
}

void RunLoop::PrepareIdle() {
    if (record_.TrigMode == kAutoMode && !record_.RISMode && !record_.DemoMode) {
        state_.AutoTicks = std::min(state_.AutoTicks, kProbeTicks);
    } else {
        state_.AutoTicks = 0;
        Status(kStatusGrey);
        const bool norm = record_.TrigMode == kNormMode;
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            driver_.SetNormTrig(ch, norm);
        }
        record_.TriggerMark = norm && !record_.RISMode ? 1 : -1;
        state_.FreeRunning = true;
    }
    if (ProbeDue()) {
        state_.Acquiring = false;
        record_.TriggerMark = 1;
        calls_.PretriggerSlider_Change();
        SetNormTrigInUse(true);
    }
}

bool RunLoop::ProbeDue() const {
    return state_.AutoTicks == kProbeTicks && state_.FreeRunning;
}

void RunLoop::Pass() {
    if (!state_.Acquiring || record_.DemoMode) {
        Start();
    }
    state_.ProbeDone = false;
    if (ProbeDue()) {
        Probe();
    }
    waiting_.Sleep(1);
    const bool idle = driver_.GetAcquistionState(record_.MasterChannel) == 0;
    if ((idle && !state_.ProbeDone) || record_.DemoMode) {
        CompleteRecord();
    } else {
        status_.Show(TriggerStatus::Text::AskTrigger);
    }
}

void RunLoop::Start() {
    ForAcquiringScopes(record_, [this](int ch) {
        if (ch != record_.TriggerChannel) {
            driver_.AcquisitionStart(ch);
        }
    });
    // The source of the trigger comes last, when the others already listen.
    driver_.AcquisitionStart(record_.TriggerChannel);
    state_.RollPosition = 0;
    state_.Acquiring = true;
    state_.SawTrigger = false;
    status_.BeginCount();
    if (record_.RollMode) {
        for (int poll = 0; poll < kRollPolls; ++poll) {
            if (driver_.GetAcquistionState(record_.MasterChannel) != 0) {
                break;
            }
        }
    }
}

void RunLoop::Probe() {
    state_.AutoTicks = 0;
    status_.Show(TriggerStatus::Text::AskAuto);
    const int wait = ProbeWait(driver_.GetSamplePeriod(record_.Running, record_.HeldSamplePeriod));
    for (int look = 0; look < kProbeWaits; ++look) {
        if (driver_.GetTriggeredStatus(record_.TriggerChannel) != 0) {
            break;
        }
        waiting_.Sleep(wait);
    }
    if (driver_.GetTriggeredStatus(record_.TriggerChannel) == 0) {
        calls_.PretriggerSlider_Change();
        record_.TriggerMark = -1;
        Status(kStatusGrey);
        state_.FreeRunning = true;
        SetNormTrigInUse(false);
    } else {
        record_.TriggerMark = 1;
        calls_.PretriggerSlider_Change();
        Status(kStatusRed);
        state_.FreeRunning = false;
        state_.WaitTicks = 0;
    }
    state_.ProbeDone = true;
    state_.Acquiring = false;
    ForAcquiringScopes(record_, [this](int ch) { driver_.AcquisitionEnd(ch); });
}

void RunLoop::Plot() {
    record_.TracesStale = false;
    calls_.PlotNow();
    ++state_.PlotCount;
}

void RunLoop::ShowWaiting() {
    const bool triggered = driver_.GetTriggeredStatus(record_.MasterChannel) != 0;
    if (!triggered && !state_.SawTrigger) {
        if (state_.WaitTicks > kReleaseTicks) {
            Status(kStatusGrey);
            state_.WaitTicks = kReleaseTicks + 1;
            state_.FreeRunning = record_.TrigMode == kAutoMode;
            ForScopesInUse(record_, [this](int ch) {
                driver_.SetNormTrig(ch, false);
                driver_.AcquisitionEnd(ch);
            });
        }
        status_.AddDot();
    } else {
        status_.Show(TriggerStatus::Text::Acquiring);
        state_.SawTrigger = true;
    }
    if (record_.RollMode) {
        ReadRoll();
    }
}

void RunLoop::AutoTriggerTimer_Timer() {
    controls_.UpdateRateLabel->setText(QString::number(state_.PlotCount * 4));
    RefreshStats();
    state_.PlotCount = 0;
    if (record_.TrigMode == kNormMode || record_.RISMode || record_.DemoMode) {
        state_.WaitTicks = 0;
        state_.AutoTicks = 0;
    } else {
        // Held where they have said all they can: a stopped instrument goes on counting for as long as it
        // stands.
        state_.WaitTicks = std::min(state_.WaitTicks, kReleaseTicks) + 1;
        state_.AutoTicks = std::min(state_.AutoTicks, kProbeTicks - 1) + 1;
    }
}

/// The figures take longer than a plot. They wait for the one that a drag asked for, to the next tick at the
/// latest.
void RunLoop::RefreshStats() {
    const bool wait = controls_.CursTimer->isActive() && !statsWait_;
    statsWait_ = wait;
    if (!wait) {
        calls_.UpdateStats();
    }
}

void RunLoop::RunButton_Click() {
    record_.Running = !record_.Running;
    if (record_.Running) {
        BecomeRunning();
    } else {
        BecomeStopped();
    }
}

void RunLoop::BecomeStopped() {
    ++stops_;
    controls_.RunButton->SetButtonFillColor(ToQColor(kSwitchOff));
    controls_.RunButton->SetButtonCaption(QStringLiteral("stopped"));
    ForScopesInUse(record_, [this](int ch) { driver_.AcquisitionEnd(ch); });
    controls_.RunTimer->stop();
    state_.Acquiring = false;
    state_.RollPosition = 0;
    record_.HeldSampleData = record_.SampleData;
    record_.HeldSamplePeriod = static_cast<double>(driver_.GetSamplePeriod(true, 0));
    for (int ch = 1; ch <= kAllChannels; ++ch) {
        if (record_.ScopeInUse[ch]) {
            const ChannelScale* scale = scales_[ch];
            record_.HeldVoltsPerDiv[ch] = scale == nullptr ? 0 : scale->GetVoltsPerDiv();
            record_.HeldOffset[ch] = scale == nullptr ? 0 : scale->GetOffset();
        }
    }
    if (record_.TracesStale) {
        FlattenTraces();
        calls_.PlotNow();
    }
}

void RunLoop::BecomeRunning() {
    const bool norm = record_.TrigMode == kNormMode;
    SetNormTrigInUse(norm);
    record_.TriggerMark = norm ? 1 : -1;
    Status(kStatusGrey);
    state_.FreeRunning = true;
    controls_.RunButton->SetButtonFillColor(ToQColor(kSwitchOn));
    controls_.RunButton->SetButtonCaption(QStringLiteral("running"));
    record_.HeldZoom = 1;
    controls_.RunTimer->start();
    state_.AutoTicks = kProbeSoonTicks;
    // What was set while stopped counts samples of the held record, or of none; the next one has its own.
    if (record_.TriggerDelay > 0) {
        calls_.DelayKnob_Change();
    }
}

void RunLoop::OnceButton_Click() {
    if (state_.OnceMode) {
        state_.OnceMode = false;
        controls_.OnceButton->SetButtonFillColor(ToQColor(kSwitchOff));
        RunButton_Click();
    } else if (!record_.Running) {
        state_.OnceMode = true;
        controls_.OnceButton->SetButtonFillColor(ToQColor(kSwitchOn));
        RunButton_Click();
    }
    calls_.SetDefaultLayering();
}

void RunLoop::Status(Colour colour) {
    SetTextColour(*controls_.TriggerStatusLabel, colour);
}

void RunLoop::SetNormTrigInUse(bool on) {
    ForScopesInUse(record_, [this, on](int ch) { driver_.SetNormTrig(ch, on); });
}
