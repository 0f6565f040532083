#include "display/draw_plot.h"

#include "display/plot_steps.h"

#include <algorithm>
#include <cmath>

namespace plot_steps {

void SetNormalScale(const Plot& plot) {
    const PlotView& view = plot.view;
    // One spare pixel at the right and the bottom keeps the outer grid lines on the surface.
    plot.canvas.SetScale(view.ViewXMin, view.ViewYMax, view.ViewXMax + view.UnitsPerPixelX,
                         view.ViewYMin - view.UnitsPerPixelY);
}

void SetChannelScale(const Plot& plot, int channel) {
    const PlotView& view = plot.view;
    if (plot.in.Inverted[channel]) {
        plot.canvas.SetScale(view.ViewXMin, view.ViewYMin - view.UnitsPerPixelY,
                             view.ViewXMax + view.UnitsPerPixelX, view.ViewYMax);
    } else {
        SetNormalScale(plot);
    }
}

namespace {

constexpr Colour kGridColour = 0xC00000;
constexpr double kMarkerPixels = 5;

void PlaceGroundLabels(const Plot& plot) {
    for (int channel = plot.in.FirstChan; channel <= plot.in.LastChan; ++channel) {
        plot.companions->GroundLabelLeft(channel, plot.view.ViewXMin);
        plot.companions->GroundLabelVisible(channel, plot.in.Shown[channel]);
    }
}

/// Where the labels are not placed, those of channels that have gone still go.
void HideGroundLabels(const Plot& plot) {
    for (int channel = plot.in.FirstChan; channel <= plot.in.LastChan; ++channel) {
        if (!plot.in.Shown[channel]) {
            plot.companions->GroundLabelVisible(channel, false);
        }
    }
}

/// The vertical lines are numbered from the left end of the record. Only those that the view can show are
/// drawn: at a great expansion that is a few of many thousand.
void DrawVerticalGrid(const Plot& plot, double count) {
    const DrawPlotArguments& in = plot.in;
    const double pitch = static_cast<double>(in.XMax - in.XMin) / in.HorizDivs;
    const auto number = [&](double x) { return (x - in.XMin) * in.XExpansion / pitch; };
    // One beside each edge may still reach into the view, since a line has a width.
    const double first = std::max(0.0, std::ceil(number(plot.view.ViewXMin)) - 1);
    const double last = std::min(count, std::floor(number(plot.view.ViewXMax)) + 1);
    for (double i = first; i <= last; ++i) {
        const double x = i * pitch / in.XExpansion + in.XMin;
        plot.canvas.Line(x, in.YMax, x, in.YMin);
    }
}

void DrawGrid(const Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    plot.canvas.SetForeColor(kGridColour);
    plot.canvas.SetDrawStyle(PenStyle::Dotted);
    for (int i = -in.HalfVertDivs; i <= in.HalfVertDivs; ++i) {
        const double y = static_cast<double>(plot.span()) * i / (2.0 * in.HalfVertDivs);
        plot.canvas.Line(in.XMin, y, in.XMax, y);
    }
    const double divisions = in.HorizDivs * in.XExpansion;
    const double count = std::nearbyint(divisions);
    DrawVerticalGrid(plot, count);
    if (in.IsSpectrum || plot.companions == nullptr) {
        return;
    }
    // With a broken number of divisions there is no line at the end of the record, and the labels stay.
    if (count == divisions && count >= 0) {
        PlaceGroundLabels(plot);
    } else {
        HideGroundLabels(plot);
    }
}

/// A small box open to the left, whose stem points at the right edge of the plot.
void DrawTriggerMarker(const Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    if (in.TriggerLevel < -100 || in.TriggerLevel > 100) {
        return;
    }
    Canvas& canvas = plot.canvas;
    const double y = in.TriggerLevel / 100.0 * 0.5 * plot.span();
    const double x = plot.view.ViewXMax - plot.view.UnitsPerPixelX;
    if (plot.companions != nullptr) {
        plot.companions->TriggerLine(0, y, x, y);
    }
    if (in.YMin <= y && y <= in.YMax) {
        const double a = kMarkerPixels * plot.pixelX;
        const double b = kMarkerPixels * plot.pixelY;
        canvas.SetForeColor(kWhite);
        canvas.Line(x - a, y, x, y);
        canvas.Line(x - a, y + b, x - a, y - b);
        canvas.Line(x - 2 * a, y - b, x - a, y - b);
        canvas.Line(x - 2 * a, y + b, x - a, y + b);
        canvas.PSet(x, y);
    }
}

/// A triangle that stands on its tip on the lower edge.
void DrawPreTriggerMarker(const Plot& plot) {
    if (plot.in.TriggerMarkOn < 0) {
        return;
    }
    static const QString blank = QStringLiteral(" ");
    static const QString leftward = QStringLiteral("<");
    Canvas& canvas = plot.canvas;
    const double x = plot.in.TriggerPositionX;
    const double y = plot.view.ViewYMin;
    const double a = kMarkerPixels * plot.pixelX;
    const double b = kMarkerPixels * plot.pixelY;
    canvas.SetForeColor(kWhite);
    canvas.Line(x, y, x + a, y + b);
    canvas.Line(x, y, x - a, y + b);
    canvas.Line(x - a, y + b, x + a, y + b);
    if (plot.in.DelayFlag) {
        canvas.SetCurrent(x - std::abs(canvas.TextWidth(blank)),
                          y + 1.2 * std::abs(canvas.TextHeight(blank)));
        canvas.Print(leftward);
    }
}

PlotView ViewOf(const DrawPlotArguments& in, double width, double height) {
    return MakePlotView(width, height, {in.XMin, in.XMax, in.HorizZoom * in.XExpansion, in.HorizPan},
                        {in.YMin, in.YMax, in.VertZoom, in.VertPan});
}

} // namespace

} // namespace plot_steps

