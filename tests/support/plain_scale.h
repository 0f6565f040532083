#pragma once

#include "frame/record/channel_scale.h"
#include "frame/record/steps.h"

/// A channel's scale with numbers that a test sets.
struct PlainScale : ChannelScale {
    float voltsPerDiv = 3;
    float offset = 0;
    int range = 0;
    float GetVoltsPerDiv() const override { return voltsPerDiv; }
    float GetVoltsPerADCStep() const override {
        return static_cast<float>(static_cast<double>(voltsPerDiv) * kDivisionsOfHalfScreen /
                                  kStepsOfHalfScreen);
    }
    float GetOffset() const override { return offset; }
    int GetRange() const override { return range; }
};
