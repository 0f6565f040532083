#pragma once

#include <cmath>

/// What the program makes of numbers that it did not compute itself.
namespace trust {

/// Far beyond any converter, and small enough that sums and conversions to integers stay in range.
inline constexpr int kMostSteps = 32767;
/// The same in any other scale: the widest change of volts is a thousandfold, and offsets come on top.
inline constexpr int kMostRescaledSteps = 1 << 26;
/// No instrument samples faster than a femtosecond or slower than once in eleven days.
inline constexpr float kShortestPeriod = 1e-15F;
inline constexpr float kLongestPeriod = 1e6F;

/// Brings count values within +-limit; what is no number becomes otherwise. Branch-free, so that the
/// compiler can take several values at a time: it runs on every record.
template <class Real> void KeepSamples(Real* values, int count, Real otherwise = 0, int limit = kMostSteps) {
    const Real most = static_cast<Real>(limit);
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
