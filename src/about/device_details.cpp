#include "about/device_details.h"
#include "frame/record/record.h"

#include <QStringList>

namespace about {

namespace {

QString StackText(int channel, const Record& record) {
    if (record.ForcedPort > 0) {
        return QStringLiteral("not permitted or checked !");
    }
    if (record.NumScopesFound < 2) {
        return QStringLiteral("not applicable");
    }
    return record.ScopeInUse[channel] ? QStringLiteral("True") : QStringLiteral("False");
}

/// Begins with an empty line, which sets it off from what stands above.
QStringList NotInUseNote() {
    return {QString(),
            QStringLiteral("Note: because this device is not"),
            QStringLiteral("connected in the stack, it is"),
            QStringLiteral("not in use!  To use it, close this"),
            QStringLiteral("application, disconnect all scopes"),
            QStringLiteral("from their USB ports, than stack"),
            QStringLiteral("all scopes using the supplied stack"),
            QStringLiteral("connectors.  Re-connect all scopes"),
            QStringLiteral("to their USB ports and re-run this"),
            QStringLiteral("application.")};
}

} // namespace

QString Hex(std::int32_t value) {
    return QString::number(static_cast<std::uint32_t>(value), 16).toUpper();
}

QString DeviceDetails(int channel, const Record& record, bool portOpen) {
    // Texts of a module are joined on, never put into a pattern: they may hold percent signs.
    const QString forced = record.ForcedPort > 0 ? QStringLiteral("(forced via cmd line)") : QString();
    QStringList lines{QStringLiteral("Device ") + QString::number(channel),
                      QStringLiteral("----------"),
                      QStringLiteral("Name: ") + record.ScopeName[channel],
                      QStringLiteral("COM: ") + QString::number(record.ScopePort[channel]) +
                          (portOpen ? QStringLiteral(" (open)") : QStringLiteral(" (closed)")) + forced,
                      QStringLiteral("Serial Number: ") + record.ScopeSerial[channel],
                      QStringLiteral("H/W Rev: 0x") + Hex(record.ScopeHWRev[channel]),
                      QStringLiteral("Controller Rev: 0x") + Hex(record.ScopeControllerRev[channel]),
                      QStringLiteral("Connected In Stack: ") + StackText(channel, record)};
    if (!record.ScopeInUse[channel]) {
        lines += NotInUseNote();
    }
    return lines.join(record.CrLf);
}

} // namespace about
