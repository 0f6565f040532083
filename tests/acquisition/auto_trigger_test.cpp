#include "acquisition/auto_trigger.h"

#include <gtest/gtest.h>
#include <limits>

TEST(ProbeWait, SpansTheTimeOfFourThousandFiveHundredSamplesInTenLooks) {
    EXPECT_EQ(ProbeWait(40e-6F), 18);
    EXPECT_EQ(ProbeWait(100e-6F), 45);
    EXPECT_EQ(ProbeWait(200e-6F), 90);
}

TEST(ProbeWait, RoundsToWholeMilliseconds) {
    EXPECT_EQ(ProbeWait(5.7e-6F), 3); // 2.565 ms
    EXPECT_EQ(ProbeWait(5.2e-6F), 2); // 2.34 ms
}

TEST(ProbeWait, StaysWithinOneAndAHundredMilliseconds) {
    EXPECT_EQ(ProbeWait(1e-9F), 1);
    EXPECT_EQ(ProbeWait(0), 1);
    EXPECT_EQ(ProbeWait(-1), 1);
    EXPECT_EQ(ProbeWait(40e-3F), 100);
    EXPECT_EQ(ProbeWait(std::numeric_limits<float>::infinity()), 100);
    EXPECT_EQ(ProbeWait(std::numeric_limits<float>::quiet_NaN()), 1);
}
