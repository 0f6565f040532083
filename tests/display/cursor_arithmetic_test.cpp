#include "display/cursor_arithmetic.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kEndless = std::numeric_limits<double>::infinity();

TEST(CursorArithmetic, TheLeftButtonJumpsToTheMouse) {
    EXPECT_DOUBLE_EQ(DragFraction(true, 50, 10, 200), 0.25);
    EXPECT_DOUBLE_EQ(DragFraction(true, -1, 10, 200), 0);
    EXPECT_DOUBLE_EQ(DragFraction(true, 201, 10, 200), 1);
}

TEST(CursorArithmetic, AnotherButtonMovesAHundredthFromThePress) {
    EXPECT_DOUBLE_EQ(DragFraction(false, 100, 100, 200), 0.5);
    EXPECT_DOUBLE_EQ(DragFraction(false, 120, 100, 200), 0.5 + 20 * 0.01 / 200);
    EXPECT_DOUBLE_EQ(DragFraction(false, -1e9, 100, 200), 0);
}

TEST(CursorArithmetic, ABarWithoutLengthHasOnePlace) {
    EXPECT_EQ(DragFraction(true, 5, 0, 0), 0);
    EXPECT_EQ(DragFraction(false, 5, 3, -4), 0);
}

TEST(CursorArithmetic, AHandleStandsWithItsMiddleAtThePlace) {
    EXPECT_DOUBLE_EQ(HandlePlace(0, 357, 11), -5.5);
    EXPECT_DOUBLE_EQ(HandlePlace(1, 357, 11), 354 - 5.5);
}

TEST(CursorArithmetic, TimesAreFractionsOfTheWholeRecord) {
    EXPECT_DOUBLE_EQ(FractionOfTime(1.5e-3, 3000, 1e-6), 0.5);
    EXPECT_DOUBLE_EQ(FractionOfTime(1, 3000, 1e-6), 1);
    EXPECT_DOUBLE_EQ(FractionOfTime(-1, 3000, 1e-6), 0);
    EXPECT_DOUBLE_EQ(TimeOfFraction(1, 3000, 1e-6), 3e-3);
}

TEST(CursorArithmetic, WithoutARecordEveryTimeIsItsStart) {
    for (const double time : {0.0, 1.0, kNaN, kEndless}) {
        EXPECT_EQ(FractionOfTime(time, 3000, 0), 0);
        EXPECT_EQ(FractionOfTime(time, 0, 1e-6), 0);
        EXPECT_EQ(FractionOfTime(time, 3000, kNaN), 0);
    }
    EXPECT_EQ(FractionOfTime(kNaN, 3000, 1e-6), 0);
    EXPECT_EQ(FractionOfTime(kEndless, 3000, 1e-6), 1);
}

TEST(CursorArithmetic, LevelsReachFromPlusToMinus126) {
    EXPECT_DOUBLE_EQ(LevelOfFraction(0), 126);
    EXPECT_DOUBLE_EQ(LevelOfFraction(0.5), 0);
    EXPECT_DOUBLE_EQ(LevelOfFraction(1), -126);
    EXPECT_DOUBLE_EQ(FractionOfLevel(63), 0.25);
    EXPECT_DOUBLE_EQ(FractionOfLevel(1e30), 0);
    EXPECT_DOUBLE_EQ(FractionOfLevel(-kEndless), 1);
    EXPECT_EQ(FractionOfLevel(kNaN), 0);
}

TEST(CursorArithmetic, TheLinesOfTheViewHaveASpanOf254) {
    EXPECT_DOUBLE_EQ(VertWorldLinePlace(0, 3000, 357), 0);
    EXPECT_DOUBLE_EQ(VertWorldLinePlace(2999, 3000, 357), 354);
    EXPECT_EQ(VertWorldLinePlace(5, 1, 357), 0);
    EXPECT_DOUBLE_EQ(HorizWorldLinePlace(127, 240), 0);
    EXPECT_DOUBLE_EQ(HorizWorldLinePlace(0, 240), 237 * 0.5);
    EXPECT_DOUBLE_EQ(HorizWorldLinePlace(-127, 240), 237);
}

} // namespace
