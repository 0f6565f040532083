#include "controls/button_control.h"
#include "controls/button_painting.h"
#include "controls/fonts.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

/// One drawing of a button of `range(0)` pixels a side at scale `range(1)`.
void ButtonRedraw(benchmark::State& state) {
    const int side = static_cast<int>(state.range(0));
    const int scale = static_cast<int>(state.range(1));
    QImage image(side * scale, side * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    const ButtonInk ink{.fill = Qt::green,
                        .back = Qt::darkGray,
                        .fore = Qt::white,
                        .caption = QStringLiteral("trig"),
                        .font = InstrumentFont(QStringLiteral("Arial"), 9.75, true),
                        .nudge = {}};
    for (auto _ : state) {
        DrawButton(painter, {.size = {side, side}}, ink);
        benchmark::ClobberMemory();
    }
}

/// A press and a release, all but the drawing that they ask for.
void ButtonClick(benchmark::State& state) {
    ButtonControl1 button;
    button.resize(40, 40);
    button.show();
    QMouseEvent press(QEvent::MouseButtonPress, {20, 20}, {20, 20}, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, {20, 20}, {20, 20}, Qt::LeftButton, {}, {});
    for (auto _ : state) {
        QApplication::sendEvent(&button, &press);
        QApplication::sendEvent(&button, &release);
    }
}

BENCHMARK(ButtonRedraw)->ArgsProduct({{24, 40, 72}, {1, 2}})->Unit(benchmark::kMicrosecond);
BENCHMARK(ButtonClick)->Unit(benchmark::kMicrosecond);

} // namespace
