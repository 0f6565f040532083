#pragma once

#include "driver/driver.h"
#include "frame/record/samples.h"

#include <array>

/// How the driver's transform is asked, and how its magnitudes become plot units of -30..+30.
struct SpectrumScale {
    double Reference = 0;  ///< 0 gives linear magnitudes, else decibels relative to it
    double Multiplier = 1; ///< plot units to one of the magnitude
    double LogOffset = 0;  ///< plot units

    /// Decibels: +6 dB at the top, 3 dB an interval.
    static constexpr SpectrumScale Decibels() { return {0.5, 1, 24}; }
    /// Volts: a full-scale sine, 0.5, at the top and nothing at the bottom.
    static constexpr SpectrumScale Linear() { return {0, 120, -30}; }
};

using SpectrumSamples = std::array<double, kSpectrumSamples>;

/// The plot value of one bin's magnitude; below -54 it is held just under the bottom line.
float SpectrumValue(double magnitude, const SpectrumScale& scale);

/// Transforms the first samples of a channel and fills its row of the spectrum. window: index of the
/// spectral window as the driver knows it. buffer is scratch.
void PrepareSpectrum(Driver& driver, const ChannelTable& samples, int channel, const SpectrumScale& scale,
                     int window, SpectrumSamples& buffer, ChannelTable& spectrum);
