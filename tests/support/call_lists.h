#pragma once

#include <initializer_list>
#include <string>
#include <vector>

/// Expected calls: lists that are joined in order.
using CallList = std::vector<std::string>;

template <class... Text> CallList Calls(const Text&... calls) {
    return {std::string(calls)...};
}

/// The call for each channel: "SetRISMode(#, 1)" with # replaced by the channel's number.
inline CallList Each(std::initializer_list<int> channels, const std::string& call) {
    CallList calls;
    for (int ch : channels) {
        std::string text = call;
        for (auto at = text.find('#'); at != std::string::npos; at = text.find('#')) {
            text.replace(at, 1, std::to_string(ch));
        }
        calls.push_back(text);
    }
    return calls;
}

inline CallList operator+(CallList first, const CallList& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}
