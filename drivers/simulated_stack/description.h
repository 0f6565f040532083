#pragma once

#include "wave.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace sim {

inline constexpr int kSlots = 4;
inline constexpr int kRanges = 3;

/// One module as a stack file describes it.
struct ModuleDescription {
    std::string product = "Corvantine";
    std::string serial;
    std::int32_t port = 0;
    std::int32_t hardwareRevision = 0x10;
    std::int32_t controllerRevision = 0x10;
    std::array<std::int32_t, 2> risBand{0, 0};
    std::int32_t triggerDACOffset = 0;
    float rawChannelOffset = 0;
    float offsetDACScale = 1;
    bool stacked = true; ///< joined to the stack's detect line
    bool powered = true; ///< without power it is on no bus, and holds the detect line low
    bool opens = true;   ///< OpenAndReset succeeds
    double probe = 1;    ///< what the probe divides by
    std::array<float, kRanges> rangeOffsets{0, 0, 0}; ///< ADC steps
    float noise = 0;                                  ///< ADC steps RMS of the converter
    Signal signal;
};

struct StackDescription {
    double speed = 1; ///< seconds of the stack in a second
    std::uint32_t seed = 1;
    std::vector<ModuleDescription> modules;
};

} // namespace sim
