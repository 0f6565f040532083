#include "export/data_tab.h"

#include "channels/math_tab_design.h"
#include "controls/button_control.h"
#include "controls/form.h"
#include "export/data_tab_design.h"
#include "fixed_scales.h"
#include "frame/record/record.h"
#include "support/scripted_driver.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Colour kStartFill = 0xFF1B8C; ///< what the start-up gives the button

class DataTabTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        record.SampleDepth = kSampleDepth;
        record.ScopeInUse = {true, true, false, true, true, true};
        record.HeldSamplePeriod = 5e-7;
        Button().SetButtonFillColor(ToQColor(kStartFill));
        for (const char* combo : {"Math1Combo", "Math2Combo"}) {
            for (int list = 0; list < 3; ++list) {
                math.control<QComboBox>(combo, list)
                    ->addItems(list == 1 ? QStringList{"+", "-", "x", QString(QChar(0xF7))}
                                         : QStringList{"1", "2", "4"});
            }
        }
        answer = folder.filePath(QStringLiteral("run.first.txt"));
        tab.Connect();
    }
    ButtonControl1& Button() { return *data.control<ButtonControl1>("SaveDataButton"); }
    QTimer& DoneTimer() { return *data.timer("DoneTimer"); }
    QCheckBox& Box(int channel) { return *data.control<QCheckBox>("SaveCh", channel); }
    void Select(const char* combo, int list, int index) {
        math.control<QComboBox>(combo, list)->setCurrentIndex(index);
    }
    void TimerEnds() {
        const QSignalSpy ended(&DoneTimer(), &QTimer::timeout);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.empty(); }, 30000));
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files, QDir::Name)) {
            names.push_back(name.toStdString());
        }
        return names;
    }
    QByteArrayList Lines(const char* name) const {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll().replace("\r", "").split('\n');
    }

    QTemporaryDir folder;
    Record record;
    ScriptedInstrument instrument;
    Form data{DataTabDesign()};
    Form math{MathTabDesign()};
    FixedScales scales;
    std::optional<QString> answer;
    std::vector<QString> asked; ///< the folders that the dialog began in
    std::vector<QString> shown;
    std::function<void()> whileAsking = [] {};
    DataTab tab{
        record, instrument.driver, DataTab::Controls::Of(data, math), scales.all,
        DataTab::Calls{
            .AskForFile =
                [this](const QString& from, const DataTab::Calls::Answer& then) {
                    asked.push_back(from);
                    whileAsking();
                    then(answer);
                },
            .ShowFailure = [this](const QString& text) { shown.push_back(text); },
            .Stamp =
                [] {
                    return FileStamp{'.', QStringLiteral("today"), QStringLiteral("Corvantine Ver2.0.6")};
                }}};
};

} // namespace

TEST_F(DataTabTest, SavesTheTickedChannelsInUseWhetherOnOrNot) {
    Box(2).setChecked(false);
    record.ChannelFFT[2] = true;
    emit Button().Click();
    EXPECT_THAT(Files(), ElementsAre("run.ch1data.txt", "run.ch4data.txt"));
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(DataTabTest, AMathChannelIsSavedWhileItIsOnUnderItsTerms) {
    record.ChannelOn = {false, false, false, false, false, true};
    Select("Math2Combo", 0, 2);
    Select("Math2Combo", 1, 3);
    Select("Math2Combo", 2, 1);
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        Box(channel).setChecked(false);
    }
    emit Button().Click();
    EXPECT_THAT(Files(), ElementsAre("run.math2data.txt"));
    // The place in the list counts, not the text.
    EXPECT_EQ(Lines("run.math2data.txt")[kSampleDepth + 1], "DATA FOR CH: 3 \xF7 2");
}

TEST_F(DataTabTest, TakesWindowAndPlotTypeFromTheMathTabAndThePeriodFromTheDriver) {
    record.ChannelFFT[1] = true;
    math.control<QComboBox>("FFTWindowCombo")->setCurrentIndex(4);
    math.control<QRadioButton>("FFTPlotType", 0)->setChecked(true);
    emit Button().Click();
    EXPECT_THAT(
        Lines("run.ch1fft.txt").mid(1027, 3),
        ElementsAre("FREQ STEP (Hz): 976.562502", "SPECTRAL WINDOW: Welch!", "PLOT TYPE: dB(V) Plot"));
    EXPECT_EQ(Lines("run.ch1data.txt")[kSampleDepth + 3], "SAMPLE PERIOD (s): 5E-07");
    math.control<QRadioButton>("FFTPlotType", 1)->setChecked(true);
    emit Button().Click();
    EXPECT_EQ(Lines("run.ch1fft.txt")[1029], "PLOT TYPE: Linear Plot");
}

