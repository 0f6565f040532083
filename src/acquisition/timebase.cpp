#include "acquisition/timebase.h"

#include "acquisition/colours.h"
#include "acquisition/mode_text.h"
#include "acquisition/read_out.h"
#include "acquisition/trigger_modes.h"
#include "controls/accessibility.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/number_format.h"
#include "controls/rounding.h"
#include "controls/slider_control.h"
#include "frame/helpers/helpers.h"
#include "frame/record/channel_sets.h"
#include "frame/record/record.h"

#include <QLabel>
#include <QPalette>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr Colour kPlainText = 0xFFFFFF;
constexpr float kDelaySamples = 65535.0F;
constexpr float kKnobSpan = 65535.0F; ///< KnobMax - KnobMin of DelayKnob
constexpr double kLeastZoom = 0.001;
constexpr double kShortestInterval = 10; ///< ms
constexpr int kCursorMargin = 10;

} // namespace

Timebase::Controls Timebase::Controls::Of(const Form& main, const Form& horizontal) {
    return {.TimeBaseKnob = main.control<KnobControl1>("TimeBaseKnob"),
            .DelayKnob = horizontal.control<KnobControl1>("DelayKnob"),
            .UpdateRateSlider = horizontal.control<SliderControl1>("UpdateRateSlider"),
            .DelayLabel = horizontal.control<QLabel>("DelayLabel"),
            .AcqModeLabel = main.control<QLabel>("AcqModeLabel"),
            .RunTimer = main.timer("RunTimer")};
}

Timebase::Timebase(Record& record, Driver& driver, AcquisitionState& state, const Controls& controls,
                   Calls calls)
    : record_(record), driver_(driver), state_(state), controls_(controls), calls_(std::move(calls)) {
    MakeStatus(*controls_.AcqModeLabel, QStringLiteral("Acquisition mode"));
}

void Timebase::Connect() {
    connect(controls_.TimeBaseKnob, &KnobControl1::KnobXlateValue, this,
            &Timebase::TimeBaseKnob_KnobXlateValue);
    connect(controls_.DelayKnob, &KnobControl1::Change, this, &Timebase::DelayKnob_Change);
    connect(controls_.DelayKnob, &KnobControl1::KnobXlateValue, this, &Timebase::DelayKnob_KnobXlateValue);
    connect(controls_.UpdateRateSlider, &SliderControl1::Change, this, &Timebase::UpdateRateSlider_Change);
}

void Timebase::TimeBaseKnob_KnobXlateValue(float value, QString& text) {
    const TimebaseSetting* row = FindTimebaseSetting(RoundToEven<std::int16_t>(static_cast<double>(value)));
    const TimebaseSetting setting = row == nullptr ? TimebaseSetting{} : *row;
    if (row != nullptr) {
        text = QString::fromLatin1(row->label);
    }
    TakeSetting(setting);
    record_.TracesStale = record_.Running;
    AbandonAcquisition();
    if (record_.RISMode && !timeBaseState_.wasRIS && record_.Running) {
        StretchForRIS({record_.SampleData.row(1), ChannelTable::stride()});
    }
    state_.AutoTicks = kProbeSoonTicks;
    SendClocks(setting);
    SwitchMode();
    timeBaseState_.wasRIS = record_.RISMode;
    ShowMode();
    KeepCursorsInRecord();
    DelayKnob_Change();
    FitHeldRecord();
    calls_.PlotNow();
    calls_.RedrawSettings();
    if (record_.Running) {
        controls_.RunTimer->start();
    } else {
        controls_.RunTimer->stop();
    }
}

void Timebase::Restore() {
    timeBaseState_.wasRIS = false;
    QString label;
    TimeBaseKnob_KnobXlateValue(static_cast<float>(controls_.TimeBaseKnob->KnobValue()), label);
}

void Timebase::TakeSetting(const TimebaseSetting& setting) {
    record_.RISMode = setting.mode == SamplingMode::RIS;
    record_.RollMode = setting.mode == SamplingMode::Roll;
    record_.DisplayExpansion = setting.displayExpansion;
    record_.HeldZoom = 1;
}

void Timebase::AbandonAcquisition() {
    controls_.RunTimer->stop();
    state_.Acquiring = false;
    state_.RollPosition = 0;
    ForScopesInUse(record_, [this](int ch) { driver_.AcquisitionEnd(ch); });
}

