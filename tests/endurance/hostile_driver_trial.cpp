#include "endurance/bench_day.h"
#include "endurance/last_words.h"
#include "endurance/lying_backend.h"
#include "endurance/lying_values.h"
#include "endurance/sound_backend.h"
#include "endurance/trial_length.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>

// Drivers that lie, in every way that the interface lets them. What they say is shown or left out; the
// program goes on, answers the hand, and ends.

namespace {

/// Questions in one tick, however the answers come: the wait for a roll to begin is by far the longest.
constexpr int kMostCalls = 1200;
/// Milliseconds that one tick may wait for the instrument.
constexpr int kMostSleep = 1100;

struct Day {
    int ticks = 0;
    int files = 0;
    bool answers = false;
};

/// A start, a day's work and the end on a stack of modules that lies so; none, on the demonstration that
/// does.
Day SpendDay(const std::vector<Lie>& lies, int modules, std::uint32_t seed) {
    std::string names;
    LastWords::Say("a day with %zu lies", lies.size());
    for (const Lie& lie : lies) {
        names += NameOf(lie) + "; ";
        LastWords::Say("%d modules, seed %u, %s", modules, seed, NameOf(lie).c_str());
    }
    SCOPED_TRACE(names + std::to_string(modules) + " modules, seed " + std::to_string(seed));
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir("data");
    int slept = 0;
    auto backend = std::make_unique<LyingBackend>(std::make_unique<SoundBackend>(modules), lies, seed);
    const LyingBackend& liar = *backend;
    WholeInstrument whole(std::move(backend), {.folder = folder.path(), .sleep = [&slept](int milliseconds) {
                                                   slept += milliseconds;
                                               }});
    whole.Start();
    BenchDay day(whole, folder.filePath("data"));
    day.Spend();

    const int calls = liar.Calls();
    slept = 0;
    whole.instrument.runLoop->RunTimer_Timer();
    EXPECT_LE(liar.Calls() - calls, kMostCalls);
    EXPECT_LE(slept, kMostSleep);

    Day seen{day.Ticks(), day.Files(), whole.PanelAnswers()};
    EXPECT_TRUE(seen.answers);
    EXPECT_GE(seen.ticks, 50);
    whole.End();
    LastWords::Rest();
    return seen;
}

} // namespace

TEST(HostileDriver, TellsAtLeastAHundredAndTwentyLiesOfEveryOperation) {
    EXPECT_GE(AllLies().size(), 120U);
    std::set<Operation> operations;
    std::set<std::string> names;
    for (const Lie& lie : AllLies()) {
        operations.insert(lie.operation);
        names.insert(NameOf(lie));
    }
    EXPECT_EQ(operations.size(), static_cast<std::size_t>(Operation::CloseDrvr) + 1);
    EXPECT_EQ(names.size(), AllLies().size());
}

TEST(HostileDriver, WithoutALieTheDayIsAGoodOne) {
    LastWords::Keep();
    for (const int modules : {4, 0}) {
        if (modules > 0 || LongTrial()) {
            EXPECT_GT(SpendDay({}, modules, 1).files, 4);
        }
    }
}

TEST(HostileDriver, IsSurvivedInEveryLie) {
    LastWords::Keep();
    if (LongTrial()) {
        for (const Lie& lie : AllLies()) {
            SpendDay({lie}, 4, 1);
            SpendDay({lie}, 0, 1);
        }
        return;
    }
    // Many at once, one of each operation's parts: a program that survives them alone has seen each.
    constexpr int kDays = 2;
    for (int first = 0; first < kDays; ++first) {
        std::vector<Lie> lies;
        for (const Lie& lie : AllLies()) {
            // What ends the look for modules would leave the rest untold.
            const bool ends = lie.operation == Operation::Enumerate ||
                              lie.operation == Operation::OpenAndReset ||
                              lie.operation == Operation::GetProductName;
            // Each operation in other ways, so that together they tell every one.
            const int ways = static_cast<int>(WaysOf(lie.part).size());
            const int way = (kDays * static_cast<int>(lie.operation) + first) % ways;
            if (lie.part != Part::Deed && !ends && lie.way == way) {
                lies.push_back(lie);
            }
        }
        SpendDay(lies, first == kDays - 1 ? 0 : 4, static_cast<std::uint32_t>(first));
    }
}

TEST(HostileDriver, IsSurvivedInPairsOfLies) {
    LastWords::Keep();
    const std::uint32_t seed = TrialSeed();
    std::mt19937 random(seed);
    for (int pair = LongTrial() ? TrialCount(500) : 1; pair > 0; --pair) {
        const auto& lies = AllLies();
        SpendDay({lies[random() % lies.size()], lies[random() % lies.size()]},
                 static_cast<int>(random() % (kScopeChannels + 1)), static_cast<std::uint32_t>(random()));
    }
}
