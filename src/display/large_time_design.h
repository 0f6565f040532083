#pragma once

#include "controls/design.h"

/// Corvantine_FullScreenTimeForm: the main plot at any size. Its resize handler arranges the parts.
const FormDesign& LargeTimeDesign();
