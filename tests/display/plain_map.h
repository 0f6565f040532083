#pragma once

#include "display/pixel_map.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

/// From a user scale to raster pixels, worked out on its own: nothing of the map that it is a yardstick for
/// but the names of its results.
class PlainMap {
  public:
    void SetScale(double left, double top, double right, double bottom, double width, double height) {
        x_ = {width / (right - left), -left * (width / (right - left))};
        y_ = {height / (bottom - top), -top * (height / (bottom - top))};
        width_ = right - left;
        height_ = bottom - top;
    }
    double ScaleWidth() const { return width_; }
    double ScaleHeight() const { return height_; }
    double PixelsPerUnitX() const { return x_.perUnit; }
    double PixelsPerUnitY() const { return y_.perUnit; }

    /// The nearest pixel, halves upward; nothing for no number.
    std::optional<PixelPoint> Point(double x, double y) const {
        const double px = x_.Pixel(x);
        const double py = y_.Pixel(y);
        if (std::isnan(px) || std::isnan(py)) {
            return std::nullopt;
        }
        return PixelPoint{Nearest(std::clamp(px, -kFar, kFar)), Nearest(std::clamp(py, -kFar, kFar))};
    }

    /// The pixels of both ends; an end that is far off is cut back along the line, which does not turn it.
    std::optional<PixelLine> Line(double x1, double y1, double x2, double y2) const {
        std::array<long double, 4> ends{x_.Pixel(x1), y_.Pixel(y1), x_.Pixel(x2), y_.Pixel(y2)};
        for (long double& pixel : ends) {
            if (std::isnan(pixel)) {
                return std::nullopt;
            }
            pixel = std::clamp(pixel, -kInfinite, kInfinite);
        }
        const long double ax = ends[0], ay = ends[1], bx = ends[2], by = ends[3];
        long double from = 0;
        long double to = 1;
        for (const auto& [start, way] : {std::pair{ax, bx - ax}, std::pair{ay, by - ay}}) {
            if (way == 0) {
                if (std::abs(start) > kFar) {
                    return std::nullopt;
                }
                continue;
            }
            const auto [enter, leave] = std::minmax({(-kFar - start) / way, (kFar - start) / way});
            from = std::max(from, enter);
            to = std::min(to, leave);
        }
        if (from > to) {
            return std::nullopt;
        }
        const auto at = [&](long double t) {
            return PixelPoint{Nearest(static_cast<double>(ax + t * (bx - ax))),
                              Nearest(static_cast<double>(ay + t * (by - ay)))};
        };
        return PixelLine{at(from), at(to)};
    }

  private:
    static constexpr double kFar = (1 << 24) - 1; ///< as far as a road goes, beyond any screen
    static constexpr long double kInfinite = 1e12L;
    struct Axis {
        double perUnit = 1;
        double origin = 0;
        double Pixel(double user) const { return user * perUnit + origin; }
    };
    /// What lies nearer to a half than figures of that size can tell counts as the half.
    static int Nearest(double pixel) {
        constexpr double kGrains = 1 << 28; // to a pixel
        return static_cast<int>(std::floor(std::nearbyint((pixel + 0.5) * kGrains) / kGrains));
    }

    Axis x_;
    Axis y_;
    double width_ = 0;
    double height_ = 0;
};
