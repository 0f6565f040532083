#include "display/column_rule.h"

#include "display/plot_scene.h"
#include "frame/record/record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr float kFloatNan = std::numeric_limits<float>::quiet_NaN();

/// The positions that a channel with these values keeps.
std::vector<int> Kept(const std::vector<float>& values, double columnsPerUnit, int channel = 1) {
    ChannelTable table(kSampleRow + 1);
    for (std::size_t i = 0; i < values.size(); ++i) {
        table(channel, static_cast<int>(i)) = values[i];
    }
    auto rule = std::make_unique<ColumnRule>();
    rule->Apply(table, 0, static_cast<int>(values.size()) - 1, 1, columnsPerUnit);
    std::vector<int> kept;
    for (int i = 0; i < static_cast<int>(values.size()); ++i) {
        if (rule->Keeps(channel, i)) {
            kept.push_back(i);
        }
    }
    return kept;
}

using testing::ElementsAre;

TEST(ColumnRule, KeepsTheFirstOfAColumnAndEachNewExtreme) {
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        // One column: 5, a new maximum, one in between, the maximum again, a new minimum, a new maximum.
        EXPECT_THAT(Kept({5, 7, 6, 7, 2, 8}, 0.1, channel), ElementsAre(0, 1, 4, 5)) << channel;
    }
}

TEST(ColumnRule, BeginsAnewInEveryColumn) {
    // Columns of two: 0 0 1 1 2 2
    EXPECT_THAT(Kept({5, 4, 4.5F, 4.5F, 9, 9}, 0.5), ElementsAre(0, 1, 2, 4));
}

TEST(ColumnRule, KeepsAllWhereColumnsAreNarrowerThanSamples) {
    EXPECT_THAT(Kept({5, 5, 5, 5}, 1), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(Kept({5, 5, 5}, 7.3), ElementsAre(0, 1, 2));
}

TEST(ColumnRule, ANumberThatIsNoneHidesTheRestOfTheColumnOnlyIfItCameFirst) {
    EXPECT_THAT(Kept({5, kFloatNan, 6, 4}, 0.1), ElementsAre(0, 2, 3));
    EXPECT_THAT(Kept({kFloatNan, 5, 6, 4}, 0.1), ElementsAre(0));
    EXPECT_THAT(Kept({kFloatNan, 5, 6, 4}, 0.5), ElementsAre(0, 2, 3));
}

TEST(ColumnRule, IsTheRuleWordForWordOnNoise) {
    PlotScene scene;
    scene.FillWithEverything();
    const ChannelTable& data = scene.record.SampleData;
    for (double columnsPerUnit : {0.119, 0.3, 0.64, 1.2}) {
        for (int step : {1, 3}) {
            auto rule = std::make_unique<ColumnRule>();
            const int first = 17;
            rule->Apply(data, first, 2999, step, columnsPerUnit);
            for (int channel = 1; channel <= kAllChannels; ++channel) {
                int lastColumn = -1;
                float maximum = 0;
                float minimum = 0;
                int i = 0;
                for (int x = first; x <= 2999; x += step, ++i) {
                    const float v = data(channel, x);
                    const int column = static_cast<int>(x * columnsPerUnit);
                    bool drawn = false;
                    if (column == lastColumn) {
                        if (v > maximum) {
                            maximum = v;
                            drawn = true;
                        } else if (v < minimum) {
                            minimum = v;
                            drawn = true;
                        }
                    } else {
                        maximum = minimum = v;
                        drawn = true;
                    }
                    lastColumn = column;
                    ASSERT_EQ(rule->Keeps(channel, i) != 0, drawn) << channel << " at " << x;
                }
            }
        }
    }
}

TEST(ColumnRule, TakesNoMoreSamplesThanItHasRoomFor) {
    ChannelTable table(ColumnRule::kMostSamples + 100);
    auto rule = std::make_unique<ColumnRule>();
    rule->Apply(table, 0, table.positions() - 1, 1, 1);
    EXPECT_EQ(rule->Keeps(1, ColumnRule::kMostSamples - 1), 1);
}

} // namespace
