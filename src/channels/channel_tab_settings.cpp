#include "channels/channel_tab.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "frame/record/record.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings_section.h"

#include <QRadioButton>
#include <cmath>

namespace {

/// A null that was taken from a held record on a finer range is as large as that range makes it. More than
/// this no measurement gives.
constexpr double kLargestNull = 1e6;

QString RangeKey(int range) {
    return QStringLiteral("Range%1").arg(range);
}

} // namespace

void ChannelTab::RestoreTabSettings() {
    const int ch = Channel();
    RestoreToggle(QStringLiteral("ChannelInvert"), false, record_.ChannelInvert[ch],
                  &ChannelTab::InvertButton_Click);
    RestoreToggle(QStringLiteral("ChannelOn"), true, record_.ChannelOn[ch],
                  &ChannelTab::ChannelOnButton_Click);
    RestoreToggle(QStringLiteral("ChannelFFT"), false, record_.ChannelFFT[ch], &ChannelTab::FFTButton_Click);
    RestoreToggle(QStringLiteral("ChannelBWLimit"), false, record_.ChannelBWLimit[ch],
                  &ChannelTab::BWLimitButton_Click);
    RestoreOptions(Coupling, QStringLiteral("Coupling"), 1);
    Coupling_Click(0);
    RestoreOptions(ProbeType, QStringLiteral("ProbeType"), 1);
    ProbeType_Click(0);
    for (KnobControl1* knob : {VoltsKnob, OffsetKnob}) {
        knob->SetKnobValue(Section().Integer(knob->objectName(), 0));
    }
    RestoreNullTable();
}

void ChannelTab::RestoreToggle(const QString& key, bool fallback, bool& state, void (ChannelTab::*click)()) {
    // One road paints the control and tells the instrument: the click turns the opposite over.
    state = !Section().Boolean(key, fallback);
    (this->*click)();
}

void ChannelTab::RestoreOptions(std::span<QRadioButton* const> options, const QString& key, int fallback) {
    const SettingsSection section = Section();
    for (int i = 0; i < static_cast<int>(options.size()); ++i) {
        options[static_cast<std::size_t>(i)]->setChecked(
            section.Boolean(key + QString::number(i), i == fallback));
    }
}

SettingsSection ChannelTab::Section() const {
    return {settings_, ChannelSection(Channel(), record_.SettingsSuffix)};
}

SettingsSection ChannelTab::NullSection() const {
    return {settings_, OffsetNullSection(), CalibrationApplication(record_.ScopeSerial[Channel()])};
}

void ChannelTab::RestoreNullTable() {
    const int ch = Channel();
    const SettingsSection section = NullSection();
    for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
        const double null = section.Real(RangeKey(range), 0);
        record_.OffsetNull(ch, range) = std::fabs(null) <= kLargestNull ? static_cast<float>(null) : 0;
    }
}

void ChannelTab::Form_Unload() {
    const int ch = Channel();
    if (!record_.ScopeInUse[ch]) {
        return;
    }
    const SettingsSection section = Section();
    section.SaveBoolean(QStringLiteral("ChannelInvert"), record_.ChannelInvert[ch]);
    section.SaveBoolean(QStringLiteral("ChannelOn"), record_.ChannelOn[ch]);
    section.SaveBoolean(QStringLiteral("ChannelFFT"), record_.ChannelFFT[ch]);
    section.SaveBoolean(QStringLiteral("ChannelBWLimit"), record_.ChannelBWLimit[ch]);
    for (std::size_t i = 0; i < Coupling.size(); ++i) {
        section.SaveBoolean(QStringLiteral("Coupling%1").arg(i), Coupling[i]->isChecked());
    }
    for (std::size_t i = 0; i < ProbeType.size(); ++i) {
        section.SaveBoolean(QStringLiteral("ProbeType%1").arg(i), ProbeType[i]->isChecked());
    }
    for (const KnobControl1* knob : {VoltsKnob, OffsetKnob}) {
        section.SaveInteger(knob->objectName(), knob->KnobValue());
    }
    SaveNullTable();
}

void ChannelTab::SaveNullTable() {
    const int ch = Channel();
    const SettingsSection section = NullSection();
    for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
        section.Save(RangeKey(range), RealText(record_.OffsetNull(ch, range)));
    }
}
