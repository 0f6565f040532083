#include "acquisition.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr double kGap = 20; ///< positions between two samples of a RIS pass by the clock that belongs to it
constexpr double kGridAt = 0.5; ///< where in a position the grid lies

} // namespace

void Acquisition::Arm(double now, const Timebase& timebase, const TriggerSettings& settings, bool free,
                      double risPosition) {
    timebase_ = timebase;
    risPosition_ = std::clamp(risPosition, 0.0, kGap);
    armed_ = now;
    start_ = now;
    triggered_ = false;
    delay_ = std::max(0.0, static_cast<double>(settings.delay));
    before_ = static_cast<int>(std::lround(std::clamp(settings.preTriggerFraction, 0.0F, 0.99F) * kDepth));
    state_ = State::Waiting;
    if (free) {
        Release(now);
    }
}

double Acquisition::Lead() const {
    return before_ * timebase_.Interval() / (timebase_.ris ? kGap : 1);
}

bool Acquisition::Fire(double time) {
    if (!Waiting()) {
        return false;
    }
    const double before = start_;
    const double period = timebase_.Period();
    const double reference = time + delay_;
    if (timebase_.ris) {
        start_ = reference + (risPosition_ - kGridAt) * period - Lead();
    } else {
        // The clock does not wait for the trigger: the position behind it is the next sample. A module that
        // is slower than the source has no more before the trigger than it took since its arm.
        const double clocks = std::ceil((reference - armed_) / period - 1e-6);
        start_ = armed_ + std::max(clocks - before_, 0.0) * period;
    }
    end_ = start_ + Depth() * Interval();
    triggered_ = true;
    state_ = State::Capturing;
    return start_ != before;
}

bool Acquisition::Release(double now) {
    delay_ = 0;
    return Fire(std::max(now, Ready()));
}

void Acquisition::Stop(double now) {
    Update(now);
    if (Running()) {
        state_ = State::Stopped;
        stopped_ = now;
    }
}

void Acquisition::Update(double now) {
    if (state_ == State::Capturing && now >= end_) {
        state_ = State::Complete;
    }
}

int Acquisition::Available(double now) const {
    const int depth = Depth();
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
