#include "frame/instrument/instrument_fixture.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "frame/record/record.h"
#include "skin/skin_selection.h"
#include "skin/surface.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

QStringList Items(const QComboBox* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
        items << list->itemText(i);
    }
    return items;
}

/// The texts of a log without indents and dates.
QStringList Lines(const QString& log) {
    QStringList lines;
    for (const QString& line : log.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        lines << line.section(QStringLiteral("   (@ "), 0, 0).trimmed();
    }
    return lines;
}

} // namespace

class StartUpTest : public InstrumentTest {};

TEST_F(StartUpTest, WithNothingConnectedRunsInDemonstration) {
    Start(0);
    EXPECT_TRUE(record->DemoMode);
    EXPECT_EQ(record->NumScopesFound, 4);
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_EQ(LabelText(instrument->forms.SplashForm.get(), "Label1", 2),
              QStringLiteral("Demo Mode ! (4 channels)"));
    EXPECT_FALSE(instrument->forms.SplashForm->isVisible());
    EXPECT_TRUE(instrument->forms.MainForm->control<QLabel>("DemoLabel")->isVisible());
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        EXPECT_TRUE(record->ScopeInUse[channel]);
        EXPECT_TRUE(record->ChannelOn[channel]);
        EXPECT_TRUE(instrument->forms.TabForm[channel]->isVisible());
    }
    EXPECT_TRUE(record->ScopeInUse[5] && record->ScopeInUse[6]);
    EXPECT_TRUE(record->Running);
    EXPECT_FALSE(record->PlotInhibit);
    EXPECT_FALSE(record->TracesStale);
    EXPECT_TRUE(instrument->forms.MainForm->timer("RunTimer")->isActive());
    EXPECT_TRUE(instrument->forms.MainForm->timer("AutoTriggerTimer")->isActive());
    EXPECT_TRUE(instrument->forms.MainForm->timer("TabTimer")->isActive());
}

TEST_F(StartUpTest, TheSplashSaysWhatTheStartUpDoes) {
    Prepare(2);
    QStringList doing;
    instrument->environment.yield = [&] {
        const QString now = LabelText(instrument->forms.SplashForm.get(), "Label1", 3);
        if (doing.isEmpty() || doing.last() != now) {
            doing << now;
        }
    };
    StartUp(*instrument);
    EXPECT_EQ(doing, (QStringList{"...", "starting channel 1...", "starting channel 2...",
                                  "starting application..."}));
    QStringList lines;
    for (int line = 0; line < 6; ++line) {
        lines << LabelText(instrument->forms.SplashForm.get(), "Label1", line);
    }
    EXPECT_EQ(lines,
              (QStringList{"Corvantine", "loading...", "found 2 x Corvantines", "starting application...",
                           "Detected O.S.: Win ?", "Ver" CORVANTINE_VERSION}));
}

TEST_F(StartUpTest, AsksTheDriverInItsFixedOrder) {
    Start(2);
    const auto calls = script().CallsBut({"GetSamplePeriod", "GetAcquistionState"});
    const std::vector<std::string> discovery{"OpenDrvr()",        "GetSampleDepth()",  "DrvrIssue()",
                                             "Enumerate(-2, -2)", "GetProductName(1)", "GetProductName(2)",
                                             "GetProductName(3)", "GetProductName(4)"};
    ASSERT_GT(calls.size(), discovery.size());
    EXPECT_EQ(std::vector<std::string>(calls.begin(), calls.begin() + discovery.size()), discovery);
    EXPECT_THAT(script().CallsOf({"OpenAndReset", "GetDetectLine", "InitScope", "GetControllerRev"}),
                ElementsAre("OpenAndReset(1)", "OpenAndReset(2)", "GetDetectLine(1)", "GetDetectLine(2)",
                            "GetControllerRev(1)", "GetControllerRev(2)", "InitScope(1, -1)",
                            "InitScope(2, 0)"));
    // After the tabs were restored the master is marked as the source, twice: once by name, once as a click.
    EXPECT_THAT(script().CallsOf({"SetTrigMaster"}),
                ElementsAre("SetTrigMaster(1, 0)", "SetTrigMaster(2, 0)", "SetTrigMaster(1, -1)",
                            "SetTrigMaster(1, 0)", "SetTrigMaster(2, 0)", "SetTrigMaster(3, 0)",
                            "SetTrigMaster(4, 0)", "SetTrigMaster(1, -1)", "SetTrigMaster(1, 0)",
                            "SetTrigMaster(2, 0)", "SetTrigMaster(3, 0)", "SetTrigMaster(4, 0)",
                            "SetTrigMaster(1, -1)"));
}

