// The exports of the simulated stack: what the interface declares, on the stack that a text file describes.

#include "corvantine_driver.h"

#include "arithmetic/demo_waveforms.h"
#include "arithmetic/rescale.h"
#include "arithmetic/spectrum.h"
#include "built_in_stack.h"
#include "stack.h"
#include "stack_file.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string_view>

namespace {

constexpr std::int32_t kHandle = 1;
constexpr std::string_view kIssue = "Corvantine simulated stack";

/// All that lives between OpenDrvr and CloseDrvr.
struct Library {
    sim::Stack stack;
    bool demoMode = false;
    instrument::DemoWaveforms waveforms;
    instrument::Spectrum spectrum;
};

// C functions have nowhere else to keep it.
std::unique_ptr<Library> library;

sim::StackFile Describe() {
    const char* path = std::getenv("CORVANTINE_STACK");
    if (path != nullptr && *path != '\0') {
        return sim::ReadStackFile(path);
    }
    std::istringstream text(sim::kBuiltInStack);
    return sim::ParseStack(text, "built-in stack", {});
}

sim::Module* InSlot(std::int32_t ch) {
    return library ? library->stack.InSlot(ch) : nullptr;
}

sim::Module* Open(std::int32_t ch) {
    return library ? library->stack.Open(ch) : nullptr;
}

bool IsChannel(std::int32_t ch) {
    return ch >= 1 && ch <= sim::kSlots;
}

void WriteName(std::string_view name, std::uint8_t* buffer, std::int32_t* length) {
    const std::size_t count = std::min<std::size_t>(name.size(), CORVANTINE_NAME_BYTES);
    std::copy_n(name.begin(), count, buffer);
    *length = static_cast<std::int32_t>(count);
}

float FiniteOr(float value, float otherwise) {
    return std::isfinite(value) ? value : otherwise;
}

} // namespace

// The library and what is on the bus

std::int32_t CorvantineDrvr_OpenDrvr() {
    library = std::make_unique<Library>();
    sim::StackFile file = Describe();
    if (file.stack) {
        library->stack = sim::Stack(std::move(*file.stack));
    } else {
        std::fprintf(stderr, "%s\n", file.error.c_str());
    }
    return kHandle;
}

std::int32_t CorvantineDrvr_GetSampleDepth() {
    return sim::Acquisition::kDepth;
}

void CorvantineDrvr_DrvrIssue(char text[100]) {
    std::memset(text, ' ', CORVANTINE_ISSUE_BYTES);
    std::copy(kIssue.begin(), kIssue.end(), text);
}

std::int32_t CorvantineDrvr_Enumerate(std::int32_t* port, std::int32_t* channel) {
    return library ? library->stack.Enumerate(*port, *channel) : 0;
}

void CorvantineDrvr_GetProductName(std::int32_t ch, std::uint8_t buffer[101], std::int32_t* length) {
    const sim::Module* module = InSlot(ch);
    WriteName(module != nullptr ? module->Description().product : std::string_view(), buffer, length);
}

void CorvantineDrvr_GetSerialNumber(std::int32_t ch, std::uint8_t buffer[101], std::int32_t* length) {
    const sim::Module* module = InSlot(ch);
    if (module != nullptr) {
        WriteName(module->Description().serial, buffer, length);
    } else if (library && library->demoMode && IsChannel(ch)) {
        WriteName("DEMO" + std::to_string(ch), buffer, length);
    } else {
        *length = 0;
    }
}

void CorvantineDrvr_GetHWRev(std::int32_t ch, std::int32_t* out) {
    const sim::Module* module = InSlot(ch);
    *out = module != nullptr ? module->Description().hardwareRevision : 0;
}

void CorvantineDrvr_GetPortNumber(std::int32_t ch, std::int32_t* out) {
    const sim::Module* module = InSlot(ch);
    *out = module != nullptr ? module->Description().port : 0;
}

