#pragma once

#include "frame/record/channels.h"

#include <cstddef>
#include <vector>

// The driver interface fixes the first three; the driver room holds them against its header.
inline constexpr int kSampleDepth = 3000;     ///< samples of a record
inline constexpr int kSampleRow = 3072;       ///< a row of the block buffer, which six blocks fill
inline constexpr int kSpectrumSamples = 2048; ///< of a record go into the transform
inline constexpr int kSpectrumBins = kSpectrumSamples / 2 + 1; ///< from nothing to half the sample rate
inline constexpr float kStepsPerHalfScreen = 127.0F;           ///< ADC steps on either side of the centre

/// Values by channel 1..6 and position 0..positions()-1; the channel index runs fastest in memory.
class ChannelTable {
  public:
    explicit ChannelTable(int positions) : values_(static_cast<std::size_t>(positions) * kAllChannels) {}

    float& operator()(int channel, int position) { return values_[index(channel, position)]; }
    float operator()(int channel, int position) const { return values_[index(channel, position)]; }

    int positions() const { return static_cast<int>(values_.size()) / kAllChannels; }
    /// First value of a channel; the next positions follow at stride().
    const float* row(int channel) const { return values_.data() + (channel - 1); }
    float* row(int channel) { return values_.data() + (channel - 1); }
    static constexpr int stride() { return kAllChannels; }

  private:
    static std::size_t index(int channel, int position) {
        return static_cast<std::size_t>(channel - 1) +
               static_cast<std::size_t>(kAllChannels) * static_cast<std::size_t>(position);
    }
    std::vector<float> values_;
};
