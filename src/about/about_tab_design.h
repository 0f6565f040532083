#pragma once

#include "controls/design.h"

/// Corvantine_TabAbout: the version, the modules and the way to updates.
const FormDesign& AboutTabDesign();
