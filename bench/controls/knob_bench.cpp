// What a knob costs: a mouse move of a drag with its painting, and a redraw of the whole. The largest knob of
// the forms, on a form of the usual size, without a handler of its Change.

#include "controls/knob_control.h"
#include "controls/number_format.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

/// DelayKnob on a form.
class Scene {
  public:
    Scene() {
        form_.resize(480, 380);
        knob.ReadProperties({{"KnobStartAngle", -90},
                             {"KnobStopAngle", 180},
                             {"KnobMin", -32768},
                             {"KnobMax", 32767},
                             {"KnobMarkers", "16"},
                             {"KnobValueFormat", "0.0%"},
                             {"KnobValueAlign", 2},
                             {"KnobValueQuantized", true}});
        knob.setGeometry(100, 100, 93, 97);
        QObject::connect(&knob, &KnobControl1::KnobXlateValue, [](float value, QString& text) {
            text = ShortestText((value + 32768.0) / 65535.0);
        });
        form_.show();
        QApplication::processEvents();
        knob.installEventFilter(&painted);
    }

    void mouse(QEvent::Type type, double turned, Qt::MouseButton button, Qt::MouseButtons held) {
        const QPointF at = knob::PointAt({45.5, 45.5}, 25, turned - 90);
        QMouseEvent event(type, at, knob.mapToGlobal(at), button, held, {});
        QApplication::sendEvent(&knob, &event);
    }
    void beginDrag() {
        mouse(QEvent::MouseButtonPress, 10, Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, 11, Qt::NoButton, Qt::LeftButton);
    }
    /// The next place of a mouse that goes to and fro.
    void moveOn() {
        turned_ += step_;
        if (turned_ > 250 || turned_ < 15) {
            step_ = -step_;
        }
        mouse(QEvent::MouseMove, turned_, Qt::NoButton, Qt::LeftButton);
    }

    struct PaintCount : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };

  private:
    QWidget form_;
    double turned_ = 12;
    double step_ = 1.7;

  public:
    KnobControl1& knob = *new KnobControl1(&form_);
    PaintCount painted;
};

void ReportPaintings(benchmark::State& state, const Scene& scene, int before) {
    state.counters["paintings"] =
        benchmark::Counter(scene.painted.count - before, benchmark::Counter::kAvgIterations);
}

void MouseMoveOfADrag(benchmark::State& state) {
    Scene scene;
    scene.beginDrag();
    const int before = scene.painted.count;
    for (auto _ : state) {
        scene.moveOn();
        QApplication::processEvents(); // paints
    }
    ReportPaintings(state, scene, before);
}
BENCHMARK(MouseMoveOfADrag)->Unit(benchmark::kMicrosecond);

void MouseMoveWithoutItsPainting(benchmark::State& state) {
    Scene scene;
    scene.beginDrag();
    for (auto _ : state) {
        scene.moveOn();
    }
}
BENCHMARK(MouseMoveWithoutItsPainting)->Unit(benchmark::kMicrosecond);

/// The loop of events alone, which MouseMoveOfADrag holds too.
void EmptyEventLoop(benchmark::State& state) {
    const Scene scene;
    for (auto _ : state) {
        QApplication::processEvents();
    }
}
BENCHMARK(EmptyEventLoop)->Unit(benchmark::kMicrosecond);

void FullRedraw(benchmark::State& state) {
    Scene scene;
    QImage image(scene.knob.size(), QImage::Format_ARGB32_Premultiplied);
    const int before = scene.painted.count;
    for (auto _ : state) {
        scene.knob.SetKnobVisible(true); // forgets what was drawn
        scene.knob.render(&image);
    }
    ReportPaintings(state, scene, before);
}
BENCHMARK(FullRedraw)->Unit(benchmark::kMicrosecond);

void PutOfTheValue(benchmark::State& state) {
    Scene scene;
    int value = 0;
    for (auto _ : state) {
        scene.knob.SetKnobValue(value = (value + 1) & 1023);
    }
}
BENCHMARK(PutOfTheValue)->Unit(benchmark::kMicrosecond);

void FormatOfANumber(benchmark::State& state) {
    QString text;
    double value = 0;
    for (auto _ : state) {
        text.resize(0);
        AppendNumber(text, value += 0.0137, u"0.000us");
        benchmark::DoNotOptimize(text.constData());
    }
}
BENCHMARK(FormatOfANumber);

} // namespace
