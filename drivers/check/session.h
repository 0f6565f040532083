#pragma once

#include "driver.h"
#include "findings.h"
#include "guarded.h"

#include <array>
#include <functional>
#include <string>

namespace check {

inline constexpr int kSlots = 4;
inline constexpr int kDepth = 3000;
inline constexpr int kBlock = 512;
inline constexpr int kRISSamples = 150;
inline constexpr float kMostSteps =
    128; ///< full scale, and a step more for a converter that is not symmetric

/// What a section works with.
struct Subject {
    const Driver& driver;
    Findings& findings;
    double patience; ///< seconds that something may take to happen
};

/// What a slot tells of itself.
struct Identity {
    std::string product;
    std::string serial;
    int port = 0;
    bool IsModule() const { return product == "Corvantine"; }
    bool operator==(const Identity&) const = default;
};

/// Asks once, without judging.
Identity IdentityOf(const Driver& driver, int ch);
bool WaitFor(double seconds, const std::function<bool()>& condition);
void Sleep(double seconds);

/// A driver that was started as the program starts it, up to InitScope; closed as the program does.
class Session {
  public:
    enum class Mode { AsFound, Demonstration };
    explicit Session(const Subject& subject, Mode mode = Mode::AsFound);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    int Modules() const { return modules_; } ///< in the slots 1..Modules()
    void ForEach(const std::function<void(int ch)>& act) const;

    void Timebase(int megahertz, int ratio, bool ris) const;
    /// Settings under which a record is a flat line: input on ground, offset 0.
    void Flatten() const;
    void SetTrigger(bool normal, int type, float percent) const;
    /// Arms all, the source of the trigger last.
    void Start() const;
    void End() const;
    bool Runs() const;
    /// Waits until the record is complete, ends it, and tells whether it was.
    bool Finish() const;
    /// The program's read-out of a record.
    void Read(Guarded<float>& blocks) const;

  private:
    const Subject& subject_;
    const Driver& driver_;
    int handle_ = 0;
    int modules_ = 0;
    int used_ = 0;
};

inline float* Row(Guarded<float>& blocks, int ch) {
    return blocks.Get() + static_cast<std::ptrdiff_t>(ch - 1) * CORVANTINE_ROW;
}

} // namespace check
