#pragma once

inline constexpr int kProbeWaits = 10; ///< looks at the trigger in one probe

/// Milliseconds between two looks of a probe: together they span the time of 4500 samples, within 10 ms and
/// 1 s. samplePeriod in seconds.
int ProbeWait(float samplePeriod);
