#include "about/device_list.h"
#include "frame/record/record.h"

#include <gtest/gtest.h>

TEST(DeviceList, ShowsSerialAndRevisionsInHexadecimal) {
    Record record;
    record.ScopeSerial[3] = QStringLiteral("MX-0042");
    record.ScopeHWRev[3] = 0x1AB;
    record.ScopeControllerRev[3] = -1;
    EXPECT_EQ(about::DeviceLine(3, record), QStringLiteral("3:MX-0042 1AB FFFFFFFF"));
}

TEST(DeviceList, KeepsPercentSignsOfASerialAsTheyAre) {
    Record record;
    record.ScopeSerial[1] = QStringLiteral("%2 %3");
    EXPECT_EQ(about::DeviceLine(1, record), QStringLiteral("1:%2 %3 0 0"));
}

TEST(DiagnosticsList, PutsTheSecondBandFirstAndRoundsTheReals) {
    Record record;
    record.ScopeRISBandA[2] = 11;
    record.ScopeRISBandB[2] = 22;
    record.ScopeTriggerDACOffset[2] = -7;
    record.ScopeRawChannelOffset[2] = 1.25F;
    record.ScopeOffsetDACScale[2] = 0.98765F;
    EXPECT_EQ(about::DiagnosticsLine(2, record), QStringLiteral("2:22 11 -7 1.3 0.988"));
}

TEST(VersionText, HasNoBlankBehindVer) {
    EXPECT_TRUE(about::VersionText().startsWith(QStringLiteral("Ver1.")));
}
