#include "acquisition/read_out.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

constexpr float kUntouched = -77.0F;

class ReadOut : public testing::Test {
  protected:
    RecordRow Row(int channel) { return {table.row(channel), ChannelTable::stride()}; }
    void FillRecord(float value) {
        for (int i = 0; i < table.positions(); ++i) {
            for (int ch = 1; ch <= kAllChannels; ++ch) {
                table(ch, i) = value;
            }
        }
    }
    static std::vector<float> Ramp() {
        std::vector<float> samples(kSampleRow + 1);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            samples[i] = static_cast<float>(i);
        }
        return samples;
    }

    ChannelTable table{kSampleRow + 1};
};

TEST_F(ReadOut, BlocksCopyThreeThousandAndOneSamplesLessTheNull) {
    FillRecord(kUntouched);
    const std::vector<float> row = Ramp();
    ReadOutBlocks(row.data(), {false, 1.5F}, Row(2));
    EXPECT_EQ(table(2, 0), -1.5F);
    EXPECT_EQ(table(2, 1), -0.5F);
    EXPECT_EQ(table(2, 2999), 2997.5F);
    EXPECT_EQ(table(2, 3000), 2998.5F);
    EXPECT_EQ(table(2, 3001), kUntouched);
    EXPECT_EQ(table(1, 5), kUntouched);
    EXPECT_EQ(table(3, 5), kUntouched);
}

TEST_F(ReadOut, BandwidthLimitAveragesEachSampleWithItsSuccessorButNotTheLast) {
    std::vector<float> row = Ramp();
    row[3000] = 1000;
    row[3001] = 5000;
    ReadOutBlocks(row.data(), {true, 0.25F}, Row(4));
    EXPECT_EQ(table(4, 0), 0.25F);
    EXPECT_EQ(table(4, 10), 10.25F);
    EXPECT_EQ(table(4, 2999), (2999.0F + 1000.0F) / 2 - 0.25F);
    EXPECT_EQ(table(4, 3000), 999.75F);
}

TEST_F(ReadOut, RISPassInTheMiddleOfAPositionTakesTheNewSampleWhole) {
    FillRecord(8);
    std::vector<float> buffer(kSampleRow + 1, 40.0F);
    ReadOutRIS(buffer.data(), {3.5F, 0, 0}, {false, 2}, Row(1));
    for (int i = 0; i < kRISSamples; ++i) {
        EXPECT_EQ(table(1, 3 + 20 * i), 38.0F);
    }
    EXPECT_EQ(table(1, 2), 8.0F);
    EXPECT_EQ(table(1, 4), 8.0F);
    EXPECT_EQ(table(1, 3 + 20 * kRISSamples), 8.0F);
}

TEST_F(ReadOut, RISPassAtTheEdgeOfAPositionKeepsTheOldSampleLessTheNull) {
    FillRecord(8);
    std::vector<float> buffer(kSampleRow + 1, 40.0F);
    ReadOutRIS(buffer.data(), {7.0F, 0, 1}, {false, 2}, Row(1));
    EXPECT_EQ(table(1, 7), 6.0F);
}

TEST_F(ReadOut, RISPassBetweenWeighsOldAndNew) {
    FillRecord(8);
    std::vector<float> buffer(kSampleRow + 1, 40.0F);
    // A quarter into the position: w = |2 (0.25 - 0.5)| = 0.5.
    ReadOutRIS(buffer.data(), {0.25F, 0, 0}, {false, 0}, Row(1));
    EXPECT_EQ(table(1, 0), 24.0F);
    FillRecord(8);
    // An eighth: w = 0.75.
    ReadOutRIS(buffer.data(), {19.125F, 0, 0}, {false, 1}, Row(1));
    EXPECT_EQ(table(1, 19), 15.0F);
    EXPECT_EQ(table(1, 2999), 15.0F);
}

TEST_F(ReadOut, RISBandwidthLimitWorksOnTheBufferAndSparesTheLastSample) {
    std::vector<float> buffer = Ramp();
    buffer[149] = 1000;
    ReadOutRIS(buffer.data(), {0.5F, 0, 0}, {true, 0}, Row(3));
    EXPECT_EQ(buffer[0], 0.5F);
    EXPECT_EQ(table(3, 0), 0.5F);
    EXPECT_EQ(table(3, 148 * 20), (148.0F + 1000.0F) / 2);
    EXPECT_EQ(table(3, 149 * 20), 1000.0F);
}

