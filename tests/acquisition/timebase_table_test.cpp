#include "acquisition/timebase_table.h"

#include "acquisition/mode_text.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* label;
    SamplingMode mode;
    int clock;
    int decimation;
    double expansion;
    double period;
    const char* modeText;
};

const char* const kRISText = "RIS (repetitive inputs, norm trig only, effective sample interval: 1ns)";

using enum SamplingMode;
const Row kRows[] = {
    {"4ns/div", RIS, 50, 1, 25, 1e-9, kRISText},
    {"10ns/div", RIS, 50, 1, 10, 1e-9, kRISText},
    {"20ns/div", RIS, 50, 1, 5, 1e-9, kRISText},
    {"40ns/div", RIS, 50, 1, 2.5, 1e-9, kRISText},
    {"100ns/div", RIS, 50, 1, 1, 1e-9, kRISText},
    {"200ns/div", Refresh, 50, 1, 10, 20e-9, "Single-shot (sample interval: 20ns, refresh mode)"},
    {"400ns/div", Refresh, 50, 1, 5, 20e-9, "Single-shot (sample interval: 20ns, refresh mode)"},
    {"1us/div", Refresh, 50, 1, 2, 20e-9, "Single-shot (sample interval: 20ns, refresh mode)"},
    {"2us/div", Refresh, 50, 1, 1, 20e-9, "Single-shot (sample interval: 20ns, refresh mode)"},
    {"4us/div", Refresh, 25, 1, 1, 40e-9, "Single-shot (sample interval: 40ns, refresh mode)"},
    {"10us/div", Refresh, 10, 1, 1, 100e-9, "Single-shot (sample interval: 100ns, refresh mode)"},
    {"20us/div", Refresh, 10, 2, 1, 200e-9, "Single-shot (sample interval: 200ns, refresh mode)"},
    {"40us/div", Refresh, 10, 4, 1, 400e-9, "Single-shot (sample interval: 400ns, refresh mode)"},
    {"100us/div", Refresh, 10, 10, 1, 1e-6, "Single-shot (sample interval: 1us, refresh mode)"},
    {"200us/div", Refresh, 10, 20, 1, 2e-6, "Single-shot (sample interval: 2us, refresh mode)"},
    {"400us/div", Refresh, 10, 40, 1, 4e-6, "Single-shot (sample interval: 4us, refresh mode)"},
    {"1ms/div", Refresh, 10, 100, 1, 10e-6, "Single-shot (sample interval: 10us, refresh mode)"},
    {"2ms/div", Refresh, 10, 200, 1, 20e-6, "Single-shot (sample interval: 20us, refresh mode)"},
    {"4ms/div", Refresh, 10, 400, 1, 40e-6, "Single-shot (sample interval: 40us, refresh mode)"},
    {"10ms/div", Refresh, 10, 1000, 1, 100e-6, "Single-shot (sample interval: 100us, refresh mode)"},
    {"20ms/div", Refresh, 10, 2000, 1, 200e-6, "Single-shot (sample interval: 200us, refresh mode)"},
    {"40ms/div", Refresh, 10, 4000, 1, 400e-6, "Single-shot (sample interval: 400us, refresh mode)"},
    {"100ms/div", Roll, 10, 10000, 1, 1e-3, "Single-shot (sample interval: 1ms, roll mode)"},
    {"200ms/div", Roll, 10, 20000, 1, 2e-3, "Single-shot (sample interval: 2ms, roll mode)"},
    {"400ms/div", Roll, 10, 40000, 1, 4e-3, "Single-shot (sample interval: 4ms, roll mode)"},
    {"1s/div", Roll, 10, 100000, 1, 10e-3, "Single-shot (sample interval: 10ms, roll mode)"},
    {"2s/div", Roll, 10, 200000, 1, 20e-3, "Single-shot (sample interval: 20ms, roll mode)"},
    {"4s/div", Roll, 10, 400000, 1, 40e-3, "Single-shot (sample interval: 40ms, roll mode)"},
};

TEST(TimebaseTable, HoldsTheTwentyEightSettings) {
    ASSERT_EQ(std::size(kRows), 28U);
    for (int i = 0; i < kTimebaseSettings; ++i) {
        const TimebaseSetting* setting = FindTimebaseSetting(i);
        const Row& row = kRows[i];
        ASSERT_NE(setting, nullptr);
        EXPECT_STREQ(setting->label, row.label);
        EXPECT_EQ(setting->mode, row.mode) << row.label;
        EXPECT_EQ(setting->clock, row.clock) << row.label;
        EXPECT_EQ(setting->decimation, row.decimation) << row.label;
        EXPECT_EQ(setting->displayExpansion, row.expansion) << row.label;
        EXPECT_DOUBLE_EQ(SamplePeriodOf(*setting), row.period) << row.label;
    }
}

TEST(TimebaseTable, ADivisionIsAHundredSamplesOverTheExpansion) {
    const double scale[] = {1e-9, 1e-6, 1e-3, 1};
    const QString units[] = {"ns/div", "us/div", "ms/div", "s/div"};
    for (const Row& row : kRows) {
        const QString label = row.label;
        double seconds = 0;
        for (int u = 0; u < 4 && seconds == 0; ++u) {
            bool number = false;
            const double value = QString(label).remove(units[u]).toDouble(&number);
            seconds = label.endsWith(units[u]) && number ? value * scale[u] : 0;
        }
        EXPECT_NEAR(100 * row.period / row.expansion, seconds, seconds * 1e-9) << row.label;
    }
}

TEST(TimebaseTable, HasNothingBeyondItsEnds) {
    EXPECT_EQ(FindTimebaseSetting(-1), nullptr);
    EXPECT_EQ(FindTimebaseSetting(28), nullptr);
    EXPECT_EQ(FindTimebaseSetting(32767), nullptr);
}

TEST(ModeText, TellsModeAndIntervalOfEverySetting) {
    for (const Row& row : kRows) {
        const auto period = static_cast<float>(row.period);
        EXPECT_EQ(ModeText(period, row.mode == RIS, row.mode == Roll),
                  QStringLiteral("Acquistion mode: ") + row.modeText)
            << row.label;
    }
}

TEST(ModeText, ChangesItsUnitAtAThousandAndRoundsToWholeNumbers) {
    const auto interval = [](float period) {
        return ModeText(period, false, false).section(QStringLiteral("interval: "), 1).section(',', 0, 0);
    };
    EXPECT_EQ(interval(0.9994e-6F), "999ns");
    EXPECT_EQ(interval(1e-6F), "1us");
    EXPECT_EQ(interval(0.9996e-6F), "1000ns");
    EXPECT_EQ(interval(0.001F), "1ms");
    EXPECT_EQ(interval(0.00099F), "990us");
    EXPECT_EQ(interval(0.25F), "250ms");
    EXPECT_EQ(interval(1.0F), "1s");
    EXPECT_EQ(interval(1000.0F), "1000s");
}

} // namespace