TEST_F(DataTabTest, ACancelledDialogChangesNothing) {
    answer.reset();
    emit Button().Click();
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    EXPECT_EQ(Button().ButtonFillColor(), ToQColor(kStartFill));
    EXPECT_FALSE(DoneTimer().isActive());
    EXPECT_THAT(instrument.script.CallsOf({"GetSamplePeriod"}), IsEmpty());
}

TEST_F(DataTabTest, SaysDoneForAWhileAndTakesItsColourBack) {
    emit Button().Click();
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("done"));
    EXPECT_EQ(Button().ButtonForeColor(), ToQColor(kStartFill));
    EXPECT_EQ(Button().ButtonFillColor(), ToQColor(0x00FF00));
    EXPECT_EQ(DoneTimer().interval(), 1500);
    TimerEnds();
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    EXPECT_EQ(Button().ButtonFillColor(), ToQColor(kStartFill));
    EXPECT_EQ(Button().ButtonForeColor(), ToQColor(0xFFFFFF));
    EXPECT_FALSE(DoneTimer().isActive());
}

TEST_F(DataTabTest, ASecondSaveWhileItSaysDoneLeavesTheButtonGreen) {
    emit Button().Click();
    emit Button().Click();
    EXPECT_EQ(Button().ButtonForeColor(), ToQColor(0x00FF00));
    TimerEnds();
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    EXPECT_EQ(Button().ButtonFillColor(), ToQColor(0x00FF00));
    EXPECT_EQ(Button().ButtonForeColor(), ToQColor(0xFFFFFF));
}

TEST_F(DataTabTest, AFailureHasItsMessageAndLeavesTheButton) {
    answer = folder.filePath(QStringLiteral("missing/run"));
    emit Button().Click();
    EXPECT_THAT(shown, ElementsAre(QStringLiteral(
                           "An error occured while trying to access the file...the operation was "
                           "unsuccessful !\nThe file may be open in another application?  Please check and "
                           "try again.")));
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    EXPECT_EQ(Button().ButtonFillColor(), ToQColor(kStartFill));
    EXPECT_FALSE(DoneTimer().isActive());
}

TEST_F(DataTabTest, AFileLeftOpenMeetsTheSameMessageAgain) {
    record.ChannelOn[5] = true;
    record.ChannelFFT[5] = true;
    emit Button().Click();
    EXPECT_EQ(shown.size(), 1U);
    math.control<QRadioButton>("FFTPlotType", 0)->setChecked(true);
    emit Button().Click();
    EXPECT_EQ(shown.size(), 2U);
    record.ChannelFFT[5] = false;
    emit Button().Click();
    EXPECT_EQ(shown.size(), 2U);
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("done"));
}

TEST_F(DataTabTest, OffersTheFolderOfTheLastSave) {
    emit Button().Click();
    answer.reset();
    emit Button().Click();
    emit Button().Click();
    EXPECT_THAT(asked, ElementsAre(QString(), folder.path(), folder.path()));
}

TEST_F(DataTabTest, ASaveDuringASaveIsNone) {
    whileAsking = [this] { tab.SaveDataButton_Click(); };
    emit Button().Click();
    EXPECT_EQ(asked.size(), 1U);
    whileAsking = [] {};
    emit Button().Click();
    EXPECT_EQ(asked.size(), 2U);
}

TEST_F(DataTabTest, SavesWhatTheRecordHoldsWhenTheDialogCloses) {
    record.SampleData(1, 0) = 1;
    whileAsking = [this] { record.SampleData(1, 0) = 127; };
    emit Button().Click();
    EXPECT_EQ(Lines("run.ch1data.txt")[0], "10.0000");
}

TEST_F(DataTabTest, LetsNoEventThroughWhileItWrites) {
    // An event that waits at the beginning is still waiting at the end.
    int events = 0;
    whileAsking = [&] { QTimer::singleShot(0, &data, [&] { ++events; }); };
    tab.SaveDataButton_Click();
    EXPECT_EQ(events, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return events == 1; }, 30000));
}
