#include "endurance/sound_backend.h"
#include "endurance/whole_instrument.h"

#include "display/plot_canvas.h"
#include "driver/builtin_backend.h"
#include "frame/record/record.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

// Weeks in a moment: everything that counts begins just before its end.

namespace {

constexpr int kTicks = 12;
constexpr int kWrapAfter = 5;
constexpr int kCompared = 2900; ///< of 3000 samples, what lies in two pictures that follow each other
constexpr int kFarthest = 20;   ///< samples; no trace moves as far in a tick

using Rows = std::vector<std::vector<float>>;

Rows RowsOf(const Record& record) {
    Rows rows;
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        const float* first = record.SampleData.row(ch);
        std::vector<float>& row = rows.emplace_back();
        for (int i = 0; i < kSampleDepth; ++i) {
            row.push_back(first[i * ChannelTable::stride()]);
        }
    }
    return rows;
}

/// The greatest difference of a record from the one before that moved by so many samples.
float Difference(const std::vector<float>& before, const std::vector<float>& after, int moved) {
    float most = 0;
    for (std::size_t i = 0; i < kCompared; ++i) {
        most = std::max(most, std::abs(after[i] - before[i + static_cast<std::size_t>(moved)]));
    }
    return most;
}

int Movement(const std::vector<float>& before, const std::vector<float>& after) {
    int best = 0;
    for (int moved = 1; moved <= kFarthest; ++moved) {
        if (Difference(before, after, moved) < Difference(before, after, best)) {
            best = moved;
        }
    }
    return best;
}

/// How many pixels of two pictures differ.
int Changed(const QImage& one, const QImage& other) {
    int changed = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            changed += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
        }
    }
    return changed;
}

} // namespace

TEST(Counters, TheDemonstrationMovesOnWhereThePassesBeginAnew) {
    const QTemporaryDir folder;
    WholeInstrument whole(std::make_unique<BuiltinBackend>(), {.folder = folder.path()});
    whole.Start();
    AcquisitionState& state = whole.instrument.acquisition;
    auto* canvas = whole.instrument.forms.MainForm->control<PlotCanvas>("MainPlotCanvas");
    state.PassCount = kPassCountEnd - kWrapAfter;

    std::vector<Rows> records;
    std::vector<QImage> pictures;
    for (int tick = 0; tick < kTicks; ++tick) {
        whole.instrument.runLoop->RunTimer_Timer();
        records.push_back(RowsOf(whole.record));
        pictures.push_back(canvas->grab().toImage());
    }
    EXPECT_EQ(state.PassCount, kTicks - kWrapAfter);

    int least = std::numeric_limits<int>::max();
    int most = 0;
    for (std::size_t tick = 1; tick < kTicks; ++tick) {
        SCOPED_TRACE(tick);
        for (std::size_t ch = 0; ch < kScopeChannels; ++ch) {
            SCOPED_TRACE(ch + 1);
            const int moved = Movement(records[0][ch], records[1][ch]);
            EXPECT_GT(moved, 0);
            // Twice the noise of a sample, and a little for a step of the table.
            EXPECT_LT(Difference(records[tick - 1][ch], records[tick][ch], moved), 1.3F);
        }
        const int changed = Changed(pictures[tick - 1], pictures[tick]);
        least = std::min(least, changed);
        most = std::max(most, changed);
    }
    EXPECT_GT(least, 0);
    EXPECT_LT(most, least * 3 / 2) << "one picture stands out";
    whole.End();
}

TEST(Counters, TicksGoOnBeyondTheirEnds) {
    const QTemporaryDir folder;
    WholeInstrument whole(std::make_unique<SoundBackend>(4), {.folder = folder.path()});
    whole.Start();
    RunLoop& loop = *whole.instrument.runLoop;
    AcquisitionState& state = whole.instrument.acquisition;

    state.TickCount = std::numeric_limits<std::uint32_t>::max() - 2;
    state.WaitTicks = std::numeric_limits<int>::max() - 1;
    state.AutoTicks = std::numeric_limits<int>::max() - 1;
    const int passes = state.PassCount;
    for (int tick = 0; tick < 20; ++tick) {
        loop.AutoTriggerTimer_Timer();
        loop.RunTimer_Timer();
    }
    EXPECT_LT(state.TickCount, 100U);
    EXPECT_GT(state.PassCount, passes);
    EXPECT_GE(state.AutoTicks, 0);
    EXPECT_GE(state.WaitTicks, 0);

    // Years without a run.
    loop.RunButton_Click();
    state.WaitTicks = std::numeric_limits<int>::max();
    state.AutoTicks = std::numeric_limits<int>::max();
    for (int tick = 0; tick < 3; ++tick) {
        loop.AutoTriggerTimer_Timer();
    }
    EXPECT_GT(state.AutoTicks, 0);
    EXPECT_GT(state.WaitTicks, 0);
    EXPECT_TRUE(whole.PanelAnswers());
    whole.End();
}
