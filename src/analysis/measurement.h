#pragma once

#include "frame/record/samples.h"

#include <QString>
#include <array>
#include <cstddef>

/// One channel's samples, in ADC steps, as the measurements take them: rounded to whole steps.
class RoundedRecord {
  public:
    /// row: the first sample, the others stride apart.
    RoundedRecord(const float* row, std::ptrdiff_t stride);
    int operator[](int i) const { return steps_[static_cast<std::size_t>(i)]; }

  private:
    std::array<int, kSampleDepth> steps_;
};

struct Levels {
    double mean = 0; ///< steps, offset included
    int min = 0;
    int max = 0;
    bool clipped = false; ///< a sample lies outside of what the converter can tell
};
Levels MeasureLevels(const RoundedRecord& record);

/// Mean distance in samples between like crossings of the mean; 0 with fewer than two of either kind.
/// A crossing is seen between two groups of four samples, coarsened to about two steps against noise.
double CrossingSpacing(const RoundedRecord& record, double mean);

// The texts of the columns. scale: volts per ADC step; ground: the channel's offset in steps.
QString AverageText(const Levels& levels, double ground, float scale);
QString PeakToPeakText(const Levels& levels, float scale);
/// spacing in samples, period in seconds.
QString FrequencyText(double spacing, double period);
/// Two decimals, with the sign told for positive values as well.
QString SignedVolts(double volts);
