#pragma once

#include "frame/record/colour.h"

class QLabel;

/// Of what the trigger and the sampling mode want to be seen: triggered, interleaved.
inline constexpr Colour kRed = 0x0000FF;

/// Foreground and background of a label; written only when they differ, as a palette costs more than a
/// tick may.
void SetTextColour(QLabel& label, Colour colour);
void SetBackColour(QLabel& label, Colour colour);
