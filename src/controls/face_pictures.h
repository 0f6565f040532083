#pragma once

#include "controls/design.h"
#include "controls/picture.h"

/// The small pictures of the face, drawn rather than stored, so that they are crisp at any scale. A Picture
/// or HyperLink row asks for one by the property "drawing", a form by its ground; an empty function stands
/// for an unknown name.
///   "timeCursor1".."timeCursor3"    handles of the bar below the plot, tip upwards
///   "levelCursor1".."levelCursor3"  handles of the bar beside the plot, tip to the left
///   "skinColour"                    the patch that changes the skin
///   "webLink"                       the way to the update page
///   "splash"                        ground of the splash window
///   "dialog"                        ground of a dialog, with plates under the buttons that want another
///   "figures"                       ground of the measurement window
///   "panel"                         a pull-out panel with the wells and plates of its controls
FaceDrawing FindDrawing(const QString& name, const FormDesign& form);
