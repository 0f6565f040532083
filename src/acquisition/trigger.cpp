#include "acquisition/trigger.h"

#include "acquisition/colours.h"
#include "acquisition/trigger_modes.h"
#include "acquisition/trigger_status.h"
#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/number_format.h"
#include "controls/slider_control.h"
#include "frame/record/channel_sets.h"
#include "frame/record/record.h"

#include <QLabel>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace {

constexpr int kTrigTypes = 4;
constexpr char16_t kFirstTypeGlyph = u'0';
constexpr float kDeepestPretrigger = 0.99F;
constexpr Colour kNotSource = 0xFFFFFF;

} // namespace

Trigger::Controls Trigger::Controls::Of(const Form& main, const Form& horizontal, const Form& largeTime,
                                        const ChannelForms& channels) {
    const auto lineOver = [](const Form& form, const char* canvas) {
        return form.control<QWidget>(canvas)->findChild<QWidget*>("TriggerLine");
    };
    Controls controls{.AutoTriggerTimer = main.timer("AutoTriggerTimer"),
                      .TriggerLineTimer = main.timer("TriggerLineTimer"),
                      .TrigModeButton = main.control<ButtonControl1>("TrigModeButton"),
                      .TrigTypeButton = main.control<ButtonControl1>("TrigTypeButton"),
                      .TriggerKnob = main.control<KnobControl1>("TriggerKnob"),
                      .PretriggerSlider = main.control<SliderControl1>("PretriggerSlider"),
                      .TriggerStatusLabel = main.control<QLabel>("TriggerStatusLabel"),
                      .TriggerLine = lineOver(main, "MainPlotCanvas"),
                      .LargeTriggerLine = lineOver(largeTime, "Canvas"),
                      .Source = {}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const Form& tab = *channels[channel];
        controls.Source[channel] = {
            .TrigChanButton = horizontal.control<ButtonControl1>("TrigChanButton", channel),
            .UpdateRateMarkerLabel = horizontal.control<QLabel>("UpdateRateMarkerLabel", channel),
            .TabTrigChanButton = tab.control<ButtonControl1>("TrigChanButton"),
            .TriggerChannelLine = tab.control<QWidget>("TriggerChannelLine")};
    }
    return controls;
}

Trigger::Trigger(Record& record, Driver& driver, AcquisitionState& state, const Controls& controls,
                 Calls calls)
    : record_(record), driver_(driver), state_(state), controls_(controls), calls_(std::move(calls)) {}

void Trigger::Connect() {
    connect(controls_.TrigModeButton, &ButtonControl1::Click, this, &Trigger::TrigModeButton_Click);
    connect(controls_.TrigTypeButton, &ButtonControl1::Click, this, &Trigger::TrigTypeButton_Click);
    connect(controls_.TriggerKnob, &KnobControl1::Change, this, &Trigger::TriggerKnob_Change);
    connect(controls_.TriggerKnob, &KnobControl1::Done, this, &Trigger::TriggerKnob_Done);
    connect(controls_.TriggerLineTimer, &QTimer::timeout, this, &Trigger::TriggerLineTimer_Timer);
    connect(controls_.PretriggerSlider, &SliderControl1::Change, this, &Trigger::PretriggerSlider_Change);
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        connect(controls_.Source[ch].TrigChanButton, &ButtonControl1::Click, this, [this, ch] {
            int channel = ch;
            TrigChanButton_Click(channel);
        });
    }
}

void Trigger::TrigModeButton_Click() {
    controls_.AutoTriggerTimer->stop();
    record_.TrigMode = (record_.TrigMode + 1) % kTrigModes;
    controls_.AutoTriggerTimer->start();
    controls_.TrigModeButton->SetButtonCaption(record_.TrigModeCaption[record_.TrigMode]);
    SetTextColour(*controls_.TriggerStatusLabel, kStatusGrey);
    const bool norm = record_.TrigMode == kNormMode;
    record_.TriggerMark = norm && !record_.RISMode ? 1 : -1;
    state_.AutoTicks = kProbeSoonTicks;
    ShowTypeCaption();
    ForScopesInUse(record_, [&](int ch) { driver_.SetNormTrig(ch, norm); });
    PretriggerSlider_Change();
    calls_.SetDefaultLayering();
}

