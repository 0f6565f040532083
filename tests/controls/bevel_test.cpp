#include "controls/bevel.h"

#include <QImage>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace {

constexpr QRgb kPaper = qRgb(10, 200, 30);

QImage Drawn(const Ring& ring, std::span<const BevelArc> arcs) {
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(kPaper);
    QPainter painter(&image);
    DrawBevel(painter, ring, arcs);
    return image;
}

/// The pixel at an angle counter-clockwise from the positive x axis, around (50, 50).
QRgb At(const QImage& image, double degrees, double halfWidth, double halfHeight) {
    const double a = degrees * std::numbers::pi / 180;
    return image.pixel(static_cast<int>(std::floor(50 + halfWidth * std::cos(a))),
                       static_cast<int>(std::floor(50 - halfHeight * std::sin(a))));
}

} // namespace

TEST(Bevel, ArcsSweepCounterClockwiseThroughZero) {
    EXPECT_DOUBLE_EQ(ArcSweep({55, 215, 0}), 160);
    EXPECT_DOUBLE_EQ(ArcSweep({235, 35, 0}), 160);
    EXPECT_DOUBLE_EQ(ArcSweep({265, 15, 0}), 110);
    EXPECT_DOUBLE_EQ(ArcSweep({225, 405, 0}), 180);
    EXPECT_DOUBLE_EQ(ArcSweep({0, 360, 0}), 360);
}

TEST(Bevel, TheGradedTablesGoOnceRound) {
    for (const auto& table : {kSunkBevel, kRaisedBevel}) {
        double sum = 0;
        for (std::size_t i = 0; i < table.size(); ++i) {
            sum += ArcSweep(table[i]);
            EXPECT_EQ(table[i].to, table[(i + 1) % table.size()].from);
        }
        EXPECT_DOUBLE_EQ(sum, 360);
    }
}

TEST(Bevel, TheRadiusIsTheLongerHalfAxis) {
    EXPECT_EQ(RingSemiAxes(20, 1), QSizeF(20, 20));
    EXPECT_EQ(RingSemiAxes(20, 0.5), QSizeF(20, 10));
    EXPECT_EQ(RingSemiAxes(20, 2), QSizeF(10, 20));
}

TEST(Bevel, NothingIsDrawnWithoutSize) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    QImage paper(100, 100, QImage::Format_ARGB32_Premultiplied);
    paper.fill(kPaper);
    for (double bad : {0.0, -4.0, inf, -inf, nan}) {
        EXPECT_TRUE(RingSemiAxes(bad, 1).isEmpty());
        EXPECT_TRUE(RingSemiAxes(10, bad).isEmpty());
        EXPECT_EQ(Drawn({{50, 50}, bad, 1, 2}, kSunkBevel), paper);
        EXPECT_EQ(Drawn({{50, 50}, 20, bad, 2}, kSunkBevel), paper);
    }
    EXPECT_EQ(Drawn({{50, 50}, 20, 1, 0}, kSunkBevel), paper);
    EXPECT_EQ(Drawn({{50, 50}, 20, 1, -1}, kSunkBevel), paper);
}

TEST(Bevel, EachArcHasItsGreyInItsPlace) {
    for (double aspect : {1.0, 0.6, 1.7}) {
        const double radius = 40;
        const QSizeF half = RingSemiAxes(radius, aspect);
        for (const auto& table : {kSunkBevel, kRaisedBevel}) {
            const QImage image = Drawn({{50, 50}, radius, aspect, 5}, table);
            for (const BevelArc& arc : table) {
                const double middle = arc.from + ArcSweep(arc) / 2;
                EXPECT_EQ(At(image, middle, half.width(), half.height()), 0xFF000000 | arc.colour)
                    << "aspect " << aspect << " at " << middle;
            }
        }
    }
}

TEST(Bevel, NoSeamShowsTheBackground) {
    const QImage image = Drawn({{50, 50}, 40, 1, 5}, kRaisedBevel);
    for (int degrees = 0; degrees < 360; ++degrees) {
        const QRgb pixel = At(image, degrees, 40, 40);
        // The paper is green; a seam lets a quarter or more of it through.
        EXPECT_NEAR(qRed(pixel), qGreen(pixel), 8) << degrees;
    }
}

TEST(Bevel, TheLineIsAsWideAsTold) {
    const QImage image = Drawn({{50, 50}, 40, 1, 4}, kSunkBevel);
    // Straight up from the centre the sunk bevel is black from y = 8 to 12.
    EXPECT_EQ(image.pixel(50, 7), kPaper);
    for (int y = 8; y < 12; ++y) {
        EXPECT_LT(qGreen(image.pixel(50, y)), 10) << y;
    }
    EXPECT_GT(qGreen(image.pixel(50, 12)), 190);
}
