#pragma once

#include "controls/design.h"

/// Corvantine_TabMath: the two math channels and the settings of the spectrum.
const FormDesign& MathTabDesign();
