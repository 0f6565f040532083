#include "support/scripted_driver_calls.h"

#include <algorithm>
#include <cstring>

// The library and what is on the bus

namespace {

void WriteName(const std::string& name, std::uint8_t* buffer, std::int32_t* length) {
    const std::size_t count = std::min<std::size_t>(name.size(), CORVANTINE_NAME_BYTES);
    std::memcpy(buffer, name.data(), count);
    *length = static_cast<std::int32_t>(count);
}

} // namespace

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
    std::memset(text, ' ', CORVANTINE_ISSUE_BYTES);
    std::memcpy(text, issue.data(), std::min<std::size_t>(issue.size(), CORVANTINE_ISSUE_BYTES));
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

std::int32_t ScriptedDriver::PortOpen(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "PortOpen", ch) && settings[ch].open ? modules[ch].portOpen : 0;
}

void ScriptedDriver::CloseDrvr(std::int32_t given) {
    Call("CloseDrvr", given);
    Expect(given == handle, "the handle of OpenDrvr");
    closed = true;
}
