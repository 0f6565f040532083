#include "support/scripted_driver.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::string_view Operation(std::string_view call) {
    return call.substr(0, call.find('('));
}

bool Among(std::string_view call, std::initializer_list<std::string_view> operations) {
    return std::find(operations.begin(), operations.end(), Operation(call)) != operations.end();
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
