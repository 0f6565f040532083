#pragma once

#include "controls/design.h"

/// Corvantine_OffsetNullForm: the dialog that nulls a range's own offset.
const FormDesign& OffsetNullDesign();
