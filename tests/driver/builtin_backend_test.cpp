#include "driver/builtin_backend.h"

#include "driver/driver.h"
#include "frame/record/samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

using instrument::Spectrum;

std::vector<double> SineOnBin(int bin, double amplitude, double phase = 0.3) {
    std::vector<double> samples(Spectrum::kLength);
    for (int i = 0; i < Spectrum::kLength; ++i) {
        samples[i] = amplitude * std::sin(2 * std::numbers::pi * bin * i / Spectrum::kLength + phase);
    }
    return samples;
}

class BuiltinDriver : public testing::Test {
  protected:
    std::vector<double> Demo(int ch, int phase, double offset = 0, int count = kSampleDepth) {
        std::vector<double> samples(static_cast<std::size_t>(count));
        driver.MakeSampleData(samples.data(), count, offset, ch - 1, phase);
        return samples;
    }
    Driver driver{std::make_unique<BuiltinBackend>()};
};

double Mean(const std::vector<double>& x) {
    double sum = 0;
    for (const double value : x) {
        sum += value;
    }
    return sum / static_cast<double>(x.size());
}

TEST_F(BuiltinDriver, FindsNoModule) {
    EXPECT_EQ(driver.GetSampleDepth(), 3000);
    EXPECT_FALSE(driver.DrvrIssue().isEmpty());
    std::int32_t port = 5;
    std::int32_t channel = 2;
    EXPECT_EQ(driver.Enumerate(port, channel), 0);
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        EXPECT_TRUE(driver.GetProductName(ch).isEmpty());
        EXPECT_TRUE(driver.GetSerialNumber(ch).isEmpty());
        EXPECT_FALSE(driver.OpenAndReset(ch));
        EXPECT_FALSE(driver.PortOpen(ch));
    }
}

TEST_F(BuiltinDriver, DemonstrationHasFourChannelsThatPassTheStackTest) {
    driver.SetDemoMode(1);
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        EXPECT_TRUE(driver.OpenAndReset(ch));
        EXPECT_EQ(driver.GetDetectLine(ch), 0);
        EXPECT_EQ(driver.GetSerialNumber(ch), QString("DEMO%1").arg(ch));
        EXPECT_TRUE(driver.GetProductName(ch).isEmpty());
    }
    EXPECT_FALSE(driver.OpenAndReset(0));
    EXPECT_FALSE(driver.OpenAndReset(5));
}

TEST_F(BuiltinDriver, DemonstrationHasNothingToRead) {
    driver.SetDemoMode(1);
    std::vector<float> blocks(4 * kSampleRow, 5);
    driver.GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
    EXPECT_EQ(std::count(blocks.begin(), blocks.end(), 5.0F), 4 * kSampleRow);
    EXPECT_EQ(driver.GetBufferRIS(1, blocks.data(), 150).status, -1);
    EXPECT_EQ(driver.GetAcquistionState(1), 0);
    EXPECT_EQ(driver.GetSamplesSinceTrigger(1), 0);
}

TEST_F(BuiltinDriver, PeriodOfEveryTimebaseSetting) {
    struct Row {
        int megahertz;
        int decimation;
        bool ris;
        double period;
    };
    const std::vector<Row> rows = {
        {50, 1, true, 1e-9},        {50, 1, true, 1e-9},        {50, 1, true, 1e-9},
        {50, 1, true, 1e-9},        {50, 1, true, 1e-9},        {50, 1, false, 20e-9},
        {50, 1, false, 20e-9},      {50, 1, false, 20e-9},      {50, 1, false, 20e-9},
        {25, 1, false, 40e-9},      {10, 1, false, 100e-9},     {10, 2, false, 200e-9},
        {10, 4, false, 400e-9},     {10, 10, false, 1e-6},      {10, 20, false, 2e-6},
        {10, 40, false, 4e-6},      {10, 100, false, 10e-6},    {10, 200, false, 20e-6},
        {10, 400, false, 40e-6},    {10, 1000, false, 100e-6},  {10, 2000, false, 200e-6},
        {10, 4000, false, 400e-6},  {10, 10000, false, 1e-3},   {10, 20000, false, 2e-3},
        {10, 40000, false, 4e-3},   {10, 100000, false, 10e-3}, {10, 200000, false, 20e-3},
        {10, 400000, false, 40e-3},
    };
    ASSERT_EQ(rows.size(), 28U);
    for (const Row& row : rows) {
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            driver.SetBaseAdcClk(ch, row.megahertz);
            driver.SetDecimationRatio(ch, row.decimation);
            driver.SetRISMode(ch, row.ris);
        }
        EXPECT_FLOAT_EQ(driver.GetSamplePeriod(true, 0), static_cast<float>(row.period));
        EXPECT_EQ(driver.GetSamplePeriod(false, 0.125), 0.125F);
    }
}

