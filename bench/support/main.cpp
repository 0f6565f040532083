#include <QApplication>
#include <benchmark/benchmark.h>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // What a busy machine does to one run it does to all: medians of runs taken in turns. Later arguments
    // win.
    std::vector<std::string> arguments{argv[0], "--benchmark_repetitions=15", "--benchmark_min_time=0.03",
                                       "--benchmark_enable_random_interleaving=true",
                                       "--benchmark_report_aggregates_only=true"};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    int count = static_cast<int>(pointers.size());
    QApplication application(argc, argv);
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
