#include "frame/discovery/command_line.h"
#include "frame/record/record.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

Record Read(const char* commandLine) {
    Record record;
    record.DebugMode = IsDebugWord(QString::fromLatin1(commandLine));
    ReadCommandLine(QString::fromLatin1(commandLine), record);
    return record;
}

struct Outcome {
    int port, channel, master;
    const char* suffix;
};

void ExpectForcing(const char* commandLine, Outcome expected) {
    SCOPED_TRACE(commandLine);
    const Record record = Read(commandLine);
    EXPECT_EQ(record.ForcedPort, expected.port);
    EXPECT_EQ(record.ForcedChannel, expected.channel);
    EXPECT_EQ(record.MasterChannel, expected.master);
    EXPECT_EQ(record.SettingsSuffix, QString::fromLatin1(expected.suffix));
}

} // namespace

TEST(CommandLine, ReadsEveryForm) {
    ExpectForcing("", {-2, -2, 1, ""});
    ExpectForcing("/MIS5:1", {5, 1, 1, "_5:1"});
    ExpectForcing("/MIS12:4", {12, 4, 4, "_12:4"});
    ExpectForcing("please /MIS5:2", {5, 2, 2, "_5:2"});
    ExpectForcing("/MIS5:9", {5, -1, 1, ""});
    ExpectForcing("/MIS5:0", {5, -1, 1, ""});
    ExpectForcing("/MIS5", {-1, -1, 1, ""});
    ExpectForcing("/MISa:2", {-1, -1, 1, ""});
    ExpectForcing("/MIS5:b", {-1, -1, 1, ""});
    ExpectForcing("/MIS:2", {-1, -1, 1, ""});
    ExpectForcing("/MIS99999999999:2", {-1, -1, 1, ""});
    ExpectForcing("/MIS5:99999999999", {5, -1, 1, ""});
    ExpectForcing("/MIS5:-1e300", {5, -1, 1, ""});
    ExpectForcing("/MIS5:nan", {-1, -1, 1, ""});
    ExpectForcing("/MISinf:2", {-1, -1, 1, ""});
    ExpectForcing("/mis5:2", {-1, -1, 1, ""});
    ExpectForcing("DEBUG", {-1, -1, 1, ""});
}

TEST(CommandLine, TheSuffixKeepsWhatWasTyped) {
    ExpectForcing("/MIS05:1", {5, 1, 1, "_05:1"});
    ExpectForcing("/MIS5:01", {5, 1, 1, "_5:01"});
    ExpectForcing("/MIS5.4:2.0", {5, 2, 2, "_5.4:2.0"});
}

TEST(CommandLine, OnlyTheBareWordTurnsTheLogOn) {
    EXPECT_TRUE(IsDebugWord(QStringLiteral("DEBUG")));
    EXPECT_FALSE(IsDebugWord(QStringLiteral("debug")));
    EXPECT_FALSE(IsDebugWord(QStringLiteral("DEBUG x")));
    EXPECT_FALSE(IsDebugWord(QString()));
}

TEST(CommandLineError, ShowsTheWholeCommandLineAndDropsTheForcing) {
    Record record = Read("/MIS5:9");
    std::vector<QString> shown;
    CheckCommandLineError(QStringLiteral("/MIS5:9"), record,
                          [&](const QString& text) { shown.push_back(text); });
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0], QStringLiteral(
                            "Command line error !\n"
                            "Detected: `/MIS5:9` on the command line.\n"
                            "The correct format is `/MISp:c` where p=valid com port# and c=channel# (1..4).\n"
                            "Example: `Corvantine /MIS5:1` to force com5 on Ch1\n"
                            "Example: `Corvantine /MIS12:3` to force com12 on Ch3"));
    EXPECT_EQ(record.ForcedPort, -1);
    EXPECT_EQ(record.ForcedChannel, -1);
}

TEST(CommandLineError, IsSilentForTheDebugWordAnEmptyLineAndAGoodForcing) {
    for (const char* commandLine : {"DEBUG", "", "/MIS5:2"}) {
        Record record = Read(commandLine);
        CheckCommandLineError(QString::fromLatin1(commandLine), record,
                              [](const QString& text) { ADD_FAILURE() << qPrintable(text); });
    }
}
