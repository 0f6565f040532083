#include "controls/button_geometry.h"

#include <gtest/gtest.h>

namespace {

void ExpectRing(const std::optional<Ring>& ring, QPoint centre, double radius, double aspect,
                double lineWidth) {
    ASSERT_TRUE(ring.has_value());
    EXPECT_EQ(ring->centre, QPointF(centre));
    EXPECT_DOUBLE_EQ(ring->radius, radius);
    EXPECT_DOUBLE_EQ(ring->aspect, aspect);
    EXPECT_DOUBLE_EQ(ring->lineWidth, lineWidth);
}

ButtonLook Look(int width, int height, int depth, bool pressed = false) {
    return {.size = {width, height}, .depth = depth, .sunk = true, .pressed = pressed};
}

} // namespace

TEST(ButtonGeometry, TheCentreIsOnePixelUpAndLeftOfHalfTheSize) {
    EXPECT_EQ(ButtonCentre({40, 30}), QPoint(19, 14));
    EXPECT_EQ(ButtonCentre({41, 31}), QPoint(19, 14));
    EXPECT_EQ(ButtonCentre({7, 7}), QPoint(2, 2));
}

TEST(ButtonGeometry, RoundButton) {
    const ButtonRings rings = RingsOfButton(Look(40, 40, 2));
    ExpectRing(rings.fill, {19, 19}, 18, 1, 2);
    ExpectRing(rings.outer, {19, 19}, 17, 1, 2);
    ExpectRing(rings.inner, {19, 19}, 16, 1, 2);
}

TEST(ButtonGeometry, WideButtonTakesItsRadiiFromTheWidth) {
    const ButtonRings rings = RingsOfButton(Look(60, 30, 2));
    ExpectRing(rings.fill, {29, 14}, 28, 28.0 / 58, 2);
    ExpectRing(rings.outer, {29, 14}, 27, 28.0 / 58, 2);
    ExpectRing(rings.inner, {29, 14}, 26, 25.0 / 55, 2);
}

TEST(ButtonGeometry, TallButtonTakesItsRadiiFromTheHeight) {
    const ButtonRings rings = RingsOfButton(Look(30, 60, 2));
    ExpectRing(rings.fill, {14, 29}, 28, 58.0 / 28, 2);
    ExpectRing(rings.outer, {14, 29}, 27, 58.0 / 28, 2);
    // The inset of the inner bevel has another formula here: (D x W) / 2 + 1.
    ExpectRing(rings.inner, {14, 29}, 27, 55.0 / 25, 2);
    EXPECT_LT(RingSemiAxes(rings.fill->radius, rings.fill->aspect).width(),
              RingSemiAxes(rings.fill->radius, rings.fill->aspect).height());
}

TEST(ButtonGeometry, APressThinsTheInnerBevelOnly) {
    const ButtonRings round = RingsOfButton(Look(40, 40, 2, true));
    ExpectRing(round.fill, {19, 19}, 18, 1, 2);
    ExpectRing(round.outer, {19, 19}, 17, 1, 2);
    ExpectRing(round.inner, {19, 19}, 16.5, 1, 1);
    ExpectRing(RingsOfButton(Look(30, 60, 2, true)).inner, {14, 29}, 28, 56.0 / 26, 1);
    ExpectRing(RingsOfButton(Look(60, 30, 2, true)).inner, {29, 14}, 26.5, 26.0 / 56, 1);
}

TEST(ButtonGeometry, HalfTheDepthIsRoundedToEven) {
    ExpectRing(RingsOfButton(Look(40, 40, 3, true)).inner, {19, 19}, 20 - 5, 1, 2);
    ExpectRing(RingsOfButton(Look(40, 40, 5, true)).inner, {19, 19}, 20 - 7, 1, 2);
    ExpectRing(RingsOfButton(Look(40, 40, 7, true)).inner, {19, 19}, 20 - 10, 1, 4);
    ExpectRing(RingsOfButton(Look(40, 40, 3)).inner, {19, 19}, 20 - 5.5, 1, 3);
    ExpectRing(RingsOfButton(Look(40, 40, 3)).fill, {19, 19}, 20 - 2.5, 1, 3);
}

TEST(ButtonGeometry, DepthOneLosesItsInnerBevelWhilePressed) {
    const ButtonRings up = RingsOfButton(Look(40, 40, 1));
    ExpectRing(up.fill, {19, 19}, 18.5, 1, 1);
    ExpectRing(up.outer, {19, 19}, 17, 1, 1);
    ExpectRing(up.inner, {19, 19}, 17.5, 1, 1);
    const ButtonRings down = RingsOfButton(Look(40, 40, 1, true));
    EXPECT_TRUE(down.fill);
    EXPECT_TRUE(down.outer);
    EXPECT_FALSE(down.inner);
}

TEST(ButtonGeometry, NoDepthNoRings) {
    for (int depth : {0, -1, -32768}) {
        const ButtonRings rings = RingsOfButton(Look(40, 40, depth));
        EXPECT_FALSE(rings.fill || rings.outer || rings.inner) << depth;
    }
}

TEST(ButtonGeometry, OnlyASunkButtonHasTheOuterBevel) {
    ButtonLook look = Look(40, 40, 2);
    look.sunk = false;
    const ButtonRings rings = RingsOfButton(look);
    EXPECT_TRUE(rings.fill);
    EXPECT_FALSE(rings.outer);
    EXPECT_TRUE(rings.inner);
}

TEST(ButtonGeometry, ButtonsTooSmallForTheirRingsHaveNoneToDraw) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(2, 40), QSize(40, 1), QSize(7, 7)}) {
        for (int depth : {1, 2, 20, 32767}) {
            const ButtonRings rings = RingsOfButton({.size = size, .depth = depth});
            for (const auto& ring : {rings.fill, rings.outer, rings.inner}) {
                const QSizeF half = ring ? RingSemiAxes(ring->radius, ring->aspect) : QSizeF();
                EXPECT_LE(half.width(), size.width() / 2.0 + 1);
                EXPECT_LE(half.height(), size.height() / 2.0 + 1);
            }
        }
    }
}

TEST(ButtonGeometry, TheCaptionIsCentredWithTiesToEven) {
    const ButtonLook look = Look(40, 40, 2);
    EXPECT_EQ(CaptionPlace(look, {10, 12}, {0, 0}), QPointF(14, 13));
    EXPECT_EQ(CaptionPlace(look, {15, 9}, {0, 0}), QPointF(19 - 8, 19 - 4));
    EXPECT_EQ(CaptionPlace(look, {13, 11}, {0, 0}), QPointF(19 - 6, 19 - 6));
    EXPECT_EQ(CaptionPlace(look, {10, 12}, {-2, 3}), QPointF(12, 16));
}

TEST(ButtonGeometry, APressMovesTheCaptionByJustOverAPixel) {
    const QPointF place = CaptionPlace(Look(40, 40, 2, true), {10, 12}, {1, -1});
    EXPECT_DOUBLE_EQ(place.x(), 14 + 1.1 + 1);
    EXPECT_DOUBLE_EQ(place.y(), 13 + 1.1 - 1);
}

TEST(ButtonGeometry, AllFourEdgesHoldTheButton) {
    const QSize size(40, 30);
    for (const QPointF inside : {QPointF(0, 0), QPointF(40, 30), QPointF(0, 30), QPointF(40, 0)}) {
        EXPECT_TRUE(HoldsButton(size, inside));
    }
    for (const QPointF outside : {QPointF(-1, 5), QPointF(41, 5), QPointF(5, -1), QPointF(5, 31)}) {
        EXPECT_FALSE(HoldsButton(size, outside));
    }
}
