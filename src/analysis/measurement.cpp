#include "analysis/measurement.h"

#include "controls/number_format.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr int kConverterLimit = 127;
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

int GroupSum(const RoundedRecord& record, int from) {
    int sum = 0;
    for (int k = 0; k < kGroup; ++k) {
        sum += record[from + k] / kCoarseness;
    }
    return 2 * sum;
}

} // namespace

RoundedRecord::RoundedRecord(const float* row, std::ptrdiff_t stride) {
    for (int i = 0; i < kSampleDepth; ++i) {
        const double step = std::nearbyint(static_cast<double>(row[i * stride]));
        const double held = step > -kMostSteps ? step : step < 0 ? -kMostSteps : 0; // no number counts as 0
        steps_[static_cast<std::size_t>(i)] = static_cast<int>(held < kMostSteps ? held : kMostSteps);
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
    for (int i = 0; i <= kSampleDepth - 2 * kGroup; ++i) {
        const int before = GroupSum(record, i);
        const int after = GroupSum(record, i + kGroup);
        const bool rising = before <= mean && after > mean;
        const bool falling = !rising && before >= mean && after < mean;
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
