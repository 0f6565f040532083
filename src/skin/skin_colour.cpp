#include "skin/skin_colour.h"

#include <cmath>

QPoint SamplePoint(const QRect& place) {
    auto centre = [](int start, int length) {
        return static_cast<int>(std::nearbyint(start + 0.5 * length));
    };
    return {centre(place.x(), place.width()), centre(place.y(), place.height())};
}
