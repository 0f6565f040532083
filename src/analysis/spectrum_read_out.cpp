#include "analysis/spectrum_read_out.h"

#include "controls/number_format.h"
#include "controls/rounding.h"
#include "frame/record/samples.h"

#include <algorithm>

namespace {

constexpr double kLastBin = kSpectrumBins - 1;
constexpr double kZeroDecibels = 24; ///< plot value of 0 dB
constexpr double kLinearBottom = 30; ///< plot units from the bottom to the middle
constexpr double kLinearScale = 120; ///< plot units to one of the magnitude
constexpr double kFullScale = 0.5;   ///< magnitude of a full-scale sine
constexpr double kStepsOfFullScale = 128;
constexpr float kDivisions = 10;
constexpr float kIntervals = 20;

void AppendFrequency(QString& text, double hertz) {
    if (hertz < 1000) {
        AppendNumber(text, hertz, u"0.00Hz");
    } else if (hertz < 1000000) {
        AppendNumber(text, hertz / 1e3, u"0.00KHz");
    } else {
        AppendNumber(text, hertz / 1e6, u"0.00MHz");
    }
}

void AppendName(QString& text, int channel, const char* mathName) {
    if (channel <= kScopeChannels) {
        text += QLatin1String(" CH");
        text += QLatin1Char(static_cast<char>('0' + channel));
    } else {
        text += QLatin1String(mathName);
        text += QLatin1Char(static_cast<char>('0' + channel - kScopeChannels));
    }
}

double Volts(const SpectrumReading& reading) {
    return (static_cast<double>(reading.value) + kLinearBottom) / kLinearScale / kFullScale *
           kStepsOfFullScale * static_cast<double>(reading.voltsPerStep);
}

} // namespace

float Nyquist(float samplePeriod) {
    return static_cast<float>(0.5 / static_cast<double>(samplePeriod));
}

int BinAt(double x) {
    return std::max(0, RoundToEven(std::min(x, kLastBin)));
}

void WriteCursorReadOut(QString& text, CrossHair cross, float nyquist, bool decibels,
                        std::span<const SpectrumReading> channels) {
    text.resize(0);
    text += QLatin1String("Cursor@ FREQ: ");
    AppendFrequency(text, std::min(cross.x, kLastBin) / kLastBin * static_cast<double>(nyquist));
    text += QLatin1String(" MAG: ");
    AppendNumber(text, cross.y - kZeroDecibels, u"0.0dB");
    text += QLatin1Char(',');
    for (const SpectrumReading& reading : channels) {
        AppendName(text, reading.channel, " MATH");
        text += QLatin1String(": ");
        if (decibels) {
            AppendNumber(text, static_cast<double>(reading.value) - kZeroDecibels, u"0.0dB");
        } else {
            AppendNumber(text, Volts(reading), u"0.00V");
        }
    }
}

void WriteScaleReadOut(QString& text, float nyquist, bool decibels,
                       std::span<const SpectrumReading> channels) {
    text.resize(0);
    text += QLatin1String("HORZ: ");
    text += ShortestText(nyquist / kIntervals);
    text += QLatin1String("Hz/div VERT: ");
    if (decibels) {
        text += QLatin1String("3dB/div, Full-scale Ranges: ");
    }
    for (const SpectrumReading& reading : channels) {
        if (!reading.inUse) {
            continue;
        }
        AppendName(text, reading.channel, "M");
        text += QStringLiteral(":±");
        text += ShortestText(kDivisions * reading.voltsPerDiv);
        text += QLatin1Char('V');
        if (reading.limited) {
            text += QLatin1String("(bw)");
        }
    }
}
