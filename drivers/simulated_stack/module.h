#pragma once

#include "description.h"

#include <array>

namespace sim {

/// One channel: the front end from the probe's tip to the converter, and the record memory behind it.
class Module {
  public:
    static constexpr int kMemory = 3073;

    Module(ModuleDescription description, std::uint32_t seed);

    const ModuleDescription& Description() const { return description_; }

    /// To a state that no program sets: the input grounded, the trace at the upper end, the compensation
    /// output on. What the program forgets to set shows.
    void Reset();
    void SetUpFrontEnd(int range, bool dc, bool gnd);
    void SetOffset(float percent);
    void SetCompensation(bool on);

    // The analogue side, in ADC steps, before clipping
    double StepsAt(double time) const;
    double SteepestSlope() const; ///< steps a second between jumps
    double LowestSteps() const;
    double HighestSteps() const;
    double NextJump(double time) const;

    // The record
    void BeginRecord() { rendered_ = 0; }
    int Rendered() const { return rendered_; }
    /// Converts up to position end the samples at start, start + interval, ... that are not there yet.
    void Render(double start, double interval, int end);
    /// Copies count samples from start on; some of them are no number if the module is so described.
    void Read(float* out, int start, int count);

  private:
    void UpdateScale();
    float NoiseSteps();

    ModuleDescription description_;
    int range_ = 0;
    bool dc_ = true;
    bool gnd_ = false;
    float offsetPercent_ = 0;
    double gain_ = 0;  ///< steps for each volt at the probe's tip; 0 with the input grounded
    double shift_ = 0; ///< steps at 0 V
    std::uint32_t noiseState_;
    std::array<float, kMemory> memory_{};
    int rendered_ = 0;
    double bad_ = 0; ///< of the next reading that is no number, what is there already
    std::uint32_t badCount_ = 0;
};

} // namespace sim
