#include "display/span_paint.h"

#include <algorithm>
#include <cstring>

namespace {

/// Lanes columns of a row in one register.
template <int Lanes> struct Lane {
    using Pixels [[gnu::vector_size(4 * Lanes), gnu::may_alias]] = std::uint32_t;
    using Rows [[gnu::vector_size(4 * Lanes)]] = std::int32_t;
};

/// Neighbouring columns end at different rows, mostly not far apart: rows that only some of them cover are
/// written through a mask, and those that all cover are just written.
template <int Lanes>
[[gnu::always_inline]] inline void PaintColumns(const ColumnSpans& spans, int column, std::uint32_t pixel) {
    using Pixels = typename Lane<Lanes>::Pixels;
    using Rows = typename Lane<Lanes>::Rows;
    const int* const tops = spans.tops + column;
    const int* const bottoms = spans.bottoms + column;
    const auto [firstRow, fullFirst] = std::minmax_element(tops, tops + Lanes);
    const auto [fullLast, lastRow] = std::minmax_element(bottoms, bottoms + Lanes);
    if (*firstRow > *lastRow) {
        return;
    }
    Pixels top;
    Pixels bottom;
    std::memcpy(&top, tops, sizeof top);
    std::memcpy(&bottom, bottoms, sizeof bottom);
    const Pixels colour = Pixels{} + pixel;
    // A row is in a column's span if row - top <= bottom - top, both counted from the least integer as there
    // are only signed comparisons.
    constexpr std::uint32_t kLeast = 1U << 31;
    const auto depth = reinterpret_cast<Rows>(bottom - top + kLeast);
    std::uint32_t* at = spans.pixels + *firstRow * spans.stride + column;
    const auto paintEdge = [&](int row, int end) __attribute__((always_inline)) {
        Pixels below = Pixels{} + static_cast<std::uint32_t>(row) - top + kLeast;
        for (; row < end; ++row, below += 1, at += spans.stride) {
            Pixels& pixels = *reinterpret_cast<Pixels*>(at);
            const auto outside = reinterpret_cast<Pixels>(reinterpret_cast<Rows>(below) > depth);
            pixels = (pixels & outside) | (colour & ~outside);
        }
    };
    if (*fullFirst > *fullLast) {
        paintEdge(*firstRow, *lastRow + 1);
        return;
    }
    paintEdge(*firstRow, *fullFirst);
    for (int row = *fullFirst; row <= *fullLast; ++row, at += spans.stride) {
        *reinterpret_cast<Pixels*>(at) = colour;
    }
    paintEdge(*fullLast + 1, *lastRow + 1);
}

template <int Lanes>
[[gnu::always_inline]] inline void PaintBlocks(const ColumnSpans& spans, int first, int last,
                                               std::uint32_t pixel) {
    const int end = last / kSpanBlock * kSpanBlock + kSpanBlock;
    for (int column = first / kSpanBlock * kSpanBlock; column < end; column += Lanes) {
        PaintColumns<Lanes>(spans, column, pixel);
    }
}

#ifdef __x86_64__
[[gnu::target("avx2")]] void PaintSpansWide(const ColumnSpans& spans, int first, int last,
                                            std::uint32_t pixel) {
    PaintBlocks<8>(spans, first, last, pixel);
}
#endif

} // namespace

void PaintSpansPlain(const ColumnSpans& spans, int first, int last, std::uint32_t pixel) {
    PaintBlocks<4>(spans, first, last, pixel);
}

void PaintSpans(const ColumnSpans& spans, int first, int last, std::uint32_t pixel) {
#ifdef __x86_64__
    static const bool wide = __builtin_cpu_supports("avx2") != 0;
    if (wide) {
        PaintSpansWide(spans, first, last, pixel);
        return;
    }
#endif
    PaintSpansPlain(spans, first, last, pixel);
}
