#pragma once

#include "controls/design.h"
#include "controls/form.h"

QFont MakeFont(const FontDesign& design, const QFont& formFont);
void SetColours(QWidget* widget, Colour back, Colour fore);

/// The widget of a row with its texts, colours and properties, not yet named or placed.
QWidget* MakeControl(const ControlDesign& row, QWidget* parent, const QFont& font, const FormDesign& form,
                     const Form::CanvasMaker& makeCanvas);
