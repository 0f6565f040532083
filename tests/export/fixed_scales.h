#pragma once

#include "frame/record/channel_scale.h"
#include "frame/record/record.h"

/// A channel whose knobs a test sets.
class FixedScale : public ChannelScale {
  public:
    float GetVoltsPerDiv() const override { return voltsPerDiv; }
    float GetVoltsPerADCStep() const override { return voltsPerDiv * 10 / 127; }
    float GetOffset() const override { return 0; }
    int GetRange() const override { return 0; }

    float voltsPerDiv = 0.3F;
};

/// All six channels with scales of their own: channel c has c volts per division.
struct FixedScales {
    FixedScales() {
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            scales[channel].voltsPerDiv = static_cast<float>(channel);
            all[channel] = &scales[channel];
        }
    }
    PerChannel<FixedScale> scales;
    PerChannel<const ChannelScale*> all;
};
