#include "skin/fine_outline.h"
#include "skin/native_shape.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace {

/// Inside where x + y < sum, as a picture has it: one step down, one step left.
QRegion Diagonal(int sum, int size) {
    QRegion region;
    for (int y = 0; y < size; ++y) {
        region |= QRect(0, y, std::max(0, sum - y), 1);
    }
    return region;
}

/// The first column right of the run that begins at the left edge of a row.
int Right(const QRegion& region, int y) {
    int x = 0;
    while (region.contains(QPoint(x, y))) {
        ++x;
    }
    return x;
}

TEST(FineOutline, StraightEdgesStayWhereTheyAreAndCornersNearly) {
    for (const double ratio : {1.0, 1.5, 2.0, 3.0}) {
        const auto scaled = [ratio](const QRect& rect) {
            return QRect((QPointF(rect.topLeft()) * ratio).toPoint(), (QSizeF(rect.size()) * ratio).toSize());
        };
        const QRect rect(4, 6, 30, 20);
        const QRegion missing = QRegion(scaled(rect)) ^ FineOutline(rect, {50, 40}, ratio);
        int area = 0;
        QRegion corners;
        for (const QPoint at : {QPoint(4, 6), QPoint(32, 6), QPoint(4, 24), QPoint(32, 24)}) {
            corners |= scaled({at, QSize(2, 2)});
        }
        for (const QRect& part : missing) {
            area += part.width() * part.height();
        }
        EXPECT_TRUE((missing - corners).isEmpty()) << ratio;
        EXPECT_LE(area, 4 * ratio * ratio) << ratio;
    }
}

TEST(FineOutline, APictureThatFillsItsRectangleFillsIt) {
    EXPECT_EQ(FineOutline(QRect(0, 0, 20, 10), {20, 10}, 2), QRegion(QRect(0, 0, 40, 20)));
    EXPECT_TRUE(FineOutline({}, {20, 10}, 2).isEmpty());
}

TEST(FineOutline, ADiagonalStepsByPixelsOfTheScreen) {
    const QRegion fine = FineOutline(Diagonal(40, 40), {40, 40}, 2);
    for (int y = 20; y < 60; ++y) {
        EXPECT_EQ(Right(fine, y) - Right(fine, y + 1), 1) << "row " << y;
    }
    EXPECT_NEAR(Right(fine, 30), 2 * 40 - 30, 1);
}

TEST(FineOutline, ADiagonalAtOneAndAHalfStaysWithinAPixelOfTheLine) {
    const QRegion fine = FineOutline(Diagonal(40, 40), {40, 40}, 1.5);
    for (int y = 15; y < 45; ++y) {
        EXPECT_NEAR(Right(fine, y), 60 - y, 1.01) << "row " << y;
        EXPECT_LE(Right(fine, y + 1), Right(fine, y));
        EXPECT_GE(Right(fine, y + 1), Right(fine, y) - 2);
    }
}

TEST(FineOutline, AFlatSlopeHasTwiceAsManySteps) {
    QRegion slope;
    for (int y = 0; y < 20; ++y) {
        slope |= QRect(0, y, 60 - 2 * y, 1); // two pixels a row
    }
    const QRegion fine = FineOutline(slope, {60, 20}, 2);
    for (int y = 8; y < 32; ++y) {
        EXPECT_NEAR(Right(fine, y) - Right(fine, y + 1), 2, 1) << "row " << y << " of four at once before";
    }
}

TEST(FineOutline, CoveringTouchesEveryPixel) {
    EXPECT_EQ(Covering(QRect(1, 1, 2, 1), 2), QRegion(QRect(0, 0, 2, 1)));
    EXPECT_EQ(Covering(QRect(3, 3, 3, 3), 1.5), QRegion(QRect(2, 2, 2, 2)));
    EXPECT_TRUE(Covering({}, 2).isEmpty());
}

TEST(NativeShape, LeavesAWindowAloneThatStandsOnNoDisplay) {
    QWidget window;
    window.show();
    ASSERT_TRUE(window.testAttribute(Qt::WA_WState_Created));
    EXPECT_FALSE(ShapeInDevicePixels(window, QRect(0, 0, 4, 4)));
}

} // namespace