void DrawPlot(const DrawPlotArguments& in, Canvas& canvas, PlotCompanions* companions) {
    using namespace plot_steps;
    const bool showDots =
        in.DotsRequested && (in.DotsHorizZoom <= in.HorizZoom || in.DotsVertZoom <= in.VertZoom);
    canvas.Clear();
    canvas.SetDrawModeCopy();
    canvas.SetDrawWidth(1);
    if (std::abs(canvas.ScaleHeight()) <= 1 || std::abs(canvas.ScaleWidth()) <= 1) {
        return; // a minimised canvas
    }
    canvas.SetPixelScale();
    Plot plot{in, canvas, companions, ViewOf(in, canvas.ScaleWidth(), std::abs(canvas.ScaleHeight())),
              0,  0,      {},         {}};
    const PlotView& view = plot.view;
    if (!view.Usable()) {
        return; // the figures of the last plot stay
    }
    in.ViewXMin = view.ViewXMin;
    in.ViewXMax = view.ViewXMax;
    if (view.TooMuchZoom()) {
        static const QString warning =
            QStringLiteral("TOO MUCH ZOOM (reduce timebase and/or horizontal zoom) !");
        canvas.SetCurrent(0, 0);
        canvas.Print(warning);
        if (!in.IsSpectrum && companions != nullptr) {
            HideGroundLabels(plot);
        }
        return;
    }
    in.ViewYMin = view.ViewYMin;
    in.ViewYMax = view.ViewYMax;
    plot.pixelX = view.UnitsPerPixelX * canvas.PixelRatio();
    plot.pixelY = view.UnitsPerPixelY * canvas.PixelRatio();
    SetNormalScale(plot);
    DrawGrid(plot);
    FindCursors(plot);
    canvas.SetDrawStyle(PenStyle::Solid);
    DrawTriggerMarker(plot);
    DrawPreTriggerMarker(plot);
    DrawChannels(plot, showDots);
    canvas.SetForeColor(kWhite);
    canvas.SetDrawWidth(1);
    SetNormalScale(plot);
    DrawCursors(plot);
}
