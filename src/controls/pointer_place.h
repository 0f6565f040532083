#pragma once

#include <QPoint>
#include <QPointF>

class QMouseEvent;
class QWidget;

/// The point of a control that a mouse event means, in logical pixels. A mouse that counts whole pixels of
/// the screen stands on the middle of one and not on its corner, which is what such a figure names; one that
/// tells fractions is taken at its word. scale: pixels of the screen to a logical one.
QPointF PointerPlace(QPointF position, double scale);
QPointF PointerPlace(const QMouseEvent& event, const QWidget& control);

/// The logical pixel that this point lies on.
QPoint PixelUnder(QPointF place);
