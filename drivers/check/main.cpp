// corvantine_driver_check: whether a driver library keeps what the interface asks of it.

#include "supervisor.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr const char* kUsage =
    "Usage: corvantine_driver_check [--only SECTION] [--patience SECONDS] LIBRARY\n"
    "Loads a driver library, runs it through the whole interface, as the oscilloscope does and as it never\n"
    "should, and prints a line for each rule (TAP). Each section runs in a process of its own.\n"
    "  --only SECTION       only this one of: ";

enum Outcome { kSound = 0, kBroken = 1, kUsageError = 2 };

void PrintUsage(std::FILE* to) {
    std::fputs(kUsage, to);
    const char* separator = "";
    for (const check::Section& section : check::kSections) {
        std::fprintf(to, "%s%s", separator, section.name);
        separator = ", ";
    }
    std::fputs(
        "\n  --patience SECONDS   what a call, a record or a trigger may take, 10 by default\n"
        "The status is 0 if every rule holds, 1 if one is broken, 2 for a mistake on the command line.\n",
        to);
}

bool IsSection(std::string_view name) {
    return std::any_of(std::begin(check::kSections), std::end(check::kSections),
                       [&](const check::Section& section) { return name == section.name; });
}

/// dlopen looks for a bare name in the system's folders only.
std::string WithFolder(const std::string& path) {
    return path.find('/') == std::string::npos ? "./" + path : path;
}

} // namespace

int main(int argc, char** argv) {
    check::Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--help") {
            PrintUsage(stdout);
            return kSound;
        }
        if (argument == "--only" && hasValue && IsSection(argv[i + 1])) {
            options.only = argv[++i];
        } else if (argument == "--patience" && hasValue && std::atof(argv[i + 1]) > 0) {
            options.patience = std::atof(argv[++i]);
        } else if (argument.substr(0, 2) != "--" && options.library.empty()) {
            options.library = WithFolder(argv[i]);
        } else {
            std::fprintf(stderr, "\"%s\" makes no sense here.\n", argv[i]);
            PrintUsage(stderr);
            return kUsageError;
        }
    }
    if (options.library.empty()) {
        PrintUsage(stderr);
        return kUsageError;
    }
    return check::Supervise(options) == 0 ? kSound : kBroken;
}
