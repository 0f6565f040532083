#pragma once

#include <QString>

// Application names and sections of the settings; a suffix keeps a forced instance's settings apart.

inline QString SettingsApplication() {
    return QStringLiteral("Corvantine");
}
/// A null table belongs to the module, wherever it is plugged in.
inline QString CalibrationApplication(const QString& serial) {
    return QStringLiteral("Corvantine_CalData_") + serial;
}
inline QString ScopeSection(const QString& suffix) {
    return QStringLiteral("ScopeSettings") + suffix;
}
inline QString ChannelSection(int channel, const QString& suffix) {
    return QStringLiteral("Channel%1Settings").arg(channel) + suffix;
}
inline QString MathTabSection(const QString& suffix) {
    return QStringLiteral("MathTabSettings") + suffix;
}
inline QString HorzTabSection(const QString& suffix) {
    return QStringLiteral("HorzTabSettings") + suffix;
}
inline QString CursTabSection(const QString& suffix) {
    return QStringLiteral("CursTabSettings") + suffix;
}
inline QString OffsetNullSection() {
    return QStringLiteral("OffsetNull");
}
