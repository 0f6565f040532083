#include "about/device_list.h"

#include "about/device_details.h"
#include "controls/number_format.h"
#include "frame/record/record.h"

namespace about {

QString DeviceLine(int channel, const Record& record) {
    return QStringLiteral("%1:%2 %3 %4")
        .arg(QString::number(channel), record.ScopeSerial[channel], Hex(record.ScopeHWRev[channel]),
             Hex(record.ScopeControllerRev[channel]));
}

QString DiagnosticsLine(int channel, const Record& record) {
    return QStringLiteral("%1:%2 %3 %4 %5 %6")
        .arg(QString::number(channel), QString::number(record.ScopeRISBandB[channel]),
             QString::number(record.ScopeRISBandA[channel]),
             QString::number(record.ScopeTriggerDACOffset[channel]),
             FormatNumber(record.ScopeRawChannelOffset[channel], QStringLiteral("0.0")),
             FormatNumber(record.ScopeOffsetDACScale[channel], QStringLiteral("0.000")));
}

QString VersionText() {
    return QStringLiteral("Ver" CORVANTINE_VERSION);
}

} // namespace about
