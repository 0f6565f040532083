#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <utility>

/// A fixed array whose indices run from First to Last, both included, so that channel 1 is element 1.
template <class T, int First, int Last> class Indexed {
  public:
    static constexpr int kFirst = First;
    static constexpr int kLast = Last;
    static constexpr std::size_t kSize = static_cast<std::size_t>(Last - First + 1);

    constexpr Indexed() = default;
    /// One value for each index, in order.
    template <class... Values>
    requires(sizeof...(Values) == kSize && sizeof...(Values) > 1) constexpr Indexed(Values&&... values)
        : items_{{static_cast<T>(std::forward<Values>(values))...}} {}

    constexpr T& operator[](int i) {
        assert(i >= First && i <= Last);
        return items_[static_cast<std::size_t>(i - First)];
    }
    constexpr const T& operator[](int i) const {
        assert(i >= First && i <= Last);
        return items_[static_cast<std::size_t>(i - First)];
    }
    void fill(const T& value) { items_.fill(value); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }
    bool operator==(const Indexed&) const = default;

  private:
    std::array<T, kSize> items_{};
};
