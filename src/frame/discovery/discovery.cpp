#include "frame/discovery/discovery.h"

#include "driver/driver.h"
#include "frame/discovery/command_line.h"
#include "frame/discovery/messages.h"
#include "frame/record/record.h"

namespace discovery {

namespace {
const QString kProductName = QStringLiteral("Corvantine");
} // namespace

void FindScopes(const QString& commandLine, Record& record, Driver& driver, DebugLog& log,
                const ShowMessage& show) {
    record.NumIntsFound = driver.Enumerate(record.ForcedPort, record.ForcedChannel);
    log.PrintLog(QStringLiteral("NumIntsFound is %1").arg(record.NumIntsFound));

    record.NumScopesFound = 0;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        record.ScopeProductName[channel] = driver.GetProductName(channel);
        record.NumScopesFound += record.ScopeProductName[channel] == kProductName ? 1 : 0;
    }
    log.PrintLog(QStringLiteral("NumScopesFound is %1").arg(record.NumScopesFound));

    if (record.NumScopesFound == 0 && record.NumIntsFound > 0) {
        show(messages::WrongInstrument());
    }
    CheckCommandLineError(commandLine, record, show);
    if (record.NumScopesFound > kScopeChannels) {
        show(messages::TooManyInstruments(record.NumScopesFound));
        record.NumScopesFound = 0;
    }
    record.DemoMode = record.NumScopesFound == 0;
    if (record.DemoMode) {
        driver.SetDemoMode(1);
    }
}

bool OpenScope(int channel, Record& record, Driver& driver, DebugLog& log) {
    record.ScopeName[channel] = driver.GetProductName(channel);
    record.ScopeSerial[channel] = driver.GetSerialNumber(channel);
    record.ScopeHWRev[channel] = driver.GetHWRev(channel);
    record.ScopePort[channel] = driver.GetPortNumber(channel);
    log.PrintLog(QStringLiteral("%1: Scope data NAME:%2 S/N:%3 REV:%4 COM%5")
                     .arg(QString::number(channel), record.ScopeName[channel], record.ScopeSerial[channel],
                          QString::number(record.ScopeHWRev[channel]),
                          QString::number(record.ScopePort[channel])));

    const bool ours = record.ScopeName[channel] == kProductName && record.NumScopesFound > 0;
    if (record.ForcedChannel < 0 || record.DemoMode) {
        record.ScopeInUse[channel] = (channel <= record.NumScopesFound && ours) || record.DemoMode;
    } else {
        record.ScopeInUse[channel] = channel == record.ForcedChannel && ours;
    }
    if (!record.ScopeInUse[channel]) {
        return false;
    }
    record.ScopeInUse[channel] = driver.OpenAndReset(channel);
    driver.SetTrigMaster(channel, false);
    driver.SetDetectLine(channel, 0, 1);
    return record.ScopeInUse[channel];
}

void InitScope(int channel, Record& record, Driver& driver) {
    driver.InitScope(channel, channel == record.MasterChannel);
    driver.GetRISBand(channel, record.ScopeRISBandA[channel], record.ScopeRISBandB[channel]);
    record.ScopeTriggerDACOffset[channel] = driver.GetTriggerDACOffset(channel);
    record.ScopeRawChannelOffset[channel] = driver.GetRawChannelOffset(channel);
    record.ScopeOffsetDACScale[channel] = driver.GetOffsetDACScale(channel);
}

} // namespace discovery
