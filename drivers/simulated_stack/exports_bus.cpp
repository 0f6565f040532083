// The exports of the simulated stack: the library's life, what is on the bus, and arithmetic.

#include "corvantine_driver.h"

#include "arithmetic/rescale.h"
#include "built_in_stack.h"
#include "library.h"
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
constexpr std::string_view kProduct = "Corvantine";

sim::StackFile Describe() {
    const char* path = std::getenv("CORVANTINE_STACK");
    if (path != nullptr && *path != '\0') {
        return sim::ReadStackFile(path);
    }
    std::istringstream text(sim::kBuiltInStack);
    return sim::ParseStack(text, "built-in stack", {});
}

void WriteName(std::string_view name, std::uint8_t* buffer, std::int32_t* length) {
    const std::size_t count = std::min<std::size_t>(name.size(), CORVANTINE_NAME_BYTES);
    std::copy_n(name.begin(), count, buffer);
    *length = static_cast<std::int32_t>(count);
}

bool AnyModule(const sim::Stack& stack) {
    for (int ch = 1; ch <= sim::kSlots; ++ch) {
        if (stack.InSlot(ch) != nullptr && stack.InSlot(ch)->Description().product == kProduct) {
            return true;
        }
    }
    return false;
}

bool AnyOpen(const sim::Stack& stack) {
    for (int ch = 1; ch <= sim::kSlots; ++ch) {
        if (stack.IsOpen(ch)) {
            return true;
        }
    }
    return false;
}

/// What the file says of the module in a slot, or null.
const sim::ModuleDescription* Described(const Library* library, std::int32_t ch) {
    const sim::Module* module = library != nullptr ? library->stack.InSlot(ch) : nullptr;
    return module != nullptr ? &module->Description() : nullptr;
}

} // namespace

// The library's life

std::int32_t CorvantineDrvr_OpenDrvr() {
    Call("OpenDrvr").Expect(!TheLibrary(), "opened twice");
    auto library = std::make_unique<Library>();
    if (TheLibrary()) {
        library->rules = std::move(TheLibrary()->rules); // one close tells of both
        TheLibrary()->closed = true;
    }
    TheLibrary() = std::move(library);
    sim::StackFile file = Describe();
    if (file.stack) {
        TheLibrary()->rules.SetEnd(file.stack->endOnViolation);
        TheLibrary()->stack = sim::Stack(std::move(*file.stack));
    } else {
        std::fprintf(stderr, "%s\n", file.error.c_str());
    }
    return kHandle;
}

std::int32_t CorvantineDrvr_GetSampleDepth() {
    Call("GetSampleDepth").In();
    return sim::Acquisition::kDepth;
}

void CorvantineDrvr_DrvrIssue(char text[100]) {
    Call("DrvrIssue").In();
    std::memset(text, ' ', CORVANTINE_ISSUE_BYTES);
    std::copy(kIssue.begin(), kIssue.end(), text);
}

void CorvantineDrvr_CloseDrvr(std::int32_t handle) {
    const Call call("CloseDrvr", handle);
    if (Library* library = call.In()) {
        call.Expect(handle == kHandle, "the handle of OpenDrvr");
        call.Expect(!AnyOpen(library->stack), "a channel is still open");
        library->rules.Tell();
        library->closed = true;
        TheLibrary().reset();
    }
}

// What is on the bus

std::int32_t CorvantineDrvr_Enumerate(std::int32_t* port, std::int32_t* channel) {
    const Call call("Enumerate", *port, *channel);
    Library* library = call.In();
    if (library == nullptr) {
        return 0;
    }
    call.Expect(!std::exchange(library->enumerated, true), "enumerated twice");
    call.Expect(*port >= -2 && (*channel == -2 || *channel == -1 || IsChannel(*channel)),
                "a port and a channel 1..4, or -1, or -2");
    return library->stack.Enumerate(*port, *channel);
}

void CorvantineDrvr_GetProductName(std::int32_t ch, std::uint8_t buffer[101], std::int32_t* length) {
    const auto* module = Described(Call("GetProductName", ch).InSlot(ch), ch);
    WriteName(module != nullptr ? module->product : std::string_view(), buffer, length);
}

void CorvantineDrvr_GetSerialNumber(std::int32_t ch, std::uint8_t buffer[101], std::int32_t* length) {
    const Library* library = Call("GetSerialNumber", ch).InSlot(ch);
    if (const auto* module = Described(library, ch)) {
        WriteName(module->serial, buffer, length);
    } else if (library != nullptr && library->stack.Demonstration()) {
        WriteName("DEMO" + std::to_string(ch), buffer, length);
    } else {
        *length = 0;
    }
}

void CorvantineDrvr_GetHWRev(std::int32_t ch, std::int32_t* out) {
    const auto* module = Described(Call("GetHWRev", ch).InSlot(ch), ch);
    *out = module != nullptr ? module->hardwareRevision : 0;
}

void CorvantineDrvr_GetPortNumber(std::int32_t ch, std::int32_t* out) {
    const auto* module = Described(Call("GetPortNumber", ch).InSlot(ch), ch);
    *out = module != nullptr ? module->port : 0;
}

void CorvantineDrvr_GetControllerRev(std::int32_t ch, std::int32_t* out) {
    const auto* module = Described(Call("GetControllerRev", ch).On(ch, Needs::Open), ch);
    *out = module != nullptr ? module->controllerRevision : 0;
}

