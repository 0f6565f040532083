#include "driver/builtin_backend.h"
#include "driver/driver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace {

constexpr int kLength = 2048;
constexpr int kLast = kLength / 2;
constexpr double kTurn = 2 * std::numbers::pi;

/// The five windows by their definitions, over a period of the record's length.
double Window(int index, int i) {
    const double u = static_cast<double>(i) / kLength;
    switch (index) {
    case 0:
        return 1;
    case 1:
        return std::pow(std::sin(std::numbers::pi * u), 2);
    case 2:
        return 0.08 + 0.92 * std::pow(std::sin(std::numbers::pi * u), 2);
    case 3:
        return u < 0.5 ? 2 * u : 2 - 2 * u;
    default:
        return 4 * u * (1 - u);
    }
}

/// A full-scale sine of so many cycles in the record: it swings by the amplitude that counts as 0 dB.
std::vector<double> FullScale(double cycles, double phase) {
    std::vector<double> samples(kLength);
    for (int i = 0; i < kLength; ++i) {
        samples[static_cast<std::size_t>(i)] = 0.5 * std::sin(kTurn * cycles * i / kLength + phase);
    }
    return samples;
}

/// The magnitude of one bin by the sum that defines it.
double BySum(const std::vector<double>& samples, int window, int bin) {
    double real = 0;
    double imaginary = 0;
    double weights = 0;
    for (int i = 0; i < kLength; ++i) {
        const double angle = kTurn * (static_cast<long long>(bin) * i % kLength) / kLength;
        const double weight = Window(window, i);
        real += samples[static_cast<std::size_t>(i)] * weight * std::cos(angle);
        imaginary += samples[static_cast<std::size_t>(i)] * weight * std::sin(angle);
        weights += weight;
    }
    const double sides = bin == 0 || bin == kLast ? 1 : 2;
    return sides * std::hypot(real, imaginary) / weights;
}

class SpectrumValues : public testing::TestWithParam<int> {
  protected:
    std::vector<double> Transform(std::vector<double> samples, double reference) {
        driver.FFT(samples.data(), kLength, reference, GetParam());
        samples.resize(kLast + 1);
        return samples;
    }
    Driver driver{std::make_unique<BuiltinBackend>()};
};

} // namespace

TEST_P(SpectrumValues, AreThoseOfTheDefiningSumOnAndBetweenBins) {
    for (const double cycles : {1.0, 64.0, 300.25, 513.5, 700.75, 1023.0}) {
        const auto samples = FullScale(cycles, 0.7);
        const auto linear = Transform(samples, 0);
        const auto decibels = Transform(samples, 0.5);
        const int centre = static_cast<int>(cycles);
        for (const int bin : {0, 1, 5, centre - 3, centre - 1, centre, centre + 1, centre + 4, 1000, kLast}) {
            if (bin < 0 || bin > kLast) {
                continue;
            }
            const double expected = BySum(samples, GetParam(), bin);
            EXPECT_NEAR(linear[static_cast<std::size_t>(bin)], expected, 1e-12) << cycles << " " << bin;
            if (expected > 1e-6) {
                EXPECT_NEAR(decibels[static_cast<std::size_t>(bin)], 20 * std::log10(expected / 0.5), 1e-6)
                    << cycles << " " << bin;
            }
        }
    }
}

TEST_P(SpectrumValues, HoldTheEnergyOfTheRecord) {
    double weights = 0;
    for (int i = 0; i < kLength; ++i) {
        weights += Window(GetParam(), i);
    }
    for (const double cycles : {32.0, 100.5, 811.3}) {
        const auto samples = FullScale(cycles, 1.1);
        double energy = 0;
        for (int i = 0; i < kLength; ++i) {
            const double value = samples[static_cast<std::size_t>(i)] * Window(GetParam(), i);
            energy += value * value;
        }
        const auto bins = Transform(samples, 0);
        double sum = bins.front() * bins.front() + bins.back() * bins.back();
        for (int bin = 1; bin < kLast; ++bin) {
            sum += bins[static_cast<std::size_t>(bin)] * bins[static_cast<std::size_t>(bin)] / 2;
        }
        EXPECT_NEAR(sum * weights * weights / kLength, energy, 1e-9 * energy) << cycles;
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, SpectrumValues, testing::Range(0, 5));
