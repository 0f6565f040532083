#include "stack.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

/// Times never come near 0, so that what lies a record before now is a time too; and not at a round number
/// of nanoseconds, so that no sample falls right on the edge of a signal with round figures.
constexpr double kEpoch = 1 + 0.37e-9;
constexpr double kLongestLag = 0.2; ///< real seconds that a trigger may be found late

bool IsSlot(int ch) {
    return ch >= 1 && ch <= kSlots;
}

std::size_t At(int ch) {
    return static_cast<std::size_t>(ch - 1);
}

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
            slots_[At(target)] = std::make_unique<Module>(std::move(module), seed);
        }
    }
    found_.clear();
    return count;
}

Module* Stack::InSlot(int ch) {
    return IsSlot(ch) ? slots_[At(ch)].get() : nullptr;
}

Module* Stack::Open(int ch) {
    Module* module = InSlot(ch);
    return module != nullptr && module->open ? module : nullptr;
}

bool Stack::OpenAndReset(int ch) {
    Module* module = InSlot(ch);
    if (module == nullptr || !module->Description().opens) {
        return false;
    }
    module->Reset();
    module->open = true;
    return true;
}

void Stack::Close(int ch) {
    if (Module* module = Open(ch)) {
        End(ch);
        module->open = false;
        module->drivesLine = false;
    }
}

void Stack::SetDetectLine(int ch, bool drive) {
    if (Module* module = Open(ch)) {
        module->drivesLine = drive;
    }
}

/// Whether both hang on one detect line.
bool Stack::InStack(int ch, int other) {
    return ch == other || (InSlot(ch)->Description().stacked && InSlot(other)->Description().stacked);
}

bool Stack::DetectLineHigh(int ch) {
    const Module* module = Open(ch);
    if (module == nullptr) {
        return false;
    }
    bool low = heldLow_ && module->Description().stacked;
    for (int other = 1; other <= kSlots; ++other) {
        const Module* driver = Open(other);
        low = low || (driver != nullptr && driver->drivesLine && InStack(ch, other));
    }
    return !low;
}

// A changed clock makes nonsense of a record that is under way.

void Stack::SetClock(int ch, int megahertz) {
    if (Open(ch) != nullptr && megahertz > 0) {
        acquisition_.Stop(Now());
        timebase_.megahertz = megahertz;
    }
}

void Stack::SetDecimation(int ch, int ratio) {
    if (Open(ch) != nullptr && ratio > 0) {
        acquisition_.Stop(Now());
        timebase_.decimation = ratio;
    }
}

void Stack::SetRIS(int ch, bool on) {
    if (Open(ch) != nullptr && on != timebase_.ris) {
        acquisition_.Stop(Now());
        timebase_.ris = on;
    }
}

void Stack::SetNormal(int ch, bool on) {
    if (Module* module = Open(ch)) {
        const double now = Now();
        Update(now);
        module->trigger.normal = on;
        if (!on && module == Source()) {
            acquisition_.Release(now);
        }
    }
}

double Stack::Now() const {
    const std::chrono::duration<double> since = std::chrono::steady_clock::now() - began_;
    return kEpoch + since.count() * speed_;
}

Module* Stack::Source() {
    for (int ch = 1; ch <= kSlots; ++ch) {
        Module* module = Open(ch);
        if (module != nullptr && module->trigger.isSource) {
            return module;
        }
    }
    return nullptr;
}

void Stack::Update(double now) {
    const double lag = std::max(kLongestLag * speed_, Acquisition::kDepth * timebase_.Period());
    if (acquisition_.Update(now, Source(), lag)) {
        for (int ch = 1; ch <= kSlots; ++ch) {
            if (capturing_[At(ch)]) {
                InSlot(ch)->BeginRecord();
            }
        }
    }
}

void Stack::Render(int ch, double now) {
    if (!capturing_[At(ch)]) {
        return;
    }
    Module* module = InSlot(ch);
    const bool whole = acquisition_.Complete() && !acquisition_.IsRIS();
    // Six blocks are a little more than the depth; a full record has its clock run on for them.
    const int end = whole ? Module::kMemory : acquisition_.Available(now);
    module->Render(acquisition_.Start(), acquisition_.Interval(), end);
    holdsPass_[At(ch)] = acquisition_.IsRIS() && acquisition_.Complete();
}

void Stack::Settle(int ch) {
    if (Open(ch) != nullptr) {
        const double now = Now();
        Update(now);
        Render(ch, now);
    }
}

void Stack::Start(int ch) {
    Module* module = Open(ch);
    if (module == nullptr) {
        return;
    }
    armed_[At(ch)] = true;
    const Module* source = Source();
    if (source != nullptr && source != module) {
        return; // the source is armed last, and starts them all
    }
    const double now = Now();
    for (int other = 1; other <= kSlots; ++other) {
        const auto slot = At(other);
        if (capturing_[slot] && !armed_[slot]) {
            Render(other, now);
        }
        capturing_[slot] = std::exchange(armed_[slot], false) && Open(other) != nullptr;
        if (capturing_[slot]) {
            holdsPass_[slot] = false;
            InSlot(other)->BeginRecord();
        }
    }
    std::uniform_real_distribution<double> gap(0, 20);
    acquisition_.Arm(now, timebase_, module->trigger, gap(random_));
}

void Stack::End(int ch) {
    const Module* module = Open(ch);
    if (module == nullptr) {
        return;
    }
    // One moment for all three, so that the count that stays is what was converted.
    const double now = Now();
    Update(now);
    Render(ch, now);
    armed_[At(ch)] = false;
    capturing_[At(ch)] = false;
    const bool nobody = std::none_of(capturing_.begin(), capturing_.end(), [](bool on) { return on; });
    if (module == Source() || nobody) {
        acquisition_.Stop(now);
    }
}

bool Stack::Running(int ch) {
    if (Open(ch) == nullptr) {
        return false;
    }
    Update(Now());
    return acquisition_.Running();
}

bool Stack::Triggered(int ch) {
    if (Open(ch) == nullptr) {
        return false;
    }
    Update(Now());
    return acquisition_.Triggered();
}

int Stack::SamplesSinceArm(int ch) {
    if (Open(ch) == nullptr) {
        return 0;
    }
    const double now = Now();
    Update(now);
    return acquisition_.Available(now);
}

const float* Stack::Record(int ch) {
    const Module* module = Open(ch);
    if (module == nullptr) {
        return nullptr;
    }
    Settle(ch);
    return module->Memory();
}

Stack::Pass Stack::RISPass(int ch) {
    const Module* module = Open(ch);
    if (module == nullptr) {
        return {};
    }
    Settle(ch);
    if (!holdsPass_[At(ch)]) {
        return {};
    }
    return {module->Memory(), acquisition_.RISPosition()};
}

} // namespace sim
