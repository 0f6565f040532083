#include "acquisition/horizontal_tab.h"

#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings_section.h"

#include <utility>

namespace {

constexpr std::int32_t kNoDelay = -32768;

QString RateKey() {
    return QStringLiteral("UpdateRate");
}
QString DelayKey() {
    return QStringLiteral("DelayKnob");
}
QString SourceKey() {
    return QStringLiteral("TriggerChannel");
}

} // namespace

HorizontalTab::Controls HorizontalTab::Controls::Of(const Form& tab) {
    return {.UpdateRateSlider = tab.control<SliderControl1>("UpdateRateSlider"),
            .DelayKnob = tab.control<KnobControl1>("DelayKnob")};
}

HorizontalTab::HorizontalTab(Record& record, SettingsStore& settings, const Controls& controls, Calls calls)
    : record_(record), settings_(settings), controls_(controls), calls_(std::move(calls)) {}

void HorizontalTab::RestoreTabSettings() {
    const SettingsSection section(settings_, HorzTabSection(record_.SettingsSuffix));
    const double rate = section.Real(RateKey(), 0);
    controls_.UpdateRateSlider->SetSliderValue(rate >= 0 && rate <= 1 ? static_cast<float>(rate) : 0.0F);
    controls_.DelayKnob->SetKnobValue(section.Integer(DelayKey(), kNoDelay));
    int channel = section.Integer(SourceKey(), 1);
    calls_.TrigChanButton_Click(channel);
}

void HorizontalTab::Form_Unload() {
    const SettingsSection section(settings_, HorzTabSection(record_.SettingsSuffix));
    section.Save(RateKey(), RealText(controls_.UpdateRateSlider->SliderValue()));
    section.SaveInteger(DelayKey(), controls_.DelayKnob->KnobValue());
    section.SaveInteger(SourceKey(), record_.TriggerChannel);
}
