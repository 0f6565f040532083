#pragma once

/// What the rest of the instrument asks of a channel's panel: the only source of volts.
class ChannelScale {
  public:
    virtual ~ChannelScale() = default;
    virtual float GetVoltsPerDiv() const = 0;
    virtual float GetVoltsPerADCStep() const = 0;
    virtual float GetOffset() const = 0; ///< the offset knob's value, ADC steps
    virtual int GetRange() const = 0;    ///< position of the volts knob, 0 the most sensitive
};
