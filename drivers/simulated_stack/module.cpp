#include "module.h"

#include <algorithm>
#include <limits>
#include <span>

namespace sim {

namespace {

constexpr std::array<double, kRanges> kVoltsPerDivision{0.03, 0.3, 3};
constexpr double kMostSteps = 127; ///< of an 8-bit converter, ten divisions either way
constexpr double kDivisions = 10;
constexpr float kStepsPerPercent = 1.27F;
constexpr float kResetOffset = 97;

} // namespace

Module::Module(ModuleDescription description, std::uint32_t seed)
    : description_(std::move(description)), noiseState_(seed * 2654435761U | 1U) {
    Reset();
}

void Module::Reset() {
    description_.signal.SwitchCompensation(true);
    range_ = 0;
    dc_ = false;
    gnd_ = true;
    offsetPercent_ = kResetOffset;
    rendered_ = 0;
    UpdateScale();
}

void Module::SetUpFrontEnd(int range, bool dc, bool gnd) {
    range_ = std::clamp(range, 0, kRanges - 1);
    dc_ = dc;
    gnd_ = gnd;
    UpdateScale();
}

void Module::SetOffset(float percent) {
    offsetPercent_ = percent;
    UpdateScale();
}

void Module::SetCompensation(bool on) {
    description_.signal.SwitchCompensation(on);
    UpdateScale();
}

void Module::UpdateScale() {
    const auto range = static_cast<std::size_t>(range_);
    gain_ = gnd_ ? 0 : kMostSteps / (kDivisions * kVoltsPerDivision[range]) / description_.probe;
    shift_ = offsetPercent_ * kStepsPerPercent + description_.rangeOffsets[range];
    if (!dc_) {
        shift_ -= description_.signal.Mean() * gain_;
    }
}

double Module::StepsAt(double time) const {
    return shift_ + (gain_ == 0 ? 0 : description_.signal.At(time) * gain_);
}

double Module::SteepestSlope() const {
    return description_.signal.SteepestSlope() * gain_;
}

double Module::LowestSteps() const {
    return shift_ + description_.signal.Lowest() * gain_;
}

double Module::HighestSteps() const {
    return shift_ + description_.signal.Highest() * gain_;
}

double Module::NextJump(double time) const {
    return description_.signal.NextJump(time);
}

/// Four even spreads together are bell-shaped enough for a converter's noise.
float Module::NoiseSteps() {
    noiseState_ ^= noiseState_ << 13;
    noiseState_ ^= noiseState_ >> 17;
    noiseState_ ^= noiseState_ << 5;
    const std::uint32_t x = noiseState_;
    const auto sum = static_cast<std::int32_t>((x & 0xFF) + (x >> 8 & 0xFF) + (x >> 16 & 0xFF) + (x >> 24));
    constexpr float kSpread = 147.8F; // RMS of the sum of four bytes
    return static_cast<float>(sum - 510) * (description_.noise / kSpread);
}

void Module::Render(double start, double interval, int end) {
    end = std::min(end, kMemory);
    if (end <= rendered_) {
        return;
    }
    const std::span<float> fresh(memory_.data() + rendered_, static_cast<std::size_t>(end - rendered_));
    std::fill(fresh.begin(), fresh.end(), 0.0F);
    if (gain_ != 0) {
        description_.signal.AddTo(fresh, start + rendered_ * interval, interval);
    }
    for (float& sample : fresh) {
        double steps = sample * gain_ + shift_ + static_cast<double>(NoiseSteps());
        steps = std::clamp(steps, -kMostSteps, kMostSteps);
        sample = static_cast<float>(static_cast<int>(steps + (steps < 0 ? -0.5 : 0.5)));
    }
    rendered_ = end;
}

void Module::Read(float* out, int start, int count) {
    std::copy_n(memory_.data() + start, count, out);
    const double part = description_.faults.badReadings;
    if (part <= 0) {
        return;
    }
    using Float = std::numeric_limits<float>;
    constexpr std::array<float, 3> kBad{Float::quiet_NaN(), Float::infinity(), -Float::infinity()};
    for (float& sample : std::span(out, static_cast<std::size_t>(count))) {
        bad_ += part;
        if (bad_ >= 1) {
            bad_ -= 1;
            sample = kBad[badCount_++ % kBad.size()];
        }
    }
}

} // namespace sim
