#include "controls/colour.h"
#include "display/plot_scene.h"
#include "display/raster_canvas.h"
#include "display/widget_frame.h"
#include "frame/record/record.h"

#include <QPainter>
#include <QPolygonF>
#include <benchmark/benchmark.h>
#include <cstring>

namespace {

PlotScene Scene() {
    PlotScene scene;
    scene.FillWithEverything();
    return scene;
}

QSize SizeOf(const benchmark::State& state) {
    return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

/// One frame: six noisy traces, grid, markers, three time and three level cursors with their texts.
void Frame(benchmark::State& state) {
    PlotScene scene = Scene();
    const QSize size = SizeOf(state);
    RasterCanvas canvas(size.width(), size.height());
    const DrawPlotArguments arguments = scene.Time();
    for (auto _ : state) {
        DrawPlot(arguments, canvas, nullptr);
        benchmark::DoNotOptimize(canvas.Image().constBits());
        benchmark::ClobberMemory();
    }
}

/// The frame, and its copy to where the screen's picture is kept.
void FrameAndCopy(benchmark::State& state) {
    PlotScene scene = Scene();
    const QSize size = SizeOf(state);
    RasterCanvas canvas(size.width(), size.height());
    QImage screen(size, QImage::Format_RGB32);
    const DrawPlotArguments arguments = scene.Time();
    for (auto _ : state) {
        DrawPlot(arguments, canvas, nullptr);
        const QImage& picture = canvas.Image();
        for (int y = 0; y < size.height(); ++y) {
            std::memcpy(screen.scanLine(y), picture.constScanLine(y),
                        static_cast<std::size_t>(size.width()) * 4);
        }
        benchmark::ClobberMemory();
    }
}

/// What no picture of that size can be had below.
void ClearAndCopy(benchmark::State& state) {
    QImage picture(SizeOf(state), QImage::Format_RGB32);
    QImage screen(SizeOf(state), QImage::Format_RGB32);
    screen.fill(Qt::black);
    for (auto _ : state) {
        picture.fill(Qt::black);
        benchmark::ClobberMemory();
        std::memcpy(screen.bits(), picture.constBits(), static_cast<std::size_t>(picture.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}

void PlottingWidget(benchmark::State& state) {
    const PlotScene scene = Scene();
    WidgetFrame frame(scene.record, SizeOf(state));
    for (auto _ : state) {
        frame.Draw();
    }
}

/// Only the traces, by the toolkit.
void DrawPolyline(benchmark::State& state) {
    const PlotScene scene = Scene();
    QImage picture(SizeOf(state), QImage::Format_RGB32);
    QPolygonF points(kSampleDepth);
    for (auto _ : state) {
        picture.fill(Qt::black);
        QPainter painter(&picture);
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            for (int i = 0; i < kSampleDepth; ++i) {
                points[i] = {i * (picture.width() - 1.0) / (kSampleDepth - 1),
                             (126 - scene.record.SampleData(channel, i)) * picture.height() / 252.0};
            }
            painter.setPen(QPen(ToQColor(scene.record.ChannelColour[channel]), 2));
            painter.drawPolyline(points);
        }
    }
}

/// Parts of a frame, to see where its time goes.
template <class Change> void Part(benchmark::State& state, Change change) {
    PlotScene scene = Scene();
    change(scene);
    const QSize size = SizeOf(state);
    RasterCanvas canvas(size.width(), size.height());
    const DrawPlotArguments arguments = scene.Time();
    for (auto _ : state) {
        DrawPlot(arguments, canvas, nullptr);
        benchmark::ClobberMemory();
    }
}

void NoTraces(PlotScene& scene) {
    scene.record.ChannelOn = {};
}

void NoCursors(PlotScene& scene) {
    scene.record.VertCursorEnabled = {};
    scene.record.HorizCursorEnabled = {};
}

void FrameOnlyCursors(benchmark::State& state) {
    Part(state, NoTraces);
}

void FrameOnlyTraces(benchmark::State& state) {
    Part(state, NoCursors);
}

void FrameEmpty(benchmark::State& state) {
    Part(state, [](PlotScene& scene) {
        NoTraces(scene);
        NoCursors(scene);
    });
}

void ClearOnly(benchmark::State& state) {
    RasterCanvas canvas(SizeOf(state).width(), SizeOf(state).height());
    for (auto _ : state) {
        canvas.Clear();
        benchmark::ClobberMemory();
    }
}

/// The fastest timebase: 750 grid lines, 31 of them in view.
void FrameAtExpansion25(benchmark::State& state) {
    Part(state, [](PlotScene& scene) {
        scene.XExpansion = 25;
        scene.HorizPan = 0.5;
    });
}

/// Just before the zoom is too much: 45,000 grid lines, two samples across.
void FrameAtZoomLimit(benchmark::State& state) {
    Part(state, [](PlotScene& scene) {
        scene.HorizZoom = 100;
        scene.XExpansion = 14.9;
        scene.HorizPan = 0.5;
    });
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->Args({357, 240})->Args({900, 560})->Args({1920, 1030})->Unit(benchmark::kMicrosecond);
}

void LargeSizes(benchmark::internal::Benchmark* bench) {
    Sizes(bench);
    bench->Args({3840, 2160});
}

BENCHMARK(Frame)->Apply(LargeSizes);
BENCHMARK(FrameAtExpansion25)->Apply(LargeSizes);
BENCHMARK(FrameAtZoomLimit)->Apply(LargeSizes);
BENCHMARK(FrameAndCopy)->Apply(LargeSizes);
BENCHMARK(ClearAndCopy)->Apply(LargeSizes);
BENCHMARK(PlottingWidget)->Apply(Sizes);
BENCHMARK(ClearOnly)->Apply(Sizes);
BENCHMARK(FrameEmpty)->Apply(Sizes);
BENCHMARK(FrameOnlyCursors)->Apply(Sizes);
BENCHMARK(FrameOnlyTraces)->Apply(Sizes);
BENCHMARK(DrawPolyline)->Apply(Sizes);

} // namespace