TEST_F(StartUpTest, OffersOnlyTheChannelsInUse) {
    Start(2);
    EXPECT_EQ(LabelText(instrument->forms.SplashForm.get(), "Label1", 2),
              QStringLiteral("found 2 x Corvantines"));
    EXPECT_FALSE(instrument->forms.MainForm->control<QLabel>("DemoLabel")->isVisible());
    EXPECT_FALSE(instrument->forms.TabForm[3]->isVisible());
    const Form* math = instrument->forms.TabForm[kMathTab];
    for (const char* combo : {"Math1Combo", "Math2Combo"}) {
        EXPECT_EQ(Items(math->control<QComboBox>(combo, 0)), QStringList({"1", "2"}));
        EXPECT_EQ(Items(math->control<QComboBox>(combo, 1)),
                  QStringList({"+", "-", "x", QString(QChar(0xF7))}));
        EXPECT_EQ(Items(math->control<QComboBox>(combo, 2)), QStringList({"1", "2"}));
        EXPECT_EQ(math->control<QComboBox>(combo, 1)->currentIndex(), 0);
    }
    const Form* horizontal = instrument->forms.TabForm[kHorzTab];
    EXPECT_TRUE(horizontal->control<ButtonControl1>("TrigChanButton", 2)->ButtonVisible());
    EXPECT_FALSE(horizontal->control<ButtonControl1>("TrigChanButton", 3)->ButtonVisible());
    const auto* devices = instrument->forms.TabForm[kAboutTab]->control<QListWidget>("CorvantineList");
    ASSERT_EQ(devices->count(), 2);
    EXPECT_TRUE(devices->item(1)->text().startsWith(QStringLiteral("2:SN0002 ")));
    EXPECT_EQ(instrument->forms.TabForm[kAboutTab]->control<QListWidget>("DebugList")->count(), 2);
}

TEST_F(StartUpTest, ABadChannelOnTheCommandLineIsShownTwiceAndTheDriverHearsThePort) {
    Start(1, "/MIS5:9");
    EXPECT_THAT(shown, SizeIs(2));
    EXPECT_THAT(script().CallsOf({"Enumerate"}), ElementsAre("Enumerate(5, -1)"));
    EXPECT_EQ(record->SettingsSuffix, QString());
    EXPECT_EQ(instrument->forms.surface->windowTitle(), QStringLiteral("Corvantine"));
}

TEST_F(StartUpTest, AnArgumentWithoutAColonForcesNothing) {
    Start(1, "/MIS5");
    EXPECT_THAT(shown, SizeIs(2));
    EXPECT_THAT(script().CallsOf({"Enumerate"}), ElementsAre("Enumerate(-1, -1)"));
}

TEST_F(StartUpTest, AForcedModuleGivesTheWindowItsNameAndRunsAlone) {
    Start(4, "/MIS5:2");
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_EQ(instrument->forms.surface->windowTitle(), QStringLiteral("Corvantine_5:2"));
    EXPECT_EQ(instrument->forms.MainForm->windowTitle(), QStringLiteral("Corvantine_5:2"));
    EXPECT_EQ(instrument->forms.StatsForm->windowTitle(), QStringLiteral("Corvantine_5:2 measurements"));
    EXPECT_EQ(instrument->forms.FFTForm->windowTitle(), QStringLiteral("Corvantine_5:2 spectrum"));
    EXPECT_EQ(instrument->forms.FullScreenTimeForm->windowTitle(), QStringLiteral("Corvantine_5:2 time"));
    EXPECT_EQ(record->MasterChannel, 2);
    EXPECT_EQ(record->TriggerChannel, 2);
    EXPECT_THAT(script().CallsOf({"InitScope"}), ElementsAre("InitScope(2, -1)"));
}

