// What the two math channels cost a tick, and beside it in the same run a copy of the same samples from row
// to row of the record, below which nothing of the kind can be had.

#include "channels/math_row.h"
#include "channels/math_tab.h"
#include "channels/math_tab_design.h"
#include "channels/volts_table.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "frame/record/record.h"
#include "frame/settings/settings.h"
#include "support/plain_scale.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

/// Both math channels on, each with its own two operands and the same operator.
struct Bench {
    explicit Bench(int operatorIndex) {
        record.SampleDepth = kSampleDepth;
        record.NumScopesFound = kScopeChannels;
        for (int i = 0; i < kSampleDepth; ++i) {
            for (int channel = 1; channel <= kScopeChannels; ++channel) {
                record.SampleData(channel, i) = static_cast<float>(100 * std::sin(0.01 * channel * i) + 0.5);
            }
        }
        for (int number : {1, 2}) {
            const char* combo = number == 1 ? "Math1Combo" : "Math2Combo";
            for (int list : {0, 2}) {
                form.control<QComboBox>(combo, list)->addItems({"1", "2", "3", "4"});
                form.control<QComboBox>(combo, list)->setCurrentIndex(2 * number - 2 + list / 2);
            }
            form.control<QComboBox>(combo, 1)->addItems({"+", "-", "x", QString(QChar(0xF7))});
            form.control<QComboBox>(combo, 1)->setCurrentIndex(operatorIndex);
            form.control<QCheckBox>("MathChannelEn", number)->setChecked(true);
        }
        tab.DoMaths();
    }
    Record record;
    QTemporaryDir folder;
    SettingsStore settings{folder.path()};
    Form form{MathTabDesign()};
    PlainScale scale;
    MathTab tab{form,
                record,
                settings,
                {&scale, &scale, &scale, &scale},
                {[] {}, [](int, bool) {}, [](int, bool) {}}};
};

void CopyOfTheSameSamples(benchmark::State& state) {
    Bench bench(0);
    for (auto _ : state) {
        for (const int channel : {1, 3}) {
            const float* from = bench.record.SampleData.row(channel);
            float* to = bench.record.SampleData.row(channel == 1 ? 5 : 6);
            for (int i = 0; i < kSampleDepth; ++i) {
                to[i * ChannelTable::stride()] = from[i * ChannelTable::stride()];
            }
            benchmark::ClobberMemory();
        }
    }
}
BENCHMARK(CopyOfTheSameSamples)->Unit(benchmark::kMicrosecond);

void BothMathChannels(benchmark::State& state) {
    Bench bench(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        bench.tab.DoMaths();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BothMathChannels)->ArgName("operator")->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

} // namespace
