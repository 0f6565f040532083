#pragma once

#include "endurance/lies.h"

#include <cstdint>
#include <random>
#include <span>
#include <string_view>
#include <vector>

/// The names of the ways in which a part can be wrong; their places are the ways' numbers.
std::span<const std::string_view> WaysOf(Part part);

/// The values of the lies. What changes with every question comes from a generator of their own, so that a
/// seed tells the same lies again.
class LyingValues {
  public:
    explicit LyingValues(std::uint32_t seed) : random_(seed) {}

    std::int32_t Whole(int way);
    float Real(int way);
    std::int32_t Length(int way);
    /// Fills the text's whole buffer and tells how long it is.
    std::int32_t Text(int way, std::span<char> buffer);
    template <class T> void Samples(int way, std::span<T> buffer);

  private:
    std::mt19937 random_;
    bool turn_ = false; ///< of what is one thing and then the other
};

/// The texts of a module that mean something to somebody who reads more than a text into them.
std::span<const std::string_view> MeaningTexts();
