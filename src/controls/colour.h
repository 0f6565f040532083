#pragma once

#include "frame/record/record.h"

#include <QColor>

/// Qt's colour of a 0x00BBGGRR value; the top byte is ignored.
inline QColor ToQColor(Colour c) {
    return {static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF),
            static_cast<int>((c >> 16) & 0xFF)};
}

inline Colour FromQColor(const QColor& c) {
    return static_cast<Colour>(c.red()) | (static_cast<Colour>(c.green()) << 8) |
           (static_cast<Colour>(c.blue()) << 16);
}

inline constexpr Colour kButtonFace = 0xC0C0C0; ///< stands for the system's button-face colour
