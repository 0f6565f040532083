#pragma once

#include <cmath>

/// What the program makes of numbers that it did not compute itself.
namespace trust {

/// Far beyond any converter, and small enough that sums and conversions to integers stay in range.
inline constexpr int kMostSteps = 32767;
/// No instrument samples faster than a femtosecond or slower than once in eleven days.
inline constexpr float kShortestPeriod = 1e-15F;
inline constexpr float kLongestPeriod = 1e6F;

/// Brings count values within +-kMostSteps; what is no number becomes otherwise. Branch-free, so that the
/// compiler can take several values at a time: it runs on every record.
template <class Real> void KeepSamples(Real* values, int count, Real otherwise = 0) {
    constexpr Real most = kMostSteps;
    for (int i = 0; i < count; ++i) {
        Real value = values[i];
        value = value == value ? value : otherwise;
        value = value < -most ? -most : value;
        values[i] = value > most ? most : value;
    }
}

inline float FiniteOrZero(float value) {
    return std::isfinite(value) ? value : 0;
}

inline bool UsablePeriod(float seconds) {
    return seconds >= kShortestPeriod && seconds <= kLongestPeriod;
}

} // namespace trust
