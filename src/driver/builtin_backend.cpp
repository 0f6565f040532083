#include "driver/builtin_backend.h"

#include "arithmetic/rescale.h"
#include "corvantine_driver.h"
#include "frame/record/samples.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr std::int32_t kHandle = 1;
constexpr float kRISPeriod = 1e-9F;
constexpr std::string_view kIssue = "Corvantine built-in driver";

bool IsChannel(std::int32_t ch) {
    return ch >= 1 && ch <= kScopeChannels;
}

} // namespace

std::int32_t BuiltinBackend::OpenDrvr() {
    return kHandle;
}

std::int32_t BuiltinBackend::GetSampleDepth() {
    return kSampleDepth;
}

void BuiltinBackend::DrvrIssue(char* text) {
    std::memset(text, ' ', CORVANTINE_ISSUE_BYTES);
    std::copy(kIssue.begin(), kIssue.end(), text);
}

std::int32_t BuiltinBackend::Enumerate(std::int32_t*, std::int32_t*) {
    return 0;
}

void BuiltinBackend::GetProductName(std::int32_t, std::uint8_t*, std::int32_t* length) {
    *length = 0;
}

void BuiltinBackend::GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    *length = 0;
    if (demoMode_ && IsChannel(ch)) {
        // The serial keys what is kept for a module, so the four channels must not share one.
        const std::string serial = "DEMO" + std::to_string(ch);
        std::copy(serial.begin(), serial.end(), buffer);
        *length = static_cast<std::int32_t>(serial.size());
    }
}

void BuiltinBackend::GetHWRev(std::int32_t, std::int32_t* out) {
    *out = 0;
}

void BuiltinBackend::GetPortNumber(std::int32_t, std::int32_t* out) {
    *out = 0;
}

void BuiltinBackend::GetControllerRev(std::int32_t, std::int32_t* out) {
    *out = 0;
}

void BuiltinBackend::SetDemoMode(std::int32_t on) {
    demoMode_ = on != 0;
}

std::int32_t BuiltinBackend::OpenAndReset(std::int32_t ch) {
    return demoMode_ && IsChannel(ch) ? -1 : 0;
}

// Every channel of the demonstration hears the master drive the line.
std::int32_t BuiltinBackend::GetDetectLine(std::int32_t) {
    return 0;
}

void BuiltinBackend::GetRISBand(std::int32_t, std::int32_t* first, std::int32_t* second) {
    *first = 0;
    *second = 0;
}

void BuiltinBackend::GetTriggerDACOffset(std::int32_t, std::int32_t* offset) {
    *offset = 0;
}

void BuiltinBackend::GetRawChannelOffset(std::int32_t, float* out) {
    *out = 0;
}

void BuiltinBackend::GetOffsetDACScale(std::int32_t, float* out) {
    *out = 1;
}

void BuiltinBackend::SetBaseAdcClk(std::int32_t, std::int32_t megahertz) {
    megahertz_ = std::max(megahertz, 1);
}

void BuiltinBackend::SetDecimationRatio(std::int32_t, std::int32_t ratio) {
    decimation_ = std::max(ratio, 1);
}

void BuiltinBackend::SetRISMode(std::int32_t, std::int32_t on) {
    ris_ = on != 0;
}

std::int32_t BuiltinBackend::GetAcquistionState(std::int32_t) {
    return 0;
}

std::int32_t BuiltinBackend::GetTriggeredStatus(std::int32_t) {
    return 0;
}

std::int32_t BuiltinBackend::GetSamplesSinceTrigger(std::int32_t) {
    return 0;
}

void BuiltinBackend::GetBufferRIS(std::int32_t, float*, std::int32_t, float* position, float* second,
                                  std::int32_t* status) {
    *position = 0;
    *second = 0;
    *status = -1;
}

float BuiltinBackend::GetSamplePeriod(std::int32_t running, float held_period) {
    if (running == 0) {
        return held_period;
    }
    return ris_ ? kRISPeriod : static_cast<float>(decimation_ / (megahertz_ * 1e6));
}

void BuiltinBackend::ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                       float old_offset, float new_offset, float old_volts, float new_volts) {
    instrument::RescaleSamples(source, destination, count, old_offset, new_offset, old_volts, new_volts);
}

void BuiltinBackend::MakeSampleData(double* buffer, std::int32_t count, double offset,
                                    std::int32_t channel_less_one, std::int32_t phase) {
    waveforms_.Fill(buffer, count, offset, channel_less_one, phase);
}

void BuiltinBackend::FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                         std::int32_t*) {
    if (length == instrument::Spectrum::kLength) {
        spectrum_.Transform(buffer, scale_mode, window);
    }
}

std::int32_t BuiltinBackend::PortOpen(std::int32_t) {
    return 0;
}