TEST_F(ReadOut, RISPassOfStatusMinusOneIsDiscardedYetTheBufferIsLimited) {
    FillRecord(8);
    std::vector<float> buffer = Ramp();
    ReadOutRIS(buffer.data(), {0.5F, 0, -1}, {true, 3}, Row(1));
    EXPECT_EQ(buffer[0], 0.5F);
    for (int i = 0; i < table.positions(); ++i) {
        ASSERT_EQ(table(1, i), 8.0F);
    }
}

TEST_F(ReadOut, RISPassOfAnyOtherStatusIsTaken) {
    for (const int status : {-2, 0, 1, 1000000}) {
        FillRecord(8);
        std::vector<float> buffer = Ramp();
        ReadOutRIS(buffer.data(), {0.5F, 0, status}, {false, 0}, Row(1));
        EXPECT_EQ(table(1, 5 * 20), 5.0F) << status;
    }
}

TEST_F(ReadOut, RISPassPlacedOutsideTheGapIsDiscarded) {
    for (float position : {-0.001F, 20.5F, 1e30F, -1e30F, std::numeric_limits<float>::quiet_NaN(),
                           std::numeric_limits<float>::infinity()}) {
        FillRecord(8);
        std::vector<float> buffer(kSampleRow + 1, 40.0F);
        ReadOutRIS(buffer.data(), {position, 0, 0}, {false, 0}, Row(6));
        for (int i = 0; i < table.positions(); ++i) {
            ASSERT_EQ(table(6, i), 8.0F) << position;
        }
    }
}

TEST_F(ReadOut, RISPassAtTheEndOfTheGapStaysInTheRecord) {
    std::vector<float> buffer(kSampleRow + 1, 40.0F);
    ReadOutRIS(buffer.data(), {20.0F, 0, 0}, {false, 5}, Row(1));
    EXPECT_EQ(table(1, 3000), -5.0F);
    ReadOutRIS(buffer.data(), {19.5F, 0, 0}, {false, 0}, Row(1));
    EXPECT_EQ(table(1, 2999), 40.0F);
}

TEST_F(ReadOut, RollTakesOnlyItsOwnPositions) {
    FillRecord(kUntouched);
    const std::vector<float> buffer = Ramp();
    ReadOutRoll(buffer.data(), 100, 11, {false, 1}, Row(2));
    EXPECT_EQ(table(2, 99), kUntouched);
    EXPECT_EQ(table(2, 100), 99.0F);
    EXPECT_EQ(table(2, 110), 109.0F);
    EXPECT_EQ(table(2, 111), kUntouched);
}

TEST_F(ReadOut, RollLimitsTheBandwidthUpToTheLastPairOfTheRecord) {
    std::vector<float> buffer = Ramp();
    buffer[2999] = 5000;
    buffer[3000] = 9000;
    ReadOutRoll(buffer.data(), 2990, 30, {true, 0}, Row(2));
    EXPECT_EQ(table(2, 2990), 2990.5F);
    EXPECT_EQ(table(2, 2998), (2998.0F + 5000.0F) / 2);
    EXPECT_EQ(table(2, 2999), 5000.0F);
    EXPECT_EQ(table(2, 3000), 9000.0F);
}

TEST(RollIncrement, IsWhatIsNewWithinTheRoomOfARecord) {
    EXPECT_EQ(RollIncrement(50, 20), 30);
    EXPECT_EQ(RollIncrement(20, 20), 0);
    EXPECT_EQ(RollIncrement(-5, 20), -20);
    EXPECT_EQ(RollIncrement(std::numeric_limits<std::int32_t>::min(), 3073), -3073);
    EXPECT_EQ(RollIncrement(std::numeric_limits<std::int32_t>::max(), 0), 3073);
    EXPECT_EQ(RollIncrement(std::numeric_limits<std::int32_t>::max(), 3000), 73);
}

TEST_F(ReadOut, StretchSpreadsTheFirstSamplesOverTheRecord) {
    for (int i = 0; i < table.positions(); ++i) {
        table(1, i) = static_cast<float>(i);
        table(2, i) = static_cast<float>(i);
    }
    StretchForRIS(Row(1));
    for (int i = 0; i < kSampleDepth; ++i) {
        ASSERT_EQ(table(1, i), static_cast<float>(i / 20)) << i;
        ASSERT_EQ(table(2, i), static_cast<float>(i));
    }
    EXPECT_EQ(table(1, 3000), 3000.0F);
}

} // namespace
