#pragma once

namespace instrument {

/// ADC steps for each percent of span.
inline constexpr float kStepsPerPercent = 1.27F;

/// Held samples in a new scale: the same voltages. Offsets in percent of span, volts per division.
/// Positions from count on are left as they stand; a scale that is not above 0 changes no size.
void RescaleSamples(const float* source, float* destination, int count, float oldOffset, float newOffset,
                    float oldVolts, float newVolts);

} // namespace instrument
