#pragma once

#include "controls/design.h"

inline constexpr double kLargeTimeHeight = 0.95; ///< of the screen: as tall as the window comes by itself

/// Corvantine_FullScreenTimeForm: the main plot at any size. Its resize handler arranges the parts.
const FormDesign& LargeTimeDesign();
