#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

/// The whole number next to a value, ties to even, held to 16 bits; 0 for what is no number.
inline std::int16_t RoundToInt16(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<std::int16_t>(
        std::clamp(std::nearbyint(value), double{Limits::min()}, double{Limits::max()}));
}
