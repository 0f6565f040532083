#pragma once

#include <cstdint>

/// Where the run loop stands between two ticks. The timebase and the trigger write here too: they abandon
/// an acquisition or hasten the next probe when they change the instrument under it.
struct AcquisitionState {
    bool RunTimerBusy = false; ///< a tick is in progress, perhaps waiting in its own yield
    bool Acquiring = false;    ///< an acquisition was started and not yet read
    bool SawTrigger = false;   ///< this acquisition has passed its trigger or been read
    bool ProbeDone = false;    ///< this pass ended in an auto-trigger probe: there is nothing to read
    bool FreeRunning = true;   ///< the instrument does not wait for a trigger
    int WaitTicks = 0;         ///< 250 ms ticks without a trigger
    int AutoTicks = 0;         ///< 250 ms ticks since the last probe, held at kProbeTicks
    int PassesPerTick = 1;
    int PassCount = 0;           ///< ticks that found the instrument idle, begins anew at kPassCountEnd
    std::uint32_t TickCount = 0; ///< all ticks; wraps
    int PlotCount = 0;           ///< plots since the last 250 ms tick
    bool OnceMode = false;       ///< single shot armed
    int RollPosition = 0;        ///< samples of the roll record read so far
    float RISPosition = 0;       ///< where in the 20-position gap the last RIS pass fell
    std::int32_t RISStatus = -1; ///< of the last RIS pass; -1: not valid
};

inline constexpr int kProbeTicks = 20;     ///< 5 s of free running before the next probe
inline constexpr int kProbeSoonTicks = 19; ///< a change asks for a probe within one 250 ms tick
inline constexpr int kReleaseTicks = 5;    ///< more ticks than this without a trigger release auto mode
inline constexpr int kRISPassesPerTick = 5;
/// Ten times this fits into 32 bits. A power of two, where the demonstration's traces come round.
inline constexpr int kPassCountEnd = 1 << 27;
