#pragma once

#include <QString>
#include <span>

/// The cross-hair in the units of the plot: bins 1..1024 and plot values -30..+30.
struct CrossHair {
    double x = 0;
    double y = 0;
};

/// One channel whose spectrum shows.
struct SpectrumReading {
    int channel = 0;        ///< 1..6
    float value = 0;        ///< plot units, at the cross-hair's bin
    float voltsPerDiv = 0;  ///< of the channel
    float voltsPerStep = 0; ///< of the channel
    bool inUse = true;      ///< only then its range is told
    bool limited = false;   ///< its bandwidth limit is on
};

/// Half the sampling rate in hertz, from the seconds between two samples.
float Nyquist(float samplePeriod);

/// The bin under the cross-hair: half to even, never below 0 or beyond the last.
int BinAt(double x);

/// "Cursor@ FREQ: 1.00KHz MAG: -6.0dB, CH1: -20.0dB CH2: ...": the magnitude of the cross-hair's height is in
/// decibels on both plots, the channels are in decibels or volts.
void WriteCursorReadOut(QString& text, CrossHair cross, float nyquist, bool decibels,
                        std::span<const SpectrumReading> channels);

/// "HORZ: 25000Hz/div VERT: 3dB/div, Full-scale Ranges:  CH1:±3V(bw)...": what an interval of the grid is
/// worth, and the ten divisions of each channel.
void WriteScaleReadOut(QString& text, float nyquist, bool decibels,
                       std::span<const SpectrumReading> channels);
