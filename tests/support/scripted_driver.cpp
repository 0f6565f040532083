#include "support/scripted_driver.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace {

constexpr int kNameBytes = 101;
constexpr int kIssueBytes = 100;
constexpr int kChannelBuffer = kSampleRow + 1;

std::string Text(std::int32_t value) {
    return std::to_string(value);
}

/// The shortest digits that read back as the same number.
template <class Real>
requires std::is_floating_point_v<Real> std::string Text(Real value) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

std::string_view Operation(std::string_view call) {
    return call.substr(0, call.find('('));
}

bool Among(std::string_view call, std::initializer_list<std::string_view> operations) {
    return std::find(operations.begin(), operations.end(), Operation(call)) != operations.end();
}

bool IsFlag(std::int32_t value) {
    return value == 0 || value == -1;
}

void WriteName(const std::string& name, std::uint8_t* buffer, std::int32_t* length) {
    const std::size_t count = std::min<std::size_t>(name.size(), kNameBytes);
    std::memcpy(buffer, name.data(), count);
    *length = static_cast<std::int32_t>(count);
}

} // namespace

ScriptedDriver::ScriptedDriver(int count) : interfaces(count) {
    for (int ch = 1; ch <= count; ++ch) {
        modules[ch].product = "Corvantine";
        modules[ch].serial = "SN000" + std::to_string(ch);
        modules[ch].port = 3 + ch;
    }
    samplePeriod.By([this](bool running, float held) {
        const Settings& first = settings[1];
        if (!running) {
            return held;
        }
        return first.ris != 0
                   ? 1e-9F
                   : static_cast<float>(first.decimation) / (static_cast<float>(first.clock) * 1e6F);
    });
}

ScriptedDriver::~ScriptedDriver() {
    for (const std::string& violation : violations) {
        ADD_FAILURE() << "a driver need not accept " << violation;
    }
}

void ScriptedDriver::SkipStartUp() {
    opened = true;
    enumerated_ = true;
    demoMode = std::all_of(modules.begin(), modules.end(), [](const Module& m) { return m.product.empty(); });
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        settings[ch].open = demoMode || !modules[ch].product.empty();
    }
}

std::vector<std::string> ScriptedDriver::TakeCalls() {
    return std::exchange(calls, {});
}

std::vector<std::string> ScriptedDriver::TakeViolations() {
    return std::exchange(violations, {});
}

std::vector<std::string> ScriptedDriver::CallsOf(std::initializer_list<std::string_view> operations) const {
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const std::string& call) { return Among(call, operations); });
    return found;
}

std::vector<std::string> ScriptedDriver::CallsBut(std::initializer_list<std::string_view> operations) const {
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const std::string& call) { return !Among(call, operations); });
    return found;
}

std::vector<std::string> ScriptedDriver::CallsButPolls() const {
    return CallsBut(
        {"GetAcquistionState", "GetTriggeredStatus", "GetSamplesSinceTrigger", "GetSamplePeriod"});
}

int ScriptedDriver::Count(std::string_view operation) const {
    return static_cast<int>(std::count_if(
        calls.begin(), calls.end(), [&](const std::string& call) { return Operation(call) == operation; }));
}

void ScriptedDriver::Expect(bool holds, std::string_view rule) {
    if (!holds) {
        violations.push_back(lastCall_ + ": " + std::string(rule));
    }
}

template <class... Args> void ScriptedDriver::Call(std::string_view operation, Args... args) {
    std::string text(operation);
    text += '(';
    std::string_view between;
    ((text += between, text += Text(args), between = ", "), ...);
    text += ')';
    lastCall_ = text;
    calls.push_back(std::move(text));
    Expect(opened, "the library is not open");
    Expect(!closed, "the library is closed");
}

template <class... Args>
bool ScriptedDriver::ChannelCall(Needs needs, std::string_view operation, int ch, Args... args) {
    Call(operation, ch, args...);
    if (ch < 1 || ch > kScopeChannels) {
        Expect(false, "no such channel");
        return false;
    }
    Expect(enumerated_, "before Enumerate");
    Expect(needs != Needs::OpenChannel || settings[ch].open, "the channel is not open");
    return needs != Needs::OpenChannel || settings[ch].open;
}

// The library and what is on the bus

std::int32_t ScriptedDriver::OpenDrvr() {
    const bool again = std::exchange(opened, true);
    Call("OpenDrvr");
    Expect(!again, "opened twice");
    return handle;
}

std::int32_t ScriptedDriver::GetSampleDepth() {
    Call("GetSampleDepth");
    return sampleDepth;
}

void ScriptedDriver::DrvrIssue(char* text) {
    Call("DrvrIssue");
    std::memset(text, ' ', kIssueBytes);
    std::memcpy(text, issue.data(), std::min<std::size_t>(issue.size(), kIssueBytes));
}

