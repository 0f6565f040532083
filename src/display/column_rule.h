#pragma once

#include "frame/record/samples.h"

#include <array>
#include <cstdint>

/// Which samples of the traces are worth a line: the first of each pixel column and every new extreme of it.
/// That keeps all peaks and bounds the work by the width of the canvas.
class ColumnRule {
  public:
    static constexpr int kMostSamples = kSampleRow + 1;

    /// Goes over the samples first, first + step .. last of all channels, at most kMostSamples of them.
    /// columnsPerUnit: pixel columns to one position; a sample's column is its position times that, cut.
    void Apply(const ChannelTable& data, int first, int last, int step, double columnsPerUnit);

    /// 1 if the channel keeps sample number i, counted from the first that was gone over; else 0.
    int Keeps(int channel, int i) const { return kept_[static_cast<std::size_t>(i)] >> (channel - 1) & 1; }

  private:
    std::array<std::uint8_t, kMostSamples> kept_; ///< a bit a channel; not set before Apply
};
