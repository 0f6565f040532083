#pragma once

#include <array>

namespace check {

/// What a section expects of a driver, and the first thing that it found instead.
struct Rule {
    std::array<char, 24> section;
    std::array<char, 160> expected;
    std::array<char, 320> found;
    bool broken;
    bool skipped;
};

/// Durations of the calls of an operation, in seconds.
struct Timing {
    static constexpr int kKept = 64;
    int calls;
    double worst;
    std::array<float, kKept> recent;

    void Add(double seconds);
    double Median() const;
};

/// All that a section's process tells. It lives in memory that the supervising process shares, so that what
/// was found outlives the driver's crash.
struct Shared {
    static constexpr int kRules = 200;
    static constexpr int kOperations = 64;

    std::array<Rule, kRules> rules;
    int ruleCount;
    std::array<Timing, kOperations> timings;

    std::array<char, 200> call; ///< the call that runs now, or ran last
    volatile double callBegan;  ///< 0: none runs
    volatile bool callMayBeSlow;
    std::array<char, 200> accident; ///< what a signal handler has to tell
    volatile bool finished;
};

class Findings {
  public:
    Findings(Shared& shared, const char* section) : shared_(shared), section_(section) {}

    /// One line of the report; `found` (with its arguments) is kept if the rule does not hold.
    [[gnu::format(printf, 4, 5)]] void That(bool holds, const char* expected, const char* found, ...);
    void Skip(const char* expected, const char* reason);

    Shared& Table() { return shared_; }

  private:
    Rule& Entry(const char* expected);

    Shared& shared_;
    const char* section_;
};

} // namespace check
