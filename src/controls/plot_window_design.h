#pragma once

#include "controls/design.h"

/// What the spectrum window and the large time window share: a canvas as wide as the window, lines of text,
/// the clipboard button and the colour key of the channels at the lower right.

inline constexpr int kPlotWindowLine =
    13; ///< height of a line of the face's font, the unit of the arrangement
inline constexpr int kPlotWindowTextLeft = 80; ///< of the lower lines, beside the clipboard button

FormDesign PlotWindowForm(const QString& name, const QString& caption, QSize size);
ControlDesign PlotWindowCanvas(QRect place, const QString& tip);
ControlDesign PlotWindowLabel(const char* name, QRect place, const QString& caption, const QString& tip = {});
ControlDesign PlotWindowClipboard(int top);
/// IdentFrame at the lower right, so many lines high, with the labels Ch(1) to Ch(6).
void AddIdentFrame(FormDesign& form, const QString& tip, int lines = 2);
