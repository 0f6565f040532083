#include "frame/record/steps.h"

#include <gtest/gtest.h>

namespace {

TEST(Steps, HundredPercentAreTheHalfScreen) {
    EXPECT_EQ(StepsOfPercent(100), 127);
    EXPECT_EQ(StepsOfPercent(-100), -127);
    EXPECT_EQ(PercentOfSteps(127), 100);
}

TEST(Steps, ComeBackFromPercent) {
    for (int steps = -127; steps <= 127; ++steps) {
        EXPECT_FLOAT_EQ(static_cast<float>(StepsOfPercent(PercentOfSteps(steps))), static_cast<float>(steps));
    }
}

} // namespace
