#include "channels/math_row.h"

#include <cmath>
#include <limits>

namespace {

constexpr double kSteps = 127;
constexpr double kDivisions = 10;
constexpr float kLeastDivisor = 1e-07F; // volts

float Volts(const MathOperand& operand, std::ptrdiff_t at) {
    return static_cast<float>((static_cast<double>(operand.row[at]) - operand.ground) *
                              static_cast<double>(operand.voltsPerStep));
}

/// Selections and no branches, like what is made of a driver's samples.
float Kept(double steps) {
    constexpr double kMost = std::numeric_limits<float>::max();
    steps = steps == steps ? steps : 0;
    steps = steps < -kMost ? -kMost : steps;
    return static_cast<float>(steps > kMost ? kMost : steps);
}

template <class Combine>
void Fill(const MathOperand& a, const MathOperand& b, int offset, float* result, std::ptrdiff_t stride,
          int count, Combine combine) {
    const auto level = static_cast<float>(offset);
    const std::ptrdiff_t end = count * stride;
    for (std::ptrdiff_t at = 0; at < end; at += stride) {
        result[at] = Kept(combine(Volts(a, at), Volts(b, at))) + level;
    }
}

double Sign(float value) {
    return static_cast<double>(value > 0) - static_cast<double>(value < 0);
}

} // namespace

MathOperator MathOperatorOf(QStringView text) {
    if (text.size() != 1) {
        return MathOperator::None;
    }
    switch (text.front().unicode()) {
    case u'+':
        return MathOperator::Add;
    case u'-':
        return MathOperator::Subtract;
    case u'x':
        return MathOperator::Multiply;
    case 0xF7:
        return MathOperator::Divide;
    default:
        return MathOperator::None;
    }
}

void ComputeMathRow(MathOperator op, const MathOperand& a, const MathOperand& b, const MathScale& scale,
                    float* result, std::ptrdiff_t stride, int count) {
    const double span = static_cast<double>(scale.voltsPerDiv) * kDivisions;
    const auto steps = [span](double volts) { return volts * kSteps / span; };
    switch (op) {
    case MathOperator::Add:
        Fill(a, b, scale.offset, result, stride, count, [&](double va, double vb) { return steps(vb + va); });
        break;
    case MathOperator::Subtract:
        Fill(a, b, scale.offset, result, stride, count, [&](double va, double vb) { return steps(va - vb); });
        break;
    case MathOperator::Multiply:
        Fill(a, b, scale.offset, result, stride, count, [&](double va, double vb) { return steps(vb * va); });
        break;
    case MathOperator::Divide:
        Fill(a, b, scale.offset, result, stride, count, [&](float va, float vb) {
            return std::fabs(vb) < kLeastDivisor ? Sign(vb) * kSteps
                                                 : steps(static_cast<double>(va) / static_cast<double>(vb));
        });
        break;
    case MathOperator::None:
        for (int i = 0; i < count; ++i) {
            result[i * stride] += static_cast<float>(scale.offset);
        }
        break;
    }
}
