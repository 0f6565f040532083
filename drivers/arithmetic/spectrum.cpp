#include "arithmetic/spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace instrument {

namespace {

/// The window at u in 0..1, periodic: u = 1 would be the first sample of the next record.
double Weight(int window, double u) {
    const double cosine = std::cos(2 * std::numbers::pi * u);
    const double fromCentre = 2 * u - 1;
    switch (window) {
    case 1:
        return 0.5 - 0.5 * cosine;
    case 2:
        return 0.54 - 0.46 * cosine;
    case 3:
        return 1 - std::abs(fromCentre);
    case 4:
        return 1 - fromCentre * fromCentre;
    default:
        return 1;
    }
}

} // namespace

Spectrum::Spectrum() : weights_(kWindows * kLength), windowed_(kLength), bins_(kLength / 2) {
    for (int window = 0; window < kWindows; ++window) {
        const auto row = weights_.begin() + window * kLength;
        for (int i = 0; i < kLength; ++i) {
            row[i] = Weight(window, static_cast<double>(i) / kLength);
        }
        // A sine's amplitude is halved between its two frequencies.
        const double scale = 2 / std::accumulate(row, row + kLength, 0.0);
        std::for_each(row, row + kLength, [scale](double& weight) { weight *= scale; });
    }
}

void Spectrum::Transform(double* buffer, double reference, int window) {
    const double* weights = weights_.data() + (window > 0 && window < kWindows ? window : 0) * kLength;
    for (int i = 0; i < kLength; ++i) {
        windowed_[i] = buffer[i] * weights[i];
    }
    transform_.transform_real(windowed_.data(), bins_.data());

    // The two real bins come packed into the first one, and have no twin to share their amplitude with.
    const double first = bins_[0].real() / 2;
    const double last = bins_[0].imag() / 2;
    buffer[0] = first * first;
    buffer[kBins - 1] = last * last;
    for (int bin = 1; bin < kBins - 1; ++bin) {
        buffer[bin] = bins_[bin].real() * bins_[bin].real() + bins_[bin].imag() * bins_[bin].imag();
    }
    if (reference == 0) {
        std::transform(buffer, buffer + kBins, buffer, [](double power) { return std::sqrt(power); });
        return;
    }
    const double level = 20 * std::log10(std::abs(reference));
    std::transform(buffer, buffer + kBins, buffer,
                   [level](double power) { return power > 1e-30 ? 10 * std::log10(power) - level : kFloor; });
}

} // namespace instrument
