#include "acquisition/read_out.h"
#include "acquisition/timebase_table.h"
#include "analysis/measurement.h"
#include "analysis/measurement_design.h"
#include "analysis/measurement_window.h"
#include "channels/volts_table.h"
#include "controls/form.h"
#include "driver/stack_fixture.h"
#include "frame/record/record.h"

#include <QCheckBox>
#include <QLabel>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <sstream>

namespace {

constexpr int kPeriodSamples = 500; ///< six periods; the tip of a triangle is not lost between samples
constexpr double kAmplitude = 80;   ///< ADC steps
constexpr double kLevel = 10;
constexpr double kSecondTone = 15; ///< of the third harmonic; no further crossing of the mean comes of it
constexpr double kPulseWidth = 0.3;
constexpr int kRanges = 3;
constexpr int kPasses = 1500; ///< until an interleaved record has settled
constexpr int kRISEntries = 150;

class RangeScale : public ChannelScale {
  public:
    int range = 0;
    float GetVoltsPerDiv() const override { return KnobToVoltsPerDiv(static_cast<float>(range), false); }
    float GetVoltsPerADCStep() const override { return VoltsPerADCStep(GetVoltsPerDiv()); }
    float GetOffset() const override { return 0; }
    int GetRange() const override { return range; }
};

struct Expected {
    const char* name;
    double mean;
    double peakToPeak; ///< steps
};

double TwoTone(double turn) {
    return kAmplitude * std::sin(2 * std::numbers::pi * turn) +
           kSecondTone * std::sin(6 * std::numbers::pi * turn);
}

double TwoTonePeakToPeak() {
    double most = 0;
    for (int i = 0; i < 100000; ++i) {
        most = std::max(most, TwoTone(i / 100000.0));
    }
    return 2 * most;
}

/// The measurements of known signals, all the way from a stack's converter to the texts of the window.
class StackMeasurement : public StackFixture {
  protected:
    StackMeasurement() {
        record.NumScopesFound = kScopeChannels;
        record.SampleDepth = kSampleDepth;
        record.Running = true;
        record.ScopeInUse = {true, true, true, true, false, false};
        scales.fill(&scale);
        for (int i = 0; i < kCursors; ++i) {
            controls.VertCursorEn[i] = &boxes[static_cast<std::size_t>(i)];
            controls.HorizCursorEn[i] = &boxes[static_cast<std::size_t>(kCursors + i)];
        }
    }

    /// A stack whose four modules hear these signals at this range, their period so many seconds. Its time
    /// runs so many times faster than ours, but never so far ahead that a double could not tell the phases
    /// of two tones any more: a thousand passes may take us seconds.
    std::string Stack(const std::vector<std::string>& waves, double period, SamplingMode mode) const {
        const double step = static_cast<double>(scale.GetVoltsPerADCStep());
        std::string text = mode == SamplingMode::RIS ? "speed = 1000\n" : "speed = 1000000\n";
        for (std::string signal : waves) {
            const auto put = [&](const std::string& key, double value) {
                std::ostringstream number;
                number.precision(17);
                number << value;
                for (auto at = signal.find(key); at != std::string::npos; at = signal.find(key)) {
                    signal.replace(at, key.size(), number.str());
                }
            };
            put("$3F", 3 / period);
            put("$F", 1 / period);
            put("$A", kAmplitude * step);
            put("$B", kSecondTone * step);
            put("$L", kLevel * step);
            put("$W", kPulseWidth * period);
            text += "[module]\n" + signal + "\n";
        }
        return text;
    }

    void Acquire(const TimebaseSetting& setting) {
        const bool ris = setting.mode == SamplingMode::RIS;
        SetTimebase(setting.clock, setting.decimation, ris);
        std::vector<float> entries(kSampleRow + 1);
        for (int pass = 0; pass < (ris ? kPasses : 1); ++pass) {
            Start();
            ASSERT_TRUE(Finish());
            for (int ch = 1; ris && ch <= opened; ++ch) {
                const RISPass at = driver->GetBufferRIS(ch, entries.data(), kRISEntries);
                ReadOutRIS(entries.data(), at, {}, {record.SampleData.row(ch), ChannelTable::stride()});
            }
        }
        for (int ch = 1; !ris && ch <= opened; ++ch) {
            const auto row = Row(ch);
            for (int i = 0; i < kSampleDepth; ++i) {
                record.SampleData(ch, i) = row[static_cast<std::size_t>(i)];
            }
        }
    }

