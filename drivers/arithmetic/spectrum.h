#pragma once

#include <array>
#include <complex>
#include <kissfft/kissfft.hh>
#include <vector>

namespace instrument {

/// Magnitude spectrum of 2048 real samples. Every window is normalised by its sum, so that a sine of
/// amplitude A on a bin reads A there whichever window is chosen.
class Spectrum {
  public:
    static constexpr int kLength = 2048;
    static constexpr int kBins = kLength / 2 + 1;
    static constexpr int kWindows = 5;     ///< rectangular, Hanning, Hamming, triangular, Welch
    static constexpr double kFloor = -300; ///< decibels of a bin with nothing in it, relative to 1

    Spectrum();

    /// In place: kLength samples in, kBins magnitudes out. reference 0: linear; else decibels relative to
    /// it. A window that is none counts as rectangular. Does not allocate.
    void Transform(double* buffer, double reference, int window);

  private:
    std::vector<double> weights_; ///< kWindows rows of kLength
    kissfft<double> transform_{kLength / 2, false};
    std::vector<double> windowed_;
    std::vector<std::complex<double>> bins_;
};

} // namespace instrument
