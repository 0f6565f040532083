#include "analysis/spectrum_read_out.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

QString CursorText(CrossHair cross, float nyquist, bool decibels = true,
                   const std::vector<SpectrumReading>& channels = {}) {
    QString text = QStringLiteral("left over");
    WriteCursorReadOut(text, cross, nyquist, decibels, channels);
    return text;
}

QString ScaleText(float nyquist, bool decibels, const std::vector<SpectrumReading>& channels = {}) {
    QString text;
    WriteScaleReadOut(text, nyquist, decibels, channels);
    return text;
}

} // namespace

TEST(SpectrumReadOut, NyquistIsHalfTheSamplingRate) {
    EXPECT_EQ(Nyquist(1e-6F), static_cast<float>(0.5 / static_cast<double>(1e-6F)));
    EXPECT_EQ(Nyquist(0.5F), 1.0F);
}

TEST(SpectrumReadOut, TheBinIsTheNearestAndHalvesGoToEven) {
    EXPECT_EQ(BinAt(1), 1);
    EXPECT_EQ(BinAt(2.5), 2);
    EXPECT_EQ(BinAt(3.5), 4);
    EXPECT_EQ(BinAt(1023.6), 1024);
    EXPECT_EQ(BinAt(1024.9), 1024);
    EXPECT_EQ(BinAt(1e30), 1024);
    EXPECT_EQ(BinAt(-0.4), 0);
    EXPECT_EQ(BinAt(-700), 0);
    EXPECT_EQ(BinAt(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(SpectrumReadOut, TellsFrequencyAndHeight) {
    EXPECT_EQ(CursorText({512, 24}, 1998), QStringLiteral("Cursor@ FREQ: 999.00Hz MAG: 0.0dB,"));
    EXPECT_EQ(CursorText({512, 30}, 2000), QStringLiteral("Cursor@ FREQ: 1.00KHz MAG: 6.0dB,"));
    EXPECT_EQ(CursorText({1024, -30}, 12.5e6F), QStringLiteral("Cursor@ FREQ: 12.50MHz MAG: -54.0dB,"));
    EXPECT_EQ(CursorText({2000, 0}, 1e6F), QStringLiteral("Cursor@ FREQ: 1.00MHz MAG: -24.0dB,"))
        << "right of the last bin";
    EXPECT_EQ(CursorText({512, 0}, 2000, false), QStringLiteral("Cursor@ FREQ: 1.00KHz MAG: -24.0dB,"))
        << "decibels on the linear plot too";
}

TEST(SpectrumReadOut, TellsEachChannelsMagnitude) {
    const std::vector<SpectrumReading> channels{{.channel = 1, .value = 24, .voltsPerStep = 1},
                                                {.channel = 4, .value = -30.01F, .voltsPerStep = 1},
                                                {.channel = 5, .value = 30, .voltsPerStep = 0.5F},
                                                {.channel = 6, .value = -30, .voltsPerStep = 0.5F}};
    EXPECT_EQ(CursorText({512, 24}, 2000, true, channels),
              QStringLiteral(
                  "Cursor@ FREQ: 1.00KHz MAG: 0.0dB, CH1: 0.0dB CH4: -54.0dB MATH1: 6.0dB MATH2: -54.0dB"));
    EXPECT_EQ(CursorText({512, 24}, 2000, false, channels),
              QStringLiteral(
                  "Cursor@ FREQ: 1.00KHz MAG: 0.0dB, CH1: 115.20V CH4: -0.02V MATH1: 64.00V MATH2: 0.00V"));
}

TEST(SpectrumReadOut, TellsWhatAnIntervalIsWorth) {
    EXPECT_EQ(ScaleText(25e6F, false), QStringLiteral("HORZ: 1250000Hz/div VERT: "));
    EXPECT_EQ(ScaleText(500e6F, true),
              QStringLiteral("HORZ: 2.5E+07Hz/div VERT: 3dB/div, Full-scale Ranges: "));
    const std::vector<SpectrumReading> channels{{.channel = 1, .voltsPerDiv = 0.03F, .limited = true},
                                                {.channel = 2, .voltsPerDiv = 3, .inUse = false},
                                                {.channel = 3, .voltsPerDiv = 30},
                                                {.channel = 5, .voltsPerDiv = 0.3F},
                                                {.channel = 6, .voltsPerDiv = 3}};
    EXPECT_EQ(ScaleText(1000, true, channels),
              QStringLiteral("HORZ: 50Hz/div VERT: 3dB/div, Full-scale Ranges:  CH1:±0.3V(bw) "
                             "CH3:±300VM1:±3VM2:±30V"));
}
