#pragma once

/// One axis of a plot: the plot limits, how far it is stretched, and where the view stands in it.
struct PlotAxis {
    int min = 0;
    int max = 0;
    double zoom = 1; ///< on the horizontal axis the product of zoom and expansion
    double pan = 0;
};

/// The part of the plot that a canvas shows, in plot units.
struct PlotView {
    double UnitsPerPixelX = 0;
    double UnitsPerPixelY = 0;
    double ViewXMin = 0;
    double ViewXMax = 0;
    double ViewYMin = 0;
    double ViewYMax = 0;

    /// Fewer than two units across leave nothing to draw a trace with.
    bool TooMuchZoom() const { return ViewXMax - ViewXMin < 2.0; }
    /// False when a zoom of zero or no number at all went in.
    bool Usable() const;
};

/// width, height: the canvas in raster pixels. A horizontal pan of 0 shows the left end of the plot and 1
/// the right end; a vertical pan of 0 shows the middle.
PlotView MakePlotView(double width, double height, const PlotAxis& horizontal, const PlotAxis& vertical);

/// The first and last sample to draw, one beyond each edge of the view, always inside min..max.
struct SampleSpan {
    int first = 0;
    int last = 0;
};
SampleSpan VisibleSamples(double viewMin, double viewMax, int min, int max);
