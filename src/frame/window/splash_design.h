#pragma once

#include "controls/design.h"

/// Corvantine_SplashForm: what start-up is doing.
const FormDesign& SplashDesign();