TEST_F(StartUpTest, TheDebugWordWritesTheStepsToTheLog) {
    Start(1, "DEBUG");
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_EQ(LabelText(instrument->forms.MainForm, "DemoLabel"), QStringLiteral("DEBUG MODE !"));
    EXPECT_TRUE(instrument->forms.MainForm->control<QLabel>("DemoLabel")->isVisible());
    ShutDown(*instrument);
    const QStringList lines = Lines(Log());
    QStringList expected{
        QStringLiteral("*********************************START****************************************"),
        QStringLiteral("Starting Corvantine application Ver" CORVANTINE_VERSION),
        QStringLiteral("Opening driver"),
        QStringLiteral("Driver issue scripted"),
        QStringLiteral("Windows ver Detected O.S.: Win ?"),
        QStringLiteral("Creating tab forms"),
        QStringLiteral("Listing skins"),
        QStringLiteral("Command line checking"),
        QStringLiteral("NumIntsFound is 1"),
        QStringLiteral("NumScopesFound is 1"),
        QStringLiteral("Getting scope details"),
        QStringLiteral("About to skin Corvantine_Tab1"),
        QStringLiteral("About to skin Corvantine_TabAbout"),
        QStringLiteral("About to skin Corvantine_Main"),
        QStringLiteral("Showing main panel & restoring settings from registry"),
        QStringLiteral("Showing channel tabs"),
        QStringLiteral("Showing other tabs"),
        QStringLiteral("Running scope timer"),
        QStringLiteral("About to close"),
        QStringLiteral("Saving registry settings"),
        QStringLiteral("Closing scopes"),
        QStringLiteral("Unloading tab forms"),
        QStringLiteral("Closing driver"),
        QStringLiteral("End"),
        QStringLiteral("*********************************STOP*****************************************")};
    for (const QString& line : lines) {
        if (!expected.isEmpty() && line == expected.first()) {
            expected.removeFirst();
        }
    }
    EXPECT_THAT(expected, IsEmpty()) << "not found in this order: " << qPrintable(expected.join('\n'));
    EXPECT_FALSE(
        lines.filter(QRegularExpression(QStringLiteral("^1: Scope data NAME:Corvantine S/N:SN0001 REV:")))
            .isEmpty());
}

TEST_F(StartUpTest, WithoutTheDebugWordNoLogIsMade) {
    Start(1);
    ShutDown(*instrument);
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("Corvantinelog.txt"))));
}

TEST_F(StartUpTest, AModuleOutsideTheStackLeavesNoScopeAndTheProgramRunsOn) {
    Prepare(2);
    script().modules[2].hearsLine = false;
    StartUp(*instrument);
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_EQ(LabelText(instrument->forms.MainForm, "DemoLabel"), QStringLiteral("No Scopes In Use !"));
    EXPECT_TRUE(instrument->forms.MainForm->control<QLabel>("DemoLabel")->isVisible());
    EXPECT_TRUE(instrument->forms.MainForm->timer("RunTimer")->isActive());
    EXPECT_FALSE(record->DemoMode);
    script().Clear();
    instrument->runLoop->RunTimer_Timer();
    EXPECT_THAT(script().calls, Contains("GetAcquistionState(1)"));
}

