#include "display/column_rule.h"
#include "display/plot_steps.h"

#include <algorithm>
#include <cmath>

namespace plot_steps {

namespace {

constexpr Colour kStaleMask = 0x808080;

/// The samples that are drawn, the same for every channel.
struct Samples {
    int first;
    int last;
    int step;
    ColumnRule rule;
    int count() const { return (last - first) / step + 1; }
};

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

} // namespace

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

} // namespace plot_steps
