#include "display/spectrum_preparation.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double kFullScaleSteps = 255.0; // a full-scale sine has an amplitude of one half
constexpr double kFloor = -54.0;
constexpr double kUnderFloor = -54.01; // one hundredth under the bottom grid line

} // namespace

float SpectrumValue(double magnitude, const SpectrumScale& scale) {
    const double held = magnitude >= kFloor ? magnitude : kUnderFloor; // also what is no number
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(scale.Multiplier * held + scale.LogOffset, -kLargest, kLargest));
}

void PrepareSpectrum(Driver& driver, const ChannelTable& samples, int channel, const SpectrumScale& scale,
                     int window, SpectrumSamples& buffer, ChannelTable& spectrum) {
    for (int i = 0; i < kSpectrumSamples; ++i) {
        buffer[static_cast<std::size_t>(i)] = samples(channel, i) / kFullScaleSteps;
    }
    driver.FFT(buffer.data(), kSpectrumSamples, scale.Reference, window);
    for (int bin = 0; bin < kSpectrumBins; ++bin) {
        spectrum(channel, bin) = SpectrumValue(buffer[static_cast<std::size_t>(bin)], scale);
    }
}
