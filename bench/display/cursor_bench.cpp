#include "controls/form.h"
#include "display/cursor_bars.h"
#include "display/cursor_tab_design.h"
#include "display/plot_canvas.h"
#include "driver/builtin_backend.h"
#include "frame/record/record.h"
#include "frame/window/main_form_design.h"

#include <QApplication>
#include <QCheckBox>
#include <QMouseEvent>
#include <benchmark/benchmark.h>

namespace {

/// What the event loop costs when there is nothing to do.
void EmptyEventLoopTurn(benchmark::State& state) {
    QApplication::processEvents();
    for (auto _ : state) {
        QApplication::processEvents();
    }
}

/// A handle of either bar in a window that shows, held by the mouse.
void HandleMove(benchmark::State& state, const char* axis, QPoint way) {
    Record record;
    record.SampleDepth = kSampleDepth;
    Driver driver(std::make_unique<BuiltinBackend>());
    Form main(MainFormDesign(), nullptr, kPlotCanvas);
    Form tab(CursorTabDesign());
    CursorBars bars(record, driver, CursorBars::Controls::Of(main, tab),
                    {.PlotNow = [] {}, .SetDefaultLayering = [] {}});
    bars.Connect();
    tab.control<QCheckBox>(QByteArray(axis) + "CursorEn", 0)->setChecked(true);
    main.show();
    QApplication::processEvents();
    auto* handle = main.control<Picture>(QByteArray(axis) + "CursorHandle", 0);
    const auto send = [&](QEvent::Type type, QPointF at) {
        QMouseEvent event(type, handle->mapFromParent(at), QPointF(), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(handle, &event);
    };
    send(QEvent::MouseButtonPress, handle->geometry().center());
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 100;
        send(QEvent::MouseMove, QPoint(20, 20) + way * step);
    }
}

void TimeHandleMove(benchmark::State& state) {
    HandleMove(state, "Vert", {1, 0});
}

void LevelHandleMove(benchmark::State& state) {
    HandleMove(state, "Horiz", {0, 1});
}

BENCHMARK(EmptyEventLoopTurn);
BENCHMARK(TimeHandleMove);
BENCHMARK(LevelHandleMove);

} // namespace
