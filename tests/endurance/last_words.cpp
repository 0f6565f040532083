#include "endurance/last_words.h"

#include <array>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <sys/time.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

constexpr time_t kStandstill =
    60; ///< seconds of this process's own time: the machine may be busy with others

// A signal handler sees nothing but globals.
std::array<std::array<char, LastWords::kLength>, LastWords::kWords> words;
std::size_t said = 0;
bool told = false;

void Write(const char* text) {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, std::strlen(text));
}

void Tell() {
    if (told) {
        return;
    }
    told = true;
    Write("the last words, the newest at the end:\n");
    for (std::size_t i = 0; i < LastWords::kWords; ++i) {
        const auto& word = words[(said + i) % LastWords::kWords];
        if (word[0] != '\0') {
            Write("  ");
            Write(word.data());
            Write("\n");
        }
    }
}

void Watch(time_t seconds) {
    const itimerval after{{}, {seconds, 0}};
    setitimer(ITIMER_PROF, &after, nullptr);
}

extern "C" void TellOfSignal(int number) {
    Write(number == SIGPROF ? "a standstill; " : "a signal; ");
    Tell();
    std::signal(number, SIG_DFL);
    raise(number);
}

} // namespace

void LastWords::Keep() {
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(Tell);
    constexpr std::array numbers = {SIGPROF, SIGABRT, SIGTERM};
#else
    constexpr std::array numbers = {SIGPROF, SIGABRT, SIGTERM, SIGSEGV, SIGBUS, SIGFPE, SIGILL};
#endif
    for (const int number : numbers) {
        std::signal(number, TellOfSignal);
    }
}

void LastWords::Rest() {
    Watch(0);
}

void LastWords::Say(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    auto& word = words[said % kWords];
    std::vsnprintf(word.data(), word.size(), format, arguments);
    va_end(arguments);
    ++said;
    Watch(kStandstill);
}
