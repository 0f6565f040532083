#include "display/span_sink.h"

#include "display/quad.h"

#include <cstdlib>
#include <limits>

namespace {

constexpr int kNoLow = std::numeric_limits<int>::max() / 2;
constexpr int kNoHigh = std::numeric_limits<int>::min() / 2;
constexpr int kBlock = 4; ///< columns painted together

std::size_t Columns(int width, int margin) {
    return static_cast<std::size_t>(width + 2 * margin);
}

} // namespace

/// The pixels of one line, column by column.
class ColumnsOfLine {
  public:
    ColumnsOfLine(PixelPoint from, PixelPoint to)
        : width_(std::abs(static_cast<std::int64_t>(to.x) - from.x)),
          height_(std::abs(static_cast<std::int64_t>(to.y) - from.y)), start_(from.y),
          sign_(to.y < from.y ? -1 : 1) {}

    std::int64_t width() const { return width_; }
    int FirstRow(std::int64_t k) const { return Row(width_ >= height_ ? Shallow(k) : Steep(k)); }
    int LastRow(std::int64_t k) const {
        if (width_ >= height_) {
            return Row(Shallow(k));
        }
        return Row(k == width_ ? height_ : Steep(k + 1) - 1);
    }

  private:
    /// The row at column k of a line that is wider than high.
    std::int64_t Shallow(std::int64_t k) const { return (2 * k * height_ + width_) / (2 * width_); }
    /// The first row whose nearest column is k, of a line that is higher than wide.
    std::int64_t Steep(std::int64_t k) const {
        return k == 0 ? 0 : ((2 * k - 1) * height_ + 2 * width_ - 1) / (2 * width_);
    }
    int Row(std::int64_t offset) const { return start_ + sign_ * static_cast<int>(offset); }

    std::int64_t width_;
    std::int64_t height_;
    int start_;
    int sign_;
};

SpanSink::SpanSink(Raster& raster)
    : raster_(&raster), low_(Columns(raster.width(), kMargin)), high_(Columns(raster.width(), kMargin)),
      top_(static_cast<std::size_t>(raster.stride())), bottom_(static_cast<std::size_t>(raster.stride())) {}

void SpanSink::Begin(PixelPoint start, int pen, std::uint32_t pixel) {
    pixel_ = pixel;
    pen_ = std::clamp(pen, 1, kMaxPen);
    firstSeen_ = pen_ / 2 + 1 - pen_;
    lastSeen_ = raster_->width() - 1 + pen_ / 2;
    at_ = start;
    runStart_ = start.x;
    rows_ = {start.y, start.y};
}

void SpanSink::GoFar(PixelPoint to) {
    const ColumnsOfLine line(at_, to);
    if (to.x < at_.x) {
        PaintRun();
        GoLeft(line, to);
        return;
    }
    rows_.Add(line.LastRow(0));
    Keep(at_.x, rows_);
    KeepColumns(line, at_.x + 1, to.x - 1);
    rows_ = {to.y, to.y};
    rows_.Add(line.FirstRow(line.width()));
}

/// A line that turns back is a run of its own, and the next run begins at its end.
void SpanSink::GoLeft(const ColumnsOfLine& line, PixelPoint to) {
    rows_ = {at_.y, at_.y};
    rows_.Add(line.LastRow(0));
    KeepColumns(line, to.x, at_.x - 1);
    runStart_ = to.x;
    PaintRun();
    rows_ = {to.y, to.y};
}

/// Keeps the rows of the columns first..last of the line that leaves the present point.
void SpanSink::KeepColumns(const ColumnsOfLine& line, int first, int last) {
    for (int column = std::max(first, firstSeen_); column <= std::min(last, lastSeen_); ++column) {
        const std::int64_t k = std::abs(static_cast<std::int64_t>(column) - at_.x);
        Rows rows{line.FirstRow(k), line.FirstRow(k)};
        rows.Add(line.LastRow(k));
        Keep(column, rows);
    }
}

void SpanSink::PaintRun() {
    Keep(at_.x, rows_);
    const int first = std::max(runStart_, firstSeen_);
    const int last = std::min(at_.x, lastSeen_);
    if (first > last) {
        return;
    }
    CoverColumns(first, last);
    const int from = std::max(first - pen_ / 2, 0);
    const int to = std::min(last - pen_ / 2 + pen_ - 1, raster_->width() - 1);
    for (int column = from / kBlock * kBlock; column <= to; column += kBlock) {
        PaintBlock(column);
    }
}

/// From the rows of the path in the columns first..last to the rows that the pen covers, for whole blocks.
void SpanSink::CoverColumns(int first, int last) {
    int* const low = low_.data() + kMargin;
    int* const high = high_.data() + kMargin;
    // Columns beyond the ends, which the pen's or the block's width looks at, hold nothing.
    for (int i = 1; i < pen_ + kBlock; ++i) {
        low[first - i] = kNoLow;
        high[first - i] = kNoHigh;
        low[last + i] = kNoLow;
        high[last + i] = kNoHigh;
    }
    const int before = pen_ / 2;
    const int from = std::max(first - before, 0) / kBlock * kBlock;
    const int to = std::min(last - before + pen_ - 1, raster_->width() - 1) / kBlock * kBlock + kBlock;
    const int bottomRow = raster_->height() - 1;
    for (int p = from; p < to; ++p) {
        int top = low[p + before];
        int bottom = high[p + before];
        for (int c = p + before - pen_ + 1; c < p + before; ++c) {
            top = std::min(top, low[c]);
            bottom = std::max(bottom, high[c]);
        }
        top = std::max(top - before, 0);
        bottom = std::min(bottom - before + pen_ - 1, bottomRow);
        const bool outside = top > bottom;
        top_[static_cast<std::size_t>(p)] = outside ? kNoLow : top;
        bottom_[static_cast<std::size_t>(p)] = outside ? kNoHigh : bottom;
    }
}

void SpanSink::PaintBlock(int column) {
    const QuadInt top = *reinterpret_cast<const QuadInt*>(&top_[static_cast<std::size_t>(column)]);
    const QuadInt bottom = *reinterpret_cast<const QuadInt*>(&bottom_[static_cast<std::size_t>(column)]);
    const Quad colour{pixel_, pixel_, pixel_, pixel_};
    const int firstRow = std::min({top[0], top[1], top[2], top[3]});
    const int lastRow = std::max({bottom[0], bottom[1], bottom[2], bottom[3]});
    if (firstRow > lastRow) {
        return;
    }
    const int fullFirst = std::max({top[0], top[1], top[2], top[3]});
    const int fullLast = std::min({bottom[0], bottom[1], bottom[2], bottom[3]});

    const auto edge = [&](int row, int end) {
        auto* at = raster_->row(row) + column;
        for (; row < end; ++row, at += raster_->stride()) {
            auto& pixels = *reinterpret_cast<Quad*>(at);
            const QuadInt rows{row, row, row, row};
            const auto inside = reinterpret_cast<Quad>((rows >= top) & (rows <= bottom));
            pixels = (pixels & ~inside) | (colour & inside);
        }
    };
    if (fullFirst > fullLast) {
        edge(firstRow, lastRow + 1);
        return;
    }
    edge(firstRow, fullFirst);
    auto* at = raster_->row(fullFirst) + column;
    for (int row = fullFirst; row <= fullLast; ++row, at += raster_->stride()) {
        *reinterpret_cast<Quad*>(at) = colour;
    }
    edge(fullLast + 1, lastRow + 1);
}
