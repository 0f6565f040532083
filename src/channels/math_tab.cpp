#include "channels/math_tab.h"

#include "channels/volts_table.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/number_format.h"
#include "controls/panel_design.h"
#include "frame/helpers/helpers.h"
#include "frame/record/record.h"
#include "frame/settings/settings_section.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <utility>

namespace {

constexpr const char* kListKeys[] = {"ChannelA", "Operator", "ChannelB"};

/// An entry that is not in the list (the channel has gone) leaves the selection as it is.
void SetComboIndexChecked(QComboBox* list, int index) {
    if (index < 0 && list->count() > 0) {
        list->setCurrentIndex(0);
    } else if (index < list->count()) {
        list->setCurrentIndex(index);
    }
}

QString BoxKey(int number) {
    return QStringLiteral("MathChannelEn%1").arg(number);
}
QString SpectrumKey(int number) {
    return QStringLiteral("Math%1FFT").arg(number);
}
QString PlotTypeKey(std::size_t option) {
    return QStringLiteral("FFTPlotType%1").arg(option);
}
QString WindowKey() {
    return QStringLiteral("FFTWindow");
}

} // namespace

MathTab::MathTab(const Form& form, Record& record, SettingsStore& settings,
                 const PerScope<const ChannelScale*>& operands, Calls calls)
    : record_(record), settings_(settings),
      calls_(std::move(calls)), channels_{MathChannel(1, record, MathChannel::Controls::Of(form, 1),
                                                      operands),
                                          MathChannel(2, record, MathChannel::Controls::Of(form, 2),
                                                      operands)},
      FFTButton{form.control<ButtonControl1>("FFTButton", 0), form.control<ButtonControl1>("FFTButton", 1)},
      FFTWindowCombo(form.control<QComboBox>("FFTWindowCombo")),
      FFTPlotType{form.control<QRadioButton>("FFTPlotType", 0),
                  form.control<QRadioButton>("FFTPlotType", 1)} {}

void MathTab::Connect() {
    for (int index = 0; index < kMathChannels; ++index) {
        ConnectChannel(index);
    }
    connect(FFTWindowCombo, &QComboBox::activated, this, [this] { calls_.PlotNow(); });
    for (QRadioButton* option : FFTPlotType) {
        connect(option, &QRadioButton::clicked, this, [this] { calls_.PlotNow(); });
    }
}

void MathTab::ConnectChannel(int index) {
    const auto& parts = channels_[static_cast<std::size_t>(index)].Parts();
    for (QComboBox* list : parts.MathCombo) {
        connect(list, &QComboBox::activated, this, &MathTab::Recompute);
    }
    connect(parts.VoltsKnob, &KnobControl1::Change, this, &MathTab::Recompute);
    connect(parts.OffsetKnob, &KnobControl1::Change, this, &MathTab::Recompute);
    connect(parts.VoltsKnob, &KnobControl1::KnobXlateValue, this,
            [knob = parts.VoltsKnob](float value, QString& text) {
                text = ShortestText(MathKnobToVoltsPerDiv(value)) + knob->KnobValueFormat();
            });
    connect(parts.OffsetKnob, &KnobControl1::KnobXlateValue, this,
            [knob = parts.OffsetKnob](float value, QString& text) {
                text = ShortestText(2 * static_cast<double>(value) / (knob->KnobMax() - knob->KnobMin()));
            });
    connect(parts.MathChannelEn, &QCheckBox::clicked, this,
            [this, index] { MathChannelEn_Click(index + 1); });
    connect(FFTButton[static_cast<std::size_t>(index)], &ButtonControl1::Click, this,
            [this, index] { FFTButton_Click(index); });
}

void MathTab::DoMaths() {
    for (MathChannel& channel : channels_) {
        channel.Compute();
    }
}

void MathTab::Recompute() {
    DoMaths();
    calls_.PlotNow();
}

