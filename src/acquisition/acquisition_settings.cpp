#include "acquisition/acquisition_settings.h"

#include "acquisition/timebase.h"
#include "acquisition/trigger.h"
#include "acquisition/trigger_modes.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings_section.h"

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

AcquisitionSettings::Controls AcquisitionSettings::Controls::Of(const Form& main) {
    return {.TimeBaseKnob = main.control<KnobControl1>("TimeBaseKnob"),
            .TriggerKnob = main.control<KnobControl1>("TriggerKnob"),
            .PretriggerSlider = main.control<SliderControl1>("PretriggerSlider")};
}

AcquisitionSettings::AcquisitionSettings(Record& record, SettingsStore& settings, Trigger& trigger,
                                         Timebase& timebase, const Controls& controls)
    : record_(record), settings_(settings), trigger_(trigger), timebase_(timebase), controls_(controls) {}

void AcquisitionSettings::Restore() {
    const SettingsSection section(settings_, ScopeSection(record_.SettingsSuffix));
    controls_.TimeBaseKnob->SetKnobValue(section.Integer(TimeBaseKey(), kDefaultTimeBase));
    controls_.TriggerKnob->SetKnobValue(section.Integer(ThresholdKey(), 0));
    controls_.PretriggerSlider->SetSliderValue(
        ParseLocaleReal(section.Text(PreTriggerKey(), QStringLiteral("0.5"))));
    std::int32_t mode = section.Integer(ModeKey(), kAutoMode);
    std::int32_t type = section.Integer(TypeKey(), kDefaultType) & ~kTypeMark;
    mode = Within(mode, kTrigModes - 1) ? mode : kAutoMode;
    type = Within(type, 3) ? type : kDefaultType;
    trigger_.Restore(mode, type);
    timebase_.Restore();
}

void AcquisitionSettings::Save() {
    const SettingsSection section(settings_, ScopeSection(record_.SettingsSuffix));
    section.SaveInteger(TimeBaseKey(), controls_.TimeBaseKnob->KnobValue());
    section.SaveInteger(ThresholdKey(), controls_.TriggerKnob->KnobValue());
    section.Save(PreTriggerKey(), SeparatedRealText(controls_.PretriggerSlider->SliderValue()));
    section.SaveInteger(ModeKey(), record_.TrigMode);
    section.SaveInteger(TypeKey(), record_.TrigType | kTypeMark);
}
