#include "frame/session/end_signals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// A signal handler sees nothing but globals, and may do little more than write.
std::array<int, 2> ends = {-1, -1};

extern "C" void NoteSignal(int) {
    const int kept = errno;
    const char byte = 1;
    // A full pipe holds enough news already.
    [[maybe_unused]] const auto written = write(ends[1], &byte, 1);
    errno = kept;
}

/// Not ignored, as what the program starts would ignore it too.
extern "C" void NoteNothing(int) {}

void Handle(int number, void (*handler)(int)) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler == SIG_IGN) {
        return; // whoever started us wants us to live on, as nohup does
    }
    action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

} // namespace

EndSignals::EndSignals() {
    Handle(SIGPIPE, NoteNothing);
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals keep their usual effect
    }
    notifier_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &EndSignals::Read);
    for (const int number : kSignals) {
        Handle(number, NoteSignal);
    }
}

EndSignals::~EndSignals() {
    if (notifier_ == nullptr) {
        return;
    }
    for (const int number : kSignals) {
        std::signal(number, SIG_DFL);
    }
    notifier_.reset();
    close(ends[0]);
    close(ends[1]);
    ends = {-1, -1};
}

void EndSignals::Read() {
    std::array<char, 16> bytes{};
    while (read(ends[0], bytes.data(), bytes.size()) > 0) {
    }
    come_ = true;
    emit Came();
}
