#pragma once

#include "controls/design.h"

/// Corvantine_TabHorz: delay, update rate and the source of the trigger.
const FormDesign& HorizontalTabDesign();
