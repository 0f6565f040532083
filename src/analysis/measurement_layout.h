#pragma once

#include <array>

// The measurement window in pixels: a line of headings, and under it a row for each channel. A row has its
// figures on the left and behind them those of the cursors.

inline constexpr int kMeasurementRowHeight = 17;
inline constexpr int kMeasurementFirstRow = 22;
inline constexpr int kMeasurementRoomBesideRows = 64; ///< headings and the two math rows

/// A figure of every row, and its heading.
struct MeasurementColumn {
    const char* title;
    int left, width;             ///< of the heading, in the window
    int figureLeft, figureWidth; ///< in the row
};
inline constexpr std::array<MeasurementColumn, 5> kMeasurementColumns{{{"Ch", 2, 19, 0, 19},
                                                                       {"V/div", 21, 32, 16, 35},
                                                                       {"Vavg", 53, 44, 50, 45},
                                                                       {"Vpk-pk", 97, 50, 95, 45},
                                                                       {"Freq", 147, 64, 148, 55}}};

inline constexpr int kMeasurementFiguresLeft = kMeasurementColumns.front().left;
inline constexpr int kMeasurementCursorsLeft =
    kMeasurementColumns.back().left + kMeasurementColumns.back().width + 1;
inline constexpr int kMeasurementFiguresWidth = kMeasurementCursorsLeft - kMeasurementFiguresLeft - 1;
inline constexpr int kMeasurementCursorWidth = 43;
inline constexpr int kMeasurementRowsEnd = kMeasurementCursorsLeft + 6 * kMeasurementCursorWidth + 5;
inline constexpr int kMeasurementWidth = kMeasurementRowsEnd + 2;
