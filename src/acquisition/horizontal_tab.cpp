#include "acquisition/horizontal_tab.h"

#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/settings/setting_names.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings.h"

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

HorizontalTab::HorizontalTab(Record& record, SettingsStore& settings, const Controls& controls, Calls calls)
    : record_(record), settings_(settings), controls_(controls), calls_(std::move(calls)) {}

void HorizontalTab::RestoreTabSettings() {
    const QString application = SettingsApplication();
    const QString section = HorzTabSection(record_.SettingsSuffix);
    const double rate = settings_.GetReal(application, section, RateKey(), 0);
    controls_.UpdateRateSlider->SetSliderValue(rate >= 0 && rate <= 1 ? static_cast<float>(rate) : 0.0F);
    controls_.DelayKnob->SetKnobValue(settings_.GetInteger(application, section, DelayKey(), kNoDelay));
    int channel = settings_.GetInteger(application, section, SourceKey(), 1);
    calls_.TrigChanButton_Click(channel);
}

void HorizontalTab::Form_Unload() {
    const auto save = [this](const QString& key, const QString& text) {
        settings_.Save(SettingsApplication(), HorzTabSection(record_.SettingsSuffix), key, text);
    };
    save(RateKey(), RealText(controls_.UpdateRateSlider->SliderValue()));
    save(DelayKey(), QString::number(controls_.DelayKnob->KnobValue()));
    save(SourceKey(), QString::number(record_.TriggerChannel));
}
