#pragma once

#include "display/draw_plot.h"
#include "frame/record/record.h"

/// A time display as the program starts with it, whose every argument a test may change.
struct PlotScene {
    PlotScene();

    Record record;
    double VertPan = 0;
    double VertZoom = 1;
    double HorizPan = 0;
    double HorizZoom = 1;
    double XExpansion = 1;
    int HorizDivs = 30;
    double SamplePeriod = 1e-6;
    bool DotsRequested = false;
    int TriggerLevel = 101;
    int TriggerPositionX = 1500;
    int TriggerMarkOn = -1;
    bool DelayFlag = false;
    bool Thin = false;
    CursorReadouts readouts;

    DrawPlotArguments Time();
    DrawPlotArguments Spectrum();
    /// Everything at once: six noisy traces, markers, three time and three level cursors.
    void FillWithEverything();

  private:
    PerChannel<bool> noInvert_;
    PerChannel<float> noGround_;
    CursorSwitches noCursors_;
};

/// A repeatable value in -1..1.
class Noise {
  public:
    explicit Noise(std::uint32_t seed) : state_(seed) {}
    double Next() {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<double>(state_ >> 8) / (1 << 23) - 1.0;
    }
    double In(double low, double high) { return low + (Next() + 1) / 2 * (high - low); }
    int Index(int count) { return std::min(count - 1, static_cast<int>(In(0, count))); }

  private:
    std::uint32_t state_;
};
