#pragma once

#include "controls/bevel.h"

#include <QLineF>
#include <QRectF>
#include <QSize>
#include <array>

/// Where the parts of a slider stand, in pixels of its surface.
struct SliderLayout {
    bool horizontal = true; ///< a square slider too
    QPoint centre;
    QRectF bar;       ///< the groove
    QRectF thumb;     ///< at the value
    int minPixel = 0; ///< pointer places along the groove at and below which the value is 0,
    int maxPixel = 0; ///< at and above which it is 1
};

/// The thumb as it is drawn: on whole pixels along the groove.
struct ThumbPlace {
    QRectF thumb;
    QPointF centre; ///< the pixel around which its bevel is drawn
};

SliderLayout LayOutSlider(QSize size, double value);

/// The frame of the groove: lines 0 and 1 dark, above and on the left, 2 and 3 light, on the right and below.
/// Each is one pixel wide and covers its end points.
std::array<QLineF, 4> EdgingOfBar(const SliderLayout& layout);

ThumbPlace PlaceThumb(const SliderLayout& layout, double value);
Ring ThumbBevel(const ThumbPlace& place, int depth);

/// The value under a pointer at pixel `along` of the groove: 0 and 1 at its ends, strictly between elsewhere.
double ValueAt(const SliderLayout& layout, int along);

/// The nearest multiple of the step, ties to even, within 0..1. A step of exactly 1 is no quantizing.
float QuantizeValue(double value, float step);
