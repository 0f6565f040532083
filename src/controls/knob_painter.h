#pragma once

#include "controls/knob_layout.h"

#include <QColor>

class QPainter;
struct KnobDesign;

/// What is drawn of a knob apart from its children.
struct KnobFace {
    KnobLayout layout;
    QColor back;      ///< of the control
    QColor labelBack; ///< of the value label; invalid: no label is shown
};

/// The parts that stand still: back, label's back, circle, tick marks and the machined groove.
void DrawKnobFace(QPainter& painter, const KnobDesign& design, const KnobFace& face, QRectF control);

/// `KnobIndicator`, three pixels wide, at that angle.
void DrawKnobPointer(QPainter& painter, const KnobLayout& layout, double angle);

/// What the pointer can touch.
QRectF PointerBounds(const KnobLayout& layout);

/// Shows that the keyboard turns this knob.
void DrawKnobFocus(QPainter& painter, const KnobLayout& layout);
