#include "driver/lies.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>

namespace {

constexpr int kPatience = 240000; ///< ms for a whole run; a step that hangs ends sooner

const char* const kNotInStack =
    "box: WARNING:  There may be one or more Corvantines that are not|in the main stack.  The stack cannot "
    "work like this.  Please|either stack all connected Corvantines or unplug any non-stacked|scopes from "
    "their USB port";
const char* const kUnpowered =
    "box: WARNING:  There may be one or more Corvantines in the stack|that are not connected to a USB port.  "
    "The stack cannot work|like this.  Please connect all stacked Corvantines to USB ports|and check the "
    "power LED on each is illuminated";
const char* const kWrongInstrument =
    "box: This application can only run with Corvantine's.|Please close this application and replace "
    "instrument with Corvantine.|Starting Application in DEMO Mode...";

/// Plots have been made for a quarter of a second, long after the start-up.
const char* const kAtWork = "above UpdateRateLabel 0";

/// The program as it is shipped, from its start to a press of its close button.
class Program : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("QT_QPA_GENERIC_PLUGINS", "witness");
        environment.insert("QT_PLUGIN_PATH", CORVANTINE_TEST_PLUGINS);
        environment.insert("XDG_CONFIG_HOME", folder.filePath("config"));
        environment.insert("XDG_RUNTIME_DIR", folder.path());
    }

    /// Follows the steps and closes. Fails unless the program ends by itself and well, has saved its
    /// settings, and has nothing to say on standard error.
    void Run(QStringList steps) {
        steps.append("click CloseButton");
        environment.insert("CORVANTINE_WITNESS", steps.join('\n'));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(CORVANTINE_PROGRAM, {});
        const bool ended = program.waitForFinished(kPatience);
        if (!ended) {
            program.kill();
            program.waitForFinished();
        }
        told = QString::fromUtf8(program.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        const std::string all = told.join('\n').toStdString();
        EXPECT_TRUE(ended) << all;
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << all;
        EXPECT_EQ(program.exitCode(), 0) << all;
        EXPECT_EQ(Said(program), "");
        // A close before anything was at work has nothing to save.
        EXPECT_TRUE(steps.size() == 1 || QFile::exists(folder.filePath("config/Corvantine/Corvantine.ini")));
    }
    void RunStack(const char* file, const QStringList& steps) {
        environment.insert("CORVANTINE_DRIVER", CORVANTINE_SIMULATED_STACK);
        environment.insert("CORVANTINE_STACK", QDir(CORVANTINE_STACK_EXAMPLES).filePath(file));
        Run(steps);
    }
    /// Standard error without what the platform without a screen says of itself.
    static std::string Said(QProcess& program) {
        QStringList lines = QString::fromUtf8(program.readAllStandardError()).split('\n');
        lines.removeIf([](const QString& line) { return line.startsWith("This plugin does not support"); });
        return lines.join('\n').toStdString();
    }
    /// The texts of the message boxes, as the witness tells them.
    std::string Boxes() const { return told.filter("box: ").join('\n').toStdString(); }

    QTemporaryDir folder;
    QProcessEnvironment environment;
    QStringList told;
};

/// Interleaved, rolling, and back to what the program starts with.
const QStringList kAllModes = {
    "await AcqModeLabel Acquistion mode: Single-shot (sample interval: 20ns, refresh mode)",
    "await TriggerStatusLabel trigger !",
    "set TimeBaseKnob 2",
    "await AcqModeLabel Acquistion mode: RIS (repetitive inputs, norm trig only, effective sample interval: "
    "1ns)",
    "await TriggerStatusLabel trigger !",
    "set TimeBaseKnob 22",
    "await AcqModeLabel Acquistion mode: Single-shot (sample interval: 1ms, roll mode)",
    "await TriggerStatusLabel acquiring",
    "above UpdateRateLabel 0",
    "set TimeBaseKnob 5",
    "await AcqModeLabel Acquistion mode: Single-shot (sample interval: 20ns, refresh mode)",
    "await TriggerStatusLabel trigger !",
};

TEST_F(Program, KeepsTheRulesOnFourModules) {
    RunStack("four_modules.stack", kAllModes);
    EXPECT_EQ(Boxes(), "");
}

TEST_F(Program, KeepsTheRulesWithItsControlsAtWork) {
    QStringList steps = {kAtWork};
    for (const char* button : {"TrigModeButton", "TrigTypeButton", "TrigModeButton", "TrigTypeButton",
                               "TrigModeButton", "RunButton", "RunButton", "OnceButton"}) {
        steps << QString("click ") + button;
    }
    for (const char* knob : {"TriggerKnob", "VoltsKnob", "OffsetKnob", "DelayKnob"}) {
        steps << QString("set ") + knob + " 2" << QString("set ") + knob + " 1";
    }
    RunStack("four_modules.stack", steps);
}

