#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

/// The whole number next to a value, ties to even, held to 16 bits. What is no number gives the lowest, which
/// no table has a row for.
inline std::int16_t RoundToInt16(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (std::isnan(value)) {
        return Limits::min();
    }
    return static_cast<std::int16_t>(
        std::clamp(std::nearbyint(value), double{Limits::min()}, double{Limits::max()}));
}
