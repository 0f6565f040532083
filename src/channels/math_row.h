#pragma once

#include <QStringView>
#include <cstddef>

/// What a math channel does with the volts of its two operands.
enum class MathOperator { None, Add, Subtract, Multiply, Divide };

/// The operator of an entry of the operator list, "+", "-", "x" or "÷"; None for any other text.
MathOperator MathOperatorOf(QStringView text);

/// One operand's samples and how they become volts.
struct MathOperand {
    const float* row;   ///< ADC steps, the samples stride apart
    double ground;      ///< ADC steps, the offset that the samples contain
    float voltsPerStep; ///< of the operand's channel
};

/// The scale in which the result is told.
struct MathScale {
    float voltsPerDiv; ///< ten divisions are 127 steps
    int offset;        ///< ADC steps
};

/// Works out count samples of result, in ADC steps of its own scale, from two operands. Volts are kept in 32
/// bits, what is made of them in 64. Without an operator the offset is added to what the result held.
///
/// A divisor below 1e-07 V gives +-127 steps by its sign, and nothing if it is exactly 0. What is no number
/// counts as 0, and what is beyond a 32-bit real as the largest there is, so that no later sum or picture
/// meets either. stride: from one sample to the next, the same in all three rows.
void ComputeMathRow(MathOperator op, const MathOperand& a, const MathOperand& b, const MathScale& scale,
                    float* result, std::ptrdiff_t stride, int count);
