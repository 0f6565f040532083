#include "channels/volts_table.h"

#include "controls/rounding.h"
#include "frame/record/steps.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

constexpr double kVoltsPerDiv[] = {0.03, 0.3, 3};
constexpr float kMathVoltsPerDiv[] = {0.03F, 0.3F, 3, 30};

} // namespace

float KnobToVoltsPerDiv(float position, bool probeX10) {
    const int row = RoundToEven<std::int16_t>(static_cast<double>(position));
    if (row < 0 || row >= static_cast<int>(std::size(kVoltsPerDiv))) {
        return 0;
    }
    // Multiplied before it is narrowed: 0.03F times 10 is not 0.3F.
    return static_cast<float>(kVoltsPerDiv[row] * (probeX10 ? 10 : 1));
}

float MathKnobToVoltsPerDiv(float position) {
    const int row = RoundToEven<std::int16_t>(static_cast<double>(position));
    return row < 0 || row >= static_cast<int>(std::size(kMathVoltsPerDiv)) ? 0 : kMathVoltsPerDiv[row];
}

std::optional<int> MathVoltsPerDivToKnob(float voltsPerDiv) {
    const auto* found = std::find(std::begin(kMathVoltsPerDiv), std::end(kMathVoltsPerDiv), voltsPerDiv);
    if (found == std::end(kMathVoltsPerDiv)) {
        return std::nullopt;
    }
    return static_cast<int>(found - std::begin(kMathVoltsPerDiv));
}

float VoltsPerADCStep(float voltsPerDiv) {
    return static_cast<float>(static_cast<double>(voltsPerDiv) * kDivisionsOfHalfScreen / kStepsOfHalfScreen);
}

float OffsetPercent(float steps) {
    return static_cast<float>(PercentOfSteps(static_cast<double>(steps)));
}
