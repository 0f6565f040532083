#include "frame/record/record.h"

#include <gtest/gtest.h>

TEST(ChannelTable, KeepsTheChannelIndexRunningFastest) {
    ChannelTable table(kSampleRow + 1);
    table(3, 7) = 4.5F;
    EXPECT_EQ(table.row(1)[3 - 1 + 6 * 7], 4.5F);
    EXPECT_EQ(table.row(3)[7 * ChannelTable::stride()], 4.5F);
    EXPECT_EQ(table.positions(), 3073);
}

TEST(Record, TwoRecordsShareNothing) {
    Record first;
    Record second;
    first.SampleData(1, 0) = 1;
    first.ChannelOn[6] = true;
    EXPECT_EQ(second.SampleData(1, 0), 0.0F);
    EXPECT_FALSE(second.ChannelOn[6]);
}

TEST(OffsetNullTable, HoldsOneValueForEachChannelAndRange) {
    OffsetNullTable table;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
            table(channel, range) = static_cast<float>(10 * channel + range);
        }
    }
    EXPECT_EQ(table(4, 2), 42.0F);
    EXPECT_EQ(table(1, 0), 10.0F);
    EXPECT_EQ(table(2, 1), 21.0F);
}
