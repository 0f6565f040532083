#include "analysis/measurement.h"

#include "driver/builtin_backend.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <vector>

namespace {

RoundedRecord RowOf(const std::function<double(int)>& sample) {
    std::vector<float> row(kSampleDepth);
    for (int i = 0; i < kSampleDepth; ++i) {
        row[static_cast<std::size_t>(i)] = static_cast<float>(sample(i));
    }
    return {row.data(), 1};
}

RoundedRecord Square(int period, int low, int high) {
    return RowOf([=](int i) { return i % period < period / 2 ? high : low; });
}

double Spacing(const RoundedRecord& record) {
    return CrossingSpacing(record, MeasureLevels(record).mean);
}

} // namespace

TEST(MeasureLevels, TakesMeanAndExtremesOfRoundedSamples) {
    const Levels levels = MeasureLevels(Square(100, -40, 60));
    EXPECT_DOUBLE_EQ(levels.mean, 10);
    EXPECT_EQ(levels.min, -40);
    EXPECT_EQ(levels.max, 60);
    EXPECT_FALSE(levels.clipped);
    EXPECT_DOUBLE_EQ(MeasureLevels(RowOf([](int) { return 2.5; })).mean, 2); // ties to even
}

TEST(MeasureLevels, ASampleThatRaisesTheMaximumIsNotHeldAgainstTheMinimum) {
    // The lowest sample comes first and raises the maximum from nothing.
    const Levels levels = MeasureLevels(RowOf([](int i) { return i == 0 ? -50 : 10; }));
    EXPECT_EQ(levels.max, 10);
    EXPECT_EQ(levels.min, 10);
}

TEST(MeasureLevels, TellsWhenTheConverterWasOverrun) {
    EXPECT_FALSE(MeasureLevels(Square(100, -127, 127)).clipped);
    EXPECT_TRUE(MeasureLevels(Square(100, -128, 0)).clipped);
    EXPECT_TRUE(MeasureLevels(Square(100, 0, 128)).clipped);
}

TEST(MeasureLevels, BearsSamplesOfAnySizeAndNone) {
    const float infinite = std::numeric_limits<float>::infinity();
    const double odd[] = {infinite, -infinite, std::numeric_limits<float>::quiet_NaN(), 3e38, -3e38, 0};
    const RoundedRecord record = RowOf([&](int i) { return odd[i % 6]; });
    const Levels levels = MeasureLevels(record);
    EXPECT_EQ(levels.max, (1 << 30) - 1);
    EXPECT_EQ(levels.min, -levels.max);
    EXPECT_DOUBLE_EQ(levels.mean, 0);
    EXPECT_TRUE(levels.clipped);
    CrossingSpacing(record, levels.mean);
    EXPECT_EQ(RoundedRecord(record)[2], 0);
}

TEST(CrossingSpacing, IsThePeriodOfASteadySignal) {
    EXPECT_DOUBLE_EQ(Spacing(Square(100, -50, 50)), 100);
    const auto sine = RowOf([](int i) { return 100 * std::sin(2 * std::numbers::pi * i / 250.0); });
    EXPECT_NEAR(Spacing(sine), 250, 0.5);
}

TEST(CrossingSpacing, StaysRightWithMoreCrossingsThanItCounts) {
    EXPECT_DOUBLE_EQ(Spacing(Square(20, -50, 50)), 20); // 150 periods in the record
}

TEST(CrossingSpacing, OfEveryDemonstrationIsSteady) {
    BuiltinBackend driver;
    std::vector<double> samples(kSampleDepth);
    for (int channel = 0; channel < kScopeChannels; ++channel) {
        for (const double offset : {0.0, -19.0, -7.0, 5.0, 19.0}) {
            double shortest = kSampleDepth;
            double longest = 0;
            for (int pass = 0; pass < 100; ++pass) {
                driver.MakeSampleData(samples.data(), kSampleDepth, offset, channel, 10 * pass);
                const double spacing =
                    Spacing(RowOf([&](int i) { return samples[static_cast<std::size_t>(i)]; }));
                shortest = std::min(shortest, spacing);
                longest = std::max(longest, spacing);
            }
            EXPECT_GT(shortest, 0) << channel;
            EXPECT_LT(longest, 1.01 * shortest) << channel << " at " << offset;
        }
    }
}

