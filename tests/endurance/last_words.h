#pragma once

#include <cstddef>

/// What a trial did last, told on standard error when a sanitizer, a signal or a standstill ends it: that and
/// the seed is what it takes to see it again.
class LastWords {
  public:
    static constexpr std::size_t kWords = 48;
    static constexpr std::size_t kLength = 120;

    /// From now on. A long while without a word counts as a standstill and ends the process.
    static void Keep();
    /// Nothing is under way: from here to the next word is no standstill.
    static void Rest();
    /// As of printf.
    [[gnu::format(printf, 1, 2)]] static void Say(const char* format, ...);
};