TEST_F(BuiltinDriver, DemonstrationStaysOnScreenAndAroundTheOffset) {
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        const auto plain = Demo(ch, 0);
        EXPECT_LE(*std::max_element(plain.begin(), plain.end()), 126) << ch;
        EXPECT_GE(*std::min_element(plain.begin(), plain.end()), -126) << ch;
        const double up = ch <= 2 ? -20 : 20;
        EXPECT_NEAR(Mean(Demo(ch, 0, up)) - Mean(plain), up, 0.01) << ch;
        for (const double offset : {-127.0, 127.0}) {
            const auto shifted = Demo(ch, 0, offset);
            EXPECT_LE(*std::max_element(shifted.begin(), shifted.end()), 127) << ch;
            EXPECT_GE(*std::min_element(shifted.begin(), shifted.end()), -127) << ch;
        }
    }
}

TEST_F(BuiltinDriver, AnOffsetOfFifteenPercentClipsNoDemonstration) {
    const double fifteenPercent = 0.15 * kStepsPerHalfScreen;
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        for (const double offset : {-fifteenPercent, fifteenPercent}) {
            for (int pass = 0; pass < 200; ++pass) {
                const auto samples = Demo(ch, 10 * pass, offset);
                ASSERT_LT(*std::max_element(samples.begin(), samples.end()), 127) << ch;
                ASSERT_GT(*std::min_element(samples.begin(), samples.end()), -127) << ch;
            }
        }
    }
}

TEST_F(BuiltinDriver, DemonstrationLiesOnItsLevels) {
    constexpr double kLevels[] = {82, 28, -27, -82};
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        for (const int phase : {0, 10, 1230}) {
            const auto trace = Demo(ch, phase);
            EXPECT_NEAR(Mean(trace), kLevels[ch - 1], 0.5) << ch << " at " << phase;
            EXPECT_NEAR(*std::max_element(trace.begin(), trace.end()) +
                            *std::min_element(trace.begin(), trace.end()),
                        2 * kLevels[ch - 1], 6)
                << ch << " at " << phase;
        }
    }
}

TEST_F(BuiltinDriver, DemonstrationChannelsDoNotTouch) {
    for (int ch = 1; ch < kScopeChannels; ++ch) {
        const auto upper = Demo(ch, 0);
        const auto lower = Demo(ch + 1, 0);
        EXPECT_GT(*std::min_element(upper.begin(), upper.end()),
                  *std::max_element(lower.begin(), lower.end()))
            << ch;
    }
}

TEST_F(BuiltinDriver, DemonstrationMovesFromPassToPass) {
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        EXPECT_EQ(Demo(ch, 120), Demo(ch, 120)) << "the same pass is the same picture";
        const auto before = Demo(ch, 0);
        const auto after = Demo(ch, 100);
        double most = 0;
        for (std::size_t i = 0; i < before.size(); ++i) {
            most = std::max(most, std::abs(after[i] - before[i]));
        }
        EXPECT_GT(most, 5) << ch;
        // Ten passes on, the trace is the same one further to the left.
        double best = 1e9;
        for (std::size_t shift = 1; shift < 100; ++shift) {
            double sum = 0;
            for (std::size_t i = 0; i + shift < before.size(); ++i) {
                sum += std::abs(after[i] - before[i + shift]);
            }
            best = std::min(best, sum / static_cast<double>(before.size() - shift));
        }
        EXPECT_LT(best, 1.5) << ch;
    }
}

TEST_F(BuiltinDriver, DemonstrationWritesNoMoreThanAsked) {
    std::vector<double> buffer(10, -5);
    driver.MakeSampleData(buffer.data(), 4, 0, 1, 10);
    EXPECT_NE(buffer[3], -5);
    EXPECT_EQ(buffer[4], -5);
    driver.MakeSampleData(buffer.data(), -1, 0, 1, 10);
    driver.MakeSampleData(buffer.data(), 10, 0, 77, std::numeric_limits<int>::min());
}

TEST_F(BuiltinDriver, RescalesToTheSameVoltage) {
    // 10 V/div at 10%: a sample of 12.7 + 25.4 steps is 25.4 steps of signal.
    std::vector<float> source = {38.1F, 12.7F, -12.7F, 7};
    std::vector<float> destination = {0, 0, 0, 99};
    driver.ReScaleSampleData(source.data(), destination.data(), 3, 10, -20, 10, 5);
    EXPECT_NEAR(destination[0], 25.4 * 2 - 25.4, 1e-4);
    EXPECT_NEAR(destination[1], -25.4, 1e-4);
    EXPECT_NEAR(destination[2], -25.4 * 2 - 25.4, 1e-4);
    EXPECT_EQ(destination[3], 99) << "positions above the count are left";
    driver.ReScaleSampleData(source.data(), source.data(), 3, 0, 0, 3, 3);
    EXPECT_FLOAT_EQ(source[0], 38.1F);
}

