#pragma once

#include "controls/design.h"

#include <QPoint>

/// Corvantine_Main: the instrument's face.
const FormDesign& MainFormDesign();
