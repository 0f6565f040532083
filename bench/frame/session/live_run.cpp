// Runs the program as main does, with the driver that it would choose, and tells how long it took from the
// start of the process to the first plot on the screen, how many plots a second it then held and how much
// of one core that took. Usage: live_run [seconds [everything]], 30 seconds unless told; "everything" opens
// all that can be open.

#include "controls/face_style.h"
#include "controls/knob_control.h"
#include "controls/symbol_font.h"
#include "display/plot_canvas.h"
#include "driver/driver_choice.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "support/live_environment.h"
#include "support/open_everything.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <unistd.h>
#include <vector>

namespace {

double SecondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Seconds since boot at which this process was started.
double ProcessStart() {
    constexpr int kFieldsBefore = 19; // between the name's bracket and the start time
    QFile stat(QStringLiteral("/proc/self/stat"));
    if (!stat.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray text = stat.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    return fields.value(kFieldsBefore).toDouble() / static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// Watches the canvas being painted once plots may be drawn.
class FirstPaint : public QObject {
  public:
    explicit FirstPaint(const Record& record) : record_(record) {}
    double at = 0;
    int paints = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !record_.PlotInhibit) {
            ++paints;
            at = at == 0 ? SecondsOf(CLOCK_BOOTTIME) : at;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    const Record& record_;
};

/// Sends the mouse to a control as a hand that holds its left button.
void Send(QWidget& control, QEvent::Type type, QPointF at) {
    QMouseEvent event(type, at, control.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
}

void Tell(const char* what, std::vector<double>& waits) {
    std::sort(waits.begin(), waits.end());
    std::printf("%s: median %.1f ms, longest %.1f ms of %zu\n", what, waits[waits.size() / 2], waits.back(),
                waits.size());
}

/// Milliseconds until done holds, with the event loop running.
template <class Done> double WaitUntil(double from, Done done) {
    while (!done()) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return (SecondsOf(CLOCK_BOOTTIME) - from) * 1000;
}

/// How long the picture takes to follow: from each of so many moves of the pointer to the canvas painted
/// after it. move tells whether there is anything to follow.
template <class Move> double MeasureMove(int i, const FirstPaint& canvas, Move move) {
    const int paints = canvas.paints;
    const double from = SecondsOf(CLOCK_BOOTTIME);
    const bool follows = move(i);
    return WaitUntil(from, [&] { return !follows || canvas.paints != paints; });
}

/// What the machine makes of a timer of the same 10 ms that does nothing: the part of a wait that is not the
/// program's.
double MeasureBareTimer() {
    bool fired = false;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&fired] { fired = true; });
    const double from = SecondsOf(CLOCK_BOOTTIME);
    timer.start(10);
    return WaitUntil(from, [&fired] { return fired; });
}

void MeasureKnob(Instrument& instrument, const FirstPaint& canvas) {
    auto* knob = instrument.forms.MainForm->control<KnobControl1>("TriggerKnob");
    const auto send = [&](QEvent::Type type, double angle) {
        const QPointF centre(knob->width() / 2.0, 42);
        Send(*knob, type, centre + QPointF(-std::cos(angle), -std::sin(angle)) * 22);
    };
    send(QEvent::MouseButtonPress, 0.2);
    std::vector<double> waits;
    for (int i = 0; i < 60; ++i) {
        waits.push_back(MeasureMove(i, canvas, [&](int step) {
            const int level = knob->KnobValue();
            send(QEvent::MouseMove, 0.3 + 0.04 * step);
            return knob->KnobValue() != level;
        }));
    }
    Tell("from a move of the pointer on a knob to the painted picture", waits);
    send(QEvent::MouseButtonRelease, 0.3);
}

/// While stopped, so that no tick of the run loop draws the cursor by chance.
void MeasureCursor(Instrument& instrument, const Record& record, const FirstPaint& canvas) {
    instrument.forms.TabForm[kCursTab]->control<QCheckBox>("VertCursorEn", 0)->setChecked(true);
    instrument.runLoop->RunButton_Click();
    QApplication::processEvents();
    auto* handle = instrument.forms.MainForm->control<Picture>("VertCursorHandle", 0);
    Send(*handle, QEvent::MouseButtonPress, {5, 5});
    std::vector<double> waits;
    std::vector<double> bare;
    for (int i = 0; i < 200; ++i) {
        waits.push_back(MeasureMove(i, canvas, [&](int step) {
            const double time = record.VertCursorTime[0];
            Send(*handle, QEvent::MouseMove, handle->mapFromParent(QPointF(20 + step, 5)));
            return record.VertCursorTime[0] != time;
        }));
        bare.push_back(MeasureBareTimer());
    }
    Tell("from a move of the pointer on a cursor's handle to the painted picture", waits);
    Tell("a timer of 10 ms that does nothing, in turns with it", bare);
    Send(*handle, QEvent::MouseButtonRelease, {5, 5});
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Corvantine"));
    const QStringList arguments = QApplication::arguments();
    const int seconds = arguments.size() > 1 ? arguments[1].toInt() : 30;
    LoadSymbolFont();
    ApplyFaceStyle(application);

    const QTemporaryDir settings;
    Environment environment = LiveEnvironment(settings.path());
    Driver driver(ChooseDriver(NamedDriver(), environment.applicationFolder).backend);
    Record record;
    FirstPaint firstPaint(record);
    Instrument instrument(record, driver, std::move(environment));
    StartUp(instrument);
    instrument.forms.MainForm->control<PlotCanvas>("MainPlotCanvas")->installEventFilter(&firstPaint);
    while (firstPaint.at == 0) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    std::printf("first plot on screen after %.3f s\n", firstPaint.at - ProcessStart());

    if (arguments.value(2) == QLatin1String("everything")) {
        OpenEverything(instrument);
    }
    const auto passes = instrument.acquisition.PassCount;
    const int paints = firstPaint.paints;
    const double cpu = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < seconds * 1000LL) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const double elapsed = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    std::printf("over %.1f s: %.1f plots/s, %.1f paints/s, %.1f %% of one core\n", elapsed,
                (instrument.acquisition.PassCount - passes) / elapsed, (firstPaint.paints - paints) / elapsed,
                (SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - cpu) / elapsed * 100);
    MeasureKnob(instrument, firstPaint);
    MeasureCursor(instrument, record, firstPaint);
    ShutDown(instrument);
    return 0;
}