void Timebase::SendClocks(const TimebaseSetting& setting) {
    if (timeBaseState_.clock != setting.clock) {
        ForScopesInUse(record_, [&](int ch) { driver_.SetBaseAdcClk(ch, setting.clock); });
        DelayKnob_Change();
        timeBaseState_.clock = setting.clock;
    }
    if (timeBaseState_.decimation != setting.decimation) {
        ForScopesInUse(record_, [&](int ch) { driver_.SetDecimationRatio(ch, setting.decimation); });
        timeBaseState_.decimation = setting.decimation;
    }
}

void Timebase::SwitchMode() {
    if (record_.RISMode) {
        if (!timeBaseState_.wasRIS) {
            EnterRIS();
        }
        SetTextColour(*controls_.AcqModeLabel, kRed);
        SetRISModeInUse(true);
    } else {
        SetRISModeInUse(false);
        if (timeBaseState_.wasRIS) {
            LeaveRIS();
        }
    }
}

void Timebase::LeaveRIS() {
    record_.TrigMode = timeBaseState_.leavesToAuto ? ModeBefore(kAutoMode) : ModeBefore(kFreeMode);
    calls_.TrigModeButton_Click();
    const Colour skin = calls_.SkinColourAt(controls_.TimeBaseKnob);
    controls_.TimeBaseKnob->SetKnobFillColor(ToQColor(Brightened(skin)));
    SetTextColour(*controls_.AcqModeLabel, kPlainText);
}

void Timebase::EnterRIS() {
    // Only auto or not is remembered: norm and free both come back as free.
    timeBaseState_.leavesToAuto = record_.TrigMode == kAutoMode;
    controls_.TimeBaseKnob->SetKnobFillColor(ToQColor(kRed));
    record_.TrigMode = ModeBefore(kNormMode);
    calls_.TrigModeButton_Click();
    controls_.DelayKnob->SetKnobValue(controls_.DelayKnob->KnobMin());
}

void Timebase::SetRISModeInUse(bool on) {
    ForScopesInUse(record_, [&](int ch) { driver_.SetRISMode(ch, on); });
}

void Timebase::ShowMode() {
    // The period is asked for in the new mode: the interleaved one is in force until it has been left.
    AcqModeText = ModeText(driver_.GetSamplePeriod(true, 0), record_.RISMode, record_.RollMode);
    if (controls_.AcqModeLabel->text() != AcqModeText) {
        controls_.AcqModeLabel->setText(AcqModeText);
        AnnounceStatus(*controls_.AcqModeLabel);
    }
}

void Timebase::KeepCursorsInRecord() {
    for (int i = 0; i < kCursors; ++i) {
        const auto p = static_cast<double>(Period());
        double& time = record_.VertCursorTime[i];
        if (time > (record_.SampleDepth - 1) * p) {
            time = (record_.SampleDepth - kCursorMargin) * p;
        }
        calls_.MoveVertCursorHandle(i, time);
    }
}

void Timebase::FitHeldRecord() {
    if (record_.Running || record_.PlotInhibit) {
        return;
    }
    const auto held = static_cast<double>(driver_.GetSamplePeriod(false, record_.HeldSamplePeriod));
    const auto next = static_cast<double>(driver_.GetSamplePeriod(true, 0));
    record_.HeldZoom = std::max(held / next, kLeastZoom);
}

void Timebase::DelayKnob_Change() {
    const auto turned = static_cast<float>(controls_.DelayKnob->KnobValue() - controls_.DelayKnob->KnobMin());
    const float delay = Period() * kDelaySamples * turned / kKnobSpan;
    record_.TriggerDelay = static_cast<double>(delay);
    controls_.DelayLabel->setText(FormatSeconds(record_.TriggerDelay));
    ForScopesInUse(record_, [&](int ch) { driver_.SetTriggerDelay(ch, delay); });
}

void Timebase::DelayKnob_KnobXlateValue(float value, QString& text) {
    const double least = controls_.DelayKnob->KnobMin();
    const double span = controls_.DelayKnob->KnobMax() - least;
    text = ShortestText((static_cast<double>(value) - least) / span);
}

void Timebase::UpdateRateSlider_Change() {
    const double milliseconds =
        static_cast<double>(controls_.UpdateRateSlider->SliderValue()) * 1000 + kShortestInterval;
    controls_.RunTimer->setInterval(static_cast<int>(std::lround(milliseconds)));
}

float Timebase::Period() {
    return driver_.GetSamplePeriod(record_.Running, record_.HeldSamplePeriod);
}
