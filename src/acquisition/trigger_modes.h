#pragma once

// The trigger modes, as TrigMode of the record counts them. A click of TrigModeButton steps to the next.

inline constexpr int kAutoMode = 0;
inline constexpr int kNormMode = 1;
inline constexpr int kFreeMode = 2;
inline constexpr int kTrigModes = 3;

/// The mode from which one click steps to this one.
constexpr int ModeBefore(int mode) {
    return (mode + kTrigModes - 1) % kTrigModes;
}
