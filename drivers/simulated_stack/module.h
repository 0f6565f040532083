#pragma once

#include "description.h"

#include <array>

namespace sim {

/// What AcquisitionStart arms a module's comparator for.
struct TriggerSettings {
    enum Type { LessThan, GreaterThan, FallingEdge, RisingEdge };
    std::int32_t type = RisingEdge;
    float thresholdPercent = 0;
    float preTriggerFraction = 0.5F;
    float delay = 0; ///< seconds
    bool normal = false;
    bool isSource = false;
};

/// One channel: the front end from the probe's tip to the converter, and the record memory behind it.
class Module {
  public:
    static constexpr int kMemory = 3073;

    Module(ModuleDescription description, std::uint32_t seed);

    const ModuleDescription& Description() const { return description_; }

    bool open = false;
    bool drivesLine = false;
    TriggerSettings trigger;

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
    const float* Memory() const { return memory_.data(); }

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
};

} // namespace sim
