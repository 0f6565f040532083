#pragma once

#include <QRegion>

class DebugLog;
class cDIBSection;

/// The outline of a picture: its rectangle without the pixels of the key colour, which is that of the last
/// column of the top row. Columns are counted by the bytes of a row, so the padding of some widths makes one
/// more column; key pixels there lie outside of the rectangle and are added to it, not removed.
QRegion OutlineOf(const cDIBSection& dib);

/// Writes the whole picture and each vertical run of key colour to the log.
void LogOutlineScan(DebugLog& log, const cDIBSection& dib);
