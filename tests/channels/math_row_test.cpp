#include "channels/math_row.h"

#include "frame/record/samples.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <vector>

namespace {

constexpr float kInfinite = std::numeric_limits<float>::infinity();
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr MathOperator kAll[] = {MathOperator::Add, MathOperator::Subtract, MathOperator::Multiply,
                                 MathOperator::Divide};

using Row = std::vector<float>;

struct Scene {
    Row a, b;
    double groundA = 0, groundB = 0;
    float stepA = 1, stepB = 1; ///< volts
    MathScale scale{12.7F, 0};  ///< a volt a step
    Row Compute(MathOperator op, Row result = {}) const {
        result.resize(a.size());
        ComputeMathRow(op, {a.data(), groundA, stepA}, {b.data(), groundB, stepB}, scale, result.data(), 1,
                       static_cast<int>(a.size()));
        return result;
    }
};

/// The same in 64 bits throughout, from the volts as the operands have them.
double Plain(MathOperator op, double a, double b, double voltsPerDiv, int offset) {
    double r = 0;
    switch (op) {
    case MathOperator::Add:
        r = a + b;
        break;
    case MathOperator::Subtract:
        r = a - b;
        break;
    case MathOperator::Multiply:
        r = a * b;
        break;
    case MathOperator::Divide:
        if (std::abs(b) < 1e-7) {
            return (b > 0 ? 127 : b < 0 ? -127 : 0) + offset;
        }
        r = a / b;
        break;
    case MathOperator::None:
        break;
    }
    return r * 127 / (voltsPerDiv * 10) + offset;
}

/// Half a unit in the last place of the two 32-bit stores: the result, and the result with its offset.
double Rounding(double exact, int offset) {
    const auto ulp = [](double value) {
        const auto size = static_cast<float>(std::abs(value));
        return static_cast<double>(std::nextafter(size, kInfinite) - size);
    };
    return 0.51 * (ulp(exact) + ulp(exact - offset));
}

Scene Waves() {
    Scene scene;
    for (int i = 0; i < kSampleDepth; ++i) {
        const double turn = 2 * std::numbers::pi * i;
        scene.a.push_back(static_cast<float>(120.5 * std::sin(turn / 431)));
        scene.b.push_back(static_cast<float>(77.25 * std::cos(turn / 97) + 13));
    }
    return scene;
}

} // namespace

TEST(MathOperator, IsTheWholeTextOfAnEntry) {
    EXPECT_EQ(MathOperatorOf(u"+"), MathOperator::Add);
    EXPECT_EQ(MathOperatorOf(u"-"), MathOperator::Subtract);
    EXPECT_EQ(MathOperatorOf(u"x"), MathOperator::Multiply);
    EXPECT_EQ(MathOperatorOf(u"\u00F7"), MathOperator::Divide);
    for (const char16_t* text : {u"", u"X", u"/", u"+ ", u"++", u"*"}) {
        EXPECT_EQ(MathOperatorOf(text), MathOperator::None);
    }
}

TEST(MathRow, AgreesWithPlainArithmeticWithinItsRoundings) {
    struct Scales {
        float a, b, result;
        int offset;
    };
    const Scales scales[] = {
        {0.03F, 0.03F, 0.03F, 0}, {3, 0.3F, 3, 38}, {0.3F, 30, 30, -127}, {30, 30, 0.03F, 127}};
    for (const MathOperator op : kAll) {
        for (const Scales& volts : scales) {
            Scene scene = Waves();
            scene.stepA = volts.a * 10 / 127;
            scene.stepB = volts.b * 10 / 127;
            scene.groundA = 12.7;
            scene.groundB = -40.005;
            scene.scale = {volts.result, volts.offset};
            const Row row = scene.Compute(op);
            for (std::size_t i = 0; i < row.size(); ++i) {
                // The operands' volts are kept in 32 bits; what follows is checked against 64.
                const double a = static_cast<float>((static_cast<double>(scene.a[i]) - scene.groundA) *
                                                    static_cast<double>(scene.stepA));
                const double b = static_cast<float>((static_cast<double>(scene.b[i]) - scene.groundB) *
                                                    static_cast<double>(scene.stepB));
                const double exact = Plain(op, a, b, static_cast<double>(volts.result), volts.offset);
                ASSERT_NEAR(static_cast<double>(row[i]), exact, Rounding(exact, volts.offset))
                    << "operator " << static_cast<int>(op) << ", sample " << i;
            }
        }
    }
}

