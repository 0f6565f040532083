#include "supervisor.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace check {

namespace {

constexpr double kSlowCalls = 3;      ///< as many times the patience for those that may take seconds
constexpr double kSectionLimit = 120; ///< seconds
constexpr const char* kLoads = "the library can be loaded and has every export";
constexpr const char* kReturns = "every call returns, and stays inside its buffers";

/// What the driver prints stays out of the report; it is shown if there is something to explain.
class Capture {
  public:
    Capture() : file_(std::tmpfile()) {}
    ~Capture() { std::fclose(file_); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    void Redirect() const {
        dup2(fileno(file_), STDOUT_FILENO);
        dup2(fileno(file_), STDERR_FILENO);
    }
    void Show() const {
        std::rewind(file_);
        char line[400];
        for (int lines = 0; lines < 20 && std::fgets(line, sizeof line, file_) != nullptr; ++lines) {
            line[std::strcspn(line, "\n")] = '\0';
            std::printf("#   the driver printed: %s\n", line);
        }
    }

  private:
    std::FILE* file_;
};

[[noreturn]] void RunSection(const Options& options, const Section& section, Shared& shared) {
    Findings findings(shared, section.name);
    std::string reason;
    void* library = LoadLibrary(options.library.c_str(), reason);
    const std::string missing = library != nullptr ? MissingExports(library) : std::string();
    if (library == nullptr || !missing.empty()) {
        findings.That(false, kLoads, library == nullptr ? "%s" : "it lacks %s",
                      library == nullptr ? reason.c_str() : missing.c_str());
        shared.finished = true;
        _exit(EXIT_SUCCESS);
    }
    TellAccidentsTo(shared.accident.data(), shared.accident.size());
    Watch watch(shared);
    const Driver driver(watch, library);
    section.run({driver, findings, options.patience});
    shared.callBegan = 0;
    shared.finished = true;
    std::fflush(nullptr);
    _exit(EXIT_SUCCESS);
}

/// What became of a section's process; empty if it came to its end.
std::string Await(pid_t child, const Shared& shared, double patience) {
    const double until = Now() + kSectionLimit + 10 * patience;
    const char* call = shared.call.data();
    int status = 0;
    for (;;) {
        if (waitpid(child, &status, WNOHANG) == child) {
            break;
        }
        const double now = Now();
        const double began = shared.callBegan;
        const double limit = shared.callMayBeSlow ? kSlowCalls * patience : patience;
        const bool hangs = began > 0 && now - began > limit;
        if (hangs || now > until) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return hangs ? std::string(call) + " had not returned after " +
                               std::to_string(std::lround(limit)) + " s"
                         : "the section had not ended after minutes; it was at " + std::string(call);
        }
        const timespec pause{0, 5'000'000};
        nanosleep(&pause, nullptr);
    }
    if (shared.finished) {
        return {};
    }
    if (shared.accident[0] != '\0') {
        return std::string(call) + " " + shared.accident.data();
    }
    if (WIFSIGNALED(status)) {
        return std::string(call) + " ended the process: " + strsignal(WTERMSIG(status));
    }
    return std::string(call) + " ended the process with the status " + std::to_string(WEXITSTATUS(status));
}

class Report {
  public:
    void Print(const Rule& rule) {
        ++lines_;
        const char* found = rule.found.data();
        if (rule.skipped && !rule.broken) {
            std::printf("ok %d - %s: %s # SKIP %s\n", lines_, rule.section.data(), rule.expected.data(),
                        found);
        } else if (!rule.broken) {
            std::printf("ok %d - %s: %s\n", lines_, rule.section.data(), rule.expected.data());
        } else {
            ++broken_;
            std::printf("not ok %d - %s: %s; found: %s\n", lines_, rule.section.data(), rule.expected.data(),
                        found);
        }
        std::fflush(stdout);
    }
    int Lines() const { return lines_; }
    int Broken() const { return broken_; }

  private:
    int lines_ = 0;
    int broken_ = 0;
};

void PrintTimings(const Shared& shared) {
    std::printf("# calls, and how long they took in microseconds: half of the last ones, the slowest\n");
    for (int i = 0; i < OperationCount(); ++i) {
        const Timing& timing = shared.timings[static_cast<std::size_t>(i)];
        if (timing.calls > 0) {
            std::printf("# %-26s %7d %11.1f %11.1f\n", OperationName(i), timing.calls, timing.Median() * 1e6,
                        timing.worst * 1e6);
        }
    }
}

} // namespace

int Supervise(const Options& options) {
    void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& shared = *new (memory) Shared{};
    Report report;
    std::printf("TAP version 13\n# %s\n", options.library.c_str());
    for (const Section& section : kSections) {
        if (!options.only.empty() && options.only != section.name) {
            continue;
        }
        shared.ruleCount = 0;
        shared.rules = {};
        shared.call = {};
        shared.accident = {};
        shared.callBegan = 0;
        shared.finished = false;
        const Capture output;
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            output.Redirect();
            RunSection(options, section, shared);
        }
        const std::string end =
            child < 0 ? std::string("no process could be made") : Await(child, shared, options.patience);
        const bool loaded =
            shared.ruleCount == 0 || std::strcmp(shared.rules[0].expected.data(), kLoads) != 0;
        if (loaded) {
            Findings(shared, section.name).That(end.empty(), kReturns, "%s", end.c_str());
        }
        const int before = report.Broken();
        for (int i = 0; i < shared.ruleCount; ++i) {
            report.Print(shared.rules[static_cast<std::size_t>(i)]);
        }
        if (report.Broken() > before) {
            output.Show();
        }
        if (!loaded) {
            break; // nor will it load for the others
        }
    }
    std::printf("1..%d\n", report.Lines());
    PrintTimings(shared);
    munmap(memory, sizeof(Shared));
    return report.Broken();
}

} // namespace check
