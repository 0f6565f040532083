#pragma once

#include "corvantine_driver.h"
#include "support/scripted_driver.h"

#include <array>
#include <charconv>
#include <string>

// How the scripted driver writes down a call, for the sources that hold its operations.

inline bool IsFlag(std::int32_t value) {
    return value == CORVANTINE_FALSE || value == CORVANTINE_TRUE;
}

inline std::string TextOf(std::int32_t value) {
    return std::to_string(value);
}

/// The shortest digits that read back as the same number.
template <class Real>
requires std::is_floating_point_v<Real> std::string TextOf(Real value) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

template <class... Args> void ScriptedDriver::Call(std::string_view operation, Args... args) {
    std::string text(operation);
    text += '(';
    std::string_view between;
    ((text += between, text += TextOf(args), between = ", "), ...);
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
