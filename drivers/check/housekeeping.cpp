// What a driver must give back or leave alone.

#include "sections.h"

#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <malloc.h>
#include <memory>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's allocator stands in for the one that mallinfo2 knows.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace check {

namespace {

constexpr int kRounds = 8;

int CountEntries(const char* folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(folder), closedir);
    int count = 0;
    while (open && readdir(open.get()) != nullptr) {
        ++count;
    }
    return count;
}

std::size_t AllocatedBytes() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return mallinfo2().uordblks;
#endif
}

struct Holdings {
    int files = CountEntries("/proc/self/fd");
    int threads = CountEntries("/proc/self/task");
    std::size_t memory = AllocatedBytes();
};

/// What other code in the same process relies on.
struct Surroundings {
    std::string locale = std::setlocale(LC_ALL, nullptr);
    std::string folder;
    int rounding = std::fegetround();
    bool interrupt = HandlerOf(SIGINT) == SIG_DFL;
    bool pipe = HandlerOf(SIGPIPE) == SIG_DFL;

    Surroundings() {
        char text[4096] = "";
        folder = getcwd(text, sizeof text) != nullptr ? text : "";
    }
    static void (*HandlerOf(int signal))(int) {
        struct sigaction now {};
        sigaction(signal, nullptr, &now);
        return now.sa_handler;
    }
};

void Round(const Subject& subject) {
    const Session session(subject);
    session.Start();
    if (session.Modules() > 0) {
        session.Finish();
    }
    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    session.Read(blocks);
    Guarded<double> spectrum("buffer of 2048 reals", CORVANTINE_FFT_LENGTH);
    std::int32_t reserved = 0;
    subject.driver.FFT(spectrum.Get(), CORVANTINE_FFT_LENGTH, 0.5, 1, &reserved);
}

} // namespace

void CheckHousekeeping(const Subject& subject) {
    Findings& findings = subject.findings;
    const Surroundings before;
    for (int i = 0; i < 2; ++i) {
        Round(subject); // what is made once and kept does not count
    }
    const Holdings first;
    for (int i = 0; i < kRounds; ++i) {
        Round(subject);
    }
    const bool settled = WaitFor(subject.patience / 4, [&] { return Holdings().threads <= first.threads; });
    const Holdings last;
    findings.That(last.files <= first.files, "CloseDrvr gives files back",
                  "%d rounds of OpenDrvr to CloseDrvr left %d open", kRounds, last.files - first.files);
    findings.That(settled, "CloseDrvr ends the driver's threads",
                  "%d rounds of OpenDrvr to CloseDrvr left %d", kRounds, last.threads - first.threads);
    findings.That(last.memory <= first.memory + std::size_t{kRounds} * 4096, "CloseDrvr gives memory back",
                  "each round of OpenDrvr to CloseDrvr keeps %zu bytes",
                  (last.memory - first.memory) / kRounds);

    const Surroundings after;
    findings.That(after.locale == before.locale, "the locale is left as it is", "it became \"%s\"",
                  after.locale.c_str());
    findings.That(after.folder == before.folder, "the working folder is left as it is", "it became \"%s\"",
                  after.folder.c_str());
    findings.That(after.rounding == before.rounding, "the rounding mode is left as it is",
                  "it became mode %d", after.rounding);
    findings.That(after.interrupt == before.interrupt && after.pipe == before.pipe,
                  "the process's signal handlers are left as they are", "one was replaced");
}

} // namespace check
