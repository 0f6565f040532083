#pragma once

#include "frame/record/record.h"

#include <QPoint>
#include <QRect>

inline constexpr Colour kSkinKey = 0xC0FFFF;     ///< the colour of everything outside a face
inline constexpr Colour kBrightening = 0x202020; ///< a knob's face above the material that it stands in

/// Where a control of that place takes its colour: its centre, ties to even.
QPoint SamplePoint(const QRect& place);

/// The sum channel by channel, each at most 255.
Colour Brightened(Colour sample, Colour by = kBrightening);