std::int32_t ScriptedDriver::Enumerate(std::int32_t* port, std::int32_t* channel) {
    Call("Enumerate", *port, *channel);
    Expect(!enumerated_, "enumerated twice");
    Expect(*port >= -2, "port");
    Expect(*channel == -2 || *channel == -1 || (*channel >= 1 && *channel <= kScopeChannels), "channel");
    enumerated_ = true;
    return interfaces;
}

void ScriptedDriver::GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    if (ChannelCall(Needs::Enumerated, "GetProductName", ch)) {
        WriteName(modules[ch].product, buffer, length);
    }
}

void ScriptedDriver::GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    if (ChannelCall(Needs::Enumerated, "GetSerialNumber", ch)) {
        WriteName(modules[ch].serial, buffer, length);
    }
}

void ScriptedDriver::GetHWRev(std::int32_t ch, std::int32_t* out) {
    if (ChannelCall(Needs::Enumerated, "GetHWRev", ch)) {
        *out = modules[ch].hwRev;
    }
}

void ScriptedDriver::GetPortNumber(std::int32_t ch, std::int32_t* out) {
    if (ChannelCall(Needs::Enumerated, "GetPortNumber", ch)) {
        *out = modules[ch].port;
    }
}

void ScriptedDriver::GetControllerRev(std::int32_t ch, std::int32_t* out) {
    if (ChannelCall(Needs::OpenChannel, "GetControllerRev", ch)) {
        *out = modules[ch].controllerRev;
    }
}

void ScriptedDriver::SetDemoMode(std::int32_t on) {
    Call("SetDemoMode", on);
    Expect(on == 1, "1 is the only argument");
    Expect(enumerated_, "before Enumerate");
    demoMode = on != 0;
}

std::int32_t ScriptedDriver::OpenAndReset(std::int32_t ch) {
    if (!ChannelCall(Needs::Enumerated, "OpenAndReset", ch)) {
        return 0;
    }
    Expect(!settings[ch].open, "opened twice");
    Expect(demoMode || !modules[ch].product.empty(), "an empty slot");
    const std::int32_t result = demoMode ? -1 : modules[ch].opens;
    settings[ch].open = result != 0;
    return result;
}

void ScriptedDriver::SetTrigMaster(std::int32_t ch, std::int32_t on) {
    if (ChannelCall(Needs::Enumerated, "SetTrigMaster", ch, on)) {
        Expect(IsFlag(on), "a boolean");
        settings[ch].trigMaster = on;
    }
}

void ScriptedDriver::SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) {
    if (ChannelCall(Needs::Enumerated, "SetDetectLine", ch, drive, release)) {
        Expect((drive == 0 && release == 1) || (drive == -1 && release == 0), "neither drive nor release");
        settings[ch].drivesLine = drive != 0 && settings[ch].open;
    }
}

std::int32_t ScriptedDriver::GetDetectLine(std::int32_t ch) {
    if (!ChannelCall(Needs::OpenChannel, "GetDetectLine", ch)) {
        return 0;
    }
    bool low = demoMode;
    for (int i = 1; i <= kScopeChannels; ++i) {
        const bool joined = i == ch || (modules[i].hearsLine && modules[ch].hearsLine);
        low = low || (joined && (settings[i].drivesLine || modules[i].lineHeldLow));
    }
    return low ? 0 : 1;
}

void ScriptedDriver::Close(std::int32_t ch) {
    if (ChannelCall(Needs::Enumerated, "Close", ch)) {
        settings[ch].open = false;
        settings[ch].armed = false;
    }
}

void ScriptedDriver::InitScope(std::int32_t ch, std::int32_t is_master) {
    if (ChannelCall(Needs::OpenChannel, "InitScope", ch, is_master)) {
        Expect(IsFlag(is_master), "a boolean");
    }
}

void ScriptedDriver::GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) {
    if (ChannelCall(Needs::OpenChannel, "GetRISBand", ch)) {
        *first = modules[ch].risBandFirst;
        *second = modules[ch].risBandSecond;
    }
}

void ScriptedDriver::GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) {
    if (ChannelCall(Needs::OpenChannel, "GetTriggerDACOffset", ch)) {
        *offset = modules[ch].triggerDACOffset;
    }
}

void ScriptedDriver::GetRawChannelOffset(std::int32_t ch, float* out) {
    if (ChannelCall(Needs::OpenChannel, "GetRawChannelOffset", ch)) {
        *out = modules[ch].rawChannelOffset;
    }
}

void ScriptedDriver::GetOffsetDACScale(std::int32_t ch, float* out) {
    if (ChannelCall(Needs::OpenChannel, "GetOffsetDACScale", ch)) {
        *out = modules[ch].offsetDACScale;
    }
}