void CorvantineDrvr_GetControllerRev(std::int32_t ch, std::int32_t* out) {
    const sim::Module* module = InSlot(ch);
    *out = module != nullptr ? module->Description().controllerRevision : 0;
}

void CorvantineDrvr_SetDemoMode(std::int32_t on) {
    if (library) {
        library->demoMode = on != 0;
    }
}

std::int32_t CorvantineDrvr_OpenAndReset(std::int32_t ch) {
    if (!library) {
        return 0;
    }
    const bool opened = library->demoMode ? IsChannel(ch) : library->stack.OpenAndReset(ch);
    return opened ? CORVANTINE_TRUE : CORVANTINE_FALSE;
}

void CorvantineDrvr_SetTrigMaster(std::int32_t ch, std::int32_t on) {
    if (sim::Module* module = Open(ch)) {
        module->trigger.isSource = on != 0;
    }
}

void CorvantineDrvr_SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t) {
    if (library) {
        library->stack.SetDetectLine(ch, drive != 0);
    }
}

std::int32_t CorvantineDrvr_GetDetectLine(std::int32_t ch) {
    return library && !library->demoMode && library->stack.DetectLineHigh(ch) ? 1 : 0;
}

void CorvantineDrvr_Close(std::int32_t ch) {
    if (library) {
        library->stack.Close(ch);
    }
}

void CorvantineDrvr_InitScope(std::int32_t, std::int32_t) {}

void CorvantineDrvr_GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) {
    const sim::Module* module = InSlot(ch);
    *first = module != nullptr ? module->Description().risBand[0] : 0;
    *second = module != nullptr ? module->Description().risBand[1] : 0;
}

void CorvantineDrvr_GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) {
    const sim::Module* module = InSlot(ch);
    *offset = module != nullptr ? module->Description().triggerDACOffset : 0;
}

void CorvantineDrvr_GetRawChannelOffset(std::int32_t ch, float* out) {
    const sim::Module* module = InSlot(ch);
    *out = module != nullptr ? module->Description().rawChannelOffset : 0;
}

void CorvantineDrvr_GetOffsetDACScale(std::int32_t ch, float* out) {
    const sim::Module* module = InSlot(ch);
    *out = module != nullptr ? module->Description().offsetDACScale : 0;
}

// Front end, clocks, trigger

void CorvantineDrvr_SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                                  std::int32_t) {
    if (sim::Module* module = Open(ch)) {
        library->stack.Settle(ch);
        module->SetUpFrontEnd(range, dc != 0, gnd != 0);
    }
}

void CorvantineDrvr_SetOffset(std::int32_t ch, float percent) {
    if (sim::Module* module = Open(ch)) {
        library->stack.Settle(ch);
        module->SetOffset(FiniteOr(percent, 0));
    }
}

void CorvantineDrvr_SetCalSource(std::int32_t ch, std::int32_t value) {
    if (sim::Module* module = Open(ch)) {
        library->stack.Settle(ch);
        module->SetCompensation(value != 0);
    }
}

// There is no lamp to see.
void CorvantineDrvr_SetLEDMode(std::int32_t, std::int32_t) {}

void CorvantineDrvr_SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) {
    if (library) {
        library->stack.SetClock(ch, megahertz);
    }
}

void CorvantineDrvr_SetDecimationRatio(std::int32_t ch, std::int32_t ratio) {
    if (library) {
        library->stack.SetDecimation(ch, ratio);
    }
}

void CorvantineDrvr_SetRISMode(std::int32_t ch, std::int32_t on) {
    if (library) {
        library->stack.SetRIS(ch, on != 0);
    }
}

void CorvantineDrvr_SetTriggerDelay(std::int32_t ch, float seconds) {
    if (sim::Module* module = Open(ch)) {
        module->trigger.delay = FiniteOr(seconds, 0);
    }
}

void CorvantineDrvr_SetTrigThresh(std::int32_t ch, float percent) {
    if (sim::Module* module = Open(ch)) {
        module->trigger.thresholdPercent = FiniteOr(percent, 0);
    }
}