void Trigger::TrigTypeButton_Click() {
    if (record_.TrigMode == kFreeMode) {
        return;
    }
    StepType();
    calls_.SetDefaultLayering();
}

void Trigger::StepType() {
    record_.TrigType = (record_.TrigType + 1) % kTrigTypes;
    ShowTypeCaption();
    ForScopesInUse(record_, [this](int ch) { driver_.SetTrigType(ch, record_.TrigType); });
}

void Trigger::Restore(int mode, int type) {
    record_.TrigMode = ModeBefore(mode == kNormMode ? kAutoMode : mode);
    TrigModeButton_Click();
    record_.TrigType = (type + kTrigTypes - 1) % kTrigTypes;
    if (record_.TrigMode == kFreeMode) {
        StepType(); // the click does nothing in free mode
    } else {
        TrigTypeButton_Click();
    }
    // A module that was just opened has a depth of its own, and a start that interleaves sends none.
    SendDepth(std::min(controls_.PretriggerSlider->SliderValue(), kDeepestPretrigger));
}

void Trigger::ShowTypeCaption() {
    const char16_t glyph =
        record_.TrigMode == kFreeMode ? u' ' : static_cast<char16_t>(kFirstTypeGlyph + record_.TrigType);
    controls_.TrigTypeButton->SetButtonCaption(QString(QChar(glyph)));
}

void Trigger::TriggerKnob_Change() {
    controls_.TriggerLineTimer->stop();
    const auto percent = static_cast<float>(controls_.TriggerKnob->KnobValue());
    ForScopesInUse(record_, [&](int ch) { driver_.SetTrigThresh(ch, percent); });
    calls_.PlotNow();
    ShowTriggerLines(true);
    state_.AutoTicks = kProbeSoonTicks;
}

void Trigger::TriggerKnob_Done() {
    controls_.TriggerLineTimer->start();
}

void Trigger::TriggerLineTimer_Timer() {
    controls_.TriggerLineTimer->stop();
    ShowTriggerLines(false);
}

void Trigger::ShowTriggerLines(bool visible) {
    for (QWidget* line : {controls_.TriggerLine, controls_.LargeTriggerLine}) {
        line->setVisible(visible);
    }
}

void Trigger::PretriggerSlider_Change() {
    if (record_.TriggerMark != 1) {
        return;
    }
    // The put raises Change again, which then finds the depth itself.
    if (controls_.PretriggerSlider->SliderValue() > kDeepestPretrigger) {
        controls_.PretriggerSlider->SetSliderValue(kDeepestPretrigger);
    }
    const float depth = controls_.PretriggerSlider->SliderValue();
    controls_.PretriggerSlider->setToolTip(QStringLiteral("Current trigger position: ") +
                                           FormatNumber(static_cast<double>(depth), "0.0%"));
    SendDepth(depth);
}

void Trigger::SendDepth(float depth) {
    ForScopesInUse(record_, [&](int ch) { driver_.SetPreTrigDepth(ch, depth); });
}

void Trigger::TrigChanButton_Click(int& channel) {
    if (!InUse(channel)) {
        channel = record_.MasterChannel;
    }
    record_.TriggerChannel = channel;
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        const SourceMarks& marks = controls_.Source[ch];
        SetBackColour(*marks.UpdateRateMarkerLabel, kButtonFace);
        marks.TabTrigChanButton->SetButtonFillColor(ToQColor(kNotSource));
        driver_.SetTrigMaster(ch, false);
        marks.TriggerChannelLine->setVisible(false);
    }
    const SourceMarks& marks = controls_.Source[channel];
    SetBackColour(*marks.UpdateRateMarkerLabel, record_.ChannelColour[channel]);
    marks.TabTrigChanButton->SetButtonFillColor(ToQColor(record_.ChannelColour[channel]));
    driver_.SetTrigMaster(channel, true);
    marks.TriggerChannelLine->setVisible(true);
}

bool Trigger::InUse(int channel) const {
    return channel >= 1 && channel <= kScopeChannels && record_.ScopeInUse[channel];
}
