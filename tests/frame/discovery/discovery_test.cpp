#include "frame/discovery/command_line.h"
#include "frame/discovery/discovery.h"
#include "frame/discovery/messages.h"
#include "frame/discovery/stack_test.h"
#include "frame/record/record.h"
#include "support/scripted_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A start-up's first questions to the instrument, on a scripted stack.
class Discovery : public testing::Test {
  protected:
    void Find(int modules, const char* commandLine = "") {
        instrument = std::make_unique<ScriptedInstrument>(modules, ScriptedInstrument::State::BeforeStartUp);
        instrument->driver.OpenDrvr();
        line = QString::fromLatin1(commandLine);
    }
    void Look() {
        ReadCommandLine(line, record);
        instrument->script.Clear();
        discovery::FindScopes(line, record, instrument->driver, log, show);
    }
    void OpenAll() {
        for (int channel = 1; channel <= kScopeChannels; ++channel) {
            discovery::OpenScope(channel, record, instrument->driver, log);
        }
    }
    bool TestStack() {
        for (int channel = 1; channel <= kScopeChannels; ++channel) {
            if (!TestStackMember(channel, record, instrument->driver, show)) {
                return false;
            }
        }
        return true;
    }
    std::vector<bool> InUse() const {
        return {record.ScopeInUse[1], record.ScopeInUse[2], record.ScopeInUse[3], record.ScopeInUse[4]};
    }
    ScriptedDriver& script() { return instrument->script; }

    Record record;
    DebugLog log{QString(), [](const QString&) {}};
    std::vector<QString> shown;
    ShowMessage show = [this](const QString& text) { shown.push_back(text); };
    QString line;
    std::unique_ptr<ScriptedInstrument> instrument;
};

} // namespace

TEST_F(Discovery, WithNothingConnectedFallsIntoDemonstrationWithoutAWord) {
    Find(0);
    Look();
    EXPECT_TRUE(record.DemoMode);
    EXPECT_EQ(record.NumScopesFound, 0);
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_THAT(script().CallsBut({}),
                ElementsAre("Enumerate(-2, -2)", "GetProductName(1)", "GetProductName(2)",
                            "GetProductName(3)", "GetProductName(4)", "SetDemoMode(1)"));
}

TEST_F(Discovery, AnotherInstrumentIsNamedAndLeadsToDemonstration) {
    Find(0);
    script().interfaces = 1;
    script().modules[1].product = "corvantine";
    Look();
    EXPECT_TRUE(record.DemoMode);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0],
              QStringLiteral("This application can only run with Corvantine's.\n"
                             "Please close this application and replace instrument with Corvantine.\n"
                             "Starting Application in DEMO Mode..."));
}

TEST_F(Discovery, ABadCommandLineIsShownAgainAfterTheModulesWereCounted) {
    Find(2, "debug");
    Look();
    EXPECT_FALSE(record.DemoMode);
    EXPECT_EQ(shown, std::vector<QString>{messages::CommandLineError(QStringLiteral("debug"))});
}

