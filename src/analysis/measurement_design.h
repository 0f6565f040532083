#pragma once

#include "controls/design.h"

/// Corvantine_StatsForm with its heading; the rows of figures are built when the instruments are known.
const FormDesign& MeasurementDesign();
