#pragma once

#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"

#include <array>

class Form;
class KnobControl1;
class QCheckBox;
class QComboBox;
struct Record;

/// A channel that is worked out of two others, number 1 or 2 of the math tab. It has volts of its own, as an
/// instrument channel does.
class MathChannel : public ChannelScale {
  public:
    enum List : std::size_t { kFirstOperand, kOperator, kSecondOperand, kLists };
    struct Controls {
        QCheckBox* MathChannelEn;
        std::array<QComboBox*, kLists> MathCombo; ///< first operand, operator, second operand
        KnobControl1* VoltsKnob;
        KnobControl1* OffsetKnob;
        static Controls Of(const Form& tab, int number);
    };

    /// operands: where the volts of the instrument channels come from.
    MathChannel(int number, Record& record, const Controls& controls,
                const PerScope<const ChannelScale*>& operands);

    int Channel() const { return channel_; } ///< 5 or 6
    const Controls& Parts() const { return controls_; }

    float GetVoltsPerDiv() const override;
    float GetVoltsPerADCStep() const override;
    float GetOffset() const override;
    int GetRange() const override;

    /// Works its samples out anew. The knob may move in it, and its handlers run.
    void Compute();
    /// Keeps the volts per division at or above those of both operands. What is none of the knob's values
    /// changes nothing.
    void RatchetUpVoltsPerDiv(float first, float second);

  private:
    const ChannelScale* Operand(List list, int& channel) const;
    double Ground(int channel) const;

    Record& record_;
    int channel_;
    Controls controls_;
    PerScope<const ChannelScale*> operands_;
};
