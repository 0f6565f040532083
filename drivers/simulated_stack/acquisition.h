#pragma once

#include "trigger_search.h"

#include <cstdint>

namespace sim {

/// The sample clock that the stack's modules share.
struct Timebase {
    std::int32_t megahertz = 50;
    std::int32_t decimation = 1;
    bool ris = false;

    double Interval() const { return ris ? 20e-9 : decimation / (megahertz * 1e6); }
    /// What the program calls the sample period: in RIS the grid that passes are put on.
    double Period() const { return ris ? 1e-9 : Interval(); }
};

/// When a record of the stack is armed, triggered and full. Knows times, not samples.
class Acquisition {
  public:
    static constexpr int kDepth = 3000;
    static constexpr int kRISSamples = 150;

    /// risPosition: 0 up to 20, where in the gap a RIS pass is to fall.
    void Arm(double now, const Timebase& timebase, const TriggerSettings& settings, double risPosition);
    /// Lets a waiting acquisition go on without its trigger.
    void Release(double now);
    /// Ends it where it stands.
    void Stop(double now);
    /// Looks for the trigger at the source's comparator (none: it never fires). True if the start of the
    /// record has moved, so that what was converted before is not part of it.
    bool Update(double now, const Module* source, double longestLag);

    bool Running() const { return state_ == State::Waiting || state_ == State::Capturing; }
    bool Triggered() const { return triggered_; }
    bool Complete() const { return state_ == State::Complete; }
    bool IsRIS() const { return timebase_.ris; }
    double RISPosition() const { return risPosition_; }

    double Start() const { return start_; }
    double Interval() const { return timebase_.Interval(); }
    /// Samples of the record so far; a memory that waits for its trigger holds no more than lie before it.
    int Available(double now) const;

  private:
    enum class State { Idle, Waiting, Capturing, Complete, Stopped };

    void TriggerAt(double time);

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
    TriggerSearch search_;
};

} // namespace sim
