#pragma once

#include "controls/design.h"

/// Corvantine_TabCurs: which of the six cursors are on.
const FormDesign& CursorTabDesign();
