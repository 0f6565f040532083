#pragma once

#include "driver/stack_fixture.h"
#include "frame/record/samples.h"

#include <algorithm>
#include <numeric>

/// 3 V at full scale is 127 steps.
inline constexpr double kStepsPerVolt = 127.0 / 3;

class SimulatedStack : public StackFixture {
  protected:
    static std::string Module(const std::string& keys) { return "[module]\n" + keys + "\n"; }
};

inline float Lowest(const std::vector<float>& x) {
    return *std::min_element(x.begin(), x.end());
}
inline float Highest(const std::vector<float>& x) {
    return *std::max_element(x.begin(), x.end());
}
/// Of the record without the spare samples behind it.
inline double Mean(const std::vector<float>& x) {
    return std::accumulate(x.begin(), x.begin() + kSampleDepth, 0.0) / kSampleDepth;
}