void CorvantineDrvr_SetTrigType(std::int32_t ch, std::int32_t type) {
    if (sim::Module* module = Open(ch)) {
        module->trigger.type = type;
    }
}

void CorvantineDrvr_SetNormTrig(std::int32_t ch, std::int32_t on) {
    if (library) {
        library->stack.SetNormal(ch, on != 0);
    }
}

void CorvantineDrvr_SetPreTrigDepth(std::int32_t ch, float fraction) {
    if (sim::Module* module = Open(ch)) {
        module->trigger.preTriggerFraction = FiniteOr(fraction, 0);
    }
}

// Acquisition

void CorvantineDrvr_AcquisitionStart(std::int32_t ch) {
    if (library) {
        library->stack.Start(ch);
    }
}

void CorvantineDrvr_AcquisitionEnd(std::int32_t ch) {
    if (library) {
        library->stack.End(ch);
    }
}

std::int32_t CorvantineDrvr_GetAcquistionState(std::int32_t ch) {
    return library && library->stack.Running(ch) ? 1 : 0;
}

std::int32_t CorvantineDrvr_GetTriggeredStatus(std::int32_t ch) {
    return library && library->stack.Triggered(ch) ? 1 : 0;
}

std::int32_t CorvantineDrvr_GetSamplesSinceTrigger(std::int32_t ch) {
    return library ? library->stack.SamplesSinceArm(ch) : 0;
}

void CorvantineDrvr_GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                             std::int32_t count) {
    const std::int32_t samples = std::clamp(count, 0, CORVANTINE_ROW / 512) * 512;
    for (std::int32_t ch = std::max(first, 1); ch <= std::min(last, sim::kSlots); ++ch) {
        if (const float* record = library ? library->stack.Record(ch) : nullptr) {
            std::copy_n(record, samples, blocks + static_cast<std::ptrdiff_t>(ch - 1) * CORVANTINE_ROW);
        }
    }
}

void CorvantineDrvr_GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                         std::int32_t start) {
    const float* record = library ? library->stack.Record(ch) : nullptr;
    if (record != nullptr && start >= 0 && start < CORVANTINE_BUFFER && count > 0) {
        std::copy_n(record + start, std::min(count, CORVANTINE_BUFFER - start), buffer + start);
    }
}

void CorvantineDrvr_GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                 float* second, std::int32_t* status) {
    const sim::Stack::Pass pass = library ? library->stack.RISPass(ch) : sim::Stack::Pass();
    *position = static_cast<float>(pass.position);
    *second = 0;
    *status = pass.samples != nullptr ? 0 : -1;
    if (pass.samples != nullptr) {
        std::copy_n(pass.samples, std::clamp(count, 0, sim::Acquisition::kRISSamples), buffer);
    }
}

float CorvantineDrvr_GetSamplePeriod(std::int32_t running, float held_period) {
    return running != 0 && library ? static_cast<float>(library->stack.Period()) : held_period;
}

// Arithmetic

void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                      float old_offset, float new_offset, float old_volts, float new_volts) {
    instrument::RescaleSamples(source, destination, count, old_offset, new_offset, old_volts, new_volts);
}

void CorvantineDrvr_MakeSampleData(double* buffer, std::int32_t count, double offset,
                                   std::int32_t channel_less_one, std::int32_t phase) {
    if (library) {
        library->waveforms.Fill(buffer, count, offset, channel_less_one, phase);
    }
}

void CorvantineDrvr_FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                        std::int32_t*) {
    if (library && length == instrument::Spectrum::kLength) {
        library->spectrum.Transform(buffer, scale_mode, window);
    }
}

std::int32_t CorvantineDrvr_PortOpen(std::int32_t ch) {
    return Open(ch) != nullptr ? 1 : 0;
}

void CorvantineDrvr_CloseDrvr(std::int32_t) {
    library.reset();
}
