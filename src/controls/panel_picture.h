#pragma once

#include "controls/design.h"
#include "controls/picture.h"

#include <QImage>
#include <QPainterPath>

/// Outline of a panel: its body and its own header; the places of the other headers are outside.
QPainterPath PanelOutline(const FormDesign& form);

/// The art of a panel: a painted steel face with plates under the knobs, frames around the groups and the
/// header in the colour of its name. It runs on beyond the outline, so that a coarse mask shows no gap.
FaceDrawing PanelDrawing(const FormDesign& form);

/// The ground of a dialog: a raised sheet of the form's colour, a raised plate under each row of neighbouring
/// buttons whose ground is another, and a sunken frame around the other buttons.
FaceDrawing DialogDrawing(const FormDesign& form);

/// The panel at scale 1 as its window is shaped from: the art inside, kSkinKey outside, none between.
QImage PanelShapePicture(const FormDesign& form);