void MathTab::MathChannelEn_Click(int index) {
    const MathChannel& channel = channels_[static_cast<std::size_t>(index - 1)];
    const bool on = channel.Parts().MathChannelEn->isChecked();
    calls_.SetGroundLabelVisible(channel.Channel(), on);
    calls_.SetStatsVisible(channel.Channel(), on);
    Recompute();
}

void MathTab::FFTButton_Click(int index) {
    const auto at = static_cast<std::size_t>(index);
    bool& on = record_.ChannelFFT[channels_[at].Channel()];
    on = !on;
    SetButtonFill(FFTButton[at], on, kAttention, kSwitchOff);
    Recompute();
}

template <class Visit> void MathTab::ForLists(Visit visit) {
    for (int number = 1; number <= kMathChannels; ++number) {
        const auto& lists = channels_[static_cast<std::size_t>(number - 1)].Parts().MathCombo;
        for (std::size_t list = 0; list < lists.size(); ++list) {
            visit(QStringLiteral("Math%1").arg(number) + QLatin1String(kListKeys[list]), lists[list]);
        }
    }
}

template <class Visit> void MathTab::ForKnobs(Visit visit) {
    for (const MathChannel& channel : channels_) {
        for (KnobControl1* knob : {channel.Parts().OffsetKnob, channel.Parts().VoltsKnob}) {
            visit(knob->objectName(), knob);
        }
    }
}

void MathTab::RestoreTabSettings() {
    const SettingsSection section(settings_, MathTabSection(record_.SettingsSuffix));
    const auto number = [&](const QString& key) { return section.Integer(key, 0); };
    const int window = number(WindowKey());
    if (window >= 0 && window < FFTWindowCombo->count()) {
        FFTWindowCombo->setCurrentIndex(window);
    }
    for (std::size_t option = 0; option < FFTPlotType.size(); ++option) {
        FFTPlotType[option]->setChecked(section.Boolean(PlotTypeKey(option), true));
    }
    for (int index = 1; index <= kMathChannels; ++index) {
        channels_[static_cast<std::size_t>(index - 1)].Parts().MathChannelEn->setChecked(
            number(BoxKey(index)) != 0);
        MathChannelEn_Click(index);
    }
    ForLists([&](const QString& key, QComboBox* list) { SetComboIndexChecked(list, number(key)); });
    ForKnobs([&](const QString& key, KnobControl1* knob) { knob->SetKnobValue(number(key)); });
    for (int index = 0; index < kMathChannels; ++index) {
        // One road paints the button: the click turns the opposite over.
        record_.ChannelFFT[channels_[static_cast<std::size_t>(index)].Channel()] =
            !section.Boolean(SpectrumKey(index + 1), false);
        FFTButton_Click(index);
    }
}

void MathTab::Form_Unload() {
    const SettingsSection section(settings_, MathTabSection(record_.SettingsSuffix));
    section.SaveInteger(WindowKey(), FFTWindowCombo->currentIndex());
    for (std::size_t option = 0; option < FFTPlotType.size(); ++option) {
        section.SaveBoolean(PlotTypeKey(option), FFTPlotType[option]->isChecked());
    }
    for (int index = 1; index <= kMathChannels; ++index) {
        section.SaveInteger(
            BoxKey(index),
            channels_[static_cast<std::size_t>(index - 1)].Parts().MathChannelEn->isChecked() ? 1 : 0);
    }
    ForLists(
        [&](const QString& key, const QComboBox* list) { section.SaveInteger(key, list->currentIndex()); });
    ForKnobs(
        [&](const QString& key, const KnobControl1* knob) { section.SaveInteger(key, knob->KnobValue()); });
    for (int index = 0; index < kMathChannels; ++index) {
        section.SaveBoolean(SpectrumKey(index + 1),
                            record_.ChannelFFT[channels_[static_cast<std::size_t>(index)].Channel()]);
    }
}
