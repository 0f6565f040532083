// How the modules of a stack take a record together.

#include "stack.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace sim {

namespace {

constexpr double kLongestLag = 0.2;   ///< real seconds that a trigger may be found late
constexpr double kLeastLook = 0.2e-9; ///< as finely as the comparator is looked at

} // namespace

void Stack::Update(double now) {
    const int source = Source();
    if (listening_ && source != 0 && At(source).module && !Dead(At(source))) {
        const Slot& slot = At(source);
        const double lag = std::max(kLongestLag * speed_, Acquisition::kDepth * slot.acquisition.Period());
        if (const auto time = search_.Find(*slot.module, slot.trigger, now, lag)) {
            FireAll(*time);
        }
    }
    for (Slot& slot : slots_) {
        slot.acquisition.Update(now);
    }
}

void Stack::FireAll(double time) {
    listening_ = false;
    for (Slot& slot : slots_) {
        if (slot.takesPart && slot.acquisition.Fire(time) && slot.capturing) {
            slot.module->BeginRecord();
        }
    }
}

void Stack::Render(Slot& slot, double now) {
    if (!slot.capturing || !slot.takesPart) {
        return;
    }
    const Acquisition& record = slot.acquisition;
    const bool whole = record.Complete() && !record.IsRIS();
    // Six blocks are a little more than the depth; a full record has its clock run on for them.
    const int end = whole ? Module::kMemory : record.Available(now);
    slot.module->Render(record.Start(), record.Interval(), end);
    slot.holdsPass = record.IsRIS() && record.Complete();
}

void Stack::Settle(Slot& slot, double now) {
    Update(now);
    Render(slot, now);
}

void Stack::Start(int ch) {
    if (!IsOpen(ch) || !At(ch).module) {
        return;
    }
    At(ch).started = true;
    At(ch).armed = !Dead(At(ch));
    if (At(ch).armed && ch == Source()) {
        Begin(Now()); // the source is armed last, and starts them all
    }
}

void Stack::Begin(double now) {
    const Slot& source = At(Source());
    std::uniform_real_distribution<double> gap(0, 20);
    const double position = gap(random_);
    for (Slot& slot : slots_) {
        if (!slot.armed) {
            Render(slot, now); // keeps what it has
        }
        slot.takesPart = std::exchange(slot.armed, false) && slot.open && !Dead(slot);
        slot.capturing = slot.takesPart;
        slot.holdsPass = false;
        if (slot.takesPart) {
            slot.module->BeginRecord();
            slot.acquisition.Arm(now, slot.timebase, slot.trigger, !source.trigger.normal, position);
        }
    }
    listening_ = source.trigger.normal;
    // The memory before the trigger has to be full first.
    search_.Begin(source.acquisition.Ready(), std::max(kLeastLook, source.acquisition.Period() / 50));
}

void Stack::End(int ch) {
    if (!IsOpen(ch) || !At(ch).module) {
        return;
    }
    Slot& slot = At(ch);
    // One moment for all three, so that the count that stays is what was converted.
    const double now = Now();
    Settle(slot, now);
    slot.started = false;
    slot.armed = false;
    slot.capturing = false;
    slot.acquisition.Stop(now);
    if (ch == Source()) {
        listening_ = false;
    }
}

void Stack::StopRecord(int ch) {
    Slot& slot = At(ch);
    if (slot.module) {
        slot.acquisition.Stop(Now());
        slot.armed = false;
    }
    if (ch == Source()) {
        listening_ = false;
    }
}

const Stack::Slot* Stack::Told(int ch) const {
    if (!IsOpen(ch)) {
        return nullptr;
    }
    if (At(ch).takesPart) {
        return &At(ch);
    }
    const int source = Source();
    return source != 0 && At(source).takesPart ? &At(source) : nullptr;
}

bool Stack::Running(int ch) {
    if (!IsOpen(ch) || !At(ch).module) {
        return false;
    }
    const Slot& slot = At(ch);
    if (Now() - slot.openedAt > slot.module->Description().faults.busyAfter) {
        return true;
    }
    if (slot.armed || Dead(slot)) {
        return slot.started; // the library knows of the arm and hears of no end
    }
    Update(Now());
    const Slot* told = Told(ch);
    return told != nullptr && told->acquisition.Running();
}

bool Stack::Triggered(int ch) {
    if (OpenModule(ch) == nullptr) {
        return false;
    }
    Update(Now());
    const Slot* told = Told(ch);
    return told != nullptr && !At(ch).armed && told->acquisition.Triggered();
}

int Stack::SamplesSinceArm(int ch) {
    if (OpenModule(ch) == nullptr) {
        return 0;
    }
    const double now = Now();
    Update(now);
    const Slot* told = Told(ch);
    return told != nullptr && !At(ch).armed ? told->acquisition.Available(now) : 0;
}

bool Stack::Read(int ch, float* out, int start, int count) {
    Slot* slot = OpenModule(ch);
    if (slot == nullptr) {
        return false;
    }
    Settle(*slot, Now());
    slot->module->Read(out, start, count);
    return true;
}

Stack::Pass Stack::ReadRISPass(int ch, float* out, int count) {
    Slot* slot = OpenModule(ch);
    if (slot == nullptr) {
        return {};
    }
    Settle(*slot, Now());
    const Faults::RISPasses passes = slot->module->Description().faults.risPasses;
    if (!slot->holdsPass || passes == Faults::RISPasses::Invalid) {
        return {};
    }
    slot->module->Read(out, 0, count);
    double position = slot->acquisition.RISPosition();
    if (passes == Faults::RISPasses::Misplaced) {
        constexpr std::array<double, 4> kNowhere{20.5, -0.75, 1e9, std::numeric_limits<double>::quiet_NaN()};
        position = kNowhere[static_cast<std::size_t>(slot->misplaced++) % kNowhere.size()];
    }
    return {true, position};
}

} // namespace sim
