#pragma once

#include "controls/design.h"

#include <vector>

/// The tables of every form of the program, the four channel panels with the colours of their channels.
std::vector<FormDesign> AllForms();
/// The pull-out panels among them, from the topmost header down.
std::vector<FormDesign> AllPanels();
