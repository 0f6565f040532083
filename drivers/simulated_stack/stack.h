#pragma once

#include "acquisition.h"
#include "description.h"
#include "module.h"
#include "trigger_search.h"

#include <array>
#include <chrono>
#include <memory>
#include <random>
#include <vector>

namespace sim {

/// The modules on the bus in their slots 1..4, what they share (the detect line, the trigger, the time they
/// live in) and what each has of its own. Channels that are none, empty or closed, and modules that have
/// stopped answering, are ignored or read 0. In demonstration mode the slots hold no modules and keep their
/// settings.
class Stack {
  public:
    Stack() = default; ///< nothing on the bus
    explicit Stack(StackDescription description);

    /// Assigns the modules to slots; the one at port goes to slot if slot is 1..4. Returns how many.
    int Enumerate(int port, int slot);
    void BeginDemonstration() { demonstration_ = true; }
    bool Demonstration() const { return demonstration_; }
    /// The module in a slot, open or not, or null.
    const Module* InSlot(int ch) const;
    bool OpenAndReset(int ch);
    bool IsOpen(int ch) const { return IsSlot(ch) && At(ch).open; }
    void Close(int ch);
    /// Whether it is open and has not stopped answering.
    bool Answers(int ch) const;

    void SetDetectLine(int ch, bool drive);
    bool DetectLineHigh(int ch) const;

    void SetUpFrontEnd(int ch, int range, bool dc, bool gnd);
    void SetOffset(int ch, float percent);
    void SetCompensation(int ch, bool on);
    void SetClock(int ch, int megahertz);
    void SetDecimation(int ch, int ratio);
    void SetRIS(int ch, bool on);
    /// Of the first open channel; 0 if there is none.
    double Period() const;
    void SetDelay(int ch, float seconds);
    void SetThreshold(int ch, float percent);
    void SetType(int ch, int type);
    void SetNormal(int ch, bool on);
    void SetPreTrigger(int ch, float fraction);
    void SetSource(int ch, bool on);
    /// The channel that is marked as the source of the trigger, or 0.
    int Source() const;

    void Start(int ch);
    void End(int ch);
    bool Running(int ch);
    bool Triggered(int ch);
    int SamplesSinceArm(int ch);
    /// Copies count samples of the channel's record from start on; false if there is none.
    bool Read(int ch, float* out, int start, int count);
    struct Pass {
        bool valid = false;
        double position = 0;
    };
    /// Copies count samples of the pass that the channel holds, if it holds one.
    Pass ReadRISPass(int ch, float* out, int count);

  private:
    struct Slot {
        std::unique_ptr<Module> module; ///< none in an empty slot and in demonstration mode
        bool open = false;
        double openedAt = 0;
        bool drivesLine = false;
        Timebase timebase;
        TriggerSettings trigger;
        Acquisition acquisition;
        bool started = false;   ///< AcquisitionStart without its end, which a silent module still seems to do
        bool armed = false;     ///< waits for the source to be armed
        bool takesPart = false; ///< was armed for the present record
        bool capturing = false; ///< and its memory still follows it
        bool holdsPass = false; ///< a whole RIS pass of the present record
        int misplaced = 0;      ///< passes handed out with an impossible position
    };

    static bool IsSlot(int ch) { return ch >= 1 && ch <= kSlots; }
    Slot& At(int ch) { return slots_[static_cast<std::size_t>(ch - 1)]; }
    const Slot& At(int ch) const { return slots_[static_cast<std::size_t>(ch - 1)]; }
    double Now() const;
    /// The slot if it is open and answers, else null; in the second case only if there is a module.
    Slot* Open(int ch);
    Slot* OpenModule(int ch);
    bool Dead(const Slot& slot) const;
    void Update(double now);
    void FireAll(double time);
    void Begin(double now);
    void StopRecord(int ch);
    /// Whose record a channel tells of: its own, or the source's if it takes no part.
    const Slot* Told(int ch) const;
    void ChangeComparator(int ch);
    void Settle(Slot& slot, double now);
    void Render(Slot& slot, double now);

    std::vector<ModuleDescription> found_; ///< on the bus, before they have slots
    bool demonstration_ = false;
    bool heldLow_ = false; ///< by a module without power
    double speed_ = 1;
    std::uint32_t seed_ = 1;
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();

    std::array<Slot, kSlots> slots_;
    bool listening_ = false; ///< the source's comparator may start the records that wait
    TriggerSearch search_;
    std::minstd_rand random_;
};

} // namespace sim