class SpectrumWindow : public testing::TestWithParam<int> {
  protected:
    Driver driver{std::make_unique<BuiltinBackend>()};
};

TEST_P(SpectrumWindow, FullScaleSineReadsHalfAndZeroDecibels) {
    for (const int bin : {5, 64, 100, 513, 1000, 1018}) {
        for (const double phase : {0.0, 0.3, 1.5, 2.9}) {
            auto linear = SineOnBin(bin, 0.5, phase);
            driver.FFT(linear.data(), 2048, 0, GetParam());
            EXPECT_NEAR(20 * std::log10(linear[bin] / 0.5), 0, 0.1) << bin << " " << phase;
            EXPECT_EQ(std::max_element(linear.begin(), linear.begin() + 1025) - linear.begin(), bin);

            auto decibels = SineOnBin(bin, 0.5, phase);
            driver.FFT(decibels.data(), 2048, 0.5, GetParam());
            EXPECT_NEAR(decibels[bin], 0, 0.1) << bin << " " << phase;
        }
    }
}

TEST_P(SpectrumWindow, LevelsFollowTheAmplitude) {
    auto tenth = SineOnBin(200, 0.05);
    driver.FFT(tenth.data(), 2048, 0.5, GetParam());
    EXPECT_NEAR(tenth[200], -20, 0.1);

    std::vector<double> constant(2048, 0.25);
    driver.FFT(constant.data(), 2048, 0, GetParam());
    EXPECT_NEAR(constant[0], 0.25, 1e-9);

    std::vector<double> fastest(2048);
    for (std::size_t i = 0; i < fastest.size(); ++i) {
        fastest[i] = i % 2 == 0 ? 0.25 : -0.25;
    }
    driver.FFT(fastest.data(), 2048, 0, GetParam());
    EXPECT_NEAR(fastest[1024], 0.25, 1e-9);
}

TEST_P(SpectrumWindow, NothingReadsFarBelowTheNoiseFloor) {
    std::vector<double> nothing(2048, 0);
    driver.FFT(nothing.data(), 2048, 0.5, GetParam());
    EXPECT_LT(*std::max_element(nothing.begin(), nothing.begin() + 1025), -200);
}

INSTANTIATE_TEST_SUITE_P(Windows, SpectrumWindow, testing::Range(0, 5));

/// How far a line spreads tells the windows apart. The figures are the windows' textbook ones.
TEST(Spectrum, WindowsAreTheOnesTheyAreNamedAfter) {
    Spectrum spectrum;
    const auto level = [&](int window, double cycles, int bin) {
        std::vector<double> samples(Spectrum::kLength);
        for (int i = 0; i < Spectrum::kLength; ++i) {
            samples[i] = std::sin(2 * std::numbers::pi * cycles * i / Spectrum::kLength);
        }
        spectrum.Transform(samples.data(), 1, window);
        return samples[bin];
    };
    // Half way between two bins: rectangular 3.92 dB, Hann 1.42, Hamming 1.75, Bartlett 1.82, Welch 2.22.
    EXPECT_NEAR(level(0, 300.5, 300), -3.92, 0.05);
    EXPECT_NEAR(level(1, 300.5, 300), -1.42, 0.05);
    EXPECT_NEAR(level(2, 300.5, 300), -1.75, 0.05);
    EXPECT_NEAR(level(3, 300.5, 300), -1.82, 0.05);
    EXPECT_NEAR(level(4, 300.5, 300), -2.22, 0.05);
    // One bin away from a line on a bin.
    EXPECT_LT(level(0, 300, 301), -200);
    EXPECT_NEAR(level(1, 300, 301), -6.02, 0.05);
    EXPECT_NEAR(level(2, 300, 301), 20 * std::log10(0.23 / 0.54), 0.05);
    EXPECT_NEAR(level(3, 300, 301), 20 * std::log10(4 / (std::numbers::pi * std::numbers::pi)), 0.05);
    EXPECT_NEAR(level(4, 300, 301), 20 * std::log10(3 / (std::numbers::pi * std::numbers::pi)), 0.05);
}

TEST(Spectrum, AWindowThatIsNoneIsRectangular) {
    Driver driver(std::make_unique<BuiltinBackend>());
    for (const int window : {-1, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        auto odd = SineOnBin(40, 0.3);
        auto plain = odd;
        driver.FFT(odd.data(), 2048, 0.5, window);
        driver.FFT(plain.data(), 2048, 0.5, 0);
        EXPECT_EQ(odd, plain);
    }
}

TEST(Spectrum, AnotherLengthIsRefused) {
    Driver driver(std::make_unique<BuiltinBackend>());
    std::vector<double> buffer(16, 1.5);
    driver.FFT(buffer.data(), 16, 0, 0);
    EXPECT_EQ(buffer, std::vector<double>(16, 1.5));
}

} // namespace