// Front end, clocks, trigger

void ScriptedDriver::SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                                   std::int32_t zero) {
    if (ChannelCall(Needs::OpenChannel, "SetUpFrontEnd", ch, range, dc, gnd, zero)) {
        Expect(range >= 0 && range <= 2, "range 0..2");
        Expect(IsFlag(dc) && IsFlag(gnd) && (dc == 0 || gnd == 0), "AC, DC or GND");
        Expect(zero == 0, "the last argument is 0");
        settings[ch].range = range;
        settings[ch].dc = dc;
        settings[ch].gnd = gnd;
    }
}

void ScriptedDriver::SetOffset(std::int32_t ch, float percent) {
    if (ChannelCall(Needs::OpenChannel, "SetOffset", ch, percent)) {
        Expect(std::abs(percent) <= 100.001F, "percent of span");
        settings[ch].offsetPercent = percent;
    }
}

void ScriptedDriver::SetCalSource(std::int32_t ch, std::int32_t value) {
    if (ChannelCall(Needs::OpenChannel, "SetCalSource", ch, value)) {
        Expect(value == 0 || value == 1, "0 or 1");
        settings[ch].calSource = value;
    }
}

void ScriptedDriver::SetLEDMode(std::int32_t ch, std::int32_t value) {
    if (ChannelCall(Needs::OpenChannel, "SetLEDMode", ch, value)) {
        Expect(value >= 1 && value <= 3, "mode 1..3");
        settings[ch].ledMode = value;
    }
}

void ScriptedDriver::SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) {
    if (ChannelCall(Needs::OpenChannel, "SetBaseAdcClk", ch, megahertz)) {
        Expect(megahertz == 50 || megahertz == 25 || megahertz == 10, "clock 50, 25 or 10");
        settings[ch].clock = megahertz;
    }
}

void ScriptedDriver::SetDecimationRatio(std::int32_t ch, std::int32_t ratio) {
    if (ChannelCall(Needs::OpenChannel, "SetDecimationRatio", ch, ratio)) {
        Expect(ratio >= 1 && ratio <= 400000, "decimation 1..400000");
        settings[ch].decimation = ratio;
    }
}

void ScriptedDriver::SetRISMode(std::int32_t ch, std::int32_t on) {
    if (ChannelCall(Needs::OpenChannel, "SetRISMode", ch, on)) {
        Expect(on == 0 || on == 1, "0 or 1");
        settings[ch].ris = on;
    }
}

void ScriptedDriver::SetTriggerDelay(std::int32_t ch, float seconds) {
    if (ChannelCall(Needs::OpenChannel, "SetTriggerDelay", ch, seconds)) {
        Expect(seconds >= 0 && std::isfinite(seconds), "a time that lies ahead");
        settings[ch].delay = seconds;
    }
}

void ScriptedDriver::SetTrigThresh(std::int32_t ch, float percent) {
    if (ChannelCall(Needs::OpenChannel, "SetTrigThresh", ch, percent)) {
        Expect(std::abs(percent) <= 100, "percent of span");
        settings[ch].threshold = percent;
    }
}

void ScriptedDriver::SetTrigType(std::int32_t ch, std::int32_t type) {
    if (ChannelCall(Needs::OpenChannel, "SetTrigType", ch, type)) {
        Expect(type >= 0 && type <= 3, "type 0..3");
        settings[ch].trigType = type;
    }
}

void ScriptedDriver::SetNormTrig(std::int32_t ch, std::int32_t on) {
    if (ChannelCall(Needs::Enumerated, "SetNormTrig", ch, on)) {
        Expect(IsFlag(on), "a boolean");
        settings[ch].normTrig = on;
    }
}

void ScriptedDriver::SetPreTrigDepth(std::int32_t ch, float fraction) {
    if (ChannelCall(Needs::OpenChannel, "SetPreTrigDepth", ch, fraction)) {
        Expect(fraction >= 0 && fraction <= 0.99F, "fraction 0..0.99");
        settings[ch].preTrigger = fraction;
    }
}

// Acquisition

void ScriptedDriver::AcquisitionStart(std::int32_t ch) {
    if (ChannelCall(Needs::Enumerated, "AcquisitionStart", ch)) {
        settings[ch].armed = settings[ch].open;
        if (onStart) {
            onStart(ch);
        }
    }
}

void ScriptedDriver::AcquisitionEnd(std::int32_t ch) {
    if (ChannelCall(Needs::OpenChannel, "AcquisitionEnd", ch)) {
        settings[ch].armed = false;
        if (onEnd) {
            onEnd(ch);
        }
    }
}

std::int32_t ScriptedDriver::GetAcquistionState(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "GetAcquistionState", ch) ? acquistionState(ch) : 0;
}

