#pragma once

#include "frame/record/samples.h"

// The converter's steps and what they stand for: so many on either side of the centre are ten divisions, and
// 100 percent of an offset.

inline constexpr double kStepsOfHalfScreen = static_cast<double>(kStepsPerHalfScreen);
inline constexpr double kDivisionsOfHalfScreen = 10;
inline constexpr double kStepsPerPercent = kStepsOfHalfScreen / 100;

/// ADC steps of so many percent of the half screen.
constexpr double StepsOfPercent(double percent) {
    return percent * kStepsPerPercent;
}

/// Percent of the half screen that so many ADC steps are.
constexpr double PercentOfSteps(double steps) {
    return steps / kStepsPerPercent;
}
