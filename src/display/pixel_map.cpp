#include "display/pixel_map.h"

#include "display/quad.h"

#include <algorithm>

namespace {

constexpr double kLimit = PixelMap::kNear - 1;
constexpr double kInfinitelyFar = 1e12; // differences of such figures still are numbers

/// Narrows the part [from, to] of a line to where start + t * way stays within the limits.
bool Narrow(double start, double way, double& from, double& to) {
    if (way == 0) {
        return std::abs(start) <= kLimit;
    }
    const double a = (-kLimit - start) / way;
    const double b = (kLimit - start) / way;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
    return from <= to;
}

struct CutPoint {
    double x;
    double y;
};

double Held(double pixel, double limit) {
    return std::clamp(pixel, -limit, limit);
}

} // namespace

bool PixelMap::NearPoints(const CanvasPoint* points, int count, PixelPoint* pixels) const {
    const Pair perUnit{perUnitX_, perUnitY_};
    const Pair origin{left_, top_};
    PairMask near = PairMask{} - 1;
    for (int i = 0; i < count; ++i) {
        const Pair at = Pair{points[i].x, points[i].y} * perUnit + origin;
        // Held inside before it is converted, without a branch; no number becomes the low end.
        const Pair low = at > -kLimit ? at : Pair{} - kLimit;
        const Pair held = low < kLimit ? low : Pair{} + kLimit;
        near &= held == at;
        pixels[i] = {Round(held[0]), Round(held[1])};
    }
    return near[0] != 0 && near[1] != 0;
}

std::optional<PixelPoint> PixelMap::Point(double x, double y) const {
    const double px = X(x);
    const double py = Y(y);
    if (std::isnan(px) || std::isnan(py)) {
        return std::nullopt;
    }
    return PixelPoint{Round(Held(px, kLimit)), Round(Held(py, kLimit))};
}

std::optional<PixelLine> PixelMap::Line(double x1, double y1, double x2, double y2) const {
    double px1 = X(x1);
    double py1 = Y(y1);
    double px2 = X(x2);
    double py2 = Y(y2);
    if (std::isnan(px1) || std::isnan(py1) || std::isnan(px2) || std::isnan(py2)) {
        return std::nullopt;
    }
    if (!Near(px1, py1) || !Near(px2, py2)) {
        for (double* pixel : {&px1, &py1, &px2, &py2}) {
            *pixel = Held(*pixel, kInfinitelyFar);
        }
        double from = 0;
        double to = 1;
        if (!Narrow(px1, px2 - px1, from, to) || !Narrow(py1, py2 - py1, from, to)) {
            return std::nullopt;
        }
        const CutPoint a{px1 + from * (px2 - px1), py1 + from * (py2 - py1)};
        const CutPoint b{px1 + to * (px2 - px1), py1 + to * (py2 - py1)};
        // An end that was not cut keeps its very figures.
        if (from > 0) {
            px1 = Held(a.x, kLimit);
            py1 = Held(a.y, kLimit);
        }
        if (to < 1) {
            px2 = Held(b.x, kLimit);
            py2 = Held(b.y, kLimit);
        }
    }
    return PixelLine{{Round(px1), Round(py1)}, {Round(px2), Round(py2)}};
}
