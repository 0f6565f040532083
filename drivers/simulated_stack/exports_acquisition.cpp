// The exports of the simulated stack: acquisition and read-out.

#include "corvantine_driver.h"

#include "library.h"

#include <algorithm>

namespace {

constexpr std::int32_t kBlock = 512;
constexpr std::int32_t kBlocks = CORVANTINE_ROW / kBlock;

} // namespace

void CorvantineDrvr_AcquisitionStart(std::int32_t ch) {
    const Call call("AcquisitionStart", ch);
    if (Library* library = call.On(ch, Needs::Enumerated)) {
        call.Expect(library->initialised[static_cast<std::size_t>(ch - 1)], "before InitScope");
        call.Expect(library->stack.Source() != 0, "no channel is the source of the trigger");
        library->stack.Start(ch);
    }
}

void CorvantineDrvr_AcquisitionEnd(std::int32_t ch) {
    if (Library* library = Call("AcquisitionEnd", ch).On(ch, Needs::Open)) {
        library->stack.End(ch);
    }
}

std::int32_t CorvantineDrvr_GetAcquistionState(std::int32_t ch) {
    Library* library = Call("GetAcquistionState", ch).On(ch, Needs::Enumerated);
    return library != nullptr && library->stack.Running(ch) ? 1 : 0;
}

std::int32_t CorvantineDrvr_GetTriggeredStatus(std::int32_t ch) {
    Library* library = Call("GetTriggeredStatus", ch).On(ch, Needs::Enumerated);
    return library != nullptr && library->stack.Triggered(ch) ? 1 : 0;
}

std::int32_t CorvantineDrvr_GetSamplesSinceTrigger(std::int32_t ch) {
    Library* library = Call("GetSamplesSinceTrigger", ch).On(ch, Needs::Enumerated);
    return library != nullptr ? library->stack.SamplesSinceArm(ch) : 0;
}

void CorvantineDrvr_GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                             std::int32_t count) {
    const Call call("GetBufferBlocksMultiChan", first, last, count);
    if (call.In() == nullptr) {
        return;
    }
    call.Expect(first == 1 && last == sim::kSlots, "channels 1..4");
    call.Expect(count == kBlocks, "6 blocks fill a row");
    const std::int32_t samples = std::clamp(count, 0, kBlocks) * kBlock;
    for (std::int32_t ch = std::max(first, 1); ch <= std::min(last, sim::kSlots); ++ch) {
        if (Library* library = call.On(ch, Needs::Enumerated)) {
            library->stack.Read(ch, blocks + static_cast<std::ptrdiff_t>(ch - 1) * CORVANTINE_ROW, 0,
                                samples);
        }
    }
}

void CorvantineDrvr_GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                         std::int32_t start) {
    const Call call("GetBufferIncremental", ch, count, start);
    if (Library* library = call.On(ch, Needs::Open)) {
        const bool begins = start >= 0 && start < CORVANTINE_BUFFER && count > 0;
        call.Expect(begins && count <= CORVANTINE_BUFFER - start, "positions inside the buffer");
        if (begins) {
            library->stack.Read(ch, buffer + start, start, std::min(count, CORVANTINE_BUFFER - start));
        }
    }
}

void CorvantineDrvr_GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                 float* second, std::int32_t* status) {
    const Call call("GetBufferRIS", ch, count);
    *position = 0;
    *second = 0;
    *status = -1;
    if (Library* library = call.On(ch, Needs::Open)) {
        call.Expect(count == sim::Acquisition::kRISSamples, "150 samples");
        const auto pass =
            library->stack.ReadRISPass(ch, buffer, std::clamp(count, 0, sim::Acquisition::kRISSamples));
        *position = static_cast<float>(pass.position);
        *status = pass.valid ? 0 : -1;
    }
}

float CorvantineDrvr_GetSamplePeriod(std::int32_t running, float held_period) {
    const Call call("GetSamplePeriod", running, held_period);
    const Library* library = call.In();
    call.Expect(IsFlag(running), "a boolean");
    call.Expect(running != 0 || held_period > 0, "a held period to give back");
    const double period = library != nullptr ? library->stack.Period() : 0;
    return running != 0 && period > 0 ? static_cast<float>(period) : held_period;
}
