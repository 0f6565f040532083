#include "display/draw_plot.h"

#include "display/column_rule.h"
#include "display/plot_view.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kGridColour = 0xC00000;
constexpr Colour kStaleMask = 0x808080;
constexpr double kMarkerPixels = 5;
constexpr double kCrossingPixels = 4;
constexpr double kReadoutGapPixels = 3;

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

/// The samples that are drawn, the same for every channel.
struct Samples {
    int first;
    int last;
    int step;
    ColumnRule rule;
    int count() const { return (last - first) / step + 1; }
};

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

void PlaceGroundLabels(const Plot& plot) {
    for (int channel = plot.in.FirstChan; channel <= plot.in.LastChan; ++channel) {
        plot.companions->GroundLabelLeft(channel, plot.view.ViewXMin);
        plot.companions->GroundLabelVisible(channel, plot.in.Shown[channel]);
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
    // With a broken number of divisions there is no line at the end of the record, and the labels stay.
    if (count == divisions && count >= 0 && !in.IsSpectrum && plot.companions != nullptr) {
        PlaceGroundLabels(plot);
    }
}

void FindCursors(Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    for (int i = 0; i < Record::kCursors; ++i) {
        const double position = in.VertCursorPos[i];
        // Ties to even, as whoever reads the sample at a cursor does.
        plot.cursorX[i] = std::nearbyint(in.IsSpectrum ? position : position / in.SamplePeriod);
        plot.cursorY[i] = std::nearbyint(in.HorizCursorPos[i]);
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

void PlaceGroundLabel(const Plot& plot, int channel) {
    const DrawPlotArguments& in = plot.in;
    PlotCompanions& labels = *plot.companions;
    double top = plot.span() * (static_cast<double>(in.GroundPercent[channel]) / 100) * 0.5;
    if (channel < in.FirstMathChan) {
        const bool inverted = in.Inverted[channel];
        const auto letter = static_cast<char16_t>((inverted ? u'a' : u'A') + channel - 1);
        labels.GroundLabelCaption(channel, QStringView(&letter, 1));
        if (inverted) {
            top -= labels.GroundLabelHeight(channel);
        }
    }
    labels.GroundLabelTop(channel, top);
    labels.GroundLabelColour(channel, in.Colours[channel]);
    labels.GroundLabelVisible(channel, in.Shown[channel]);
}

void DrawTrace(const Plot& plot, int channel, const Samples& samples) {
    constexpr int kBatch = 1024;
    CanvasPoint points[kBatch]; // not set: each is written before it is read
    const float* data = plot.in.Data.row(channel);
    const int total = samples.count();
    for (int done = 0; done < total;) {
        int kept = 0;
        for (const int end = std::min(total, done + kBatch); done < end; ++done) {
            const int x = samples.first + done * samples.step;
            points[kept] = {static_cast<double>(x), data[x * ChannelTable::stride()]};
            kept += samples.rule.Keeps(channel, done);
        }
        plot.canvas.LinesTo(points, kept);
    }
}

void DrawDots(const Plot& plot, int channel, const Samples& samples) {
    const DrawPlotArguments& in = plot.in;
    for (int x = samples.first; x <= samples.last; x += samples.step) {
        const double v = in.Data(channel, x);
        if (in.YMin <= v && v <= in.YMax && in.XMin <= x && x <= in.XMax) {
            plot.canvas.FillBox(x - plot.pixelX, v + plot.pixelY, x + plot.pixelX, v - plot.pixelY);
        }
    }
}

/// The samples that the view shows, with those of them that make the traces.
void FindSamples(const Plot& plot, Samples& samples) {
    const DrawPlotArguments& in = plot.in;
    const SampleSpan span = VisibleSamples(plot.view.ViewXMin, plot.view.ViewXMax, in.XMin, in.XMax);
    const double thinStep = std::clamp(std::round(plot.view.UnitsPerPixelX), 1.0, 1e6);
    samples.first = std::max(span.first, 0);
    samples.last = std::min(span.last, in.Data.positions() - 1);
    samples.step = in.Thin ? static_cast<int>(thinStep) : 1;
    samples.rule.Apply(in.Data, samples.first, samples.last, samples.step, plot.canvas.WidthToPixels(1.0));
}

void DrawChannel(const Plot& plot, int channel, const Samples& samples, bool showDots) {
    const DrawPlotArguments& in = plot.in;
    Canvas& canvas = plot.canvas;
    canvas.SetForeColor(in.Colours[channel]);
    SetChannelScale(plot, channel);
    if (!in.IsSpectrum && plot.companions != nullptr) {
        PlaceGroundLabel(plot, channel);
    }
    if (samples.count() < 1) {
        return;
    }
    canvas.SetCurrent(samples.first, in.Data(channel, samples.first));
    canvas.SetDrawWidth(in.IsSpectrum ? 1 : 2);
    canvas.SetForeColor(in.Stale ? in.Colours[channel] & kStaleMask : in.Colours[channel]);
    DrawTrace(plot, channel, samples);
    canvas.SetDrawWidth(1);
    canvas.SetForeColor(kWhite);
    if (!in.IsSpectrum && showDots) {
        DrawDots(plot, channel, samples);
    }
}

bool AnyShown(const DrawPlotArguments& in) {
    bool any = false;
    for (int channel = in.FirstChan; channel <= in.LastChan; ++channel) {
        any |= in.Shown[channel];
    }
    return any;
}

void DrawChannels(const Plot& plot, bool showDots) {
    if (!AnyShown(plot.in)) {
        return;
    }
    Samples samples;
    FindSamples(plot, samples);
    for (int channel = plot.in.FirstChan; channel <= plot.in.LastChan; ++channel) {
        if (plot.in.Shown[channel]) {
            DrawChannel(plot, channel, samples, showDots);
        }
    }
}

struct Readout {
    const QString* text = nullptr;
    double width = 0; ///< user units
};
using Readouts = std::array<Readout, Record::kCursors>;

Readout ReadoutOf(const Plot& plot, int cursor) {
    const DrawPlotArguments& in = plot.in;
    const int next = (cursor + 1) % Record::kCursors;
    const QString& text = in.VertCursorEn[next] ? in.Readouts.Text(cursor, in.VertCursorPos[cursor], next,
                                                                   in.VertCursorPos[next])
                                                : in.Readouts.Text(cursor, in.VertCursorPos[cursor]);
    return {&text, plot.canvas.TextWidth(text)};
}

Readouts DrawCursors(const Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    Readouts readouts;
    for (int i = 0; i < Record::kCursors; ++i) {
        if (in.VertCursorEn[i]) {
            plot.canvas.Line(plot.cursorX[i], in.YMax, plot.cursorX[i], in.YMin);
            readouts[static_cast<std::size_t>(i)] = ReadoutOf(plot, i);
        }
        if (in.HorizCursorEn[i]) {
            plot.canvas.Line(0, plot.cursorY[i], in.XMax, plot.cursorY[i]);
        }
    }
    return readouts;
}

void PrintReadouts(const Plot& plot, const Readouts& readouts) {
    static const QString blank = QStringLiteral(" ");
    const double gap = kReadoutGapPixels * plot.pixelX;
    double y = plot.view.ViewYMax;
    for (int i = 0; i < Record::kCursors; ++i) {
        const Readout& readout = readouts[static_cast<std::size_t>(i)];
        if (readout.text == nullptr) {
            continue;
        }
        double x = plot.cursorX[i] + gap;
        if (x + readout.width > plot.view.ViewXMax) {
            x = plot.cursorX[i] - gap - readout.width; // near the right edge it stands left of its cursor
        }
        plot.canvas.SetCurrent(x, y);
        plot.canvas.Print(*readout.text);
        y -= std::abs(plot.canvas.TextHeight(blank));
    }
}

void MarkCrossings(const Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    const double half = kCrossingPixels * plot.pixelX;
    for (int i = 0; i < Record::kCursors; ++i) {
        const double x = plot.cursorX[i];
        const bool inData = x >= 0 && x < in.Data.positions(); // false for no number, too
        if (!in.VertCursorEn[i] || !inData) {
            continue;
        }
        for (int channel = in.FirstChan; channel <= in.LastChan; ++channel) {
            if (in.Shown[channel]) {
                SetChannelScale(plot, channel);
                const double v = in.Data(channel, static_cast<int>(x));
                plot.canvas.FillBox(x - half, v, x + half, v);
                SetNormalScale(plot);
            }
        }
    }
}

PlotView ViewOf(const DrawPlotArguments& in, double width, double height) {
    return MakePlotView(width, height, {in.XMin, in.XMax, in.HorizZoom * in.XExpansion, in.HorizPan},
                        {in.YMin, in.YMax, in.VertZoom, in.VertPan});
}

} // namespace

void DrawPlot(const DrawPlotArguments& in, Canvas& canvas, PlotCompanions* companions) {
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
    const Readouts readouts = DrawCursors(plot);
    PrintReadouts(plot, readouts);
    MarkCrossings(plot);
}