TEST(CrossingSpacing, IsThatOfGroupsSummedAnewAtEachStep) {
    // The rule at its plainest, over records whose mean lies on, between and beside whole steps.
    const auto plain = [](const RoundedRecord& record, double mean) {
        std::vector<int> found[2];
        for (int i = 0; i <= kSampleDepth - 8; ++i) {
            int sums[2] = {0, 0};
            for (int k = 0; k < 8; ++k) {
                sums[k / 4] += 2 * (record[i + k] / 8);
            }
            const bool rising = sums[0] <= mean && sums[1] > mean;
            const bool falling = !rising && sums[0] >= mean && sums[1] < mean;
            if (rising || falling) {
                i += 4;
                auto& list = found[rising ? 0 : 1];
                if (list.size() == 100) {
                    break;
                }
                list.push_back(i);
            }
        }
        const auto& list = found[0].size() > found[1].size() ? found[0] : found[1];
        return list.size() < 2
                   ? 0.0
                   : static_cast<double>(list.back() - list.front()) / static_cast<double>(list.size() - 1);
    };
    for (int seed = 1; seed <= 60; ++seed) {
        unsigned noise = static_cast<unsigned>(seed);
        const auto record = RowOf([&](int i) {
            noise = noise * 1664525U + 1013904223U;
            return (seed % 7) * 17 * std::sin(i * 0.002 * seed) + seed - 30.5 +
                   static_cast<double>(noise >> 24) / (16.0 + 4 * seed);
        });
        const double mean = MeasureLevels(record).mean;
        for (const double about : {mean, std::floor(mean), mean + 0.5}) {
            EXPECT_EQ(CrossingSpacing(record, about), plain(record, about)) << seed;
        }
    }
}

TEST(RoundedRecord, RoundsTiesToEven) {
    const double values[] = {0.5, 1.5, 2.5, -0.5, -1.5, -2.5, 126.49999, -127.5, 40000.5, 1e8};
    const int wholes[] = {0, 2, 2, 0, -2, -2, 126, -128, 40000, 100000000};
    const RoundedRecord record = RowOf([&](int i) { return values[i % 10]; });
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(record[i], wholes[i]) << values[i];
    }
}

TEST(CrossingSpacing, NeedsTwoLikeCrossings) {
    EXPECT_EQ(Spacing(RowOf([](int) { return 7; })), 0);
    EXPECT_EQ(Spacing(Square(3000, -50, 50)), 0); // one falling edge and no more
    EXPECT_EQ(Spacing(RowOf([](int i) { return i / 1000 == 1 ? 50 : -50; })), 0); // one of each
}

TEST(MeasurementTexts, ShowSignClippingAndOverrun) {
    EXPECT_EQ(AverageText({.mean = 20, .min = 0, .max = 0, .clipped = false}, 10, 0.5F),
              QStringLiteral("+5.00"));
    EXPECT_EQ(AverageText({.mean = 0, .min = 0, .max = 0, .clipped = false}, 10, 0.5F),
              QStringLiteral("-5.00"));
    EXPECT_EQ(AverageText({}, 0, 0.5F), QStringLiteral("+0.00"));
    EXPECT_EQ(AverageText({.mean = 127.5, .min = 0, .max = 0, .clipped = true}, 127, 0.5F),
              QStringLiteral("over"));
    EXPECT_EQ(PeakToPeakText({.mean = 0, .min = -10, .max = 30, .clipped = false}, 0.25F),
              QStringLiteral("10.00"));
    EXPECT_EQ(PeakToPeakText({.mean = 0, .min = -10, .max = 30, .clipped = true}, 0.25F),
              QStringLiteral("10.00>"));
}

TEST(FrequencyText, ChoosesItsUnitAndItsWordsOfFailure) {
    EXPECT_EQ(FrequencyText(0, 1e-6), QStringLiteral("low signal"));
    EXPECT_EQ(FrequencyText(10, 0), QStringLiteral("!"));
    EXPECT_EQ(FrequencyText(1000, 1e-4), QStringLiteral("10.00Hz"));
    EXPECT_EQ(FrequencyText(1000, 1e-6), QStringLiteral("1.00KHz"));
    EXPECT_EQ(FrequencyText(1000, 1e-9), QStringLiteral("1.00MHz"));
    EXPECT_EQ(FrequencyText(12.5, 2e-8), QStringLiteral("4.00MHz"));
}
