#include "rules.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>

namespace sim {

std::string CallText::Text() const {
    std::string text = operation_;
    text += '(';
    for (std::size_t i = 0; i < count_; ++i) {
        text += i == 0 ? "" : ", ";
        if (const auto* whole = std::get_if<std::int32_t>(&arguments_[i])) {
            text += std::to_string(*whole);
        } else {
            char digits[32];
            const auto value = static_cast<float>(std::get<double>(arguments_[i]));
            text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
        }
    }
    return text + ')';
}

void Rules::Break(const CallText& call, const char* rule) {
    const std::string text = call.Text() + ": " + rule;
    if (end_) {
        std::fprintf(stderr, "simulated stack: %s\n", text.c_str());
        std::abort();
    }
    if (broken_.size() < kMostTold || broken_.count(text) != 0) {
        ++broken_[text];
    } else {
        ++untold_;
    }
}

void Rules::Tell() const {
    if (broken_.empty()) {
        return;
    }
    int calls = untold_;
    for (const auto& [text, count] : broken_) {
        calls += count;
    }
    std::fprintf(stderr, "simulated stack: calls that broke the interface: %d\n", calls);
    for (const auto& [text, count] : broken_) {
        std::fprintf(stderr, "simulated stack: %d x %s\n", count, text.c_str());
    }
    if (untold_ > 0) {
        std::fprintf(stderr, "simulated stack: %d more\n", untold_);
    }
}

} // namespace sim
