#pragma once

#include "frame/record/colour.h"

#include <QPoint>
#include <QPointF>
#include <QSizeF>
#include <array>
#include <span>

class QPainter;
class QColor;

/// One arc of a graded bevel: degrees counter-clockwise from the positive x axis, `to` may lie past 360 or
/// below `from` (the arc then runs through 0), and a colour.
struct BevelArc {
    double from;
    double to;
    Colour colour;
};

/// A ring around a centre, in pixels. The aspect is height / width: up to 1 the radius is half the width,
/// above 1 it is half the height.
struct Ring {
    QPointF centre;
    double radius;
    double aspect;
    double lineWidth;
};

/// Controls name as their centre a pixel left of and above the middle, the whole part of `size / 2` less 1.
/// This leads from there to the middle of the surface itself, around which everything is drawn: to the far
/// corner of that pixel where the size is even, half a pixel further where it is odd.
inline QPointF ToMiddle(QPoint centre, QSizeF size) {
    return QPointF(size.width() / 2, size.height() / 2) - QPointF(centre);
}

/// Lit from the upper left with a dark upper half: the surface inside looks sunk.
inline constexpr std::array<BevelArc, 6> kSunkBevel{{{55, 215, 0x000000},
                                                     {215, 225, 0x404040},
                                                     {225, 235, 0x909090},
                                                     {235, 35, 0xF0F0F0},
                                                     {35, 45, 0x909090},
                                                     {45, 55, 0x404040}}};
/// Lit from the upper left with a light upper half: the surface inside looks raised.
inline constexpr std::array<BevelArc, 6> kRaisedBevel{{{35, 245, 0xF0F0F0},
                                                       {245, 255, 0xC0C0C0},
                                                       {255, 265, 0x909090},
                                                       {265, 15, 0x000000},
                                                       {15, 25, 0x909090},
                                                       {25, 35, 0xC0C0C0}}};

/// Degrees that an arc covers, above 0 and at most 360.
double ArcSweep(const BevelArc& arc);

/// Half width and half height of a ring; both 0 when there is nothing to draw.
QSizeF RingSemiAxes(double radius, double aspect);

/// Strokes each arc along the ring, in order. A ring of no size or no width draws nothing.
void DrawBevel(QPainter& painter, const Ring& ring, std::span<const BevelArc> arcs);

/// Strokes the whole ring in one colour.
void DrawRing(QPainter& painter, const Ring& ring, const QColor& colour);
