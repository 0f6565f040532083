#pragma once

#include "display/draw_plot.h"
#include "display/plot_view.h"

/// The steps of DrawPlot, for the sources that it consists of.
namespace plot_steps {

inline constexpr Colour kWhite = 0xFFFFFF;

/// What the steps of one plot share.
struct Plot {
    const DrawPlotArguments& in;
    Canvas& canvas;
    PlotCompanions* companions; ///< null for a spectrum
    PlotView view;
    double pixelX = 0; ///< one pixel of the face in plot units
    double pixelY = 0;
    CursorPositions cursorX;
    CursorPositions cursorY;

    int span() const { return in.YMax - in.YMin; }
};

/// The plot's own scale, and that of a channel, which may stand on its head.
void SetNormalScale(const Plot& plot);
void SetChannelScale(const Plot& plot, int channel);

/// The traces of all channels that are shown, with their ground labels, and perhaps the dots of the samples.
void DrawChannels(const Plot& plot, bool showDots);

/// Where the cursors stand, on whole samples and steps.
void FindCursors(Plot& plot);
/// The lines of the cursors, their texts, and ticks where they cross a trace.
void DrawCursors(const Plot& plot);

} // namespace plot_steps
