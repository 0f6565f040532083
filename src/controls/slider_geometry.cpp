#include "controls/slider_geometry.h"

#include "controls/rounding.h"

#include <algorithm>
#include <cmath>

namespace {

/// What lies along the groove first, then what lies across it.
QRectF Oriented(bool horizontal, double along, double across, double length, double breadth) {
    return horizontal ? QRectF(along, across, length, breadth) : QRectF(across, along, breadth, length);
}

struct Extent {
    double along;
    double across;
};

Extent Of(bool horizontal, QSizeF size) {
    return horizontal ? Extent{size.width(), size.height()} : Extent{size.height(), size.width()};
}

} // namespace

SliderLayout LayOutSlider(QSize size, double value) {
    SliderLayout layout;
    layout.horizontal = size.height() <= size.width();
    layout.centre = {size.width() / 2 - 1, size.height() / 2 - 1};
    const Extent extent = Of(layout.horizontal, size);
    const int middle = layout.horizontal ? layout.centre.y() : layout.centre.x();
    layout.bar = Oriented(layout.horizontal, 0, middle - extent.across / 8, extent.along, extent.across / 4);
    // The thumb is as long as the control is broad.
    const double diameter = extent.across;
    layout.thumb = Oriented(layout.horizontal, (extent.along - diameter) * value, 0, diameter, diameter);
    layout.minPixel = RoundToEven(diameter / 2);
    layout.maxPixel = RoundToEven(extent.along - layout.minPixel);
    return layout;
}

std::array<QLineF, 4> EdgingOfBar(const SliderLayout& layout) {
    const double left = layout.bar.left();
    const double top = layout.bar.top();
    const double right = layout.bar.right() - 1;
    const double bottom = layout.bar.bottom() - 1;
    // The line that closes the near end stands one pixel in.
    const QLineF above = layout.horizontal ? QLineF(left, top, right, top) : QLineF(left, 1, right, 1);
    const QLineF before = layout.horizontal ? QLineF(1, top, 1, bottom) : QLineF(left, 0, left, bottom);
    return {above, before, QLineF(right, top, right, bottom), QLineF(left, bottom, right, bottom)};
}

QRectF DrawnBar(const SliderLayout& layout, QSize size) {
    const QPointF shift = ToMiddle(layout.centre, size);
    return layout.bar.translated(layout.horizontal ? QPointF(0, shift.y()) : QPointF(shift.x(), 0));
}

QRectF PlaceThumb(const SliderLayout& layout, double value) {
    const double diameter = Of(layout.horizontal, layout.thumb.size()).along;
    const double last = Of(layout.horizontal, layout.bar.size()).along - diameter;
    const int centre = RoundToEven((layout.maxPixel - layout.minPixel) * value + layout.minPixel);
    // The half is cut to its whole part: the middle pixel of an odd thumb is the centre. The ends come from
    // half a thumb that was rounded, which would leave a gap at one or cut the thumb off at the other.
    double start = std::clamp(centre - std::floor(diameter / 2), 0.0, std::max(last, 0.0));
    if (value <= 0 || value >= 1) {
        start = value <= 0 ? 0 : last;
    }
    return Oriented(layout.horizontal, start, 0, diameter, diameter);
}

Ring ThumbBevel(const QRectF& thumb, int depth) {
    const QSizeF size = thumb.size();
    return {thumb.center(), size.width() / 2 - 2, size.isEmpty() ? 0 : size.height() / size.width(),
            static_cast<double>(depth)};
}

double ValueAt(const SliderLayout& layout, int along) {
    if (along <= layout.minPixel) {
        return 0;
    }
    if (along >= layout.maxPixel) {
        return 1;
    }
    const int span = layout.maxPixel - layout.minPixel + 1;
    return span > 0 ? static_cast<double>(along - layout.minPixel) / span : 0;
}

float QuantizeValue(double value, float step) {
    if (step != 1.0F && step != 0.0F && std::isfinite(step)) {
        value = std::nearbyint(value / step) * step;
    }
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
}
