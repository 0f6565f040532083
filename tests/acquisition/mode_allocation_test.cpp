#include "acquisition/acquisition_rig.h"
#include "driver/builtin_backend.h"
#include "frame/record/record.h"
#include "support/counted_new.h"

#include <gtest/gtest.h>

namespace {

// The status label is not on the screen here: the repaint that a label on screen asks for is the toolkit's.

/// An instrument whose acquisitions last two ticks and that takes no memory of its own.
class TwoTickBackend : public BuiltinBackend {
  public:
    std::int32_t GetAcquistionState(std::int32_t) override { return left > 0 ? 1 : 0; }
    std::int32_t GetTriggeredStatus(std::int32_t) override { return left < 2 ? 1 : 0; }
    std::int32_t GetSamplesSinceTrigger(std::int32_t) override { return 3000 - 1000 * left; }
    void AcquisitionStart(std::int32_t) override { left = 3; }
    void GetBufferRIS(std::int32_t, float* buffer, std::int32_t count, float* position, float* second,
                      std::int32_t* status) override {
        std::fill_n(buffer, count, 1.0F);
        *position = 3.25F;
        *second = 0;
        *status = 0;
    }

    int left = 0; ///< ticks until the record is there
};

struct Mode {
    const char* name;
    int trigMode;
    bool ris;
    bool roll;
};

class ModeAllocation : public testing::TestWithParam<Mode> {};

TEST_P(ModeAllocation, TickTakesNoMemoryAfterTheFirstRecord) {
    auto backend = std::make_unique<TwoTickBackend>();
    TwoTickBackend& instrument = *backend;
    Driver driver(std::move(backend));
    AcquisitionParts parts(driver, kScopeChannels, [](const std::string&) {});
    // Without the notes, which are strings of the test's own.
    RunLoop loop(parts.record, driver, parts.state,
                 {&parts.RunTimer, &parts.AutoTriggerTimer, &parts.CursTimer, &parts.RunButton,
                  &parts.OnceButton, &parts.TriggerStatusLabel, &parts.UpdateRateLabel,
                  parts.offsetKnobs.Pointers()},
                 {}, {[] {}, [] {}, [] {}, [] {}, [] {}, [] {}}, {[](int) {}, [] {}});
    parts.record.TrigMode = GetParam().trigMode;
    parts.record.RISMode = GetParam().ris;
    parts.record.RollMode = GetParam().roll;
    loop.RunButton_Click();
    QStringList texts;
    texts.reserve(100);
    const auto tick = [&] {
        loop.RunTimer_Timer();
        instrument.left = std::max(0, instrument.left - 1);
    };
    for (int i = 0; i < 8; ++i) {
        tick();
    }
    for (int i = 0; i < 40; ++i) {
        const std::size_t before = AllocationsSoFar();
        tick();
        EXPECT_EQ(AllocationsSoFar() - before, 0U) << "in tick " << i;
        texts << parts.StatusText();
    }
    EXPECT_TRUE(texts.contains("trigger ?.")) << "the ticks went through waiting";
    EXPECT_TRUE(texts.contains("acquiring")) << "through acquiring";
    EXPECT_TRUE(texts.contains("trigger !") || GetParam().ris) << "and through whole records";
    EXPECT_GT(parts.state.PassCount, 8);
}

INSTANTIATE_TEST_SUITE_P(Modes, ModeAllocation,
                         testing::Values(Mode{"Auto", 0, false, false}, Mode{"Norm", 1, false, false},
                                         Mode{"Free", 2, false, false}, Mode{"RIS", 1, true, false},
                                         Mode{"Roll", 0, false, true}),
                         [](const testing::TestParamInfo<Mode>& mode) { return mode.param.name; });

} // namespace
