#include "acquisition/acquisition_settings.h"

#include "acquisition/timebase.h"
#include "acquisition/trigger.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/settings/setting_names.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings.h"

namespace {

constexpr std::int32_t kDefaultTimeBase = 7; // 1us/div
constexpr std::int32_t kDefaultType = 3;     // rising edge
constexpr std::int32_t kTypeMark = 0x80;     ///< set in every stored type

QString TimeBaseKey() {
    return QStringLiteral("TimeBase");
}
QString ThresholdKey() {
    return QStringLiteral("TriggerThreshold");
}
QString PreTriggerKey() {
    return QStringLiteral("PreTrigger");
}
QString ModeKey() {
    return QStringLiteral("TriggerMode");
}
QString TypeKey() {
    return QStringLiteral("TriggerType");
}

bool Within(std::int32_t value, std::int32_t last) {
    return value >= 0 && value <= last;
}

} // namespace

AcquisitionSettings::AcquisitionSettings(Record& record, SettingsStore& settings, Trigger& trigger,
                                         Timebase& timebase, const Controls& controls)
    : record_(record), settings_(settings), trigger_(trigger), timebase_(timebase), controls_(controls) {}

void AcquisitionSettings::Restore() {
    const QString application = SettingsApplication();
    const QString section = ScopeSection(record_.SettingsSuffix);
    controls_.TimeBaseKnob->SetKnobValue(
        settings_.GetInteger(application, section, TimeBaseKey(), kDefaultTimeBase));
    controls_.TriggerKnob->SetKnobValue(settings_.GetInteger(application, section, ThresholdKey(), 0));
    controls_.PretriggerSlider->SetSliderValue(
        ParseLocaleReal(settings_.Get(application, section, PreTriggerKey(), QStringLiteral("0.5"))));
    std::int32_t mode = settings_.GetInteger(application, section, ModeKey(), 0);
    std::int32_t type = settings_.GetInteger(application, section, TypeKey(), kDefaultType) & ~kTypeMark;
    mode = Within(mode, 2) ? mode : 0;
    type = Within(type, 3) ? type : kDefaultType;
    trigger_.Restore(mode, type);
    timebase_.Restore();
}

void AcquisitionSettings::Save() {
    const auto save = [this](const QString& key, const QString& text) {
        settings_.Save(SettingsApplication(), ScopeSection(record_.SettingsSuffix), key, text);
    };
    save(TimeBaseKey(), QString::number(controls_.TimeBaseKnob->KnobValue()));
    save(ThresholdKey(), QString::number(controls_.TriggerKnob->KnobValue()));
    save(PreTriggerKey(), SeparatedRealText(controls_.PretriggerSlider->SliderValue()));
    save(ModeKey(), QString::number(record_.TrigMode));
    save(TypeKey(), QString::number(record_.TrigType | kTypeMark));
}
