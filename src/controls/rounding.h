#pragma once

#include <cmath>
#include <limits>

/// Nearest whole number of type T, ties to even; the end of the range for what lies beyond it, 0 for a NaN.
template <class T = int> T RoundToEven(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    // Not std::round, which takes ties away from zero; nearbyint keeps the default rounding mode.
    const double whole = std::nearbyint(value);
    if (whole <= static_cast<double>(std::numeric_limits<T>::min())) {
        return std::numeric_limits<T>::min();
    }
    if (whole >= static_cast<double>(std::numeric_limits<T>::max())) {
        return std::numeric_limits<T>::max();
    }
    return static_cast<T>(whole);
}
