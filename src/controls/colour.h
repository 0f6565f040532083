#pragma once

#include "frame/record/colour.h"

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

inline constexpr Colour kButtonFace = 0xC0C0C0;  ///< stands for the system's button-face colour
inline constexpr Colour kSwitchOn = 0x00FF00;    ///< ring of a button that is on
inline constexpr Colour kSwitchOff = 0x808080;   ///< ring of a button that is off
inline constexpr Colour kSkinKey = 0xC0FFFF;     ///< the colour of everything outside a face or a panel
inline constexpr Colour kBrightening = 0x202020; ///< a knob's face above the material that it stands in

/// The sum channel by channel, each at most 255.
Colour Brightened(Colour sample, Colour by = kBrightening);