TEST_F(Discovery, TheDriverHearsWhatWasForced) {
    Find(1, "/MIS5:2");
    Look();
    EXPECT_THAT(script().CallsOf({"Enumerate"}), ElementsAre("Enumerate(5, 2)"));
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(Discovery, OpensTheModulesFoundAndReleasesTheirDetectLines) {
    Find(2);
    Look();
    script().Clear();
    OpenAll();
    EXPECT_THAT(InUse(), ElementsAre(true, true, false, false));
    EXPECT_THAT(script().CallsBut({}),
                ElementsAre("GetProductName(1)", "GetSerialNumber(1)", "GetHWRev(1)", "GetPortNumber(1)",
                            "OpenAndReset(1)", "SetTrigMaster(1, 0)", "SetDetectLine(1, 0, 1)",
                            "GetProductName(2)", "GetSerialNumber(2)", "GetHWRev(2)", "GetPortNumber(2)",
                            "OpenAndReset(2)", "SetTrigMaster(2, 0)", "SetDetectLine(2, 0, 1)",
                            "GetProductName(3)", "GetSerialNumber(3)", "GetHWRev(3)", "GetPortNumber(3)",
                            "GetProductName(4)", "GetSerialNumber(4)", "GetHWRev(4)", "GetPortNumber(4)"));
    EXPECT_EQ(record.ScopeSerial[2], QStringLiteral("SN0002"));
    EXPECT_EQ(record.ScopePort[2], 5);
}

TEST_F(Discovery, AModuleThatDoesNotOpenIsNotInUseButIsStillReleased) {
    Find(2);
    script().modules[2].opens = 0;
    Look();
    script().Clear();
    OpenAll();
    EXPECT_THAT(InUse(), ElementsAre(true, false, false, false));
    EXPECT_THAT(script().CallsOf({"SetTrigMaster", "SetDetectLine"}),
                ElementsAre("SetTrigMaster(1, 0)", "SetDetectLine(1, 0, 1)", "SetTrigMaster(2, 0)",
                            "SetDetectLine(2, 0, 1)"));
}

TEST_F(Discovery, AForcedChannelIsTheOnlyOneInUse) {
    Find(4, "/MIS5:2");
    Look();
    OpenAll();
    EXPECT_THAT(InUse(), ElementsAre(false, true, false, false));
    EXPECT_EQ(record.MasterChannel, 2);
}

TEST_F(Discovery, AnEmptySlotBetweenModulesStaysOut) {
    Find(2);
    std::swap(script().modules[2], script().modules[3]);
    Look();
    OpenAll();
    // Two modules were found, so slot 3 lies beyond the count.
    EXPECT_THAT(InUse(), ElementsAre(true, false, false, false));
}

TEST_F(Discovery, DemonstrationOpensAllFourChannels) {
    Find(0);
    Look();
    record.NumScopesFound = kScopeChannels;
    OpenAll();
    EXPECT_THAT(InUse(), ElementsAre(true, true, true, true));
}

TEST_F(Discovery, AStackThatHearsItsMasterPasses) {
    Find(3);
    Look();
    OpenAll();
    script().Clear();
    EXPECT_TRUE(TestStack());
    EXPECT_THAT(InUse(), ElementsAre(true, true, true, false));
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_THAT(script().CallsBut({}),
                ElementsAre("SetDetectLine(1, 0, 1)", "GetDetectLine(1)", "SetDetectLine(1, -1, 0)",
                            "SetDetectLine(2, 0, 1)", "GetDetectLine(2)", "SetDetectLine(3, 0, 1)",
                            "GetDetectLine(3)"));
}

TEST_F(Discovery, AModuleWithoutPowerCostsTheMaster) {
    Find(2);
    script().modules[2].lineHeldLow = true;
    Look();
    OpenAll();
    std::vector<std::string> callsWhenShown;
    show = [&](const QString& text) {
        shown.push_back(text);
        callsWhenShown = script().CallsOf({"Close"});
    };
    script().Clear();
    EXPECT_TRUE(TestStack());
    EXPECT_THAT(InUse(), ElementsAre(false, true, false, false));
    EXPECT_EQ(shown, std::vector<QString>{messages::UnpoweredInStack()});
    EXPECT_THAT(callsWhenShown, IsEmpty()); // the user is told before the module is closed
    EXPECT_THAT(script().CallsBut({"GetDetectLine"}),
                ElementsAre("SetDetectLine(1, 0, 1)", "Close(1)", "SetDetectLine(1, -1, 0)",
                            "SetDetectLine(2, 0, 1)"));
}

TEST_F(Discovery, AModuleOutsideTheStackClosesAllAndEndsTheTest) {
    Find(4);
    script().modules[2].hearsLine = false;
    Look();
    OpenAll();
    script().Clear();
    EXPECT_FALSE(TestStack());
    EXPECT_THAT(InUse(), ElementsAre(false, false, false, false));
    EXPECT_EQ(shown, std::vector<QString>{messages::NotInStack()});
    EXPECT_THAT(script().CallsOf({"Close"}), ElementsAre("Close(1)", "Close(2)", "Close(3)", "Close(4)"));
    EXPECT_THAT(script().CallsOf({"GetDetectLine"}), ElementsAre("GetDetectLine(1)", "GetDetectLine(2)"));
}

TEST_F(Discovery, InDemonstrationTheMasterDrivesTheLineAndTheOthersAreAsked) {
    Find(0);
    Look();
    record.NumScopesFound = kScopeChannels;
    OpenAll();
    script().Clear();
    EXPECT_TRUE(TestStack());
    EXPECT_THAT(script().CallsBut({}),
                ElementsAre("SetDetectLine(1, -1, 0)", "SetDetectLine(2, 0, 1)", "GetDetectLine(2)",
                            "SetDetectLine(3, 0, 1)", "GetDetectLine(3)", "SetDetectLine(4, 0, 1)",
                            "GetDetectLine(4)"));
    EXPECT_THAT(InUse(), ElementsAre(true, true, true, true));
}

TEST_F(Discovery, ReadsTheFactoryNumbersOfAModule) {
    Find(1);
    Look();
    OpenAll();
    script().modules[1].risBandFirst = 12;
    script().modules[1].risBandSecond = 34;
    script().modules[1].triggerDACOffset = -5;
    script().modules[1].rawChannelOffset = 1.5F;
    script().modules[1].offsetDACScale = 0.25F;
    script().Clear();
    discovery::InitScope(1, record, instrument->driver);
    EXPECT_THAT(script().CallsBut({}),
                ElementsAre("InitScope(1, -1)", "GetRISBand(1)", "GetTriggerDACOffset(1)",
                            "GetRawChannelOffset(1)", "GetOffsetDACScale(1)"));
    EXPECT_EQ(record.ScopeRISBandA[1], 12);
    EXPECT_EQ(record.ScopeRISBandB[1], 34);
    EXPECT_EQ(record.ScopeTriggerDACOffset[1], -5);
    EXPECT_EQ(record.ScopeRawChannelOffset[1], 1.5F);
    EXPECT_EQ(record.ScopeOffsetDACScale[1], 0.25F);
}
