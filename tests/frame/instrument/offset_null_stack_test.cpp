#include "controls/knob_control.h"
#include "driver/library_backend.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "support/patience.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>
#include <gtest/gtest.h>

namespace {

constexpr double kRangeOffsets[] = {4.3, -6.7, 2.4}; ///< ADC steps
constexpr int kTenPercent = 13;                      ///< of the offset knob, in ADC steps

/// The whole program on a simulated module whose ranges are off, its probe grounded.
class OffsetNullOnStack : public testing::Test {
  protected:
    void SetUp() override {
        const QString path = folder.filePath(QStringLiteral("grounded.stack"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("speed = 1000\n[module]\nserial = NULLED\nrange_offsets = 4.3 -6.7 2.4\nnoise = 1\n");
        file.close();
        qputenv("CORVANTINE_STACK", path.toUtf8());
    }
    ~OffsetNullOnStack() override { qunsetenv("CORVANTINE_STACK"); }

    void Start() {
        instrument.reset();
        LibraryBackend::Loaded loaded = LibraryBackend::Load(CORVANTINE_SIMULATED_STACK);
        ASSERT_TRUE(loaded.backend) << qPrintable(loaded.reason);
        driver = std::make_unique<Driver>(std::move(loaded.backend));
        record = std::make_unique<Record>();
        Environment environment;
        environment.applicationFolder = folder.path();
        environment.settingsFolder = folder.filePath(QStringLiteral("settings"));
        environment.show = [](const QString& text) { ADD_FAILURE() << qPrintable(text); };
        environment.sleep = [](int ms) { QThread::msleep(static_cast<unsigned long>(ms)); };
        environment.yield = [] { QApplication::processEvents(); };
        instrument = std::make_unique<Instrument>(*record, *driver, std::move(environment));
        StartUp(*instrument);
        ASSERT_TRUE(record->ScopeInUse[1]);
    }
    KnobControl1& Knob(const char* name) {
        return *instrument->forms.TabForm[1]->control<KnobControl1>(name);
    }

    /// Where the trace sits, once records of the present settings are shown.
    bool SitsAt(double steps, double tolerance) {
        return QTest::qWaitFor(
            [&] {
                double sum = 0;
                for (int i = 0; i < kSampleDepth; ++i) {
                    sum += static_cast<double>(record->SampleData(1, i));
                }
                return std::abs(sum / kSampleDepth - steps) < tolerance;
            },
            kPatience);
    }
    /// Presses "apply null" and waits for the reading that counts.
    bool ApplyNull() {
        instrument->offsetNull->ApplyNullButton_Click();
        const Form& form = *instrument->forms.OffsetNullForm;
        return QTest::qWaitFor(
            [&] {
                return !form.timer("WaitForUpdateTimer1")->isActive() &&
                       !form.timer("WaitForUpdateTimer2")->isActive();
            },
            kPatience);
    }

    QTemporaryDir folder;
    std::unique_ptr<Driver> driver;
    std::unique_ptr<Record> record;
    std::unique_ptr<Instrument> instrument;
};

} // namespace

TEST_F(OffsetNullOnStack, NullsEveryRangeWithTheKnobTurnedAndKeepsItAcrossARestart) {
    Start();
    Knob("OffsetKnob").SetKnobValue(kTenPercent);
    instrument->channelTabs[1]->OffsetNullButton_Click();
    EXPECT_TRUE(instrument->forms.OffsetNullForm->isVisible());
    for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
        Knob("VoltsKnob").SetKnobValue(range);
        ASSERT_TRUE(SitsAt(kTenPercent + kRangeOffsets[range], 0.5)) << range;
        ASSERT_TRUE(ApplyNull());
        EXPECT_NEAR(record->OffsetNull(1, range), kRangeOffsets[range], 0.5) << "without the knob's part";
        EXPECT_TRUE(instrument->forms.OffsetNullForm->control<QLineEdit>("CurrentNullText")
                        ->text()
                        .contains(QString::number(record->OffsetNull(1, range), 'f', 3)));
        EXPECT_TRUE(SitsAt(kTenPercent, 0.3)) << range;
        for (int other = range + 1; other < OffsetNullTable::kRanges; ++other) {
            EXPECT_EQ(record->OffsetNull(1, other), 0.0F) << "only this range";
        }
    }
    const std::array<float, 3> nulls{record->OffsetNull(1, 0), record->OffsetNull(1, 1),
                                     record->OffsetNull(1, 2)};
    ShutDown(*instrument);

    Start();
    for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
        EXPECT_EQ(record->OffsetNull(1, range), nulls[static_cast<std::size_t>(range)]) << range;
        Knob("VoltsKnob").SetKnobValue(range);
        EXPECT_TRUE(SitsAt(kTenPercent, 0.3)) << range;
    }
    instrument->offsetNull->PointAt(1, 1);
    instrument->offsetNull->CancelNullButton_Click();
    Knob("VoltsKnob").SetKnobValue(1);
    EXPECT_TRUE(SitsAt(kTenPercent + kRangeOffsets[1], 0.5));
    ShutDown(*instrument);
}
