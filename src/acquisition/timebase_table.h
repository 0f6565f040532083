#pragma once

#include "frame/record/indexed.h"

#include <cstdint>

enum class SamplingMode {
    RIS,     ///< repetitive interleaved sampling: many passes build up one record
    Refresh, ///< one acquisition, one record
    Roll     ///< a slow record that is shown as it grows
};

/// One position of TimeBaseKnob.
struct TimebaseSetting {
    const char* label = "";
    SamplingMode mode = SamplingMode::Refresh;
    std::int32_t clock = 50; ///< MHz
    std::int32_t decimation = 1;
    double displayExpansion = 1;
};

inline constexpr int kTimebaseSettings = 28;

/// The setting of a knob position, or null where the knob has none.
const TimebaseSetting* FindTimebaseSetting(int index);

/// Seconds from sample to sample at a setting.
double SamplePeriodOf(const TimebaseSetting& setting);
