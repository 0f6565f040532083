#pragma once

#include <cstdint>

namespace sim {

/// A module's sample clock. As it comes out of a reset it has values that no setting of a program has, so
/// that a program which forgets to set it has wrong times and not right ones by chance.
struct Timebase {
    std::int32_t megahertz = 40;
    std::int32_t decimation = 3;
    bool ris = true;

    double Interval() const { return decimation / (megahertz * 1e6); }
    /// What the program calls the sample period: in RIS the grid that passes are put on, whatever the clock.
    double Period() const { return ris ? 1e-9 : Interval(); }
};

/// What a module's comparator fires on and where in the record that comes to lie; odd after a reset too.
struct TriggerSettings {
    enum Type { None = -1, LessThan, GreaterThan, FallingEdge, RisingEdge };
    std::int32_t type = None;
    float thresholdPercent = 97;
    float preTriggerFraction = 0.12345F;
    float delay = 1.2345e-3F; ///< seconds
    bool normal = true;
    bool isSource = false;
};

/// When a module's record is armed, triggered and full, by the module's own clock. Knows times, not samples.
class Acquisition {
  public:
    static constexpr int kDepth = 3000;
    static constexpr int kRISSamples = 150;

    /// Waits for Fire, unless free: then the record begins at once. risPosition: 0 up to 20, where in the
    /// gap a RIS pass is to fall. Depth and delay are those of now.
    void Arm(double now, const Timebase& timebase, const TriggerSettings& settings, bool free,
             double risPosition);
    /// The trigger came. True if the start of the record has moved, so that what was converted before is not
    /// part of it.
    bool Fire(double time);
    /// Lets a waiting acquisition go on without its trigger. True as of Fire.
    bool Release(double now);
    /// Ends it where it stands.
    void Stop(double now);
    void Update(double now);

    bool Waiting() const { return state_ == State::Waiting; }
    bool Running() const { return state_ == State::Waiting || state_ == State::Capturing; }
    bool Triggered() const { return triggered_; }
    bool Complete() const { return state_ == State::Complete; }
    bool IsRIS() const { return timebase_.ris; }
    double RISPosition() const { return risPosition_; }

    /// From when on the memory before the trigger is full.
    double Ready() const { return armed_ + Lead(); }
    double Start() const { return start_; }
    double Interval() const { return timebase_.Interval(); }
    double Period() const { return timebase_.Period(); }
    /// Samples of the record so far; a memory that waits for its trigger holds no more than lie before it.
    int Available(double now) const;

  private:
    enum class State { Idle, Waiting, Capturing, Complete, Stopped };

    int Depth() const { return timebase_.ris ? kRISSamples : kDepth; }
    double Lead() const; ///< seconds of the record that lie before the trigger

    Timebase timebase_;
    State state_ = State::Idle;
    bool triggered_ = false;
    double risPosition_ = 0;
    double armed_ = 0;
    double delay_ = 0;
    int before_ = 0; ///< positions of the record that lie before the trigger
    double start_ = 0;
    double end_ = 0;
    double stopped_ = 0;
};

} // namespace sim
