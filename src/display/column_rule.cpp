#include "display/column_rule.h"

#include "display/quad.h"

#include <cstring>

namespace {

/// The extremes of the present column, of four channels that lie side by side in the table.
struct Extremes {
    QuadFloat maximum{};
    QuadFloat minimum{};

    /// All bits set in the lanes that start a column or go beyond it.
    QuadInt Take(const float* values, QuadInt fresh) {
        QuadFloat value;
        std::memcpy(&value, values, sizeof value);
        const QuadInt above = fresh | (value > maximum);
        const QuadInt below = fresh | (value < minimum);
        maximum = Choose(above, value, maximum);
        minimum = Choose(below, value, minimum);
        return above | below;
    }

    static QuadFloat Choose(QuadInt mask, QuadFloat chosen, QuadFloat other) {
        return reinterpret_cast<QuadFloat>((mask & reinterpret_cast<QuadInt>(chosen)) |
                                           (~mask & reinterpret_cast<QuadInt>(other)));
    }
};

} // namespace

// Noise makes it unpredictable which samples are kept, so there is no branch on it: a mispredicted one costs
// more than the whole rest of a sample. The six channels of a position are two overlapping sets of four.
void ColumnRule::Apply(const ChannelTable& data, int first, int last, int step, double columnsPerUnit) {
    static_assert(kAllChannels == 6);
    constexpr int kOverlap = kAllChannels - 4;
    Extremes lower;
    Extremes upper;
    int lastColumn = -1;
    const float* values = data.row(1) + static_cast<std::ptrdiff_t>(first) * ChannelTable::stride();
    std::uint8_t* kept = kept_.data();
    for (int x = first; x <= last && kept != kept_.data() + kMostSamples; x += step) {
        const int column = static_cast<int>(x * columnsPerUnit);
        const QuadInt fresh = QuadInt{} + (column != lastColumn ? -1 : 0);
        lastColumn = column;
        QuadInt bits = (lower.Take(values, fresh) & QuadInt{1, 2, 4, 8}) |
                       (upper.Take(values + kOverlap, fresh) & QuadInt{0, 0, 16, 32});
        bits |= __builtin_shufflevector(bits, bits, 2, 3, 0, 1);
        bits |= __builtin_shufflevector(bits, bits, 1, 0, 3, 2);
        *kept++ = static_cast<std::uint8_t>(bits[0]);
        values += static_cast<std::ptrdiff_t>(step) * ChannelTable::stride();
    }
}
