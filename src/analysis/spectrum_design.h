#pragma once

#include "controls/design.h"

/// Corvantine_FFTForm: the spectrum plot with its cross-hair. Its resize handler arranges the parts.
const FormDesign& SpectrumDesign();
