#include "controls/colour.h"

#include <gtest/gtest.h>

namespace {

TEST(Brightened, AddsChannelByChannel) {
    EXPECT_EQ(Brightened(0x102030), 0x304050U);
    EXPECT_EQ(Brightened(0x102030, 0x010203), 0x112233U);
}

TEST(Brightened, StopsAt255WithoutCarrying) {
    EXPECT_EQ(Brightened(0xF00000), 0xFF2020U);
    EXPECT_EQ(Brightened(0x00F000), 0x20FF20U);
    EXPECT_EQ(Brightened(0x0000F0), 0x2020FFU);
    EXPECT_EQ(Brightened(0xFFFFFF), 0xFFFFFFU);
    EXPECT_EQ(Brightened(0xDFDFDF), 0xFFFFFFU);
    EXPECT_EQ(Brightened(0xE0E0E0), 0xFFFFFFU);
}

} // namespace
