#include "frame/instrument/instrument_fixture.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "frame/record/record.h"
#include "frame/session/session_end.h"
#include "support/patience.h"

#include <QDir>
#include <QImage>
#include <QTest>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// The program is closed at every moment at which it lets events run. Whatever was on its way then must end
// without touching the instrument or the settings behind the shutdown's back.

namespace {

constexpr const char* kAsked = "asked to close";

class CloseTest : public InstrumentTest {
  protected:
    void SetUp() override {
        InstrumentTest::SetUp();
        QDir(folder.path()).mkpath(QStringLiteral("skins"));
        for (const char* name : {"Blue", "Green"}) {
            QImage skin(656, 420, QImage::Format_RGB888);
            skin.fill(name[0] == 'B' ? QColor(40, 60, 90) : QColor(40, 90, 60));
            skin.setPixelColor(655, 0, QColor(255, 255, 192)); // the outside
            ASSERT_TRUE(skin.save(
                folder.filePath(QStringLiteral("skins/Corvantine_skin_%1.bmp").arg(QLatin1String(name)))));
        }
    }

    /// From now on the close is asked for in that yield, counted from 1.
    void CloseInYield(int wanted) {
        yields = 0;
        onYield = [this, wanted] {
            if (++yields == wanted) {
                script().Note(kAsked);
                ShutDown(*instrument);
            }
        };
    }
    bool Reached(int wanted) const { return yields >= wanted; }

