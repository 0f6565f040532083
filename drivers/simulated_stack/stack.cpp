#include "stack.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace sim {

namespace {

/// Times never come near 0, so that what lies a record before now is a time too; and not at a round number
/// of nanoseconds, so that no sample falls right on the edge of a signal with round figures.
constexpr double kEpoch = 1 + 0.37e-9;

} // namespace

Stack::Stack(StackDescription description)
    : speed_(description.speed), seed_(description.seed), random_(description.seed + 1) {
    for (ModuleDescription& module : description.modules) {
        if (module.powered) {
            found_.push_back(std::move(module));
        } else {
            heldLow_ = heldLow_ || module.stacked;
        }
    }
}

int Stack::Enumerate(int port, int slot) {
    const auto count = static_cast<int>(found_.size());
    const bool forced = IsSlot(slot);
    int next = 1;
    std::uint32_t seed = seed_;
    for (ModuleDescription& module : found_) {
        seed += 1;
        int target = slot;
        if (!forced || module.port != port) {
            // The forced slot waits for its module, even if that one is not there.
            next += forced && next == slot ? 1 : 0;
            target = next++;
        }
        if (IsSlot(target)) {
            At(target).module = std::make_unique<Module>(std::move(module), seed);
        }
    }
    found_.clear();
    return count;
}

double Stack::Now() const {
    const std::chrono::duration<double> since = std::chrono::steady_clock::now() - began_;
    return kEpoch + since.count() * speed_;
}

const Module* Stack::InSlot(int ch) const {
    return IsSlot(ch) ? At(ch).module.get() : nullptr;
}

bool Stack::Dead(const Slot& slot) const {
    return slot.module && Now() - slot.openedAt > slot.module->Description().faults.stopsAnsweringAfter;
}

bool Stack::Answers(int ch) const {
    return IsOpen(ch) && !Dead(At(ch));
}

Stack::Slot* Stack::Open(int ch) {
    return Answers(ch) ? &At(ch) : nullptr;
}

Stack::Slot* Stack::OpenModule(int ch) {
    Slot* slot = Open(ch);
    return slot != nullptr && slot->module ? slot : nullptr;
}

bool Stack::OpenAndReset(int ch) {
    if (!IsSlot(ch)) {
        return false;
    }
    Slot& slot = At(ch);
    if (!demonstration_ && (!slot.module || !slot.module->Description().opens)) {
        return false;
    }
    std::unique_ptr<Module> module = demonstration_ ? nullptr : std::move(slot.module);
    slot = Slot();
    slot.module = std::move(module);
    slot.open = true;
    slot.openedAt = Now();
    slot.drivesLine = true; // who does not let go of it finds it low
    if (slot.module) {
        slot.module->Reset();
    }
    return true;
}

void Stack::Close(int ch) {
    if (IsOpen(ch)) {
        End(ch);
        At(ch).open = false;
        At(ch).armed = false;
        At(ch).drivesLine = false;
    }
}

void Stack::SetDetectLine(int ch, bool drive) {
    if (Slot* slot = Open(ch)) {
        slot->drivesLine = drive;
    }
}

bool Stack::DetectLineHigh(int ch) const {
    if (!Answers(ch) || !At(ch).module) {
        return false;
    }
    const bool joined = At(ch).module->Description().stacked;
    bool low = heldLow_ && joined;
    for (int other = 1; other <= kSlots; ++other) {
        const Slot& driver = At(other);
        const bool wired = other == ch || (joined && driver.module && driver.module->Description().stacked);
        low = low || (driver.open && driver.drivesLine && wired);
    }
    return !low;
}

// A changed front end acts from then on: what was seen before is converted as it was, and the comparator
// does not look at it again.

void Stack::SetUpFrontEnd(int ch, int range, bool dc, bool gnd) {
    if (Slot* slot = OpenModule(ch)) {
        Settle(*slot, Now());
        slot->module->SetUpFrontEnd(range, dc, gnd);
        ChangeComparator(ch);
    }
}

void Stack::SetOffset(int ch, float percent) {
    if (Slot* slot = OpenModule(ch)) {
        Settle(*slot, Now());
        slot->module->SetOffset(percent);
        ChangeComparator(ch);
    }
}

void Stack::SetCompensation(int ch, bool on) {
    if (Slot* slot = OpenModule(ch)) {
        Settle(*slot, Now());
        slot->module->SetCompensation(on);
        ChangeComparator(ch);
    }
}

// A changed clock makes nonsense of a record that is under way.

void Stack::SetClock(int ch, int megahertz) {
    if (Slot* slot = Open(ch); slot != nullptr && megahertz > 0) {
        StopRecord(ch);
        slot->timebase.megahertz = megahertz;
    }
}

void Stack::SetDecimation(int ch, int ratio) {
    if (Slot* slot = Open(ch); slot != nullptr && ratio > 0) {
        StopRecord(ch);
        slot->timebase.decimation = ratio;
    }
}

void Stack::SetRIS(int ch, bool on) {
    if (Slot* slot = Open(ch); slot != nullptr && on != slot->timebase.ris) {
        StopRecord(ch);
        slot->timebase.ris = on;
    }
}

double Stack::Period() const {
    const auto first = std::find_if(slots_.begin(), slots_.end(), [](const Slot& slot) { return slot.open; });
    return first == slots_.end() ? 0 : first->timebase.Period();
}

void Stack::SetDelay(int ch, float seconds) {
    if (Slot* slot = Open(ch)) {
        slot->trigger.delay = seconds;
    }
}

void Stack::SetPreTrigger(int ch, float fraction) {
    if (Slot* slot = Open(ch)) {
        slot->trigger.preTriggerFraction = fraction;
    }
}

void Stack::SetThreshold(int ch, float percent) {
    if (Slot* slot = Open(ch)) {
        Update(Now());
        slot->trigger.thresholdPercent = percent;
        ChangeComparator(ch);
    }
}

void Stack::SetType(int ch, int type) {
    if (Slot* slot = Open(ch)) {
        Update(Now());
        slot->trigger.type = type;
        ChangeComparator(ch);
    }
}

void Stack::SetSource(int ch, bool on) {
    // Known here even of a module that is silent.
    if (IsOpen(ch)) {
        Update(Now());
        At(ch).trigger.isSource = on;
        search_.SkipTo(Now());
    }
}

void Stack::SetNormal(int ch, bool on) {
    Slot* slot = Open(ch);
    if (slot == nullptr) {
        return;
    }
    const double now = Now();
    Update(now);
    slot->trigger.normal = on;
    if (on || ch != Source() || !std::exchange(listening_, false)) {
        return;
    }
    for (Slot& waiting : slots_) {
        if (waiting.takesPart && waiting.acquisition.Release(now) && waiting.capturing) {
            waiting.module->BeginRecord();
        }
    }
}

int Stack::Source() const {
    for (int ch = 1; ch <= kSlots; ++ch) {
        if (IsOpen(ch) && At(ch).trigger.isSource) {
            return ch;
        }
    }
    return 0;
}

void Stack::ChangeComparator(int ch) {
    if (ch == Source()) {
        search_.SkipTo(Now());
    }
}

} // namespace sim
