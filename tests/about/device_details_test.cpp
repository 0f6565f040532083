#include "about/device_details.h"
#include "frame/record/record.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

/// One module in slot 1, as a start-up without forcing leaves it.
Record OneModule() {
    Record record;
    record.CrLf = QStringLiteral("\r\n");
    record.ForcedPort = -2;
    record.NumScopesFound = 1;
    record.ScopeInUse[1] = true;
    record.ScopeName[1] = QStringLiteral("Corvantine");
    record.ScopeSerial[1] = QStringLiteral("SN0001");
    record.ScopePort[1] = 5;
    record.ScopeHWRev[1] = 0x1AB;
    record.ScopeControllerRev[1] = 0x2F;
    return record;
}

QStringList Lines(const Record& record, int channel = 1, bool portOpen = true) {
    return about::DeviceDetails(channel, record, portOpen).split(QStringLiteral("\r\n"));
}

} // namespace

TEST(DeviceDetails, OfOneModuleAreEightLinesWithoutANote) {
    EXPECT_EQ(
        Lines(OneModule()),
        QStringList({"Device 1", "----------", "Name: Corvantine", "COM: 5 (open)", "Serial Number: SN0001",
                     "H/W Rev: 0x1AB", "Controller Rev: 0x2F", "Connected In Stack: not applicable"}));
}

TEST(DeviceDetails, TellsTheStackOnlyOfTwoModulesAndMore) {
    Record record = OneModule();
    record.NumScopesFound = 2;
    EXPECT_EQ(Lines(record).at(7), QStringLiteral("Connected In Stack: True"));
    record.ScopeInUse[1] = false;
    EXPECT_EQ(Lines(record).at(7), QStringLiteral("Connected In Stack: False"));
}

TEST(DeviceDetails, AModuleOutOfUseHasTheNoteBehindAnEmptyLine) {
    Record record = OneModule();
    record.ScopeInUse[1] = false;
    EXPECT_EQ(Lines(record).mid(8),
              QStringList({"", "Note: because this device is not", "connected in the stack, it is",
                           "not in use!  To use it, close this", "application, disconnect all scopes",
                           "from their USB ports, than stack", "all scopes using the supplied stack",
                           "connectors.  Re-connect all scopes", "to their USB ports and re-run this",
                           "application."}));
}

TEST(DeviceDetails, AForcedPortIsToldOnTheComLineAndOnTheStackLine) {
    Record record = OneModule();
    record.NumScopesFound = 4;
    record.ForcedPort = 5;
    EXPECT_EQ(Lines(record).at(3), QStringLiteral("COM: 5 (open)(forced via cmd line)"));
    EXPECT_EQ(Lines(record).at(7), QStringLiteral("Connected In Stack: not permitted or checked !"));
    for (int none : {0, -1, -2}) {
        record.ForcedPort = none;
        EXPECT_EQ(Lines(record).at(3), QStringLiteral("COM: 5 (open)"));
        EXPECT_EQ(Lines(record).at(7), QStringLiteral("Connected In Stack: True"));
    }
}

TEST(DeviceDetails, SayAClosedPortAndKeepWhatAModuleIsCalled) {
    Record record = OneModule();
    record.ScopeName[1] = QStringLiteral("%1 <b>");
    record.ScopeHWRev[1] = -1;
    record.ScopeControllerRev[1] = 0;
    const QStringList lines = Lines(record, 1, false);
    EXPECT_EQ(lines.at(2), QStringLiteral("Name: %1 <b>"));
    EXPECT_EQ(lines.at(3), QStringLiteral("COM: 5 (closed)"));
    EXPECT_EQ(lines.at(5), QStringLiteral("H/W Rev: 0xFFFFFFFF"));
    EXPECT_EQ(lines.at(6), QStringLiteral("Controller Rev: 0x0"));
}
