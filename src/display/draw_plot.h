#pragma once

#include "display/canvas.h"
#include "display/cursor_readouts.h"
#include "frame/record/samples.h"

using CursorPositions = PerCursor<double>;
using CursorSwitches = PerCursor<bool>;

inline constexpr int kNoTriggerLevel = 101; ///< percent, and so beyond the plot

/// What one plot is made of, in abstract plot units: the plotter knows neither volts nor seconds.
struct DrawPlotArguments {
    const ChannelTable& Data; ///< by channel and position
    int FirstChan = 1;
    int LastChan = kAllChannels;
    int FirstMathChan = kScopeChannels + 1;
    const PerChannel<Colour>& Colours;
    const bool& Stale; ///< the data no longer fits the settings: dimmed traces
    const PerChannel<bool>& Shown;
    const PerChannel<bool>& Inverted;
    int YMax = 0; ///< plot limits
    int YMin = 0;
    double VertPan = 0;                     ///< 0 shows the middle
    const PerChannel<float>& GroundPercent; ///< ground position, percent of the half span
    double VertZoom = 1;
    int XMin = 0;
    int XMax = 0;
    double HorizPan = 0; ///< 0 shows the left end, 1 the right end
    double HorizZoom = 1;
    double XExpansion = 1; ///< stretch of the timebase, on top of the zoom
    int HalfVertDivs = 10;
    int HorizDivs = 0;
    double SamplePeriod = 0;              ///< seconds; not read for a spectrum
    const CursorPositions& VertCursorPos; ///< seconds; positions as they stand for a spectrum
    const CursorSwitches& VertCursorEn;
    const CursorPositions& HorizCursorPos; ///< plot units
    const CursorSwitches& HorizCursorEn;
    double& ViewXMin; ///< outputs: what the canvas shows
    double& ViewXMax;
    double& ViewYMin;
    double& ViewYMax;
    bool DotsRequested = false;
    int DotsHorizZoom = -1; ///< from which zoom on the dots appear, on either axis
    int DotsVertZoom = -1;
    int TriggerLevel = kNoTriggerLevel; ///< percent; beyond -100..100 draws no marker
    int TriggerPositionX = -1;          ///< sample index
    int TriggerMarkOn = -1;             ///< below 0 draws no marker
    bool DelayFlag = false;             ///< the trigger lies to the left of the record
    bool Thin = false;                  ///< draw one sample a pixel
    bool IsSpectrum = false;
    CursorReadouts& Readouts;
};

/// The one trace plotter, of the main, the large and the spectrum canvas. companions is null for a canvas
/// that has none.
void DrawPlot(const DrawPlotArguments& plot, Canvas& canvas, PlotCompanions* companions);
