#include "export/save_data.h"

#include "export/output_files.h"
#include "fixed_scales.h"
#include "frame/record/record.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SaveDataTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        record.SampleDepth = kSampleDepth;
        record.ScopeInUse.fill(true);
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            for (int i = 0; i < kSampleRow; ++i) {
                record.SampleData(channel, i) = static_cast<float>(10 * channel + i % 3);
            }
            for (int bin = 0; bin < kSpectrumBins; ++bin) {
                record.SpectrumData(channel, bin) = static_cast<float>(channel) + (bin == 0 ? 20.0F : 0.0F);
            }
        }
        request.base = folder.filePath(QStringLiteral("run"));
        request.mathTerms = {QStringLiteral("1 + 2"), QString::fromUtf16(u"4 \u00f7 3")};
        request.window = QStringLiteral("Hamming");
        request.plotType = QStringLiteral("Linear Plot");
        request.samplePeriod = 2e-8F;
        request.stamp = {'.', QStringLiteral("today"), QStringLiteral("Corvantine Ver2.0.6")};
    }
    bool Save() { return SaveData(request, record, scales.all, files); }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::System, QDir::Name)) {
            names.push_back(name.toStdString());
        }
        return names;
    }
    QByteArrayList Lines(const char* name) const {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        QByteArrayList lines = file.readAll().split('\n');
        EXPECT_EQ(lines.takeLast(), "") << name;
        for (QByteArray& line : lines) {
            EXPECT_TRUE(line.endsWith('\r')) << name;
            line.chop(1);
        }
        return lines;
    }

    QTemporaryDir folder;
    Record record;
    FixedScales scales;
    SaveRequest request;
    OutputFiles files;
};

} // namespace

TEST_F(SaveDataTest, WritesAFileForEachSelectedChannelAndASpectrumBesideIt) {
    request.selected = {true, false, true, true, false, true};
    request.decibels = true;
    record.ChannelFFT = {true, true, false, true, true, true};
    record.ChannelBWLimit = {false, false, true, false};
    record.ScopeInUse[4] = false;
    ASSERT_TRUE(Save());
    EXPECT_THAT(Files(), ElementsAre("run.ch1data.txt", "run.ch1fft.txt", "run.ch3data.txt", "run.ch6fft.txt",
                                     "run.math2data.txt"));
    const QByteArrayList third = Lines("run.ch3data.txt");
    ASSERT_EQ(third.size(), kSampleDepth + 7);
    EXPECT_EQ(third[0], "7.0866"); // 30 steps of 30 / 127
    EXPECT_EQ(third[kSampleDepth - 1], "7.5591");
    EXPECT_THAT(third.mid(kSampleDepth), ElementsAre("", "DATA FOR CH: 3", "VERTICAL FULL SCALE (+/-v): 30",
                                                     "SAMPLE PERIOD (s): 2E-08", "BANDWIDTH LIMIT: True",
                                                     "DATE: today", "SOFTWARE: Corvantine Ver2.0.6"));
    EXPECT_EQ(Lines("run.ch1data.txt")[kSampleDepth + 4], "BANDWIDTH LIMIT: False");
    const QByteArrayList math = Lines("run.math2data.txt");
    ASSERT_EQ(math.size(), kSampleDepth + 6);
    EXPECT_EQ(math[0], "28.3465"); // 60 steps of 60 / 127
    EXPECT_THAT(math.mid(kSampleDepth, 4),
                ElementsAre("", "DATA FOR CH: 4 \xF7 3", "VERTICAL FULL SCALE (+/-v): 60",
                            "SAMPLE PERIOD (s): 2E-08"));
    const QByteArrayList spectrum = Lines("run.ch6fft.txt");
    ASSERT_EQ(spectrum.size(), 1032);
    EXPECT_EQ(spectrum[0], "-18.0"); // bin 1; bin 0 is in no file
    EXPECT_EQ(spectrum[1025], "FFT FOR CH: 6");
}

TEST_F(SaveDataTest, OfTheMathChannelsOnlyThoseThatAreOnHaveFiles) {
    request.selected = {false, false, false, false, false, true};
    ASSERT_TRUE(Save());
    EXPECT_THAT(Files(), ElementsAre("run.math2data.txt"));
}

TEST_F(SaveDataTest, NothingSelectedIsASaveOfNothing) {
    EXPECT_TRUE(Save());
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(SaveDataTest, ALinearSpectrumOfAChannelIsInVolts) {
    request.selected = {false, true, false, false, false, false};
    record.ChannelFFT[2] = true;
    ASSERT_TRUE(Save());
    const QByteArrayList lines = Lines("run.ch2fft.txt");
    EXPECT_EQ(lines[0],
              "10.7507"); // (2 + 30) / 120 of an amplitude of one, doubled, of 128 steps of 20 / 127
    EXPECT_THAT(lines.mid(1024, 6), ElementsAre("", "FFT FOR CH: 2", "VERTICAL FULL SCALE (+/-v): 20",
                                                "FREQ STEP (Hz): 24414.062648", "SPECTRAL WINDOW: Hamming",
                                                "PLOT TYPE: Linear Plot"));
}

TEST_F(SaveDataTest, ALinearSpectrumOfAMathChannelFailsAndLeavesItsFileOpenAndEmpty) {
    request.selected = {true, false, false, false, true, true};
    record.ChannelFFT = {true, false, false, false, true, false};
    EXPECT_FALSE(Save());
    EXPECT_THAT(Files(),
                ElementsAre("run.ch1data.txt", "run.ch1fft.txt", "run.ch5fft.txt", "run.math1data.txt"));
    EXPECT_EQ(QFile(folder.filePath(QStringLiteral("run.ch5fft.txt"))).size(), 0);
    EXPECT_EQ(Lines("run.math1data.txt").size(), kSampleDepth + 6);
    // In decibels it would work, if the file were not open.
    request.decibels = true;
    EXPECT_FALSE(Save());
    request.base = folder.filePath(QStringLiteral("other"));
    EXPECT_TRUE(Save());
    EXPECT_EQ(Lines("other.ch5fft.txt").size(), 1032);
}

TEST_F(SaveDataTest, AFailureEndsTheSaveAndLeavesWhatIsFinished) {
    request.selected = {true, true, true, false, false, false};
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.filePath(QStringLiteral("run.ch2data.txt"))).constData(), 0600),
              0);
    EXPECT_FALSE(Save());
    EXPECT_THAT(Files(), ElementsAre("run.ch1data.txt", "run.ch2data.txt"));
    EXPECT_EQ(Lines("run.ch1data.txt").size(), kSampleDepth + 7);
}

TEST_F(SaveDataTest, AFullDiskFailsOnThatFileUntilTheProgramEnds) {
    request.selected = {true, true, false, false, false, false};
    const QString second = folder.filePath(QStringLiteral("run.ch2data.txt"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), second));
    EXPECT_FALSE(Save());
    ASSERT_TRUE(QFile::remove(second));
    EXPECT_FALSE(Save());
    EXPECT_FALSE(QFile::exists(second));
    OutputFiles nextRun;
    EXPECT_TRUE(SaveData(request, record, scales.all, nextRun));
}
