#pragma once

#include "controls/design.h"

/// Corvantine_TabData: which channels are saved, and the save button.
const FormDesign& DataTabDesign();
