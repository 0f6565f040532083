#include "controls/slider_control.h"
#include "controls/slider_painting.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

/// One move of the pointer in a drag, each to another value: what it costs besides the owner's Change.
void SliderDrag(benchmark::State& state) {
    SliderControl1 slider;
    slider.resize(357, 17);
    slider.SetSliderValueQuantized(0.0001F);
    slider.show();
    QMouseEvent press(QEvent::MouseButtonPress, {20, 8}, {20, 8}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&slider, &press);
    int x = 20;
    for (auto _ : state) {
        x = x < 330 ? x + 1 : 20;
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 8), QPointF(x, 8), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&slider, &move);
    }
}

/// One drawing of the longest slider at scale `range(0)`.
void SliderRedraw(benchmark::State& state) {
    const int scale = static_cast<int>(state.range(0));
    QImage image(357 * scale, 17 * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    for (auto _ : state) {
        DrawSlider(painter, {.size = {357, 17}, .value = 0.5, .fill = Qt::gray, .depth = 1});
        benchmark::ClobberMemory();
    }
}

BENCHMARK(SliderDrag)->Unit(benchmark::kMicrosecond);
BENCHMARK(SliderRedraw)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

} // namespace
