#pragma once

#include "controls/design.h"

/// Corvantine_Tab1 to Corvantine_Tab4: one table, with the channel's number, colour and offset limit.
FormDesign ChannelTabDesign(int channel, Colour colour);
