#include "display/plot_steps.h"

#include <array>
#include <cmath>

namespace plot_steps {

namespace {

constexpr double kCrossingPixels = 4;
constexpr double kReadoutGapPixels = 3;

struct Readout {
    const QString* text = nullptr;
    double width = 0; ///< user units
};
using Readouts = std::array<Readout, kCursors>;

Readout ReadoutOf(const Plot& plot, int cursor) {
    const DrawPlotArguments& in = plot.in;
    const int next = (cursor + 1) % kCursors;
    const QString& text = in.VertCursorEn[next] ? in.Readouts.Text(cursor, in.VertCursorPos[cursor], next,
                                                                   in.VertCursorPos[next])
                                                : in.Readouts.Text(cursor, in.VertCursorPos[cursor]);
    return {&text, plot.canvas.TextWidth(text)};
}

Readouts DrawLines(const Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    Readouts readouts;
    for (int i = 0; i < kCursors; ++i) {
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
    for (int i = 0; i < kCursors; ++i) {
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
    for (int i = 0; i < kCursors; ++i) {
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

} // namespace

void FindCursors(Plot& plot) {
    const DrawPlotArguments& in = plot.in;
    for (int i = 0; i < kCursors; ++i) {
        const double position = in.VertCursorPos[i];
        // Ties to even, as whoever reads the sample at a cursor does.
        plot.cursorX[i] = std::nearbyint(in.IsSpectrum ? position : position / in.SamplePeriod);
        plot.cursorY[i] = std::nearbyint(in.HorizCursorPos[i]);
    }
}

void DrawCursors(const Plot& plot) {
    PrintReadouts(plot, DrawLines(plot));
    MarkCrossings(plot);
}

} // namespace plot_steps