    void ExpectFigures(const std::vector<Expected>& expected, double samplePeriod, const std::string& where) {
        Form form(MeasurementDesign());
        MeasurementWindow window(form, record, *driver, scales, controls);
        window.Build();
        window.UpdateStats();
        const double step = static_cast<double>(scale.GetVoltsPerADCStep());
        constexpr double kHalfDigit = 0.005;
        for (int ch = 1; ch <= opened; ++ch) {
            const Expected& wave = expected[static_cast<std::size_t>(ch - 1)];
            const std::string place = std::string(wave.name) + " at " + where;
            const auto text = [&](int figure) {
                return form.control<QLabel>(qPrintable(QStringLiteral("ChStats%1_%2").arg(ch).arg(figure)))
                    ->text();
            };
            EXPECT_NEAR(record.OffsetNullMeasured[ch], wave.mean, 1) << place;
            EXPECT_NEAR(text(3).toDouble(), wave.mean * step, step + kHalfDigit) << place;
            const Levels levels =
                MeasureLevels(RoundedRecord(record.SampleData.row(ch), ChannelTable::stride()));
            EXPECT_NEAR(levels.max - levels.min, wave.peakToPeak, 1) << place;
            EXPECT_NEAR(text(4).toDouble(), wave.peakToPeak * step, step + kHalfDigit) << place;

            const QString frequency = text(5);
            const double unit = frequency.endsWith("MHz") ? 1e6 : frequency.endsWith("KHz") ? 1e3 : 1;
            const double hertz = frequency.left(frequency.indexOf(QRegularExpression("[A-Z]"))).toDouble();
            EXPECT_GE(hertz * unit, 1 / (samplePeriod * (kPeriodSamples + 1)) - kHalfDigit * unit)
                << place << " " << qPrintable(frequency);
            EXPECT_LE(hertz * unit, 1 / (samplePeriod * (kPeriodSamples - 1)) + kHalfDigit * unit)
                << place << " " << qPrintable(frequency);
        }
    }

    /// At every range and at every timebase that differs from others in the clocks.
    void ExpectEverywhere(const std::vector<std::string>& waves, const std::vector<Expected>& expected) {
        for (scale.range = 0; scale.range < kRanges; ++scale.range) {
            std::set<std::tuple<SamplingMode, int, int>> seen;
            for (int index = 0; index < kTimebaseSettings; ++index) {
                const TimebaseSetting& setting = *FindTimebaseSetting(index);
                if (!seen.insert({setting.mode, setting.clock, setting.decimation}).second) {
                    continue;
                }
                const double period = SamplePeriodOf(setting);
                Open(Stack(waves, kPeriodSamples * period, setting.mode), static_cast<int>(waves.size()));
                for (int ch = 1; ch <= opened; ++ch) {
                    driver->SetUpFrontEnd(ch, scale.range, true, false);
                    driver->SetTrigThresh(ch, static_cast<float>(kLevel / kStepsPerHalfScreen * 100));
                }
                ASSERT_NO_FATAL_FAILURE(Acquire(setting));
                ExpectFigures(expected, period,
                              std::string(setting.label) + ", range " + std::to_string(scale.range));
            }
        }
    }

    Record record;
    RangeScale scale;
    MeasurementWindow::Scales scales;
    std::array<QCheckBox, 2 * kCursors> boxes;
    MeasurementWindow::Controls controls;
};

} // namespace

TEST_F(StackMeasurement, ReadsSineSquareTriangleAndPulseAtEveryTimebaseAndRange) {
    ExpectEverywhere({"signal = sine frequency=$F amplitude=$A level=$L",
                      "signal = square frequency=$F amplitude=$A level=$L",
                      "signal = triangle frequency=$F amplitude=$A level=$L",
                      "signal = pulse frequency=$F amplitude=$A level=$L width=$W"},
                     {{"sine", kLevel, 2 * kAmplitude},
                      {"square", kLevel, 2 * kAmplitude},
                      {"triangle", kLevel, 2 * kAmplitude},
                      {"pulse", kLevel + kPulseWidth * kAmplitude, kAmplitude}});
}

TEST_F(StackMeasurement, ReadsTwoTonesAtEveryTimebaseAndRange) {
    ExpectEverywhere(
        {"signal = sine frequency=$F amplitude=$A level=$L\nsignal = sine frequency=$3F amplitude=$B"},
        {{"two tones", kLevel, TwoTonePeakToPeak()}});
}
