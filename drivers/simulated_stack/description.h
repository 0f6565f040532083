#pragma once

#include "wave.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace sim {

inline constexpr int kSlots = 4;
inline constexpr int kRanges = 3;

/// What goes wrong with a module. Times are seconds of the stack since the module was opened.
struct Faults {
    static constexpr double kNever = std::numeric_limits<double>::infinity();
    enum class RISPasses { Valid, Invalid, Misplaced };

    double stopsAnsweringAfter = kNever;
    double busyAfter = kNever; ///< from then on an acquisition seems to run, whatever does
    RISPasses risPasses = RISPasses::Valid;
    double badReadings = 0; ///< part of all readings that are no number
    double answerTime = 0;  ///< seconds of the clock that each operation takes
};

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
    Faults faults;
};

struct StackDescription {
    double speed = 1; ///< seconds of the stack in a second
    std::uint32_t seed = 1;
    bool endOnViolation = false; ///< the program's first breach of the interface ends it
    std::vector<ModuleDescription> modules;
};

} // namespace sim
