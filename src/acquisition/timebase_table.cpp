#include "acquisition/timebase_table.h"

#include <array>

namespace {

using enum SamplingMode;

constexpr std::array<TimebaseSetting, kTimebaseSettings> kTable{{
    {"4ns/div", RIS, 50, 1, 25},        {"10ns/div", RIS, 50, 1, 10},
    {"20ns/div", RIS, 50, 1, 5},        {"40ns/div", RIS, 50, 1, 2.5},
    {"100ns/div", RIS, 50, 1, 1},       {"200ns/div", Refresh, 50, 1, 10},
    {"400ns/div", Refresh, 50, 1, 5},   {"1us/div", Refresh, 50, 1, 2},
    {"2us/div", Refresh, 50, 1, 1},     {"4us/div", Refresh, 25, 1, 1},
    {"10us/div", Refresh, 10, 1, 1},    {"20us/div", Refresh, 10, 2, 1},
    {"40us/div", Refresh, 10, 4, 1},    {"100us/div", Refresh, 10, 10, 1},
    {"200us/div", Refresh, 10, 20, 1},  {"400us/div", Refresh, 10, 40, 1},
    {"1ms/div", Refresh, 10, 100, 1},   {"2ms/div", Refresh, 10, 200, 1},
    {"4ms/div", Refresh, 10, 400, 1},   {"10ms/div", Refresh, 10, 1000, 1},
    {"20ms/div", Refresh, 10, 2000, 1}, {"40ms/div", Refresh, 10, 4000, 1},
    {"100ms/div", Roll, 10, 10000, 1},  {"200ms/div", Roll, 10, 20000, 1},
    {"400ms/div", Roll, 10, 40000, 1},  {"1s/div", Roll, 10, 100000, 1},
    {"2s/div", Roll, 10, 200000, 1},    {"4s/div", Roll, 10, 400000, 1},
}};

constexpr double kRISPeriod = 1e-9;

} // namespace

const TimebaseSetting* FindTimebaseSetting(int index) {
    return index >= 0 && index < kTimebaseSettings ? &kTable[static_cast<std::size_t>(index)] : nullptr;
}

double SamplePeriodOf(const TimebaseSetting& setting) {
    return setting.mode == RIS ? kRISPeriod : setting.decimation / (setting.clock * 1e6);
}
