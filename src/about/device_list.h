#pragma once

#include <QString>

struct Record;

/// The lines of the about tab's two lists; pure text made from the record.
namespace about {

/// channel:serial, hardware and controller revision in hexadecimal
QString DeviceLine(int channel, const Record& record);

/// channel:factory numbers, for diagnostics only
QString DiagnosticsLine(int channel, const Record& record);

/// "Ver" and the three numbers of the version, nothing between
QString VersionText();

} // namespace about