TEST_F(StartUpTest, StartsOnDefaultsWhenNothingWasSaved) {
    Start(1);
    const Form* main = instrument->forms.MainForm;
    EXPECT_EQ(main->control<KnobControl1>("TimeBaseKnob")->KnobValue(), 7);
    EXPECT_EQ(main->control<KnobControl1>("TimeBaseKnob")->KnobXlatedValue(), QStringLiteral("1us/div"));
    EXPECT_EQ(main->control<KnobControl1>("TriggerKnob")->KnobValue(), 0);
    EXPECT_EQ(record->TrigMode, 0);
    EXPECT_EQ(record->TrigType, 3);
    EXPECT_EQ(main->control<ButtonControl1>("TrigModeButton")->ButtonCaption(), QStringLiteral("auto"));
    EXPECT_EQ(main->control<ButtonControl1>("TrigTypeButton")->ButtonCaption(), QStringLiteral("3"));
    EXPECT_EQ(main->timer("RunTimer")->interval(), 10);
    EXPECT_EQ(instrument->forms.TabForm[1]->control<KnobControl1>("VoltsKnob")->KnobXlatedValue(),
              QStringLiteral("0.3V/div"));
}

TEST_F(StartUpTest, ShutsDownInItsFixedOrder) {
    Start(2);
    script().Clear();
    ShutDown(*instrument);
    EXPECT_THAT(script().calls, ElementsAre("Close(1)", "Close(2)", "CloseDrvr(77)"));
    EXPECT_FALSE(instrument->forms.surface->isVisible());
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("settings/Corvantine.ini"))));
}

TEST_F(StartUpTest, AClosePressedInsideATickEndsTheTickWithoutAnotherCall) {
    Start(2);
    QTimer::singleShot(0, instrument->forms.MainForm, [this] {
        if (instrument->acquisition.RunTimerBusy) {
            script().Clear();
            ShutDown(*instrument);
            EXPECT_FALSE(instrument->closing.Served()); // the tick cannot end while its own yield serves it
        }
    });
    instrument->runLoop->RunTimer_Timer();
    EXPECT_THAT(script().calls, IsEmpty());
    EXPECT_TRUE(QTest::qWaitFor([this] { return instrument->closing.Served(); }, 30000));
    EXPECT_THAT(script().calls, ElementsAre("Close(1)", "Close(2)", "CloseDrvr(77)"));
}

TEST_F(StartUpTest, TheThresholdKnobShowsTheTriggerLinesOfBothTimeDisplays) {
    Start(1);
    const auto line = [](Form& form, const char* canvas) {
        return form.control<QWidget>(canvas)->findChild<QWidget*>("TriggerLine");
    };
    QWidget* main = line(*instrument->forms.MainForm, "MainPlotCanvas");
    QWidget* large = line(*instrument->forms.FullScreenTimeForm, "Canvas");
    ASSERT_TRUE(main != nullptr && large != nullptr && main != large);
    QTimer* timer = instrument->forms.MainForm->timer("TriggerLineTimer");
    EXPECT_EQ(timer->interval(), 2000);
    timer->setInterval(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return main->isHidden() && large->isHidden(); }));
    timer->setInterval(2000);
    auto* knob = instrument->forms.MainForm->control<KnobControl1>("TriggerKnob");
    knob->SetKnobValue(knob->KnobValue() + 5);
    EXPECT_FALSE(main->isHidden());
    EXPECT_FALSE(large->isHidden());
    timer->setInterval(0);
    timer->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return main->isHidden() && large->isHidden(); }));
}

TEST_F(StartUpTest, AFolderThatCannotBeWrittenCostsOnlyTheLog) {
    folder.remove(); // even root cannot write where there is no folder
    Start(1, "DEBUG");
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_TRUE(
        shown[0].startsWith(QStringLiteral("Warning:  failed to open Corvantinelog.txt for writing/append\n"
                                           "DEBUG output will be discarded\n")));
    EXPECT_TRUE(record->Running);
    EXPECT_EQ(LabelText(instrument->forms.MainForm, "DemoLabel"), QStringLiteral("DEBUG MODE !"));
}

