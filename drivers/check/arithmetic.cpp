// Rescaling of held records, and the spectrum.

#include "sections.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace check {

namespace {

constexpr int kLength = CORVANTINE_FFT_LENGTH;
constexpr int kBins = kLength / 2 + 1;
constexpr double kAmplitude = 0.25;
constexpr double kSlowestTransform = 0.02; ///< seconds; one for each spectrum of a tick
constexpr const char* kWindows[] = {"rectangular", "Hanning", "Hamming", "triangular", "Welch"};

struct Scales {
    float oldOffset, newOffset, oldVolts, newVolts;
};

constexpr Scales kScales[] = {{0, 0, 3, 3},    {0, 50, 3, 3},         {-20, 30, 3, 3},
                              {0, 0, 3, 0.3F}, {0, 0, 0.3F, 3},       {25, -40, 0.03F, 0.3F},
                              {10, 10, 30, 3}, {-99.2F, 80, 0.3F, 30}};

void CheckScale(const Subject& subject, const Scales& s, int count) {
    Guarded<float> source("samples to be read", count);
    Guarded<float> destination("destination of the samples", std::max(count, 1));
    for (int i = 0; i < count; ++i) {
        source[i] = static_cast<float>(i % 255 - 127);
    }
    source.MakeReadOnly();
    subject.driver.ReScaleSampleData(source.Get(), destination.Get(), count, s.oldOffset, s.newOffset,
                                     s.oldVolts, s.newVolts);
    for (int i = 0; i < count; ++i) {
        const double expected = (static_cast<double>(source[i]) - 1.27 * static_cast<double>(s.oldOffset)) *
                                    static_cast<double>(s.oldVolts) / static_cast<double>(s.newVolts) +
                                1.27 * static_cast<double>(s.newOffset);
        const auto got = static_cast<double>(destination[i]);
        if (!(std::abs(got - expected) <= 0.01 + 1e-4 * std::abs(expected))) {
            subject.findings.That(
                false, "ReScaleSampleData gives the same voltage in the new scale",
                "%g steps, offset %g to %g percent, %g to %g V/div: expected %.6g, found %.6g",
                static_cast<double>(source[i]), static_cast<double>(s.oldOffset),
                static_cast<double>(s.newOffset), static_cast<double>(s.oldVolts),
                static_cast<double>(s.newVolts), expected, got);
            return;
        }
    }
    subject.findings.That(true, "ReScaleSampleData gives the same voltage in the new scale", "-");
}

double Weight(int window, double u) {
    const double cosine = std::cos(2 * std::numbers::pi * u);
    const double centred = 2 * u - 1;
    const double weights[] = {1, 0.5 - 0.5 * cosine, 0.54 - 0.46 * cosine, 1 - std::abs(centred),
                              1 - centred * centred};
    return weights[window];
}

double Sine(double bin, int i) {
    return kAmplitude * std::sin(2 * std::numbers::pi * bin * i / kLength + 0.3);
}

/// What a sine at `at` shows in a bin, relative to its amplitude; the window as it repeats, or symmetric.
double Expected(int window, double at, int bin, bool symmetric) {
    double real = 0;
    double imaginary = 0;
    double sum = 0;
    for (int i = 0; i < kLength; ++i) {
        const double weight = Weight(window, static_cast<double>(i) / (symmetric ? kLength - 1 : kLength));
        const double angle = 2 * std::numbers::pi * bin * i / kLength;
        sum += weight;
        real += weight * Sine(at, i) * std::cos(angle);
        imaginary -= weight * Sine(at, i) * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / sum;
}

std::vector<double> Transform(const Subject& subject, double bin, double amplitude, double scale,
                              int window) {
    Guarded<double> buffer("buffer of 2048 reals", kLength);
    for (int i = 0; i < kLength; ++i) {
        buffer[i] = Sine(bin, i) * amplitude / kAmplitude;
    }
    Guarded<std::int32_t> reserved("last argument of FFT", 1);
    reserved[0] = 0;
    subject.driver.FFT(buffer.Get(), kLength, scale, window, reserved.Get());
    const auto odd =
        std::find_if(buffer.begin(), buffer.begin() + kBins, [](double x) { return !(std::abs(x) < 1e6); });
    subject.findings.That(odd == buffer.begin() + kBins && buffer.FrontIsIntact(),
                          "FFT writes finite numbers to the entries 0..1024",
                          "a sine of amplitude %g, window %d, scale mode %g: entry %d is %g", amplitude,
                          window, scale, static_cast<int>(odd - buffer.begin()),
                          odd == buffer.end() ? 0.0 : *odd);
    return {buffer.begin(), buffer.begin() + kBins};
}

void CheckWindow(const Subject& subject, int window) {
    Findings& findings = subject.findings;
    const std::vector<double> linear = Transform(subject, 100, kAmplitude, 0, window);
    const auto top = static_cast<int>(std::max_element(linear.begin() + 4, linear.end()) - linear.begin());
    findings.That(top == 100, "FFT shows a sine in the bin of its frequency",
                  "%s window: 100 periods in 2048 samples have their top in bin %d", kWindows[window], top);
    findings.That(std::abs(linear[100] - kAmplitude) <= 0.02 * kAmplitude,
                  "with scale mode 0 FFT reads a sine's amplitude, whichever the window",
                  "%s window: amplitude %g reads %.4g", kWindows[window], kAmplitude, linear[100]);
    const double level = Transform(subject, 100, kAmplitude, 0.5, window)[100];
    const double expected = 20 * std::log10(kAmplitude / 0.5);
    findings.That(std::abs(level - expected) <= 0.2,
                  "with scale mode 0.5 FFT reads decibels relative to full scale",
                  "%s window: amplitude %g reads %.4g dB, expected %.4g", kWindows[window], kAmplitude, level,
                  expected);

    // Half way between two bins the windows differ most.
    const std::vector<double> between = Transform(subject, 100.5, kAmplitude, 0, window);
    for (const int bin : {98, 99, 100, 101, 102, 103, 105, 108, 112}) {
        const double repeating = Expected(window, 100.5, bin, false);
        const double symmetric = Expected(window, 100.5, bin, true);
        const double found = between[static_cast<std::size_t>(bin)];
        const double floor = 2e-4 * kAmplitude;
        const auto near = [&](double value) { return std::abs(found - value) <= 0.05 * value + floor; };
        findings.That(near(repeating) || near(symmetric),
                      "FFT's windows are rectangular, Hanning, Hamming, triangular and Welch, in this order",
                      "window %d does not spread a sine as the %s does: bin %d reads %.4g, expected %.4g",
                      window, kWindows[window], bin, found, repeating);
    }
}

} // namespace

void CheckRescaling(const Subject& subject) {
    const Session session(subject);
    for (const Scales& scales : kScales) {
        for (const int count : {kDepth, 1, 0}) {
            CheckScale(subject, scales, count);
        }
    }
    // Nothing sensible can come of these, and nothing bad either.
    CheckScale(subject, kScales[0], 3073);
    Guarded<float> source("samples to be read", 1);
    Guarded<float> destination("destination of the samples", 4);
    source[0] = 1;
    subject.driver.ReScaleSampleData(source.Get(), destination.Get(), 1, 0, 0, 0, 0);
    subject.findings.That(destination.IsUntouched(1, 4), "ReScaleSampleData leaves what lies behind count",
                          "with count 1 the next position was written");
    subject.driver.ReScaleSampleData(source.Get(), destination.Get(), -1, 0, 0, 1, 1);
}

void CheckSpectrum(const Subject& subject) {
    const Session session(subject);
    for (int window = 0; window < static_cast<int>(std::size(kWindows)); ++window) {
        CheckWindow(subject, window);
        Transform(subject, 100, 0, 0, window);
        Transform(subject, 100, 0, 0.5, window);
    }
    for (const int window : {-1, 5, 1000}) {
        Transform(subject, 100, kAmplitude, 0, window);
    }
    const auto index = static_cast<std::size_t>(subject.driver.FFT.Index());
    const double median = subject.findings.Table().timings[index].Median();
    subject.findings.That(median <= kSlowestTransform, "FFT takes some milliseconds at most",
                          "half of the calls took more than %.0f ms", median * 1e3);
    // A length that never comes must not lead out of the buffer.
    for (const int length : {1024, 2, 1, 0, -1}) {
        Guarded<double> buffer("buffer of fewer than 2048 reals", std::max(length, 1));
        std::int32_t reserved = 0;
        buffer[0] = 0;
        subject.driver.FFT(buffer.Get(), length, 0, 1, &reserved);
    }
}

} // namespace check
