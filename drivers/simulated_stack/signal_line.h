#pragma once

#include "wave.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sim {

/// Adds what a line such as "sine frequency=48kHz amplitude=1V" describes. Throws BadLine.
/// folder: where relative paths start. seed: for noise.
void AddSignal(Signal& signal, std::string_view line, const std::string& folder, std::uint32_t seed);

} // namespace sim