void CorvantineDrvr_GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) {
    const auto* module = Described(Call("GetRISBand", ch).On(ch, Needs::Open), ch);
    *first = module != nullptr ? module->risBand[0] : 0;
    *second = module != nullptr ? module->risBand[1] : 0;
}

void CorvantineDrvr_GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) {
    const auto* module = Described(Call("GetTriggerDACOffset", ch).On(ch, Needs::Open), ch);
    *offset = module != nullptr ? module->triggerDACOffset : 0;
}

void CorvantineDrvr_GetRawChannelOffset(std::int32_t ch, float* out) {
    const auto* module = Described(Call("GetRawChannelOffset", ch).On(ch, Needs::Open), ch);
    *out = module != nullptr ? module->rawChannelOffset : 0;
}

void CorvantineDrvr_GetOffsetDACScale(std::int32_t ch, float* out) {
    const auto* module = Described(Call("GetOffsetDACScale", ch).On(ch, Needs::Open), ch);
    *out = module != nullptr ? module->offsetDACScale : 0;
}

void CorvantineDrvr_SetDemoMode(std::int32_t on) {
    const Call call("SetDemoMode", on);
    if (Library* library = call.In()) {
        call.Expect(on == 1, "1 is the only argument");
        call.Expect(library->enumerated, "before Enumerate");
        call.Expect(!AnyModule(library->stack), "there are modules");
        call.Expect(AnyModule(library->stack) || !AnyOpen(library->stack), "a channel is open");
        library->stack.BeginDemonstration();
    }
}

std::int32_t CorvantineDrvr_OpenAndReset(std::int32_t ch) {
    const Call call("OpenAndReset", ch);
    Library* library = call.InSlot(ch);
    if (library == nullptr) {
        return CORVANTINE_FALSE;
    }
    call.Expect(!library->stack.IsOpen(ch), "opened twice");
    call.Expect(library->stack.Demonstration() || library->stack.InSlot(ch) != nullptr, "an empty slot");
    library->initialised[static_cast<std::size_t>(ch - 1)] = false;
    return library->stack.OpenAndReset(ch) ? CORVANTINE_TRUE : CORVANTINE_FALSE;
}

void CorvantineDrvr_SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) {
    const Call call("SetDetectLine", ch, drive, release);
    call.Expect((drive == 0 && release == 1) || (drive == -1 && release == 0), "neither drive nor release");
    if (Library* library = call.On(ch, Needs::Enumerated)) {
        library->stack.SetDetectLine(ch, drive != 0);
    }
}

std::int32_t CorvantineDrvr_GetDetectLine(std::int32_t ch) {
    const Library* library = Call("GetDetectLine", ch).On(ch, Needs::Open);
    return library != nullptr && library->stack.DetectLineHigh(ch) ? 1 : 0;
}

void CorvantineDrvr_Close(std::int32_t ch) {
    if (Library* library = Call("Close", ch).On(ch, Needs::Enumerated)) {
        library->stack.Close(ch);
    }
}

void CorvantineDrvr_InitScope(std::int32_t ch, std::int32_t is_master) {
    const Call call("InitScope", ch, is_master);
    if (Library* library = call.On(ch, Needs::Open)) {
        call.Expect(IsFlag(is_master), "a boolean");
        call.Expect(!std::exchange(library->initialised[static_cast<std::size_t>(ch - 1)], true),
                    "initialised twice");
    }
}

std::int32_t CorvantineDrvr_PortOpen(std::int32_t ch) {
    const Library* library = Call("PortOpen", ch).On(ch, Needs::Enumerated);
    return library != nullptr && !library->stack.Demonstration() && library->stack.Answers(ch) ? 1 : 0;
}

// Arithmetic

void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                      float old_offset, float new_offset, float old_volts, float new_volts) {
    const Call call("ReScaleSampleData", count, old_offset, new_offset, old_volts, new_volts);
    call.Expect(count == sim::Acquisition::kDepth, "a whole record");
    call.Expect(old_volts > 0 && new_volts > 0, "volts per division");
    instrument::RescaleSamples(source, destination, count, old_offset, new_offset, old_volts, new_volts);
}

void CorvantineDrvr_MakeSampleData(double* buffer, std::int32_t count, double offset,
                                   std::int32_t channel_less_one, std::int32_t phase) {
    const Call call("MakeSampleData", count, offset, channel_less_one, phase);
    if (const Library* library = call.In()) {
        call.Expect(count == sim::Acquisition::kDepth, "a whole record");
        call.Expect(std::abs(offset) <= 128, "an offset in steps");
        call.Expect(IsChannel(channel_less_one + 1), "channel less 1");
        call.Expect(phase >= 0 && phase % 10 == 0, "passes times 10");
        library->waveforms.Fill(buffer, count, offset, channel_less_one, phase);
    }
}

void CorvantineDrvr_FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                        std::int32_t* reserved) {
    const Call call("FFT", length, scale_mode, window);
    Library* library = call.In();
    if (library == nullptr) {
        return;
    }
    const bool whole = length == instrument::Spectrum::kLength;
    call.Expect(whole, "2048 samples");
    call.Expect(scale_mode == 0 || scale_mode == 0.5, "scale mode 0 or 0.5");
    call.Expect(window >= 0 && window <= 4, "window 0..4");
    call.Expect(reserved != nullptr && *reserved == 0, "an integer that is 0");
    if (whole) {
        library->spectrum.Transform(buffer, scale_mode, window);
    }
}
