#include "channels/math_channel.h"

#include "channels/math_row.h"
#include "channels/volts_table.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/rounding.h"
#include "frame/helpers/helpers.h"
#include "frame/record/record.h"
#include "frame/record/steps.h"

#include <QCheckBox>
#include <QComboBox>

MathChannel::Controls MathChannel::Controls::Of(const Form& tab, int number) {
    const QByteArray name = "Math" + QByteArray::number(number);
    const QByteArray combo = name + "Combo";
    Controls controls{.MathChannelEn = tab.control<QCheckBox>("MathChannelEn", number),
                      .MathCombo = {},
                      .VoltsKnob = tab.control<KnobControl1>(name + "VoltsKnob"),
                      .OffsetKnob = tab.control<KnobControl1>(name + "OffsetKnob")};
    for (std::size_t list = 0; list < kLists; ++list) {
        controls.MathCombo[list] = tab.control<QComboBox>(combo, static_cast<int>(list));
    }
    return controls;
}

MathChannel::MathChannel(int number, Record& record, const Controls& controls,
                         const PerScope<const ChannelScale*>& operands)
    : record_(record), channel_(kScopeChannels + number), controls_(controls), operands_(operands) {}

float MathChannel::GetVoltsPerDiv() const {
    return MathKnobToVoltsPerDiv(static_cast<float>(controls_.VoltsKnob->KnobValue()));
}

float MathChannel::GetVoltsPerADCStep() const {
    return VoltsPerADCStep(GetVoltsPerDiv());
}

float MathChannel::GetOffset() const {
    return static_cast<float>(controls_.OffsetKnob->KnobValue());
}

int MathChannel::GetRange() const {
    return controls_.VoltsKnob->KnobValue();
}

// By position and not by the text of the entry: with a gap in the stack the second entry is channel 2.
const ChannelScale* MathChannel::Operand(List list, int& channel) const {
    channel = controls_.MathCombo[list]->currentIndex() + 1;
    return channel >= 1 && channel <= kScopeChannels ? operands_[channel] : nullptr;
}

double MathChannel::Ground(int channel) const {
    return StepsOfPercent(static_cast<double>(record_.ChannelOffsetPercent[channel]));
}

void MathChannel::Compute() {
    record_.ChannelOn[channel_] = controls_.MathChannelEn->checkState() != Qt::Unchecked;
    int a = 0;
    int b = 0;
    const ChannelScale* first = Operand(kFirstOperand, a);
    const ChannelScale* second = Operand(kSecondOperand, b);
    if (!record_.ChannelOn[channel_] || record_.NumScopesFound == 0 || first == nullptr ||
        second == nullptr) {
        return;
    }
    const MathOperator op = MathOperatorOf(controls_.MathCombo[kOperator]->currentText());
    RatchetUpVoltsPerDiv(first->GetVoltsPerDiv(), second->GetVoltsPerDiv());

    const float percent = GroundPercent(*controls_.OffsetKnob);
    record_.ChannelOffsetPercent[channel_] = percent;
    const int offset = RoundToEven(StepsOfPercent(static_cast<double>(percent)));
    ComputeMathRow(op, {record_.SampleData.row(a), Ground(a), first->GetVoltsPerADCStep()},
                   {record_.SampleData.row(b), Ground(b), second->GetVoltsPerADCStep()},
                   {GetVoltsPerDiv(), offset}, record_.SampleData.row(channel_), ChannelTable::stride(),
                   record_.SampleDepth + 1); // a cursor at the very end stands one step past the last
}

void MathChannel::RatchetUpVoltsPerDiv(float first, float second) {
    for (const float volts : {first, second}) {
        const auto position = MathVoltsPerDivToKnob(volts);
        if (volts > GetVoltsPerDiv() && position && *position != controls_.VoltsKnob->KnobValue()) {
            controls_.VoltsKnob->SetKnobValue(*position);
        }
    }
}
