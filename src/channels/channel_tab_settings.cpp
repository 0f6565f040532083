#include "channels/channel_tab.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "frame/settings/setting_names.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings.h"

#include <QRadioButton>
#include <cmath>

namespace {

/// A null that was taken from a held record on a finer range is as large as that range makes it. More than
/// this no measurement gives.
constexpr double kLargestNull = 1e6;

} // namespace

void ChannelTab::RestoreTabSettings() {
    const int ch = Channel();
    const QString section = ChannelSection(ch, record_.SettingsSuffix);
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
        knob->SetKnobValue(settings_.GetInteger(SettingsApplication(), section, knob->objectName(), 0));
    }
    RestoreNullTable();
}

void ChannelTab::RestoreToggle(const QString& key, bool fallback, bool& state, void (ChannelTab::*click)()) {
    const QString section = ChannelSection(Channel(), record_.SettingsSuffix);
    // One road paints the control and tells the instrument: the click turns the opposite over.
    state = !settings_.GetBoolean(SettingsApplication(), section, key, fallback);
    (this->*click)();
}

void ChannelTab::RestoreOptions(std::span<QRadioButton* const> options, const QString& key, int fallback) {
    const QString section = ChannelSection(Channel(), record_.SettingsSuffix);
    for (int i = 0; i < static_cast<int>(options.size()); ++i) {
        options[static_cast<std::size_t>(i)]->setChecked(
            settings_.GetBoolean(SettingsApplication(), section, key + QString::number(i), i == fallback));
    }
}

void ChannelTab::RestoreNullTable() {
    const int ch = Channel();
    for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
        const double null = settings_.GetReal(CalibrationApplication(record_.ScopeSerial[ch]),
                                              OffsetNullSection(), QStringLiteral("Range%1").arg(range), 0);
        record_.OffsetNull(ch, range) = std::fabs(null) <= kLargestNull ? static_cast<float>(null) : 0;
    }
}

void ChannelTab::Form_Unload() {
    const int ch = Channel();
    if (!record_.ScopeInUse[ch]) {
        return;
    }
    const QString section = ChannelSection(ch, record_.SettingsSuffix);
    const auto save = [&](const QString& key, const QString& text) {
        settings_.Save(SettingsApplication(), section, key, text);
    };
    save(QStringLiteral("ChannelInvert"), BooleanText(record_.ChannelInvert[ch]));
    save(QStringLiteral("ChannelOn"), BooleanText(record_.ChannelOn[ch]));
    save(QStringLiteral("ChannelFFT"), BooleanText(record_.ChannelFFT[ch]));
    save(QStringLiteral("ChannelBWLimit"), BooleanText(record_.ChannelBWLimit[ch]));
    for (std::size_t i = 0; i < Coupling.size(); ++i) {
        save(QStringLiteral("Coupling%1").arg(i), BooleanText(Coupling[i]->isChecked()));
    }
    for (std::size_t i = 0; i < ProbeType.size(); ++i) {
        save(QStringLiteral("ProbeType%1").arg(i), BooleanText(ProbeType[i]->isChecked()));
    }
    for (const KnobControl1* knob : {VoltsKnob, OffsetKnob}) {
        save(knob->objectName(), QString::number(knob->KnobValue()));
    }
    SaveNullTable();
}

void ChannelTab::SaveNullTable() {
    const int ch = Channel();
    for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
        settings_.Save(CalibrationApplication(record_.ScopeSerial[ch]), OffsetNullSection(),
                       QStringLiteral("Range%1").arg(range), RealText(record_.OffsetNull(ch, range)));
    }
}
