#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace sim {

/// A voltage as a function of time. Times are seconds from the driver's clock and never negative.
class Wave {
  public:
    virtual ~Wave() = default;

    virtual double At(double time) const = 0;
    /// Adds the values at start, start + interval, ... to out.
    virtual void AddTo(std::span<float> out, double start, double interval) const = 0;

    // What a trigger needs to know, so that it can skip ahead.
    virtual double Mean() const = 0;
    virtual double Lowest() const = 0;
    virtual double Highest() const = 0;
    virtual double SteepestSlope() const = 0; ///< volts a second between jumps
    virtual double NextJump(double) const { return std::numeric_limits<double>::infinity(); }
};

/// frequency above 0; amplitude is half of peak to peak; phase in turns 0..1.
struct Cycle {
    double frequency = 1000;
    double amplitude = 1;
    double level = 0;
    double phase = 0;
};

std::unique_ptr<Wave> MakeSine(const Cycle& cycle);
/// duty: the part of a period above the level, between 0 and 1.
std::unique_ptr<Wave> MakeSquare(const Cycle& cycle, double duty);
/// symmetry: the part of a period that rises, between 0 and 1.
std::unique_ptr<Wave> MakeTriangle(const Cycle& cycle, double symmetry);
/// From level up by the whole amplitude for width seconds at the start of each period.
std::unique_ptr<Wave> MakePulse(const Cycle& cycle, double width);
/// Evenly spread within +-amplitude, changing with the bandwidth; a function of time all the same, so that
/// a trigger and a record see one and the same noise.
std::unique_ptr<Wave> MakeNoise(double amplitude, double bandwidth, std::uint32_t seed);
/// The values in turn, interval seconds apart, over and over, joined by straight lines. At least one value.
std::unique_ptr<Wave> MakePlayback(std::vector<float> values, double interval);

/// The sum of waves at a module's input. Some come from the probe compensation output and are there only
/// while that is on.
class Signal {
  public:
    void Add(std::unique_ptr<Wave> wave) { waves_.push_back({std::move(wave), false}); }
    void AddCompensation(std::unique_ptr<Wave> wave) { waves_.push_back({std::move(wave), true}); }
    void SwitchCompensation(bool on) { compensation_ = on; }

    double At(double time) const;
    void AddTo(std::span<float> out, double start, double interval) const;
    double Mean() const;
    double Lowest() const;
    double Highest() const;
    double SteepestSlope() const;
    double NextJump(double time) const;

  private:
    struct Part {
        std::unique_ptr<Wave> wave;
        bool compensation;
    };
    template <class Value> double Sum(Value value) const;

    std::vector<Part> waves_;
    bool compensation_ = false;
};

} // namespace sim
