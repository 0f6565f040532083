#include "display/span_sink.h"

#include "display/span_paint.h"

#include <cstdlib>
#include <limits>

namespace {

constexpr int kNoLow = std::numeric_limits<int>::max() / 2;
constexpr int kNoHigh = std::numeric_limits<int>::min() / 2;

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

void SpanSink::Follow(const PixelPoint* points, int count) {
    PixelPoint at = at_; // copies: the compiler need not fear that the columns overlap them
    Rows rows = rows_;
    for (const PixelPoint* to = points; to != points + count; ++to) {
        const int way = to->x - at.x;
        if (way == 0) {
            rows.Add(to->y);
        } else if (way == 1) {
            // The next column takes over at the middle of the way.
            const int drop = to->y - at.y;
            const int sign = drop < 0 ? -1 : 1;
            const int half = (drop * sign + 1) / 2;
            rows.Add(at.y + sign * std::max(half - 1, 0));
            Keep(at.x, rows);
            rows = {to->y, to->y};
            rows.Add(at.y + sign * half);
        } else {
            at_ = at;
            rows_ = rows;
            GoFar(*to);
            rows = rows_;
        }
        at = *to;
    }
    at_ = at;
    rows_ = rows;
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
    PaintSpans({raster_->row(0), raster_->stride(), top_.data(), bottom_.data()}, from, to, pixel_);
}

/// From the rows of the path in the columns first..last to the rows that the pen covers, for whole blocks.
void SpanSink::CoverColumns(int first, int last) {
    // Columns beyond the ends, which the pen's or the block's width looks at, hold nothing.
    for (int i = 1; i < pen_ + kSpanBlock; ++i) {
        for (const int column : {first - i, last + i}) {
            low_[static_cast<std::size_t>(column + kMargin)] = kNoLow;
            high_[static_cast<std::size_t>(column + kMargin)] = kNoHigh;
        }
    }
    const int before = pen_ / 2;
    const int from = std::max(first - before, 0) / kSpanBlock * kSpanBlock;
    const int to =
        std::min(last - before + pen_ - 1, raster_->width() - 1) / kSpanBlock * kSpanBlock + kSpanBlock;
    const int count = to - from;
    const int* const low = low_.data() + kMargin + from + before;
    const int* const high = high_.data() + kMargin + from + before;
    int* const top = top_.data() + from;
    int* const bottom = bottom_.data() + from;
    // Plain loops over all columns, which compilers turn into several columns a step.
    std::copy_n(low, count, top);
    std::copy_n(high, count, bottom);
    for (int c = 1; c < pen_; ++c) {
        for (int i = 0; i < count; ++i) {
            top[i] = std::min(top[i], low[i - c]);
        }
        for (int i = 0; i < count; ++i) {
            bottom[i] = std::max(bottom[i], high[i - c]);
        }
    }
    const int after = pen_ - 1 - before;
    const int height = raster_->height();
    for (int i = 0; i < count; ++i) {
        const int highest = std::max(top[i] - before, 0);
        const int lowest = std::min(bottom[i] + after, height - 1);
        top[i] = highest > lowest ? height : highest;
        bottom[i] = highest > lowest ? -1 : lowest;
    }
}