TEST_F(Program, KeepsTheRulesInDemonstration) {
    environment.insert("CORVANTINE_DRIVER", CORVANTINE_SIMULATED_STACK);
    const QString none = folder.filePath("none.stack");
    QFile file(none);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[module]\nproduct = Somebody else's\n");
    file.close();
    environment.insert("CORVANTINE_STACK", none);
    Run({"await DemoLabel Demo Mode !", kAtWork, "set TimeBaseKnob 2",
         "await AcqModeLabel Acquistion mode: RIS (repetitive inputs", "set TimeBaseKnob 10",
         "await AcqModeLabel Acquistion mode: Single-shot (sample interval: 100ns, refresh mode)",
         "above UpdateRateLabel 0"});
    EXPECT_EQ(Boxes(), kWrongInstrument);
}

TEST_F(Program, AClosePressedBeforeTheStartUpIsOverLeavesTheClosedDriverAlone) {
    RunStack("four_modules.stack", {}); // as soon as the button is there
    EXPECT_EQ(Boxes(), "");
}

TEST_F(Program, WarnsOfAModuleOutsideTheStack) {
    RunStack("miswired.stack", {"equals DemoLabel No Scopes In Use !", kAtWork});
    EXPECT_EQ(Boxes(), kNotInStack);
}

TEST_F(Program, WarnsOfAModuleWithoutPower) {
    RunStack("unpowered.stack", {"equals DemoLabel No Scopes In Use !", kAtWork});
    EXPECT_EQ(Boxes(), kUnpowered);
}

TEST_F(Program, AModuleThatStopsAnsweringShowsAsNoTrigger) {
    RunStack("stops_answering.stack",
             {"await TriggerStatusLabel trigger !", "equals TriggerStatusLabel trigger ?...",
              "set TimeBaseKnob 2", "await TriggerStatusLabel trigger ?.", "set TimeBaseKnob 22",
              "await TriggerStatusLabel trigger ?."});
}

TEST_F(Program, AMasterThatStaysBusyStandsStill) {
    RunStack("stays_busy.stack",
             {"await TriggerStatusLabel trigger !", "above UpdateRateLabel 0", "equals UpdateRateLabel 0",
              "set TimeBaseKnob 10", "click RunButton", "click RunButton", "equals UpdateRateLabel 0"});
}

class BadPasses : public Program, public testing::WithParamInterface<const char*> {};

TEST_P(BadPasses, AreDiscarded) {
    RunStack(GetParam(),
             {"await TriggerStatusLabel trigger !", "set TimeBaseKnob 4",
              "await AcqModeLabel Acquistion mode: RIS", "await TriggerStatusLabel trigger !",
              "above UpdateRateLabel 0", "set TimeBaseKnob 5", "await TriggerStatusLabel trigger !"});
    EXPECT_EQ(Boxes(), "");
}

INSTANTIATE_TEST_SUITE_P(Program, BadPasses,
                         testing::Values("invalid_passes.stack", "misplaced_passes.stack"));

class OtherFaults : public Program, public testing::WithParamInterface<const char*> {};

TEST_P(OtherFaults, LeaveTheProgramAtWork) {
    RunStack(GetParam(), kAllModes);
    EXPECT_EQ(Boxes(), "");
}

INSTANTIATE_TEST_SUITE_P(Program, OtherFaults, testing::Values("bad_readings.stack", "slow.stack"));

class Lies : public Program, public testing::WithParamInterface<const char*> {};

TEST_P(Lies, AreSurvived) {
    const QString lie = GetParam();
    environment.insert("CORVANTINE_DRIVER", CORVANTINE_LYING_DRIVER);
    environment.insert("CORVANTINE_LIE", lie);
    const bool nobody = lie == "silent" || lie.startsWith("name length");
    const bool unstacked = lie.startsWith("numbers");
    QStringList steps;
    if (nobody) {
        steps << "await DemoLabel Demo Mode !";
    } else if (unstacked) {
        steps << "equals DemoLabel No Scopes In Use !";
    } else {
        steps << "await TriggerStatusLabel trigger !";
    }
    // An instrument that seems busy for ever is never plotted; the count of plots says so.
    const char* const counted = unstacked ? "equals UpdateRateLabel 0" : kAtWork;
    steps << counted;
    for (const char* setting : {"3", "24", "8"}) {
        steps << QString("set TimeBaseKnob ") + setting << counted;
    }
    Run(steps);
    EXPECT_EQ(Boxes(), nobody ? kWrongInstrument : unstacked ? kNotInStack : "");
}

INSTANTIATE_TEST_SUITE_P(Program, Lies, testing::ValuesIn(kLies));

} // namespace
