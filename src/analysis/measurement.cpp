#include "analysis/measurement.h"

#include "controls/number_format.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace {

constexpr auto kConverterLimit = static_cast<int>(kStepsPerHalfScreen);
constexpr int kGroup = 4;      ///< samples on either side of a crossing
constexpr int kCoarseness = 8; ///< two groups of four, each sample worth an eighth
constexpr int kMostCrossings = 100;

/// A quotient of two channels can be of any size; sums and differences of two of these stay in range.
constexpr double kMostSteps = (1 << 30) - 1;

/// Like crossings of a record; only how many, the first and the last matter for their mean distance.
struct Crossings {
    int count = 0;
    int first = 0;
    int last = 0;

    /// False when there are enough, and the scan may stop.
    bool Add(int position) {
        if (count == kMostCrossings) {
            return false;
        }
        first = count == 0 ? position : first;
        last = position;
        ++count;
        return true;
    }
};

/// Sums of each four neighbours, coarsened; the last starts at a record's fourth last sample.
constexpr int kGroups = kSampleDepth - kGroup + 1;
using GroupSums = std::array<int, kGroups>;

GroupSums SumGroups(const RoundedRecord& record) {
    std::array<int, kSampleDepth> coarse;
    for (int i = 0; i < kSampleDepth; ++i) {
        coarse[static_cast<std::size_t>(i)] = record[i] / kCoarseness;
    }
    GroupSums sums;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        sums[i] = 2 * (coarse[i] + coarse[i + 1] + coarse[i + 2] + coarse[i + 3]);
    }
    return sums;
}

/// Nearest whole number, ties to even, of a size far below the magic one: its last place is 1. Without a
/// call, so that the compiler takes several values at a time.
double Whole(double value) {
    constexpr double kLastPlaceIsOne = 1.5 * 4503599627370496.0; // 2 to the 52nd
    return (value + kLastPlaceIsOne) - kLastPlaceIsOne;
}

} // namespace

RoundedRecord::RoundedRecord(const float* row, std::ptrdiff_t stride) {
    for (int i = 0; i < kSampleDepth; ++i) {
        double step = static_cast<double>(row[i * stride]);
        step = step == step ? step : 0; // what is no number
        step = step > -kMostSteps ? step : -kMostSteps;
        step = step < kMostSteps ? step : kMostSteps;
        steps_[static_cast<std::size_t>(i)] = static_cast<int>(Whole(step));
    }
}

Levels MeasureLevels(const RoundedRecord& record) {
    Levels levels{.mean = 0, .min = kConverterLimit + 1, .max = -kConverterLimit - 1, .clipped = false};
    long long sum = 0;
    for (int i = 0; i < kSampleDepth; ++i) {
        const int v = record[i];
        sum += v;
        // A sample that raises the maximum is not held against the minimum.
        if (v > levels.max) {
            levels.max = v;
        } else if (v < levels.min) {
            levels.min = v;
        }
        levels.clipped = levels.clipped || std::abs(v) > kConverterLimit;
    }
    levels.mean = static_cast<double>(sum) / kSampleDepth;
    return levels;
}

double CrossingSpacing(const RoundedRecord& record, double mean) {
    Crossings rises;
    Crossings falls;
    const GroupSums sums = SumGroups(record);
    // Whole numbers compare with the mean as they do with the whole ones beside it.
    const int below = static_cast<int>(std::floor(mean));
    const int above = static_cast<int>(std::ceil(mean));
    for (int i = 0; i <= kSampleDepth - 2 * kGroup; ++i) {
        const int before = sums[static_cast<std::size_t>(i)];
        const int after = sums[static_cast<std::size_t>(i + kGroup)];
        const bool rising = before <= below && after > below;
        const bool falling = !rising && before >= above && after < above;
        if (rising || falling) {
            i += kGroup;
            if (!(rising ? rises : falls).Add(i)) {
                break;
            }
        }
    }
    const Crossings& more = rises.count > falls.count ? rises : falls;
    return more.count < 2 ? 0 : static_cast<double>(more.last - more.first) / (more.count - 1);
}

QString SignedVolts(double volts) {
    const QString text = FormatNumber(volts, "0.00");
    return text.startsWith(QLatin1Char('-')) ? text : QLatin1Char('+') + text;
}

QString AverageText(const Levels& levels, double ground, float scale) {
    if (std::abs(levels.mean) > kConverterLimit) {
        return QStringLiteral("over");
    }
    return SignedVolts((levels.mean - ground) * static_cast<double>(scale));
}

QString PeakToPeakText(const Levels& levels, float scale) {
    const QString text = FormatNumber((levels.max - levels.min) * static_cast<double>(scale), "0.00");
    return levels.clipped ? text + QLatin1Char('>') : text;
}

QString FrequencyText(double spacing, double period) {
    if (spacing == 0) {
        return QStringLiteral("low signal");
    }
    const double t = spacing * period;
    if (!(t > 0) || std::isinf(t)) {
        return QStringLiteral("!");
    }
    const double f = 1 / t;
    if (f < 999.99999) {
        return FormatNumber(f, "0.00Hz");
    }
    return f < 999999.99999 ? FormatNumber(f / 1e3, "0.00KHz") : FormatNumber(f / 1e6, "0.00MHz");
}
