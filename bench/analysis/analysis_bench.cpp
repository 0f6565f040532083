// What the analysis costs: the spectra of a plot, the read-outs of their window, and a pass of the
// measurements.

#include "analysis/measurement_design.h"
#include "analysis/measurement_window.h"
#include "analysis/spectrum_design.h"
#include "analysis/spectrum_window.h"
#include "channels/volts_table.h"
#include "controls/form.h"
#include "display/plot_canvas.h"
#include "display/spectrum_preparation.h"
#include "driver/builtin_backend.h"
#include "frame/record/record.h"
#include "support/plain_scale.h"

#include <QCheckBox>
#include <QRadioButton>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

/// Six channels with a noisy sine each, all on, all with a spectrum.
struct Bench {
    Bench() {
        record.SampleDepth = kSampleDepth;
        record.NumScopesFound = kScopeChannels;
        record.HeldSamplePeriod = 1e-7;
        record.ScopeInUse.fill(true);
        record.ChannelOn.fill(true);
        record.ChannelFFT.fill(true);
        scales.fill(&scale);
        unsigned noise = 1;
        for (int i = 0; i < kSampleDepth; ++i) {
            for (int channel = 1; channel <= kAllChannels; ++channel) {
                noise = noise * 1664525U + 1013904223U;
                record.SampleData(channel, i) = static_cast<float>(90 * std::sin(0.013 * channel * i) +
                                                                   static_cast<double>(noise >> 24) / 256);
            }
        }
    }
    Record record;
    Driver driver{std::make_unique<BuiltinBackend>()};
    PlainScale scale;
    PerChannel<const ChannelScale*> scales;
    SpectrumSamples buffer{};
};

void PreparedSpectra(benchmark::State& state) {
    Bench bench;
    for (auto _ : state) {
        for (int channel = 1; channel <= state.range(0); ++channel) {
            PrepareSpectrum(bench.driver, bench.record.SampleData, channel, SpectrumScale::Decibels(), 1,
                            bench.buffer, bench.record.SpectrumData);
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PreparedSpectra)->Arg(1)->Arg(6)->Unit(benchmark::kMicrosecond);

void UpdateStatsOfSixSteadyRows(benchmark::State& state) {
    Bench bench;
    Form form(MeasurementDesign());
    std::array<QCheckBox, 6> boxes;
    MeasurementWindow::Controls controls;
    for (int i = 0; i < kCursors; ++i) {
        boxes[static_cast<std::size_t>(i)].setChecked(true);
        boxes[static_cast<std::size_t>(3 + i)].setChecked(true);
        controls.VertCursorEn[i] = &boxes[static_cast<std::size_t>(i)];
        controls.HorizCursorEn[i] = &boxes[static_cast<std::size_t>(3 + i)];
    }
    MeasurementWindow window(form, bench.record, bench.driver, bench.scales, controls);
    window.Build();
    form.show();
    for (auto _ : state) {
        window.UpdateStats();
    }
}
BENCHMARK(UpdateStatsOfSixSteadyRows)->Unit(benchmark::kMicrosecond);

/// steady: the same figures at every plot, else others.
void ReadOutsOfSixSpectra(benchmark::State& state) {
    Bench bench;
    Form form(SpectrumDesign(), nullptr, kPlotCanvas);
    QRadioButton decibels;
    decibels.setChecked(true);
    SpectrumWindow window(form, bench.record, bench.driver, decibels, bench.scales,
                          {[] {}, [] { return QString(); }, [] { return false; }});
    form.show();
    float level = 0;
    for (auto _ : state) {
        level = state.range(0) != 0 ? 0 : level + 0.1F;
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            bench.record.SpectrumData(channel, 512) = -std::fmod(level, 50.0F);
        }
        window.Canvas_UpdateStats();
    }
}
BENCHMARK(ReadOutsOfSixSpectra)->ArgName("steady")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

} // namespace
