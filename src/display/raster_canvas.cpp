#include "display/raster_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

/// A raster keeps red in the high byte of three and the top byte set.
std::uint32_t PixelOf(Colour colour) {
    return 0xFF000000U | (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

double UsableRatio(double ratio) {
    return ratio > 0 && ratio < SpanSink::kMaxPen ? ratio : 1;
}

int PenFor(int width, double ratio) {
    const double pixels = std::round(std::clamp(width, 1, SpanSink::kMaxPen) * ratio);
    return static_cast<int>(std::clamp<double>(pixels, 1, SpanSink::kMaxPen));
}

std::uint32_t Blend(std::uint32_t below, std::uint32_t colour, std::uint32_t cover) {
    const auto mixed = [&](int shift) {
        const std::uint32_t sum =
            (colour >> shift & 0xFF) * cover + (below >> shift & 0xFF) * (255 - cover) + 127;
        return sum / 255 << shift;
    };
    return 0xFF000000U | mixed(16) | mixed(8) | mixed(0);
}

} // namespace

RasterCanvas::RasterCanvas(int width, int height, double ratio)
    : raster_(width, height), sink_(raster_), texts_(UsableRatio(ratio)), ratio_(UsableRatio(ratio)) {
    raster_.Fill(PixelOf(back_));
    SetPixelScale();
    SetDrawWidth(1);
}

void RasterCanvas::Resize(int width, int height, double ratio) {
    ratio_ = UsableRatio(ratio);
    raster_ = Raster(width, height);
    sink_ = SpanSink(raster_);
    texts_ = TextMasks(ratio_);
    texts_.SetFont(font_);
    raster_.Fill(PixelOf(back_));
    SetPixelScale();
    SetDrawWidth(drawWidth_);
}

void RasterCanvas::SetFont(const QFont& font) {
    font_ = font;
    texts_.SetFont(font);
}

void RasterCanvas::Clear() {
    raster_.Fill(PixelOf(back_));
    if (touched_) {
        touched_();
    }
}

void RasterCanvas::SetDrawWidth(int pixels) {
    drawWidth_ = pixels;
    pen_ = PenFor(pixels, ratio_);
}

void RasterCanvas::SetForeColor(Colour colour) {
    pixel_ = PixelOf(colour);
}

void RasterCanvas::SetScale(double left, double top, double right, double bottom) {
    map_.SetScale(left, top, right, bottom, width(), height());
}

void RasterCanvas::SetPixelScale() {
    SetScale(0, 0, width(), height());
}

void RasterCanvas::Line(double x1, double y1, double x2, double y2) {
    current_ = {x1, y1};
    LineTo(x2, y2);
}

void RasterCanvas::LineTo(double x, double y) {
    if (const auto line = map_.Line(current_.x, current_.y, x, y)) {
        if (style_ == PenStyle::Dotted) {
            DrawDotted(*line);
        } else {
            DrawSolid(*line);
        }
    }
    current_ = {x, y};
}

void RasterCanvas::LinesTo(const CanvasPoint* points, int count) {
    if (style_ == PenStyle::Dotted) {
        Canvas::LinesTo(points, count);
        return;
    }
    const PixelMap map = map_;
    SpanSink& sink = sink_;
    bool begun = false;
    for (int i = 0; i < count; ++i) {
        const double px = map.X(points[i].x);
        const double py = map.Y(points[i].y);
        if (begun && PixelMap::Near(px, py)) {
            sink.LineTo({PixelMap::Round(px), PixelMap::Round(py)});
            continue;
        }
        // The first line, and those to and from far away, go by their two ends.
        if (begun) {
            sink.End();
        }
        const CanvasPoint from = i == 0 ? current_ : points[i - 1];
        const auto line = map.Line(from.x, from.y, points[i].x, points[i].y);
        if (line) {
            sink.Begin(line->from, pen_, pixel_);
            sink.LineTo(line->to);
        }
        begun = line && PixelMap::Near(px, py);
        if (line && !begun) {
            sink.End();
        }
    }
    if (begun) {
        sink.End();
    }
    if (count > 0) {
        current_ = points[count - 1];
    }
}

void RasterCanvas::DrawSolid(const PixelLine& line) {
    sink_.Begin(line.from, pen_, pixel_);
    sink_.LineTo(line.to);
    sink_.End();
}

/// One dot of the pen's size, then a gap of it. The dots stand still on the line, whatever part of it is
/// seen.
void RasterCanvas::DrawDotted(const PixelLine& line) {
    const std::int64_t period = 2L * pen_;
    const std::int64_t wayX = static_cast<std::int64_t>(line.to.x) - line.from.x;
    const std::int64_t wayY = static_cast<std::int64_t>(line.to.y) - line.from.y;
    const bool wide = std::abs(wayX) >= std::abs(wayY);
    const std::int64_t length = std::max<std::int64_t>(1, wide ? std::abs(wayX) : std::abs(wayY));
    const std::int64_t sign = (wide ? wayX : wayY) < 0 ? -1 : 1;
    const std::int64_t start = wide ? line.from.x : line.from.y;
    const std::int64_t across = wide ? wayY : wayX;
    const std::int64_t side = across < 0 ? -1 : 1;
    const std::int64_t extent = wide ? width() : height();
    // Steps along the longer axis at which the pen touches the raster.
    const std::int64_t low = sign > 0 ? -pen_ - start : start - extent - pen_;
    const std::int64_t high = sign > 0 ? extent + pen_ - start : start + pen_;
    const std::int64_t end = std::min(wide ? std::abs(wayX) : std::abs(wayY), high);
    for (std::int64_t t = std::max<std::int64_t>(0, (low + period - 1) / period * period); t <= end;
         t += period) {
        const std::int64_t along = start + sign * t;
        const std::int64_t aside = side * ((2 * t * std::abs(across) + length) / (2 * length));
        const int x = static_cast<int>(wide ? along : line.from.x + aside);
        const int y = static_cast<int>(wide ? line.from.y + aside : along);
        FillPixels(x, y, x, y);
    }
}

/// A rectangle widened by the pen and cut to the raster.
void RasterCanvas::FillPixels(int left, int top, int right, int bottom) {
    const int before = pen_ / 2;
    const int after = pen_ - 1 - before;
    left = std::max(left - before, 0);
    right = std::min(right + after, width() - 1);
    top = std::max(top - before, 0);
    bottom = std::min(bottom + after, height() - 1);
    for (int y = top; y <= bottom; ++y) {
        std::uint32_t* row = raster_.row(y);
        for (int x = left; x <= right; ++x) {
            row[x] = pixel_;
        }
    }
}

void RasterCanvas::FillBox(double x1, double y1, double x2, double y2) {
    const auto a = map_.Point(x1, y1);
    const auto b = map_.Point(x2, y2);
    if (a && b) {
        FillPixels(std::min(a->x, b->x), std::min(a->y, b->y), std::max(a->x, b->x), std::max(a->y, b->y));
    }
    current_ = {x2, y2};
}

void RasterCanvas::PSet(double x, double y) {
    if (const auto point = map_.Point(x, y)) {
        FillPixels(point->x, point->y, point->x, point->y);
    }
    current_ = {x, y};
}

void RasterCanvas::Print(const QString& text) {
    const TextMask& mask = texts_.For(text);
    if (const auto corner = map_.Point(current_.x, current_.y)) {
        const int firstRow = std::max(0, -corner->y);
        const int lastRow = std::min(mask.cover.height(), height() - corner->y);
        const int first = std::max(0, -corner->x);
        const int last = std::min(mask.cover.width(), width() - corner->x);
        for (int y = firstRow; y < lastRow; ++y) {
            const uchar* cover = mask.cover.constScanLine(y);
            std::uint32_t* row = raster_.row(corner->y + y) + corner->x;
            for (int x = first; x < last; ++x) {
                row[x] = Blend(row[x], pixel_, cover[x]);
            }
        }
    }
    current_.y += texts_.LineHeight() / map_.PixelsPerUnitY();
    if (touched_) {
        touched_();
    }
}

double RasterCanvas::TextWidth(const QString& text) const {
    return texts_.For(text).width / std::abs(map_.PixelsPerUnitX());
}

double RasterCanvas::TextHeight(const QString&) const {
    return texts_.LineHeight() / std::abs(map_.PixelsPerUnitY());
}

double RasterCanvas::WidthToPixels(double width) const {
    return width * std::abs(map_.PixelsPerUnitX());
}
