#pragma once

#include <optional>

/// Volts per division at a position of VoltsKnob, rounded to 16 bits; x10 with a ten-to-one probe.
/// 0 for a position that the knob does not have.
float KnobToVoltsPerDiv(float position, bool probeX10);

/// Volts per division of a math channel's knob: every value that an instrument channel can have, with either
/// probe. 0 for a position that the knob does not have.
float MathKnobToVoltsPerDiv(float position);
/// The position at which a math channel has exactly these volts per division.
std::optional<int> MathVoltsPerDivToKnob(float voltsPerDiv);

/// Volts of one ADC step: 127 steps are ten divisions.
float VoltsPerADCStep(float voltsPerDiv);

/// An offset of so many ADC steps as percent of full scale, what the instrument is told.
float OffsetPercent(float steps);
