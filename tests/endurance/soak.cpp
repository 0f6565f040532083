// The whole program with everything open, for as long as told, watched from inside once a second: memory,
// descriptors, what it holds of the window system, plots and processor time. Tells what it saw, one line a
// minute, and at the end whether it stayed what it was. Usage: corvantine_soak SECONDS; the driver is the one
// that the program would choose.

#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "driver/driver_choice.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "support/live_environment.h"
#include "support/open_everything.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <unistd.h>
#include <vector>
#include <xcb/res.h>

namespace {

constexpr int kSettled = 300;       // seconds after which memory is to stay
constexpr int kProcessorSpan = 600; // seconds at the begin and at the end that are compared
constexpr double kMemoryBound = 0.01;
constexpr double kProcessorBound = 0.05;

struct Sample {
    long resident = 0; ///< bytes
    long heap = 0;     ///< bytes handed out
    int descriptors = 0;
    int resources = 0;    ///< of the window system
    double processor = 0; ///< seconds
    long plots = 0;
};

long Resident() {
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly)
               ? file.readAll().split(' ').value(1).toLong() * sysconf(_SC_PAGESIZE)
               : 0;
}

/// Windows, pixmaps, graphics contexts and the like, of every kind together.
int ServerResources(const QWidget& window) {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) {
        return 0;
    }
    const auto asked =
        xcb_res_query_client_resources(x11->connection(), static_cast<uint32_t>(window.winId()));
    auto* reply = xcb_res_query_client_resources_reply(x11->connection(), asked, nullptr);
    int count = 0;
    if (reply != nullptr) {
        for (int i = 0; i < xcb_res_query_client_resources_types_length(reply); ++i) {
            count += static_cast<int>(xcb_res_query_client_resources_types(reply)[i].count);
        }
        free(reply);
    }
    return count;
}

Sample Take(const Instrument& instrument) {
    const struct mallinfo2 heap = mallinfo2();
    timespec processor{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &processor);
    return {.resident = Resident(),
            .heap = static_cast<long>(heap.uordblks + heap.hblkhd),
            .descriptors = static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).count()),
            .resources = ServerResources(*instrument.forms.MainForm->window()),
            .processor =
                static_cast<double>(processor.tv_sec) + static_cast<double>(processor.tv_nsec) * 1e-9,
            .plots = static_cast<long>(instrument.acquisition.PassCount)};
}

/// Says what was found of one promise; false if it was broken. Less than before is none of that: the system
/// takes pages back that nobody used.
bool Judge(const char* what, double before, double after, double bound) {
    const double change = before == 0 ? after : after / before - 1;
    const bool kept = change <= bound;
    std::printf("%s %s: %.6g, then %.6g (%+.2f %%, at most %.0f %%)\n", kept ? "ok    " : "BROKEN", what,
                before, after, change * 100, bound * 100);
    return kept;
}

/// samples[i] was taken i seconds after everything was open.
bool Judge(const std::vector<Sample>& samples) {
    const size_t last = samples.size() - 1;
    const size_t settled = std::min<size_t>(kSettled, last / 3);
    const size_t span = std::min<size_t>(kProcessorSpan, last / 3);
    const auto processorOfPlot = [&](size_t from) {
        const double plots = static_cast<double>(samples[from + span].plots - samples[from].plots);
        return (samples[from + span].processor - samples[from].processor) / std::max(plots, 1.0) * 1e6;
    };
    long missed = 0;
    for (size_t i = 1; i <= last; ++i) {
        missed += samples[i].plots == samples[i - 1].plots ? 1 : 0;
    }
    const Sample& early = samples[settled];
    const Sample& late = samples[last];
    bool kept = Judge("resident bytes", static_cast<double>(early.resident),
                      static_cast<double>(late.resident), kMemoryBound);
    kept &=
        Judge("heap bytes", static_cast<double>(early.heap), static_cast<double>(late.heap), kMemoryBound);
    kept &= Judge("descriptors", early.descriptors, late.descriptors, 0);
    kept &= Judge("resources of the window system", early.resources, late.resources, 0);
    if (last >= kSettled) { // in a short run the machine's other work would be judged
        kept &= Judge("processor time of a plot, in us", processorOfPlot(0), processorOfPlot(last - span),
                      kProcessorBound);
        kept &= Judge("seconds without a plot", 0, static_cast<double>(missed), 0);
    }
    std::printf("%.1f plots a second, %.1f %% of one core\n",
                static_cast<double>(late.plots - samples[0].plots) / static_cast<double>(last),
                (late.processor - samples[0].processor) / static_cast<double>(last) * 100);
    return kept;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Corvantine"));
    const int seconds = argc > 1 ? std::max(6, atoi(argv[1])) : 3600;
    LoadSymbolFont();
    ApplyFaceStyle(application);

    const QTemporaryDir settings;
    Environment environment = LiveEnvironment(settings.path());
    Driver driver(ChooseDriver(NamedDriver(), environment.applicationFolder).backend);
    Record record;
    Instrument instrument(record, driver, std::move(environment));
    StartUp(instrument);
    OpenEverything(instrument);

    std::vector<Sample> samples;
    samples.reserve(static_cast<size_t>(seconds) + 1);
    QTimer everySecond;
    everySecond.setTimerType(Qt::PreciseTimer);
    QObject::connect(&everySecond, &QTimer::timeout, [&] {
        samples.push_back(Take(instrument));
        const Sample& now = samples.back();
        if (samples.size() % 60 == 1) {
            std::printf(
                "%6zu s: %ld plots, %ld kB resident, %ld bytes of heap, %d descriptors, %d resources\n",
                samples.size() - 1, now.plots, now.resident / 1024, now.heap, now.descriptors, now.resources);
            std::fflush(stdout);
        }
        if (samples.size() > static_cast<size_t>(seconds)) {
            QApplication::exit(0); // quit would ask the windows, which refuse
        }
    });
    everySecond.start(1000);
    QApplication::exec();
    ShutDown(instrument);
    return Judge(samples) ? 0 : 1;
}