TEST_F(StartUpTest, WithoutSkinsThePanelWorksAndTheSkinButtonIsGone) {
    Start(0);
    EXPECT_FALSE(instrument->forms.MainForm->control<QWidget>("SkinColourImage")->isVisible());
    EXPECT_TRUE(instrument->forms.MainForm->control<QWidget>("RunButton")->isVisible());
    EXPECT_TRUE(instrument->forms.MainForm->control<QWidget>("TimeBaseKnob")->isVisible());
}

TEST_F(StartUpTest, WithoutAUsableSkinTheControlsTakeTheColourOfThePlainFace) {
    for (const bool damaged : {false, true}) {
        if (damaged) {
            QDir(folder.path()).mkdir(QStringLiteral("skins"));
            QFile skin(folder.filePath(QStringLiteral("skins/Corvantine_skin_Torn.bmp")));
            ASSERT_TRUE(skin.open(QIODevice::WriteOnly));
            skin.write("BM and nothing else");
        }
        Start(0);
        const Form* main = instrument->forms.MainForm;
        const auto* knob = main->control<KnobControl1>("TimeBaseKnob");
        EXPECT_EQ(instrument->skins->SkinColourAt(*knob), 0x3C3C3CU);
        EXPECT_EQ(FromQColor(knob->KnobBorderColor()), 0x3C3C3CU);
        EXPECT_EQ(FromQColor(knob->KnobFillColor()), 0x5C5C5CU);
        EXPECT_EQ(FromQColor(main->control<ButtonControl1>("RunButton")->ButtonBackColor()), 0x3C3C3CU);
        const QImage face = main->control<Picture>("Image1")->grab().toImage();
        EXPECT_EQ(FromQColor(face.pixelColor(200, 100)), 0x3C3C3CU) << "no hole in the panel";
        main->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(4);
        EXPECT_EQ(FromQColor(knob->KnobFillColor()), 0xFFU);
        main->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(5);
        EXPECT_EQ(FromQColor(knob->KnobFillColor()), 0x5C5C5CU);
        EXPECT_FALSE(instrument->forms.surface->mask().isEmpty());
        EXPECT_TRUE(
            instrument->forms.surface->mask().contains(instrument->forms.MainForm->pos() + QPoint(300, 200)));
        ShutDown(*instrument);
    }
}

TEST_F(StartUpTest, ADriverThatClaimsFourModulesButOpensNoneRunsOn) {
    Prepare(4);
    for (auto& module : script().modules) {
        module.opens = 0;
    }
    StartUp(*instrument);
    EXPECT_EQ(LabelText(instrument->forms.SplashForm.get(), "Label1", 2),
              QStringLiteral("found 0 x Corvantines"));
    EXPECT_EQ(LabelText(instrument->forms.MainForm, "DemoLabel"), QStringLiteral("No Scopes In Use !"));
    instrument->runLoop->RunTimer_Timer();
    EXPECT_FALSE(record->DemoMode);
}

TEST_F(StartUpTest, SettingsOfAForcedModuleAreItsOwn) {
    Start(4, "/MIS5:2");
    instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(12);
    ShutDown(*instrument);
    Start(4);
    EXPECT_EQ(instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->KnobValue(), 7);
    ShutDown(*instrument);
    Start(4, "/MIS5:2");
    EXPECT_EQ(instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob")->KnobValue(), 12);
}

TEST_F(StartUpTest, ASavedDelayIsWorthTheRecordThatRuns) {
    Start(1);
    auto* delay = instrument->forms.TabForm[kHorzTab]->control<KnobControl1>("DelayKnob");
    delay->SetKnobValue(-32768 + 1000);
    ShutDown(*instrument);
    Start(1);
    // 1000 samples of 20 ns, not of the one second that stands for a record not yet taken
    EXPECT_NEAR(record->TriggerDelay, 1000 * 20e-9, 1e-9);
    EXPECT_NEAR(script().settings[1].delay, 1000 * 20e-9, 1e-9);
}
