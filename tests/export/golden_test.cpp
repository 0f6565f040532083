#include "export/data_file.h"
#include "export/file_text.h"
#include "frame/record/samples.h"

#include <QFile>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// Whole files, byte for byte, against those that make_golden.py made from the same whole numbers.

namespace {

constexpr int kBins = kSpectrumBins - 1;
constexpr int kStride = 6; ///< the values stand among those of other channels

std::string Golden(const char* name) {
    QFile file(QStringLiteral(GOLDEN_FILES "/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll().toStdString();
}

std::vector<float> Samples() {
    std::vector<float> values(kSampleDepth * kStride, 99.0F);
    for (int i = 0; i < kSampleDepth; ++i) {
        values[static_cast<std::size_t>(i * kStride)] = static_cast<float>(i * 389 % 1049 - 524) / 4;
    }
    return values;
}

std::vector<float> Bins() {
    std::vector<float> values(kBins * kStride, 99.0F);
    for (int i = 1; i <= kBins; ++i) {
        values[static_cast<std::size_t>((i - 1) * kStride)] =
            i % 7 == 0 ? -30.01F : static_cast<float>(i * 331 % 481 - 240) / 8;
    }
    return values;
}

float StepOf(float voltsPerDiv) {
    return voltsPerDiv * 10 / 127;
}

const FileStamp kAmerican{.decimalPoint = '.',
                          .date = QStringLiteral("3/7/26, 2:05 PM"),
                          .software = QStringLiteral("Corvantine Ver2.0.6")};
const FileStamp kGerman{.decimalPoint = ',',
                        .date = QStringLiteral("07.03.26, 14:05"),
                        .software = QStringLiteral("Corvantine Ver2.0.6")};

std::string Data(float voltsPerDiv, const char16_t* source, float period, std::optional<bool> limit,
                 const FileStamp& stamp) {
    const std::vector<float> samples = Samples();
    const DataFile file{.samples = {samples.data(), kSampleDepth, kStride},
                        .voltsPerStep = StepOf(voltsPerDiv),
                        .voltsPerDiv = voltsPerDiv,
                        .samplePeriod = period,
                        .source = QString::fromUtf16(source),
                        .bandwidthLimit = limit};
    return std::string(DataFileText(file, stamp).Bytes());
}

std::string Spectrum(bool decibels, float voltsPerDiv, int channel, float period, const char* window,
                     const FileStamp& stamp) {
    const std::vector<float> bins = Bins();
    const SpectrumFile file{.bins = {bins.data(), kBins, kStride},
                            .decibels = decibels,
                            .voltsPerStep = StepOf(voltsPerDiv),
                            .voltsPerDiv = voltsPerDiv,
                            .samplePeriod = period,
                            .channel = channel,
                            .window = QString::fromLatin1(window),
                            .plotType =
                                decibels ? QStringLiteral("dB(V) Plot") : QStringLiteral("Linear Plot")};
    return std::string(SpectrumFileText(file, stamp).Bytes());
}

std::ptrdiff_t Lines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

} // namespace

TEST(GoldenFiles, ADataFileWithAPoint) {
    const std::string text = Data(0.3F, u"2", 2e-8F, false, kAmerican);
    EXPECT_EQ(text, Golden("channel_point.txt"));
    EXPECT_EQ(Lines(text), kSampleDepth + 7);
}

TEST(GoldenFiles, ADataFileWithAComma) {
    EXPECT_EQ(Data(0.03F, u"4", 4e-4F, true, kGerman), Golden("channel_comma.txt"));
}

TEST(GoldenFiles, AMathChannelHasItsTermsAndNoBandwidthLimit) {
    const std::string text = Data(30, u"1 \u00f7 3", 1e-9F, {}, kGerman);
    EXPECT_EQ(text, Golden("math_comma.txt"));
    EXPECT_EQ(Lines(text), kSampleDepth + 6);
}

TEST(GoldenFiles, ASpectrumInDecibels) {
    const std::string text = Spectrum(true, 0.3F, 5, 2e-8F, "Welch!", kGerman);
    EXPECT_EQ(text, Golden("decibels_comma.txt"));
    EXPECT_EQ(Lines(text), 1032);
}

TEST(GoldenFiles, ALinearSpectrum) {
    EXPECT_EQ(Spectrum(false, 3, 1, 4e-4F, "Hanning", kAmerican), Golden("linear_point.txt"));
}
