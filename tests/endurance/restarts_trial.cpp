#include "endurance/last_words.h"
#include "endurance/sound_backend.h"
#include "endurance/trial_length.h"
#include "endurance/whole_instrument.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <malloc.h>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
// The compiler brings this function without its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

// The instrument started and ended many times in one process: whatever a start takes, its end gives back.

namespace {

std::size_t MemoryInUse() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

qsizetype DescriptorsInUse() {
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

/// 1 to 4 modules in turn; in every other four starts the last of them does not open, or none does.
void StartAndEnd(int number, const QString& folder) {
    const int modules = 1 + number % kScopeChannels;
    auto backend = std::make_unique<SoundBackend>(modules);
    for (int ch = 1; ch <= modules; ++ch) {
        if (number / 4 % 2 == 1 && (ch == modules || number / 8 % 2 == 1)) {
            backend->FailToOpen(ch);
        }
    }
    WholeInstrument whole(std::move(backend), {.folder = folder});
    whole.Start();
    whole.Tick(3);
    whole.End();
}

} // namespace

TEST(Restarts, LeaveNothingBehind) {
    LastWords::Keep();
    const QTemporaryDir folder;
    constexpr int kRound = 8;
    const int starts = LongTrial() ? TrialCount(500) : 2 * kRound;
    std::vector<std::size_t> memory;
    qsizetype descriptors = 0;
    for (int number = 0; number < starts; ++number) {
        LastWords::Say("start %d", number);
        StartAndEnd(number, folder.path());
        ASSERT_EQ(SoundBackend::NowOpen().libraries, 0) << number;
        ASSERT_EQ(SoundBackend::NowOpen().modules, 0) << number;
        if (number % kRound == kRound - 1) {
            memory.push_back(MemoryInUse());
            if (memory.size() == 1) {
                descriptors = DescriptorsInUse();
            }
            ASSERT_EQ(DescriptorsInUse(), descriptors) << number;
        }
    }
    LastWords::Rest();
    // The first rounds fill the toolkit's stores; what they hold afterwards may move a little, and not grow.
    const std::size_t warm = memory[std::min<std::size_t>(memory.size() / 2, 10) - 1];
    const std::size_t last = memory.back();
    RecordProperty("bytes_warm", std::to_string(warm));
    RecordProperty("bytes_last", std::to_string(last));
    std::printf("%d starts: %zu bytes in use after the first, %zu once warm, %zu at the end\n", starts,
                memory[0], warm, last);
    EXPECT_LE(last, warm + (LongTrial() ? 64 : 512) * 1024);
}
