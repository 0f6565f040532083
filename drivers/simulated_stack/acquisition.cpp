#include "acquisition.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr double kGap = 20;       ///< positions between two samples of a RIS pass
constexpr double kGridAt = 0.5;   ///< where in a position the grid lies
constexpr double kLeast = 0.2e-9; ///< as finely as the comparator is looked at

} // namespace

void Acquisition::Arm(double now, const Timebase& timebase, const TriggerSettings& settings,
                      double risPosition) {
    timebase_ = timebase;
    risPosition_ = std::clamp(risPosition, 0.0, kGap);
    armed_ = now;
    start_ = now;
    triggered_ = false;
    delay_ = std::max(0.0, static_cast<double>(settings.delay));
    before_ = static_cast<int>(std::lround(std::clamp(settings.preTriggerFraction, 0.0F, 0.99F) * kDepth));
    state_ = State::Waiting;
    // The memory before the trigger has to be full first.
    const double ready = now + before_ * timebase.Period();
    search_.Begin(ready, std::max(kLeast, timebase.Period() / 50));
    if (!settings.normal) {
        delay_ = 0;
        TriggerAt(ready);
    }
}

void Acquisition::TriggerAt(double time) {
    const double period = timebase_.Period();
    const double reference = time + delay_;
    if (timebase_.ris) {
        start_ = reference + (risPosition_ - kGridAt - before_) * period;
    } else {
        // The clock does not wait for the trigger: the position behind it is the next sample.
        const double clocks = std::ceil((reference - armed_) / period - 1e-6);
        start_ = armed_ + (clocks - before_) * period;
    }
    end_ = start_ + kDepth * period;
    triggered_ = true;
    state_ = State::Capturing;
}

void Acquisition::Release(double now) {
    if (state_ == State::Waiting) {
        delay_ = 0;
        TriggerAt(std::max(now, armed_ + before_ * timebase_.Period()));
    }
}

void Acquisition::Stop(double now) {
    if (Running()) {
        state_ = State::Stopped;
        stopped_ = now;
    }
}

bool Acquisition::Update(double now, const Module* source, double longestLag) {
    bool moved = false;
    if (state_ == State::Waiting && source != nullptr) {
        if (const auto time = search_.Find(*source, now, longestLag)) {
            const double before = start_;
            TriggerAt(*time);
            moved = start_ != before;
        }
    }
    if (state_ == State::Capturing && now >= end_) {
        state_ = State::Complete;
    }
    return moved;
}

int Acquisition::Available(double now) const {
    const int depth = timebase_.ris ? kRISSamples : kDepth;
    if (state_ == State::Complete) {
        return depth;
    }
    if (state_ == State::Idle) {
        return 0;
    }
    const double until = state_ == State::Stopped ? stopped_ : now;
    const int most = triggered_ ? depth : std::min(before_, depth);
    return static_cast<int>(std::clamp((until - start_) / Interval(), 0.0, static_cast<double>(most)));
}

} // namespace sim
