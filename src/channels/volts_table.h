#pragma once

/// Volts per division at a position of VoltsKnob, rounded to 16 bits; x10 with a ten-to-one probe.
/// 0 for a position that the knob does not have.
float KnobToVoltsPerDiv(float position, bool probeX10);

/// Volts of one ADC step: 127 steps are ten divisions.
float VoltsPerADCStep(float voltsPerDiv);

/// An offset of so many ADC steps as percent of full scale, what the instrument is told.
float OffsetPercent(float steps);
