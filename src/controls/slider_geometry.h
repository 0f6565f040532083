#pragma once

#include "controls/bevel.h"

#include <QLineF>
#include <QRectF>
#include <QSize>
#include <array>

/// Where the parts of a slider stand, in pixels of its surface.
struct SliderLayout {
    bool horizontal = true; ///< a square slider too
    QPoint centre;          ///< a pixel left of and above the middle
    QRectF bar;             ///< the groove, around that pixel; as all is drawn it lies ToMiddle from there
    QRectF thumb;           ///< at the value
    int minPixel = 0;       ///< pointer places along the groove at and below which the value is 0,
    int maxPixel = 0;       ///< at and above which it is 1
};

SliderLayout LayOutSlider(QSize size, double value);

/// The frame of the groove: lines 0 and 1 dark, above and on the left, 2 and 3 light, on the right and below.
/// Each is one pixel wide and covers its end points.
std::array<QLineF, 4> EdgingOfBar(const SliderLayout& layout);

/// The groove where it is drawn, on the middle of the thumb's way.
QRectF DrawnBar(const SliderLayout& layout, QSize size);

/// The thumb as it is drawn: on whole pixels along the groove, its middle on the pixel at which the mouse
/// gives that value, at 0 and 1 at the very ends.
QRectF PlaceThumb(const SliderLayout& layout, double value);
/// Around the middle of the thumb.
Ring ThumbBevel(const QRectF& thumb, int depth);

/// The value under a pointer at pixel `along` of the groove: 0 and 1 at its ends, strictly between elsewhere.
double ValueAt(const SliderLayout& layout, int along);

/// The nearest multiple of the step, ties to even, within 0..1. A step of exactly 1 is no quantizing.
float QuantizeValue(double value, float step);
