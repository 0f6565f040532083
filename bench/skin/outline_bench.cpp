// The outline of a picture, from its bytes to the region of the window.

#include "controls/colour.h"
#include "frame/log/debug_log.h"
#include "skin/dib_section.h"
#include "skin/outline_scan.h"
#include "skin/skin_colour.h"

#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

/// A face as skins have it: rounded shoulders, the key colour around them.
QImage Face(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(ToQColor(kSkinKey));
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::darkGray);
    painter.drawRoundedRect(image.rect().adjusted(2, 2, -2, -2), 40, 40);
    return image;
}

/// As many runs as a picture of that size can have.
QImage ChessBoard(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, (x + y) % 2 ? qRgb(255, 255, 192) : qRgb(40, 40, 40));
        }
    }
    return image;
}

void Outline(benchmark::State& state, QImage (*picture)(QSize)) {
    DebugLog log({}, {});
    cDIBSection dib(log);
    dib.CreateFromPicture(picture({static_cast<int>(state.range(0)), static_cast<int>(state.range(1))}));
    int rectangles = 0;
    for (auto _ : state) {
        rectangles = OutlineOf(dib).rectCount();
        benchmark::DoNotOptimize(rectangles);
    }
    state.counters["rectangles"] = rectangles;
}

BENCHMARK_CAPTURE(Outline, face, Face)->Args({600, 450})->Args({1920, 1080})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Outline, chess_board, ChessBoard)
    ->Args({600, 450})
    ->Args({1920, 1080})
    ->Unit(benchmark::kMillisecond);

} // namespace
