#pragma once

#include "controls/knob_layout.h"

#include <QColor>

class QPainter;
struct KnobDesign;

/// The parts that stand still: back, label's back, circle, tick marks and the machined groove.
void DrawKnobFace(QPainter& painter, const KnobDesign& design, const KnobLayout& layout);

/// `KnobIndicator`, three black pixels wide, at that angle of a circle filled with that colour.
void DrawKnobPointer(QPainter& painter, const KnobLayout& layout, double angle, const QColor& fill);

/// What the pointer can touch.
QRectF PointerBounds(const KnobLayout& layout);

/// Shows that the keyboard turns this knob.
void DrawKnobFocus(QPainter& painter, const KnobLayout& layout);

/// The back of the control and of the value label: the circle's fill and border colours, or the other way
/// round when the label lies on the face.
QColor KnobBack(const KnobDesign& design, const KnobLayout& layout);
QColor KnobLabelBack(const KnobDesign& design, const KnobLayout& layout);
