#include "findings.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace check {

void Timing::Add(double seconds) {
    recent[static_cast<std::size_t>(calls % kKept)] = static_cast<float>(seconds);
    ++calls;
    worst = std::max(worst, seconds);
}

double Timing::Median() const {
    std::array<float, kKept> sorted = recent;
    const auto end = sorted.begin() + std::min(calls, kKept);
    std::sort(sorted.begin(), end);
    return sorted.begin() == end ? 0 : static_cast<double>(*(sorted.begin() + (end - sorted.begin()) / 2));
}

Rule& Findings::Entry(const char* expected) {
    for (int i = 0; i < shared_.ruleCount; ++i) {
        Rule& rule = shared_.rules[static_cast<std::size_t>(i)];
        if (std::strcmp(rule.expected.data(), expected) == 0 &&
            std::strcmp(rule.section.data(), section_) == 0) {
            return rule;
        }
    }
    const int last = Shared::kRules - 1;
    Rule& rule = shared_.rules[static_cast<std::size_t>(std::min(shared_.ruleCount, last))];
    std::snprintf(rule.section.data(), rule.section.size(), "%s", section_);
    std::snprintf(rule.expected.data(), rule.expected.size(), "%s", expected);
    shared_.ruleCount = std::min(shared_.ruleCount + 1, Shared::kRules);
    return rule;
}

void Findings::That(bool holds, const char* expected, const char* found, ...) {
    Rule& rule = Entry(expected);
    rule.skipped = false;
    if (holds || rule.broken) {
        return;
    }
    rule.broken = true;
    va_list arguments;
    va_start(arguments, found);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it is, a line above
    std::vsnprintf(rule.found.data(), rule.found.size(), found, arguments);
    va_end(arguments);
}

void Findings::Skip(const char* expected, const char* reason) {
    Rule& rule = Entry(expected);
    rule.skipped = true;
    std::snprintf(rule.found.data(), rule.found.size(), "%s", reason);
}

} // namespace check
