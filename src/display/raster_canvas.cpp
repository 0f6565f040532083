#include "display/raster_canvas.h"

#include "display/line_walk.h"

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

/// below, covered by colour to cover parts of 255, rounded to the nearest. Red and blue go in one word.
std::uint32_t Blend(std::uint32_t below, std::uint32_t colour, std::uint32_t cover) {
    const auto mixed = [&](std::uint32_t mask, int shift) {
        std::uint32_t sum = (colour >> shift & mask) * cover + (below >> shift & mask) * (255 - cover);
        sum += (sum >> 8 & mask) + (0x800080 & mask << 7); // a quotient by 255 without a division
        return (sum >> 8 & mask) << shift;
    };
    return 0xFF000000U | mixed(0xFF00FF, 0) | mixed(0xFF, 8);
}

} // namespace

RasterCanvas::RasterCanvas(int width, int height, double ratio)
    : raster_(width, height), sink_(raster_), texts_(UsableRatio(ratio)), ratio_(UsableRatio(ratio)) {
    raster_.Fill(PixelOf(back_));
    SetFaceScale();
    SetDrawWidth(1);
}

void RasterCanvas::Resize(int width, int height, double ratio) {
    ratio_ = UsableRatio(ratio);
    raster_ = Raster(width, height);
    sink_ = SpanSink(raster_);
    texts_ = TextMasks(ratio_);
    texts_.SetFont(font_);
    raster_.Fill(PixelOf(back_));
    SetFaceScale();
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

/// A canvas of one pixel of the face says so, whatever the screen makes of it.
void RasterCanvas::SetFaceScale() {
    SetScale(0, 0, std::max(1.0, std::floor(width() / ratio_)), std::max(1.0, std::floor(height() / ratio_)));
}

void RasterCanvas::SetPixelScale() {
    SetScale(0, 0, width(), height());
}

void RasterCanvas::Line(double x1, double y1, double x2, double y2) {
    current_ = {x1, y1};
    LineTo(x2, y2);
}

void RasterCanvas::LineTo(double x, double y) {
    const auto line = map_.Line(current_.x, current_.y, x, y);
    if (line && MayShow(*line)) {
        if (style_ == PenStyle::Dotted) {
            DrawDotted(*line);
        } else {
            DrawSolid(*line);
        }
    }
    current_ = {x, y};
}

/// False for a line that passes the raster, whatever the pen.
bool RasterCanvas::MayShow(const PixelLine& line) const {
    const auto [left, right] = std::minmax(line.from.x, line.to.x);
    const auto [top, bottom] = std::minmax(line.from.y, line.to.y);
    return right >= -pen_ && left < width() + pen_ && bottom >= -pen_ && top < height() + pen_;
}

void RasterCanvas::LinesTo(const CanvasPoint* points, int count) {
    constexpr int kBatch = 512;
    for (; style_ == PenStyle::Solid && count > 0; points += kBatch, count -= kBatch) {
        PixelPoint pixels[kBatch]; // not set: each is written before it is read
        const int some = std::min(count, kBatch);
        const auto start = map_.NearPoint(current_.x, current_.y);
        if (!start || !map_.NearPoints(points, some, pixels)) {
            break; // a far point, or one that is no number
        }
        sink_.Begin(*start, pen_, pixel_);
        sink_.Follow(pixels, some);
        sink_.End();
        current_ = points[some - 1];
    }
    if (count > 0) {
        Canvas::LinesTo(points, count);
    }
}

void RasterCanvas::DrawSolid(const PixelLine& line) {
    if (LineWalk(line).straight()) {
        FillPixels(std::min(line.from.x, line.to.x), std::min(line.from.y, line.to.y),
                   std::max(line.from.x, line.to.x), std::max(line.from.y, line.to.y));
        return;
    }
    sink_.Begin(line.from, pen_, pixel_);
    sink_.LineTo(line.to);
    sink_.End();
}

/// One dot of the pen's size, then a gap of it. The dots stand still on the line, whatever part is seen.
void RasterCanvas::DrawDotted(const PixelLine& line) {
    const LineWalk walk(line);
    const std::int64_t period = 2L * pen_;
    const auto [low, high] = walk.StepsInside(-pen_, (walk.wide() ? width() : height()) + pen_);
    std::int64_t t = (std::max<std::int64_t>(0, low) + period - 1) / period * period;
    const std::int64_t end = std::min(walk.length(), high);
    if (!walk.straight()) {
        for (; t <= end; t += period) {
            const PixelPoint dot = walk.At(t);
            FillPixels(dot.x, dot.y, dot.x, dot.y);
        }
    } else if (t <= end) {
        DrawDots(walk.At(t), walk.At(t + period), static_cast<int>((end - t) / period) + 1);
    }
}

/// Dots in a row or a column, the first two of which are told.
void RasterCanvas::DrawDots(PixelPoint first, PixelPoint second, int count) {
    const int stepX = second.x - first.x;
    const int stepY = second.y - first.y;
    const auto whole = [&](PixelPoint dot) {
        const int left = dot.x - pen_ / 2;
        const int top = dot.y - pen_ / 2;
        return left >= 0 && top >= 0 && left + pen_ <= width() && top + pen_ <= height();
    };
    PixelPoint dot = first;
    for (; count > 0; --count, dot = {dot.x + stepX, dot.y + stepY}) {
        const PixelPoint last{dot.x + (count - 1) * stepX, dot.y + (count - 1) * stepY};
        if (whole(dot) && whole(last)) {
            break; // so all in between are inside
        }
        FillPixels(dot.x, dot.y, dot.x, dot.y);
        if (count > 1) {
            FillPixels(last.x, last.y, last.x, last.y);
            --count;
        }
    }
    const std::ptrdiff_t stride = raster_.stride();
    std::uint32_t* corner = raster_.row(0) + (dot.y - pen_ / 2) * stride + dot.x - pen_ / 2;
    const std::ptrdiff_t step = stepY * stride + stepX;
    for (; pen_ == 1 && count > 0; --count, corner += step) {
        *corner = pixel_;
    }
    for (; count > 0; --count, corner += step) {
        for (int y = 0; y < pen_; ++y) {
            for (int x = 0; x < pen_; ++x) {
                corner[y * stride + x] = pixel_;
            }
        }
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
        for (const TextMask::Dot& dot : mask.dots) {
            const int x = corner->x + dot.x;
            const int y = corner->y + dot.y;
            if (x >= 0 && y >= 0 && x < width() && y < height()) {
                std::uint32_t& pixel = raster_.row(y)[x];
                pixel = Blend(pixel, pixel_, dot.cover);
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
