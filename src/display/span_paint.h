#pragma once

#include <cstddef>
#include <cstdint>

/// Columns are painted in blocks of this many, and a block is aligned to it.
inline constexpr int kSpanBlock = 8;

/// Where the columns of a picture are painted: rows tops[c]..bottoms[c] of column c, no row if the bottom is
/// above the top. tops and bottoms are told for whole blocks, with nothing in the columns that the pixels
/// do not reach; an empty column has a top at or below every bottom.
struct ColumnSpans {
    std::uint32_t* pixels; ///< column 0 of row 0, aligned to a block
    std::ptrdiff_t stride; ///< pixels from row to row, whole blocks
    const int* tops;
    const int* bottoms;
};

/// Paints the columns first..last, widened to whole blocks.
void PaintSpans(const ColumnSpans& spans, int first, int last, std::uint32_t pixel);
/// The same on any processor, with shorter registers.
void PaintSpansPlain(const ColumnSpans& spans, int first, int last, std::uint32_t pixel);
