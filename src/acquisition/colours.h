#pragma once

#include "frame/record/record.h"

class QLabel;

/// Foreground and background of a label; written only when they differ, as a palette costs more than a
/// tick may.
void SetTextColour(QLabel& label, Colour colour);
void SetBackColour(QLabel& label, Colour colour);

/// The sum of two colours channel by channel, each held to 255.
Colour Brighten(Colour colour, Colour by);
