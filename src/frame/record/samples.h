#pragma once

#include <vector>

inline constexpr int kScopeChannels = 4;  ///< instrument channels, numbered from 1
inline constexpr int kAllChannels = 6;    ///< with the two math channels
inline constexpr int kSampleDepth = 3000; ///< samples of a record; the driver interface fixes it
inline constexpr int kSampleMargin = 72;  ///< spare positions behind a record, so that six blocks fill a row
inline constexpr int kSampleRow = kSampleDepth + kSampleMargin; ///< 3072: a row of the block buffer
inline constexpr int kSpectrumBins = 1025;                      ///< bins 0..1024
inline constexpr float kStepsPerHalfScreen = 127.0F;            ///< ADC steps on either side of the centre

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
