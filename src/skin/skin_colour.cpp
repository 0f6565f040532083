#include "skin/skin_colour.h"

#include <algorithm>
#include <cmath>

QPoint SamplePoint(const QRect& place) {
    auto centre = [](int start, int length) {
        return static_cast<int>(std::nearbyint(start + 0.5 * length));
    };
    return {centre(place.x(), place.width()), centre(place.y(), place.height())};
}

Colour Brightened(Colour sample, Colour by) {
    Colour result = 0;
    for (int shift : {0, 8, 16}) {
        result |= std::min<Colour>(((sample >> shift) & 0xFF) + ((by >> shift) & 0xFF), 0xFF) << shift;
    }
    return result;
}