std::int32_t ScriptedDriver::GetTriggeredStatus(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "GetTriggeredStatus", ch) ? triggeredStatus(ch) : 0;
}

std::int32_t ScriptedDriver::GetSamplesSinceTrigger(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "GetSamplesSinceTrigger", ch) ? samplesSinceTrigger(ch) : 0;
}

void ScriptedDriver::GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                              std::int32_t count) {
    Call("GetBufferBlocksMultiChan", first, last, count);
    Expect(first == 1 && last == kScopeChannels, "channels 1..4");
    Expect(count == 6, "6 blocks fill a row");
    if (fillBlocks) {
        fillBlocks({blocks, static_cast<std::size_t>(kScopeChannels) * kSampleRow});
        return;
    }
    for (int ch = 1; ch <= kScopeChannels && !demoMode; ++ch) {
        for (int i = 0; i < kSampleRow; ++i) {
            blocks[(ch - 1) * kSampleRow + i] = sample(ch, i);
        }
    }
}

void ScriptedDriver::GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                          std::int32_t start) {
    if (!ChannelCall(Needs::OpenChannel, "GetBufferIncremental", ch, count, start)) {
        return;
    }
    const bool inside = start >= 0 && start < kChannelBuffer && count >= 1 && count <= kChannelBuffer - start;
    Expect(inside, "positions inside the buffer");
    if (fillIncrement) {
        fillIncrement(ch, buffer, count, start);
    } else if (inside) {
        for (int i = start; i < start + count; ++i) {
            buffer[i] = sample(ch, i);
        }
    }
}

void ScriptedDriver::GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                  float* second, std::int32_t* status) {
    if (!ChannelCall(Needs::OpenChannel, "GetBufferRIS", ch, count)) {
        return;
    }
    Expect(count == 150, "150 samples");
    const RISPass pass = risPass(ch);
    *position = pass.position;
    *second = pass.second;
    *status = pass.status;
    const int entries = std::clamp(count, 0, kChannelBuffer);
    if (fillRIS) {
        fillRIS(ch, {buffer, static_cast<std::size_t>(entries)});
        return;
    }
    for (int i = 0; i < entries; ++i) {
        buffer[i] = sample(ch, i);
    }
}

float ScriptedDriver::GetSamplePeriod(std::int32_t running, float held_period) {
    Call("GetSamplePeriod", running, held_period);
    Expect(IsFlag(running), "a boolean");
    Expect(running != 0 || held_period > 0, "a held period to give back");
    return samplePeriod(running != 0, held_period);
}

// Arithmetic

void ScriptedDriver::ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                       float old_offset, float new_offset, float old_volts, float new_volts) {
    Call("ReScaleSampleData", count, old_offset, new_offset, old_volts, new_volts);
    Expect(count == kSampleDepth, "a whole record");
    Expect(old_volts > 0 && new_volts > 0, "volts per division");
    for (int i = 0; i < count; ++i) {
        destination[i] = (source[i] - old_offset * 1.27F) * (old_volts / new_volts) + new_offset * 1.27F;
    }
}

void ScriptedDriver::MakeSampleData(double* buffer, std::int32_t count, double offset,
                                    std::int32_t channel_less_one, std::int32_t phase) {
    Call("MakeSampleData", count, offset, channel_less_one, phase);
    Expect(count == kSampleDepth, "a whole record");
    Expect(std::abs(offset) <= 128, "an offset in steps");
    Expect(channel_less_one >= 0 && channel_less_one < kScopeChannels, "channel less 1");
    Expect(phase >= 0 && phase % 10 == 0, "passes times 10");
    for (int i = 0; i < count; ++i) {
        buffer[i] = offset + demoSample(channel_less_one, phase, i);
    }
}

void ScriptedDriver::FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                         std::int32_t* reserved) {
    Call("FFT", length, scale_mode, window);
    Expect(length == 2048, "2048 samples");
    Expect(scale_mode == 0 || scale_mode == 0.5, "scale mode 0 or 0.5");
    Expect(window >= 0 && window <= 4, "window 0..4");
    Expect(reserved != nullptr && *reserved == 0, "an integer that is 0");
    if (transform) {
        transform({buffer, static_cast<std::size_t>(length)}, scale_mode, window);
    } else {
        std::fill_n(buffer, length / 2 + 1, scale_mode == 0 ? 0.0 : -300.0);
    }
}

std::int32_t ScriptedDriver::PortOpen(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "PortOpen", ch) && settings[ch].open ? modules[ch].portOpen : 0;
}

void ScriptedDriver::CloseDrvr(std::int32_t given) {
    Call("CloseDrvr", given);
    Expect(given == handle, "the handle of OpenDrvr");
    closed = true;
}
