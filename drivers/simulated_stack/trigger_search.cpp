#include "trigger_search.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sim {

namespace {

constexpr double kStepsPerPercent = 1.27;
constexpr int kLooksPerCall = 20000;
/// Just behind a jump, where rounding can no longer put the signal before it.
constexpr double kSettle = 1e-10;

bool IsType(std::int32_t type) {
    return type >= TriggerSettings::LessThan && type <= TriggerSettings::RisingEdge;
}

bool IsLevel(std::int32_t type) {
    return type == TriggerSettings::LessThan || type == TriggerSettings::GreaterThan;
}

bool WantsAbove(std::int32_t type) {
    return type == TriggerSettings::GreaterThan || type == TriggerSettings::RisingEdge;
}

} // namespace

void TriggerSearch::Begin(double from, double resolution) {
    at_ = from;
    resolution_ = resolution;
}

void TriggerSearch::SkipTo(double now) {
    at_ = std::max(at_, now);
}

std::optional<double> TriggerSearch::Find(const Module& module, const TriggerSettings& settings, double now,
                                          double longestLag) {
    if (now <= at_) {
        return std::nullopt;
    }
    at_ = std::max(at_, now - longestLag);
    const auto found = Look(module, settings, now);
    SkipTo(now);
    return found;
}

std::optional<double> TriggerSearch::Look(const Module& module, const TriggerSettings& settings, double now) {
    if (!IsType(settings.type)) {
        return std::nullopt;
    }
    const double threshold = static_cast<double>(settings.thresholdPercent) * kStepsPerPercent;
    const bool wantsAbove = WantsAbove(settings.type);
    // Positive on the side that fires, whichever that is.
    const auto margin = [&](double time) {
        const double above = module.StepsAt(time) - threshold;
        return wantsAbove ? above : -above;
    };
    const double most = wantsAbove ? module.HighestSteps() - threshold : threshold - module.LowestSteps();
    const double least = wantsAbove ? module.LowestSteps() - threshold : threshold - module.HighestSteps();
    if (most <= 0 || (!IsLevel(settings.type) && least > 0)) {
        return std::nullopt; // nothing that the signal can do would fire
    }

    double here = margin(at_);
    if (IsLevel(settings.type) && here > 0) {
        return at_;
    }
    const double slope = module.SteepestSlope();
    for (int look = 0; look < kLooksPerCall && at_ < now; ++look) {
        // No slope reaches the threshold sooner than this.
        const double stride = slope > 0 ? std::max(std::abs(here) / slope, resolution_)
                                        : std::numeric_limits<double>::infinity();
        double next = std::min(at_ + stride, now);
        const double jump = module.NextJump(at_);
        const bool jumps = jump <= next;
        if (jumps) {
            next = jump + kSettle;
        }
        const double there = margin(next);
        if (here <= 0 && there > 0) {
            return jumps ? next : at_ + (next - at_) * -here / (there - here);
        }
        at_ = next;
        here = there;
    }
    return std::nullopt;
}

} // namespace sim
