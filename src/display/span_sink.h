#pragma once

#include "display/pixel_map.h"
#include "display/raster.h"

#include <algorithm>
#include <vector>

class ColumnsOfLine;

/// Takes the joined lines of one colour and paints what a square pen leaves on its way along them. The lines
/// are gathered as one span of rows for each column and painted when the path turns back or ends, so that a
/// pixel which many lines of a column cross is written once.
///
/// A line covers, for every pixel of its longer axis, the nearer pixel of the other, halves away from its
/// start. A pen of n pixels at p covers p - n/2 and the n - 1 that follow, in x and in y.
class SpanSink {
  public:
    static constexpr int kMaxPen = 64;

    /// raster: painted on, and outlives the sink.
    explicit SpanSink(Raster& raster);

    /// pen is held within 1..kMaxPen.
    void Begin(PixelPoint start, int pen, std::uint32_t pixel);
    /// Straight from point to point.
    void Follow(const PixelPoint* points, int count);
    void LineTo(PixelPoint to) { Follow(&to, 1); }
    void End() { PaintRun(); }

  private:
    /// Rows of the path in one column; they are always one piece.
    struct Rows {
        int low;
        int high;
        void Add(int row) {
            low = std::min(low, row);
            high = std::max(high, row);
        }
    };

    void Keep(int column, Rows rows) {
        if (column >= firstSeen_ && column <= lastSeen_) {
            const auto i = static_cast<std::size_t>(column + kMargin);
            low_[i] = rows.low;
            high_[i] = rows.high;
        }
    }
    void GoFar(PixelPoint to);
    void GoLeft(const ColumnsOfLine& line, PixelPoint to);
    void KeepColumns(const ColumnsOfLine& line, int first, int last);
    void PaintRun();
    void CoverColumns(int first, int last);

    static constexpr int kMargin = 2 * kMaxPen; ///< columns left of the raster whose pen still reaches it

    Raster* raster_;
    std::uint32_t pixel_ = 0;
    int pen_ = 1;
    int firstSeen_ = 0; ///< columns from where the pen reaches the raster
    int lastSeen_ = 0;
    int runStart_ = 0; ///< column where the present run to the right began
    PixelPoint at_;
    Rows rows_{0, 0};               ///< of the present column
    std::vector<int> low_, high_;   ///< rows of the path by column, from -kMargin on
    std::vector<int> top_, bottom_; ///< rows that the pen covers by pixel column
};
