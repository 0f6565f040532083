#include "wave.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace sim {

namespace {

/// The part behind the point of a number that is not negative; no call into the maths library.
double Fraction(double x) {
    return x - static_cast<double>(static_cast<std::int64_t>(x));
}

/// One turn of a sine, read between the lines; exact to some millionths of the amplitude.
class SineTable {
  public:
    SineTable() {
        for (std::size_t i = 0; i < values_.size(); ++i) {
            values_[i] = std::sin(2 * std::numbers::pi * static_cast<double>(i) / kSize);
        }
    }
    double operator()(double turn) const {
        const double place = turn * kSize;
        const auto i = static_cast<std::size_t>(place);
        return values_[i] + (values_[i + 1] - values_[i]) * (place - static_cast<double>(i));
    }

  private:
    static constexpr int kSize = 1024;
    std::array<double, kSize + 2> values_{};
};

const SineTable kSine;

/// Writes the row by the shape's own At, without a virtual call for each sample.
template <class Shape> class WaveOf : public Wave {
  public:
    void AddTo(std::span<float> out, double start, double interval) const override {
        const auto& shape = static_cast<const Shape&>(*this);
        for (std::size_t i = 0; i < out.size(); ++i) {
            out[i] += static_cast<float>(shape.Shape::At(start + static_cast<double>(i) * interval));
        }
    }
};

template <class Shape> class Periodic : public WaveOf<Shape> {
  public:
    explicit Periodic(const Cycle& cycle) : cycle_(cycle) {}
    double Lowest() const override { return cycle_.level - std::abs(cycle_.amplitude); }
    double Highest() const override { return cycle_.level + std::abs(cycle_.amplitude); }

  protected:
    double Turn(double time) const { return Fraction(time * cycle_.frequency + cycle_.phase); }
    /// When the first of two places in the turn comes next.
    double Next(double time, double turn, double place) const {
        const double ahead = place - turn;
        return time + (ahead > 0 ? ahead : ahead + 1) / cycle_.frequency;
    }
    Cycle cycle_;
};

class Sine final : public Periodic<Sine> {
  public:
    using Periodic::Periodic;
    double At(double time) const override { return cycle_.level + cycle_.amplitude * kSine(Turn(time)); }
    double Mean() const override { return cycle_.level; }
    double SteepestSlope() const override {
        return 2 * std::numbers::pi * cycle_.frequency * std::abs(cycle_.amplitude);
    }
};

/// Two levels; a square and a pulse differ in where these lie.
class TwoLevels final : public Periodic<TwoLevels> {
  public:
    TwoLevels(const Cycle& cycle, double duty, double first, double second)
        : Periodic(cycle), duty_(duty), first_(first), second_(second) {}
    double At(double time) const override { return Turn(time) < duty_ ? first_ : second_; }
    double Mean() const override { return second_ + (first_ - second_) * duty_; }
    double Lowest() const override { return std::min(first_, second_); }
    double Highest() const override { return std::max(first_, second_); }
    double SteepestSlope() const override { return 0; }
    double NextJump(double time) const override {
        const double turn = Turn(time);
        return Next(time, turn, turn < duty_ ? duty_ : 1);
    }

  private:
    double duty_;
    double first_;
    double second_;
};

class Triangle final : public Periodic<Triangle> {
  public:
    Triangle(const Cycle& cycle, double symmetry) : Periodic(cycle), symmetry_(symmetry) {}
    double At(double time) const override {
        const double turn = Turn(time);
        const double height = turn < symmetry_ ? turn / symmetry_ : (1 - turn) / (1 - symmetry_);
        return cycle_.level + cycle_.amplitude * (2 * height - 1);
    }
    double Mean() const override { return cycle_.level; }
    double SteepestSlope() const override {
        return 2 * std::abs(cycle_.amplitude) * cycle_.frequency / std::min(symmetry_, 1 - symmetry_);
    }

  private:
    double symmetry_;
};

class Noise final : public WaveOf<Noise> {
  public:
    Noise(double amplitude, double bandwidth, std::uint32_t seed)
        : amplitude_(amplitude), cellsPerSecond_(2 * bandwidth), seed_(seed) {}
    double At(double time) const override {
        const double place = time * cellsPerSecond_;
        const auto cell = static_cast<std::int64_t>(place);
        const double left = Value(cell);
        return left + (Value(cell + 1) - left) * (place - static_cast<double>(cell));
    }
    double Mean() const override { return 0; }
    double Lowest() const override { return -std::abs(amplitude_); }
    double Highest() const override { return std::abs(amplitude_); }
    double SteepestSlope() const override { return 2 * std::abs(amplitude_) * cellsPerSecond_; }