TEST(MathRow, AChannelLessItselfIsFlatAtTheOffset) {
    Scene scene = Waves();
    scene.b = scene.a;
    scene.groundA = scene.groundB = 33.3;
    scene.stepA = scene.stepB = 0.0236220F;
    scene.scale = {0.3F, -21};
    for (const float value : scene.Compute(MathOperator::Subtract)) {
        ASSERT_EQ(value, -21.0F);
    }
}

TEST(MathRow, TheFirstListIsTheMinuendAndTheDividend) {
    const Scene scene{.a = {60}, .b = {20}};
    EXPECT_FLOAT_EQ(scene.Compute(MathOperator::Subtract)[0], 40);
    EXPECT_FLOAT_EQ(scene.Compute(MathOperator::Divide)[0], 3);
}

TEST(MathRow, ATinyDivisorGivesAllOrNothingByItsSign) {
    Scene scene{.a = {50, 50, -50, 50, 50, 0}, .b = {0, -1e-8F, 1e-8F, -1e-7F, 9.9e-8F, 0}};
    scene.scale.offset = 10;
    const Row row = scene.Compute(MathOperator::Divide);
    EXPECT_EQ(row[0], 10.0F);
    EXPECT_EQ(row[1], -117.0F);
    EXPECT_EQ(row[2], 137.0F);
    EXPECT_FLOAT_EQ(row[3], -5e8F); // the border itself divides
    EXPECT_EQ(row[4], 137.0F);
    EXPECT_EQ(row[5], 10.0F);
}

TEST(MathRow, ADivisorAtItsOffsetGivesNothing) {
    const Scene scene{.a = {99}, .b = {25}, .groundB = 25, .scale = {3, -7}};
    EXPECT_EQ(scene.Compute(MathOperator::Divide)[0], -7.0F);
}

TEST(MathRow, WithoutAnOperatorTheOffsetPilesUp) {
    const Scene scene{.a = {1, 2}, .b = {3, 4}, .scale = {3, 12}};
    const Row once = scene.Compute(MathOperator::None, {5, -5});
    EXPECT_EQ(once, (Row{17, 7}));
    EXPECT_EQ(scene.Compute(MathOperator::None, once), (Row{29, 19}));
}

TEST(MathRow, WhatIsNoNumberCountsAsNothingAndTheEndlessAsTheLargest) {
    for (const float bad : {kNoNumber, kInfinite, -kInfinite}) {
        for (const MathOperator op : kAll) {
            Scene scene{.a = {bad, 5, bad, 0}, .b = {5, bad, bad, bad}};
            scene.scale.offset = 3;
            for (const float value : scene.Compute(op)) {
                EXPECT_TRUE(std::isfinite(value));
            }
        }
    }
    const Scene scene{.a = {kNoNumber, kInfinite, -kInfinite, kInfinite}, .b = {1, 1, 1, kInfinite}};
    EXPECT_EQ(scene.Compute(MathOperator::Subtract), (Row{0, kLargest, -kLargest, 0}));
}

TEST(MathRow, VoltsOfZeroLeaveNoNumberBehind) {
    for (const MathOperator op : kAll) {
        Scene scene = Waves();
        scene.stepA = 0;
        for (const float value : scene.Compute(op)) {
            ASSERT_TRUE(std::isfinite(value));
        }
        scene.scale.voltsPerDiv = 0;
        for (const float value : scene.Compute(op)) {
            ASSERT_TRUE(std::isfinite(value));
        }
    }
}

TEST(MathRow, WritesOnlyItsOwnSamples) {
    ChannelTable table(10);
    for (int i = 0; i < 10; ++i) {
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            table(channel, i) = static_cast<float>(100 * channel + i);
        }
    }
    ComputeMathRow(MathOperator::Add, {table.row(1), 0, 1}, {table.row(2), 0, 1}, {12.7F, 0}, table.row(5),
                   ChannelTable::stride(), 9);
    for (int i = 0; i < 9; ++i) {
        EXPECT_FLOAT_EQ(table(5, i), static_cast<float>(300 + 2 * i));
        EXPECT_EQ(table(1, i), static_cast<float>(100 + i));
        EXPECT_EQ(table(6, i), static_cast<float>(600 + i));
    }
    EXPECT_EQ(table(5, 9), 509.0F);
}
