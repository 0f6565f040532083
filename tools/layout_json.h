#pragma once

#include "controls/design.h"

#include <QByteArray>

/// The places of a form's controls for the scripts that paint its pictures: name, kind and rectangle
/// [left, top, width, height] in pixels at scale 1, one control a line, in the order of the table.
QByteArray LayoutJson(const FormDesign& form);
