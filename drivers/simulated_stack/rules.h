#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <variant>

namespace sim {

/// A call of the program with its arguments, which become a text only if there is something to say of it.
class CallText {
  public:
    template <class... Arguments>
    explicit CallText(const char* operation, Arguments... arguments)
        : operation_(operation), arguments_{Value(arguments)...}, count_(sizeof...(arguments)) {
        static_assert(sizeof...(arguments) <= kMost);
    }
    /// Such as "SetTrigType(2, 7)".
    std::string Text() const;

  private:
    static constexpr std::size_t kMost = 7;
    using Argument = std::variant<std::int32_t, double>;
    template <class T> static Argument Value(T value) {
        if constexpr (std::is_integral_v<T>) {
            return static_cast<std::int32_t>(value);
        } else {
            return static_cast<double>(value);
        }
    }

    const char* operation_;
    std::array<Argument, kMost> arguments_;
    std::size_t count_;
};

/// Counts what the program does that a driver need not accept.
class Rules {
  public:
    /// end: the first breach is told at once and ends the program where it calls.
    void SetEnd(bool end) { end_ = end; }
    void Break(const CallText& call, const char* rule);
    /// What was broken and how often, to standard error; nothing if nothing was.
    void Tell() const;

  private:
    static constexpr std::size_t kMostTold = 50;

    bool end_ = false;
    std::map<std::string, int> broken_;
    int untold_ = 0; ///< breaches beyond those that have a line of their own
};

} // namespace sim
