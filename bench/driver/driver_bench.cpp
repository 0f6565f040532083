// What the driver costs a tick: demonstration samples, the transform, and a read-out of the simulated stack,
// all through the wrapper that the program uses.

#include "driver/builtin_backend.h"
#include "driver/driver.h"
#include "driver/library_backend.h"
#include "frame/record/samples.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

Driver& BuiltIn() {
    static Driver driver(std::make_unique<BuiltinBackend>());
    return driver;
}

/// The stack of four modules, open, on the fastest clock, running without a trigger.
Driver& Stack() {
    static Driver driver(LibraryBackend::Load(CORVANTINE_SIMULATED_STACK).backend);
    static const bool open = [] {
        driver.OpenDrvr();
        std::int32_t port = -2;
        std::int32_t channel = -2;
        driver.Enumerate(port, channel);
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            driver.OpenAndReset(ch);
            driver.SetTrigMaster(ch, ch == 1);
            driver.InitScope(ch, ch == 1);
            driver.SetUpFrontEnd(ch, 1, true, false);
            driver.SetOffset(ch, 0);
            driver.SetBaseAdcClk(ch, 50);
            driver.SetDecimationRatio(ch, 1);
            driver.SetRISMode(ch, false);
            driver.SetNormTrig(ch, false);
            driver.SetPreTrigDepth(ch, 0.5F);
            driver.SetTriggerDelay(ch, 0);
        }
        return true;
    }();
    static_cast<void>(open);
    return driver;
}

void DemonstrationSamplesOfFourChannels(benchmark::State& state) {
    std::vector<double> buffer(kSampleDepth);
    int phase = 0;
    for (auto _ : state) {
        phase += 10;
        for (int ch = 0; ch < kScopeChannels; ++ch) {
            BuiltIn().MakeSampleData(buffer.data(), kSampleDepth, 0, ch, phase);
            benchmark::DoNotOptimize(buffer.data());
        }
    }
}
BENCHMARK(DemonstrationSamplesOfFourChannels)->Unit(benchmark::kMicrosecond);

void SpectrumInDecibels(benchmark::State& state) {
    std::vector<double> samples(2048);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = 0.4 * std::sin(0.1 * static_cast<double>(i));
    }
    std::vector<double> buffer;
    for (auto _ : state) {
        buffer = samples;
        BuiltIn().FFT(buffer.data(), 2048, 0.5, 1);
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(SpectrumInDecibels)->Unit(benchmark::kMicrosecond);

/// The same blocks again: the copy, and bringing them into bounds.
void BlocksThatAreThereAlready(benchmark::State& state) {
    std::vector<float> blocks(4 * kSampleRow);
    for (auto _ : state) {
        Stack().GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
        benchmark::DoNotOptimize(blocks.data());
    }
}
BENCHMARK(BlocksThatAreThereAlready)->Unit(benchmark::kMicrosecond);

/// A fresh record of all four channels; waiting for it is not counted.
void FreshRecordOfTheSimulatedStack(benchmark::State& state) {
    Driver& driver = Stack();
    std::vector<float> blocks(4 * kSampleRow);
    for (auto _ : state) {
        state.PauseTiming();
        for (const int ch : {2, 3, 4, 1}) {
            driver.AcquisitionStart(ch);
        }
        while (driver.GetAcquistionState(1) != 0) {
        }
        state.ResumeTiming();
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            driver.AcquisitionEnd(ch);
        }
        driver.GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
        benchmark::DoNotOptimize(blocks.data());
    }
}
BENCHMARK(FreshRecordOfTheSimulatedStack)->Unit(benchmark::kMicrosecond);

} // namespace