  private:
    double Value(std::int64_t cell) const {
        auto x = static_cast<std::uint64_t>(cell) + (static_cast<std::uint64_t>(seed_) << 32);
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
        x ^= x >> 31;
        return amplitude_ * (static_cast<double>(x >> 11) * 0x1p-52 - 1);
    }
    double amplitude_;
    double cellsPerSecond_;
    std::uint32_t seed_;
};

class Playback final : public WaveOf<Playback> {
  public:
    Playback(std::vector<float> values, double interval)
        : values_(std::move(values)), rate_(1 / interval), count_(static_cast<double>(values_.size())) {
        const auto [lowest, highest] = std::minmax_element(values_.begin(), values_.end());
        lowest_ = *lowest;
        highest_ = *highest;
        mean_ = std::accumulate(values_.begin(), values_.end(), 0.0) / count_;
        double before = values_.back();
        for (const float value : values_) {
            steepest_ = std::max(steepest_, std::abs(value - before) * rate_);
            before = value;
        }
    }
    double At(double time) const override {
        const double place = Fraction(time * rate_ / count_) * count_;
        const std::size_t i = std::min(static_cast<std::size_t>(place), values_.size() - 1);
        const std::size_t next = i + 1 < values_.size() ? i + 1 : 0;
        return values_[i] + (values_[next] - values_[i]) * (place - static_cast<double>(i));
    }
    double Mean() const override { return mean_; }
    double Lowest() const override { return lowest_; }
    double Highest() const override { return highest_; }
    double SteepestSlope() const override { return steepest_; }

  private:
    std::vector<float> values_;
    double rate_;
    double count_;
    double lowest_ = 0;
    double highest_ = 0;
    double mean_ = 0;
    double steepest_ = 0;
};

} // namespace

std::unique_ptr<Wave> MakeSine(const Cycle& cycle) {
    return std::make_unique<Sine>(cycle);
}

std::unique_ptr<Wave> MakeSquare(const Cycle& cycle, double duty) {
    return std::make_unique<TwoLevels>(cycle, duty, cycle.level + cycle.amplitude,
                                       cycle.level - cycle.amplitude);
}

std::unique_ptr<Wave> MakeTriangle(const Cycle& cycle, double symmetry) {
    return std::make_unique<Triangle>(cycle, symmetry);
}

std::unique_ptr<Wave> MakePulse(const Cycle& cycle, double width) {
    return std::make_unique<TwoLevels>(cycle, width * cycle.frequency, cycle.level + cycle.amplitude,
                                       cycle.level);
}

std::unique_ptr<Wave> MakeNoise(double amplitude, double bandwidth, std::uint32_t seed) {
    return std::make_unique<Noise>(amplitude, bandwidth, seed);
}

std::unique_ptr<Wave> MakePlayback(std::vector<float> values, double interval) {
    return std::make_unique<Playback>(std::move(values), interval);
}

template <class Value> double Signal::Sum(Value value) const {
    double sum = 0;
    for (const Part& part : waves_) {
        if (compensation_ || !part.compensation) {
            sum += value(*part.wave);
        }
    }
    return sum;
}

double Signal::At(double time) const {
    return Sum([time](const Wave& wave) { return wave.At(time); });
}

void Signal::AddTo(std::span<float> out, double start, double interval) const {
    for (const Part& part : waves_) {
        if (compensation_ || !part.compensation) {
            part.wave->AddTo(out, start, interval);
        }
    }
}

double Signal::Mean() const {
    return Sum([](const Wave& wave) { return wave.Mean(); });
}

double Signal::Lowest() const {
    return Sum([](const Wave& wave) { return wave.Lowest(); });
}

double Signal::Highest() const {
    return Sum([](const Wave& wave) { return wave.Highest(); });
}

double Signal::SteepestSlope() const {
    return Sum([](const Wave& wave) { return wave.SteepestSlope(); });
}

double Signal::NextJump(double time) const {
    double next = std::numeric_limits<double>::infinity();
    for (const Part& part : waves_) {
        if (compensation_ || !part.compensation) {
            next = std::min(next, part.wave->NextJump(time));
        }
    }
    return next;
}

} // namespace sim
