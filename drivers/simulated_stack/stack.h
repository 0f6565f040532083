#pragma once

#include "acquisition.h"
#include "description.h"
#include "module.h"

#include <array>
#include <chrono>
#include <memory>
#include <random>
#include <vector>

namespace sim {

/// The modules on the bus in their slots 1..4, what they share, and the time they live in. Channels that
/// are none, empty or closed are ignored, or read 0.
class Stack {
  public:
    Stack() = default; ///< nothing on the bus
    explicit Stack(StackDescription description);

    /// Assigns the modules to slots; the one at port goes to slot if slot is 1..4. Returns how many.
    int Enumerate(int port, int slot);
    /// The module in a slot, open or not, or null.
    Module* InSlot(int ch);
    Module* Open(int ch);
    bool OpenAndReset(int ch);
    void Close(int ch);

    void SetDetectLine(int ch, bool drive);
    bool DetectLineHigh(int ch);

    void SetClock(int ch, int megahertz);
    void SetDecimation(int ch, int ratio);
    void SetRIS(int ch, bool on);
    double Period() const { return timebase_.Period(); }
    void SetNormal(int ch, bool on);
    /// Converts what the channel has seen so far; before its front end changes.
    void Settle(int ch);

    void Start(int ch);
    void End(int ch);
    bool Running(int ch);
    bool Triggered(int ch);
    int SamplesSinceArm(int ch);
    /// The channel's record memory, up to date; null if there is none.
    const float* Record(int ch);
    struct Pass {
        const float* samples = nullptr; ///< kRISSamples of them; null: no valid pass
        double position = 0;
    };
    Pass RISPass(int ch);

  private:
    double Now() const;
    void Update(double now);
    Module* Source();
    bool InStack(int ch, int other);
    void Render(int ch, double now);

    std::vector<ModuleDescription> found_; ///< on the bus, before they have slots
    bool heldLow_ = false;                 ///< by a module without power
    double speed_ = 1;
    std::uint32_t seed_ = 1;
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();

    std::array<std::unique_ptr<Module>, kSlots> slots_;
    std::array<bool, kSlots> armed_{};
    std::array<bool, kSlots> capturing_{};
    std::array<bool, kSlots> holdsPass_{};
    Timebase timebase_;
    Acquisition acquisition_;
    std::minstd_rand random_;
};

} // namespace sim
