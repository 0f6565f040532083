#include "channels/math_row.h"

#include "frame/record/steps.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <type_traits>

namespace {

constexpr float kLeastDivisor = 1e-07F; // volts

constexpr int kBlock = 256; ///< samples: a block of operands and results stays in the nearest cache
using Block = std::array<float, kBlock>;

constexpr std::uint32_t kSize = 0x7FFFFFFF;      ///< bits of a 32-bit real without its sign
constexpr std::uint32_t kNotFinite = 0x7F800000; ///< the size of the endless; no number lies above it

/// True if the size of any value, as bits, and what is added reach the sign bit. Sums and no branches, so
/// that the compiler takes several values at a time.
[[gnu::always_inline]] inline bool AnyReaches(const Block& block, std::uint32_t added) {
    std::uint32_t found = 0;
    for (const float value : block) {
        found |= (std::bit_cast<std::uint32_t>(value) & kSize) + added;
    }
    return (found & ~kSize) != 0;
}

float Kept(float steps) {
    constexpr float kMost = std::numeric_limits<float>::max();
    return std::isnan(steps) ? 0 : std::clamp(steps, -kMost, kMost);
}

float Sign(float value) {
    return static_cast<float>(static_cast<int>(value > 0) - static_cast<int>(value < 0));
}

[[gnu::always_inline]] inline void ReadVolts(const MathOperand& operand, std::ptrdiff_t from,
                                             std::ptrdiff_t stride, int count, Block& volts) {
    Block steps;
    for (int i = 0; i < count; ++i) {
        steps[static_cast<std::size_t>(i)] = operand.row[from + i * stride];
    }
    std::fill(steps.begin() + count, steps.end(), 0.0F);
    for (std::size_t i = 0; i < kBlock; ++i) {
        volts[i] = static_cast<float>((static_cast<double>(steps[i]) - operand.ground) *
                                      static_cast<double>(operand.voltsPerStep));
    }
}

/// Full scale or nothing where the divisor is too small to divide by.
[[gnu::always_inline]] inline void MendQuotients(const Block& divisor, Block& steps) {
    constexpr auto kLeast = std::bit_cast<std::uint32_t>(kLeastDivisor);
    if (AnyReaches(divisor, 0 - kLeast)) {
        for (std::size_t i = 0; i < kBlock; ++i) {
            if (std::fabs(divisor[i]) < kLeastDivisor) {
                steps[i] = Sign(divisor[i]) * kStepsPerHalfScreen;
            }
        }
    }
}

[[gnu::always_inline]] inline void MendNumbers(Block& steps) {
    if (AnyReaches(steps, kSize + 1 - kNotFinite)) {
        std::transform(steps.begin(), steps.end(), steps.begin(), Kept);
    }
}

/// In blocks of neighbours, since the channels of a record lie among each other.
template <class Combine>
[[gnu::always_inline]] inline void Fill(const MathOperand& a, const MathOperand& b, const MathScale& scale,
                                        float* result, std::ptrdiff_t stride, int count, Combine combine) {
    const double stepsPerVolt =
        kStepsOfHalfScreen / (static_cast<double>(scale.voltsPerDiv) * kDivisionsOfHalfScreen);
    const auto level = static_cast<float>(scale.offset);
    Block first;
    Block second;
    Block steps;
    for (int done = 0; done < count; done += kBlock) {
        const int size = std::min(kBlock, count - done);
        const std::ptrdiff_t from = done * stride;
        ReadVolts(a, from, stride, size, first);
        ReadVolts(b, from, stride, size, second);
        for (std::size_t i = 0; i < kBlock; ++i) {
            const double volts = combine(static_cast<double>(first[i]), static_cast<double>(second[i]));
            steps[i] = static_cast<float>(volts * stepsPerVolt);
        }
        if constexpr (std::is_same_v<Combine, std::divides<>>) {
            MendQuotients(second, steps);
        }
        MendNumbers(steps);
        for (int i = 0; i < size; ++i) {
            result[from + i * stride] = steps[static_cast<std::size_t>(i)] + level;
        }
    }
}

[[gnu::always_inline]] inline void Compute(MathOperator op, const MathOperand& a, const MathOperand& b,
                                           const MathScale& scale, float* result, std::ptrdiff_t stride,
                                           int count) {
    switch (op) {
    case MathOperator::Add:
        Fill(a, b, scale, result, stride, count, std::plus<>());
        break;
    case MathOperator::Subtract:
        Fill(a, b, scale, result, stride, count, std::minus<>());
        break;
    case MathOperator::Multiply:
        Fill(a, b, scale, result, stride, count, std::multiplies<>());
        break;
    case MathOperator::Divide:
        Fill(a, b, scale, result, stride, count, std::divides<>());
        break;
    case MathOperator::None:
        for (int i = 0; i < count; ++i) {
            result[i * stride] += static_cast<float>(scale.offset);
        }
        break;
    }
}

#ifdef __x86_64__
/// The same steps, on more values at a time.
[[gnu::target("avx2")]] void ComputeWide(MathOperator op, const MathOperand& a, const MathOperand& b,
                                         const MathScale& scale, float* result, std::ptrdiff_t stride,
                                         int count) {
    Compute(op, a, b, scale, result, stride, count);
}
#endif

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
#ifdef __x86_64__
    static const bool wide = __builtin_cpu_supports("avx2") != 0;
    if (wide) {
        ComputeWide(op, a, b, scale, result, stride, count);
        return;
    }
#endif
    Compute(op, a, b, scale, result, stride, count);
}
