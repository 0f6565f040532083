#pragma once

#include "display/canvas.h"

#include <cmath>
#include <optional>

/// A place in a raster, which may lie outside it.
struct PixelPoint {
    int x;
    int y;
    bool operator==(const PixelPoint&) const = default;
};

struct PixelLine {
    PixelPoint from;
    PixelPoint to;
};

/// From a user scale to raster pixels.
class PixelMap {
  public:
    /// Nearer than this a position is rounded as it stands; the products of two such differences fit 64 bits.
    static constexpr int kNear = 1 << 24;

    /// The corner pair of the user scale over a raster of width x height pixels.
    void SetScale(double left, double top, double right, double bottom, double width, double height) {
        perUnitX_ = width / (right - left);
        perUnitY_ = height / (bottom - top);
        left_ = -left * perUnitX_;
        top_ = -top * perUnitY_;
        width_ = right - left;
        height_ = bottom - top;
    }

    double ScaleWidth() const { return width_; }
    double ScaleHeight() const { return height_; } ///< negative when y grows upwards
    double PixelsPerUnitX() const { return perUnitX_; }
    double PixelsPerUnitY() const { return perUnitY_; }

    double X(double x) const { return x * perUnitX_ + left_; }
    double Y(double y) const { return y * perUnitY_ + top_; }
    double UserX(double pixel) const { return (pixel - left_) / perUnitX_; }
    double UserY(double pixel) const { return (pixel - top_) / perUnitY_; }

    /// False for a position that is far off or no number.
    static bool Near(double x, double y) { return std::abs(x) < kNear && std::abs(y) < kNear; }
    /// Nearest pixel of a near position. Shifted to where truncating is rounding down, which costs no call.
    static int Round(double pixel) { return static_cast<int>(pixel + (kNear + 0.5)) - kNear; }

    std::optional<PixelPoint> NearPoint(double x, double y) const {
        PixelPoint pixel;
        const CanvasPoint point{x, y};
        return NearPoints(&point, 1, &pixel) ? std::optional(pixel) : std::nullopt;
    }
    /// The nearest pixels of count points; false if one of them is far off or no number.
    bool NearPoints(const CanvasPoint* points, int count, PixelPoint* pixels) const;

    /// The nearest pixel, held inside the near range; nothing for no number.
    std::optional<PixelPoint> Point(double x, double y) const;
    /// A line in pixels with its far ends cut off; nothing when it is no line or passes far away.
    std::optional<PixelLine> Line(double x1, double y1, double x2, double y2) const;

  private:
    double perUnitX_ = 1;
    double perUnitY_ = 1;
    double left_ = 0;
    double top_ = 0;
    double width_ = 0;
    double height_ = 0;
};
