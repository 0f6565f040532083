#include "export/data_file.h"
#include "export/file_text.h"

#include "driver/stack_fixture.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <cmath>
#include <numbers>

// What a save leaves is an input of the simulated stack: the instrument shows again what it showed.

namespace {

constexpr float kVoltsPerStep = 3.0F / 127; ///< of the range that the fixture sets
constexpr float kPeriod = 4e-8F;
constexpr int kRounds = 7; ///< whole periods in the record, so that its end joins its beginning

std::vector<float> Trace() {
    std::vector<float> steps;
    for (int i = 0; i < kSampleDepth; ++i) {
        const double turn = 2 * std::numbers::pi * kRounds * i / kSampleDepth;
        // Of two waves, so that one place only fits, and in whole steps as a converter has them.
        steps.push_back(
            static_cast<float>(std::round(70 * std::sin(turn) + 35 * std::cos(turn / kRounds) - 10)));
    }
    return steps;
}

std::string Saved(const std::vector<float>& steps, const QLocale& locale) {
    const DataFile file{.samples = {steps.data(), kSampleDepth, 1},
                        .voltsPerStep = kVoltsPerStep,
                        .voltsPerDiv = 0.3F,
                        .samplePeriod = kPeriod,
                        .source = QStringLiteral("1"),
                        .bandwidthLimit = false};
    return std::string(DataFileText(file, StampOf(locale, QDateTime::currentDateTime(),
                                                  QStringLiteral("Corvantine Ver2.0.6")))
                           .Bytes());
}

/// The farthest that two traces are apart when one begins where the other fits best.
float Distance(const std::vector<float>& saved, const std::vector<float>& played) {
    float best = 1e9F;
    for (int shift = 0; shift < kSampleDepth; ++shift) {
        float worst = 0;
        for (int i = 0; i < kSampleDepth && worst < best; ++i) {
            const float before = saved[static_cast<std::size_t>((i + shift) % kSampleDepth)];
            worst = std::max(worst, std::fabs(before - played[static_cast<std::size_t>(i)]));
        }
        best = std::min(best, worst);
    }
    return best;
}

} // namespace

class PlayBackTest : public StackFixture, public testing::WithParamInterface<QLocale::Language> {};

TEST_P(PlayBackTest, ASavedRecordIsPlayedWithinAStep) {
    const std::vector<float> saved = Trace();
    Write("yesterday.ch1data.txt", Saved(saved, QLocale(GetParam())));
    Open("[module]\nsignal = file path=yesterday.ch1data.txt\n");
    SetTimebase(50, 2);
    ASSERT_FLOAT_EQ(driver->GetSamplePeriod(true, 1), kPeriod);
    EXPECT_LE(Distance(saved, Acquire()), 1.0F);
}

INSTANTIATE_TEST_SUITE_P(PointAndComma, PlayBackTest, testing::Values(QLocale::English, QLocale::German),
                         [](const auto& language) {
                             return QLocale::languageToString(language.param).toStdString();
                         });
