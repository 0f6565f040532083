#include "channels/volts_table.h"

#include "controls/number_format.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(VoltsTable, MapsPositionsToVoltsPerDivisionAsThirtyTwoBitReals) {
    const float plain[] = {0.03F, 0.3F, 3.0F};
    const float tenfold[] = {0.3F, 3.0F, 30.0F};
    for (int position = 0; position < 3; ++position) {
        EXPECT_EQ(KnobToVoltsPerDiv(static_cast<float>(position), false), plain[position]);
        EXPECT_EQ(KnobToVoltsPerDiv(static_cast<float>(position), true), tenfold[position]);
    }
}

TEST(VoltsTable, RoundsThePositionWithTiesToEven) {
    EXPECT_EQ(KnobToVoltsPerDiv(0.5F, false), 0.03F);
    EXPECT_EQ(KnobToVoltsPerDiv(1.5F, false), 3.0F);
    EXPECT_EQ(KnobToVoltsPerDiv(1.4F, false), 0.3F);
    EXPECT_EQ(KnobToVoltsPerDiv(-0.5F, false), 0.03F);
}

TEST(VoltsTable, HasNoVoltsForOtherPositions) {
    for (float position : {-1.0F, 3.0F, 2.6F, 1e9F, -1e9F, std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(KnobToVoltsPerDiv(position, true), 0.0F);
    }
}

TEST(VoltsTable, StepIsTenDivisionsOverItsHundredAndTwentySevenSteps) {
    const std::pair<float, double> cases[] = {
        {0.03F, 0.00236220}, {0.3F, 0.0236220}, {3.0F, 0.236220}, {30.0F, 2.36220}};
    for (const auto& [volts, step] : cases) {
        EXPECT_NEAR(VoltsPerADCStep(volts), step, step * 1e-5);
        // Extended precision gives no other 32-bit real.
        EXPECT_EQ(VoltsPerADCStep(volts), static_cast<float>(static_cast<long double>(volts) * 10 / 127));
    }
}

TEST(VoltsTable, EndsOfTheOffsetAreExactlyAHundredPercent) {
    EXPECT_EQ(OffsetPercent(127), 100.0F);
    EXPECT_EQ(OffsetPercent(-127), -100.0F);
    EXPECT_EQ(OffsetPercent(0), 0.0F);
    EXPECT_EQ(OffsetPercent(1), static_cast<float>(1 / 1.27));
}

TEST(VoltsTable, TextsAreShort) {
    EXPECT_EQ(ShortestText(KnobToVoltsPerDiv(0, false)), "0.03");
    EXPECT_EQ(ShortestText(KnobToVoltsPerDiv(0, true)), "0.3");
    EXPECT_EQ(ShortestText(KnobToVoltsPerDiv(2, true)), "30");
}

} // namespace
