#include "frame/instrument/instrument_fixture.h"

#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"
#include "frame/settings/setting_names.h"
#include "support/mutation.h"

#include <QComboBox>
#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <cmath>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kFiles = 1000; // each takes ten times as long as without, where all are tried
#else
constexpr int kFiles = 10000;
#endif
constexpr int kShares = 4;           ///< that can be tested side by side
constexpr double kLargestNull = 1e6; ///< ADC steps

void ExpectInside(const Form* form) {
    for (const KnobControl1* knob : form->findChildren<KnobControl1*>()) {
        EXPECT_GE(knob->KnobValue(), knob->KnobMin()) << knob->objectName().toStdString();
        EXPECT_LE(knob->KnobValue(), knob->KnobMax()) << knob->objectName().toStdString();
    }
    for (const SliderControl1* slider : form->findChildren<SliderControl1*>()) {
        EXPECT_TRUE(slider->SliderValue() >= 0 && slider->SliderValue() <= 1)
            << slider->objectName().toStdString();
    }
    for (const QComboBox* combo : form->findChildren<QComboBox*>()) {
        EXPECT_TRUE(combo->count() == 0 || combo->currentIndex() >= 0) << combo->objectName().toStdString();
    }
}

} // namespace

class DamagedSettings : public InstrumentTest, public testing::WithParamInterface<int> {
  protected:
    QString settingsFolder() const { return folder.filePath(QStringLiteral("settings")); }

    QMap<QString, QByteArray> Files() const {
        QMap<QString, QByteArray> files;
        for (const QString& name : QDir(settingsFolder()).entryList(QDir::Files)) {
            QFile file(QDir(settingsFolder()).filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            files[name] = file.readAll();
        }
        return files;
    }
    void Write(const QString& name, const QByteArray& bytes) const {
        QFile file(QDir(settingsFolder()).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    /// What the start-up reads, in its order.
    void RestoreAll() const {
        instrument->settings = SettingsStore(settingsFolder());
        for (int channel = 1; channel <= kScopeChannels; ++channel) {
            instrument->channelTabs[channel]->RestoreTabSettings();
        }
        instrument->scopeSettings->RestoreScopeSettings();
        for (int slot = kMathTab; slot <= kAboutTab; ++slot) {
            instrument->RestoreTabSettings(slot);
        }
    }
    void ExpectUsable() const {
        const QSize screen = QGuiApplication::primaryScreen()->size();
        ExpectInside(instrument->forms.MainForm);
        for (const int slot : {1, 2, 3, 4, +kMathTab, +kDataTab, +kCursTab, +kHorzTab}) {
            ExpectInside(instrument->forms.TabForm[slot]);
        }
        for (const Form* form : {instrument->forms.FFTForm.get(), instrument->forms.StatsForm,
                                 instrument->forms.FullScreenTimeForm.get()}) {
            EXPECT_TRUE(form->x() >= 0 && form->x() < screen.width()) << form->x();
            EXPECT_TRUE(form->y() >= 0 && form->y() < screen.height()) << form->y();
            EXPECT_TRUE(form->width() > 0 && form->height() > 0);
        }
        EXPECT_TRUE(record->TrigMode >= 0 && record->TrigMode <= 2) << record->TrigMode;
        EXPECT_TRUE(record->TrigType >= 0 && record->TrigType <= 3) << record->TrigType;
        EXPECT_TRUE(record->TriggerChannel >= 1 && record->TriggerChannel <= kScopeChannels);
        EXPECT_TRUE(record->TriggerDelay >= 0 && std::isfinite(record->TriggerDelay));
        for (int channel = 1; channel <= kScopeChannels; ++channel) {
            for (int range = 0; range < OffsetNullTable::kRanges; ++range) {
                EXPECT_LE(std::fabs(record->OffsetNull(channel, range)), kLargestNull);
            }
        }
        for (int cursor = 0; cursor < kCursors; ++cursor) {
            EXPECT_TRUE(std::isfinite(record->VertCursorTime[cursor]));
            EXPECT_TRUE(std::isfinite(record->HorizCursorVolts[cursor]));
        }
    }
};

TEST_P(DamagedSettings, NeitherCrashNorLeaveAControlOutOfItsRange) {
    Start(4);
    ShutDown(*instrument);
    const QMap<QString, QByteArray> whole = Files();
    ASSERT_EQ(whole.size(), 1 + kScopeChannels);
    const QString program = QStringLiteral("Corvantine.ini");

    Start(4);
    record->PlotInhibit = true;
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    for (int i = 0; i < kFiles / kShares && !HasFailure(); ++i) {
        const QString name = random() % 5 != 0 ? program : whole.keys()[static_cast<int>(random() % 5)];
        const QByteArray damaged = Mutated(whole[name], random);
        Write(name, damaged);
        RestoreAll();
        ExpectUsable();
        EXPECT_THAT(script().TakeViolations(), testing::IsEmpty());
        if (HasFailure()) {
            ADD_FAILURE() << "file " << i << ":\n" << damaged.left(4000).toStdString();
        }
        Write(name, whole[name]);
        script().Clear();
    }
}

INSTANTIATE_TEST_SUITE_P(Share, DamagedSettings, testing::Range(0, kShares));