    QByteArray Settings() const {
        QFile file(folder.filePath(QStringLiteral("settings/Corvantine.ini")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::vector<const QTimer*> RunningTimers() const {
        std::vector<const QTimer*> running;
        const Forms& forms = instrument->forms;
        for (const QWidget* window :
             std::initializer_list<const QWidget*>{forms.surface.get(), forms.StatsForm, forms.OffsetNullForm,
                                                   forms.FFTForm.get(), forms.FullScreenTimeForm.get()}) {
            if (window == nullptr) {
                continue;
            }
            for (const QTimer* timer : window->findChildren<QTimer*>()) {
                if (timer->isActive()) {
                    running.push_back(timer);
                }
            }
        }
        return running;
    }

    /// After the handler has returned: the shutdown comes, has the driver to itself, and is the last.
    /// before: whether the handler still had to do with the driver on its way back.
    void ExpectACleanEnd(bool before = false) {
        ASSERT_TRUE(QTest::qWaitFor([this] { return instrument->closing.Served(); }, kPatience));
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::processEvents();
        }
        const auto& calls = script().calls;
        const auto asked = std::find(calls.begin(), calls.end(), kAsked);
        ASSERT_NE(asked, calls.end());
        const auto isClose = [](const std::string& call) { return call.starts_with("Close"); };
        const std::vector<std::string> shutdown(
            before ? std::find_if(asked, calls.end(), isClose) : asked + 1, calls.end());
        std::vector<std::string> expected;
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            if (record->ScopeInUse[ch]) {
                expected.push_back("Close(" + std::to_string(ch) + ")");
            }
        }
        expected.emplace_back("CloseDrvr(77)");
        EXPECT_EQ(shutdown, expected);
        EXPECT_THAT(script().violations, IsEmpty());
        EXPECT_THAT(RunningTimers(), IsEmpty());
        const Forms& forms = instrument->forms;
        for (const QWidget* window :
             std::initializer_list<const QWidget*>{forms.surface.get(), forms.SplashForm.get(),
                                                   forms.StatsForm, forms.FullScreenTimeForm.get()}) {
            EXPECT_TRUE(window == nullptr || !window->isVisible());
        }
    }

    /// A run that leaves settings which differ from all defaults that matter here.
    void LeaveSettings(int modules) {
        onYield = nullptr;
        Start(modules);
        instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(12);
        instrument->forms.MainForm->control<KnobControl1>("TriggerKnob")->SetKnobValue(25);
        instrument->shell->SampleDotsButton_Click();
        instrument->shell->FullScreenButton_Click();
        if (modules > 0) {
            instrument->forms.TabForm[2]->control<KnobControl1>("VoltsKnob")->SetKnobValue(2);
        }
        instrument->skins->SkinColourImage_Click();
        instrument->skins->SkinColourImage_Click();
        ShutDown(*instrument);
        ASSERT_FALSE(Settings().isEmpty());
    }

    int yields = 0;
};

} // namespace

TEST_F(CloseTest, InEveryYieldOfTheStartUp) {
    for (const int modules : {0, 2}) {
        LeaveSettings(modules);
        const QByteArray before = Settings();
        int k = 1;
        for (;; ++k) {
            SCOPED_TRACE(testing::Message() << modules << " modules, yield " << k);
            Prepare(modules);
            CloseInYield(k);
            StartUp(*instrument);
            if (!Reached(k)) {
                break;
            }
            ExpectACleanEnd();
            EXPECT_FALSE(record->Running);
            EXPECT_EQ(Settings(), before);
            ASSERT_FALSE(HasFailure());
        }
        // splash, forms, a module each, before the windows, three of the skin, the windows
        EXPECT_EQ(k - 1, modules == 0 ? 11 : 9);
        onYield = nullptr;
        ShutDown(*instrument);
        EXPECT_EQ(Settings(), before);
    }
}

TEST_F(CloseTest, InABoxOfTheStartUpShowsNoOtherBox) {
    Prepare(2, "/MIS5:9"); // its mistake is told twice
    int boxes = 0;
    onShow = [&] {
        ++boxes;
        script().Note(kAsked);
        ShutDown(*instrument);
    };
    StartUp(*instrument);
    EXPECT_EQ(boxes, 1);
    ExpectACleanEnd(true);
    EXPECT_EQ(Settings(), QByteArray());
}

TEST_F(CloseTest, InEveryYieldOfASkinChange) {
    int k = 1;
    for (;; ++k) {
        SCOPED_TRACE(testing::Message() << "yield " << k);
        onYield = nullptr;
        Start(2);
        CloseInYield(k);
        instrument->skins->SkinColourImage_Click();
        if (!Reached(k)) {
            break;
        }
        EXPECT_FALSE(instrument->forms.MainForm->timer("RunTimer")->isActive());
        ExpectACleanEnd();
        EXPECT_TRUE(Settings().contains("SkinColour"));
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_EQ(k - 1, 3);
}

namespace {

struct TickMode {
    const char* name;
    int modules;
    int timeBase;
    int trigMode;
    void (*prepare)(InstrumentTest&, ScriptedDriver&, AcquisitionState&);
    int yields;
};
std::ostream& operator<<(std::ostream& out, const TickMode& mode) {
    return out << mode.name;
}

void Idle(InstrumentTest&, ScriptedDriver&, AcquisitionState&) {}
void Busy(InstrumentTest&, ScriptedDriver& script, AcquisitionState& state) {
    script.acquistionState.Always(1);
    state.Acquiring = true;
}
void Rolling(InstrumentTest&, ScriptedDriver& script, AcquisitionState& state) {
    script.acquistionState.Always(1);
    script.samplesSinceTrigger.Always(500);
    state.Acquiring = true;
}
void ProbeIsDue(InstrumentTest&, ScriptedDriver&, AcquisitionState& state) {
    state.AutoTicks = kProbeTicks;
    state.FreeRunning = true;
}
void Single(InstrumentTest&, ScriptedDriver&, AcquisitionState& state) {
    state.OnceMode = true;
}

constexpr int kRIS = 2;
constexpr int kRefresh = 7;
constexpr int kRoll = 26;
const TickMode kTickModes[] = {{"Demonstration", 0, kRefresh, 0, Idle, 1},
                               {"Auto", 2, kRefresh, 0, Idle, 1},
                               {"Norm", 2, kRefresh, 1, Idle, 1},
                               {"Free", 2, kRefresh, 2, Idle, 1},
                               {"WaitingForATrigger", 2, kRefresh, 1, Busy, 1},
                               {"Probe", 2, kRefresh, 0, ProbeIsDue, 1},
                               {"SingleShot", 2, kRefresh, 0, Single, 1},
                               {"RIS", 2, kRIS, 1, Idle, 1},
                               {"Roll", 2, kRoll, 0, Rolling, 2}};

class CloseInATick : public CloseTest, public testing::WithParamInterface<TickMode> {};

} // namespace

TEST_P(CloseInATick, InEveryYield) {
    const TickMode& mode = GetParam();
    int k = 1;
    for (;; ++k) {
        SCOPED_TRACE(testing::Message() << "yield " << k);
        onYield = nullptr;
        Start(mode.modules);
        instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(mode.timeBase);
        while (record->TrigMode != mode.trigMode) {
            instrument->trigger->TrigModeButton_Click();
        }
        ASSERT_EQ(record->RISMode, mode.timeBase == kRIS);
        ASSERT_EQ(record->RollMode, mode.timeBase == kRoll);
        mode.prepare(*this, script(), instrument->acquisition);
        CloseInYield(k);
        instrument->runLoop->RunTimer_Timer();
        if (!Reached(k)) {
            break;
        }
        EXPECT_FALSE(instrument->closing.Served()); // not under the feet of the tick
        ExpectACleanEnd();
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_EQ(k - 1, mode.yields);
}

INSTANTIATE_TEST_SUITE_P(EachMode, CloseInATick, testing::ValuesIn(kTickModes),
                         [](const auto& mode) { return std::string(mode.param.name); });

TEST_F(CloseTest, ByTheButtonByTheWindowManagerAndByShutDownIsTheSame) {
    for (const int way : {0, 1, 2}) {
        SCOPED_TRACE(way);
        onYield = nullptr;
        Start(2);
        yields = 0;
        onYield = [&] {
            if (++yields != 1) {
                return;
            }
            script().Note(kAsked);
            if (way == 0) {
                auto* button = instrument->forms.MainForm->control<ButtonControl1>("CloseButton");
                QTest::mouseClick(button, Qt::LeftButton);
            } else if (way == 1) {
                instrument->forms.surface->close();
            } else {
                ShutDown(*instrument);
            }
            EXPECT_TRUE(instrument->closing.Wanted());
        };
        instrument->runLoop->RunTimer_Timer();
        ExpectACleanEnd();
    }
}

TEST_F(CloseTest, AHandOnTheControlsMeanwhileStartsNothing) {
    Start(2);
    yields = 0;
    onYield = [&] {
        if (++yields == 1) {
            script().Note(kAsked);
            ShutDown(*instrument);
            for (const char* name : {"RunButton", "RunButton", "OnceButton", "TrigModeButton"}) {
                QTest::mouseClick(instrument->forms.MainForm->control<ButtonControl1>(name), Qt::LeftButton);
            }
            EXPECT_THAT(RunningTimers(), IsEmpty());
        }
    };
    instrument->runLoop->RunTimer_Timer();
    ExpectACleanEnd();
}

TEST_F(CloseTest, WhatAKnobHoldsBackDoesNotReachTheInstrumentAfterwards) {
    Start(2);
    auto* knob = instrument->forms.TabForm[1]->control<KnobControl1>("OffsetKnob");
    knob->setFocus();
    QTest::keyClick(knob, Qt::Key_Up); // its change waits in a timer of the knob's own
    QTest::keyClick(knob, Qt::Key_Up);
    script().Note(kAsked);
    // The box of a file that cannot be written lets time pass after the modules are closed.
    QFile blocker(folder.filePath(QStringLiteral("settings")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    onShow = [] { QTest::qWait(100); };
    ShutDown(*instrument);
    EXPECT_THAT(shown, SizeIs(1));
    ExpectACleanEnd();
}

TEST_F(CloseTest, FilesThatCannotBeWrittenAreToldInOneBoxAndTheCloseGoesOn) {
    Start(2);
    QFile blocker(folder.filePath(QStringLiteral("settings")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly)); // where the folder would be
    script().Note(kAsked);
    bool closedBefore = true;
    onShow = [&] { closedBefore = script().closed; };
    ShutDown(*instrument);
    ASSERT_THAT(shown, SizeIs(1));
    for (const char* name :
         {"Corvantine.ini", "Corvantine_CalData_SN0001.ini", "Corvantine_CalData_SN0002.ini"}) {
        EXPECT_THAT(shown[0].toStdString(), HasSubstr(name));
    }
    EXPECT_FALSE(closedBefore);
    ExpectACleanEnd();
}

TEST_F(CloseTest, TheEndOfTheSessionSavesAndLeavesTheProgramRunning) {
    Start(2);
    instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(12);
    script().Clear();
    EXPECT_THAT(instrument->KeepSettings(), IsEmpty());
    EXPECT_THAT(script().calls, IsEmpty());
    EXPECT_TRUE(instrument->forms.surface->isVisible());
    EXPECT_TRUE(instrument->forms.MainForm->timer("RunTimer")->isActive());
    const QByteArray kept = Settings();
    EXPECT_TRUE(kept.contains("TimeBase"));
    ShutDown(*instrument);
    EXPECT_EQ(Settings(), kept); // all that the close saves
}

TEST_F(CloseTest, AProgramThatIsToldToQuitCloses) {
    for (const bool starting : {true, false}) {
        SCOPED_TRACE(starting);
        Prepare(2);
        SaveWithTheSession(*instrument);
        const auto quit = [this] {
            script().Note(kAsked);
            QEvent event(QEvent::Quit);
            QCoreApplication::sendEvent(qApp, &event);
        };
        yields = 0;
        onYield = [&] {
            if (++yields == 3 && starting) {
                quit();
            }
        };
        StartUp(*instrument);
        if (!starting) {
            EXPECT_FALSE(instrument->closing.Wanted());
            quit();
        }
        ExpectACleanEnd();
    }
}

TEST_F(CloseTest, ASessionThatEndsDuringTheStartUpLeavesTheSettingsAsTheyWere) {
    LeaveSettings(2);
    const QByteArray before = Settings();
    Prepare(2);
    onYield = [this] { EXPECT_THAT(instrument->KeepSettings(), IsEmpty()); };
    StartUp(*instrument);
    onYield = nullptr;
    EXPECT_EQ(Settings(), before);
}
