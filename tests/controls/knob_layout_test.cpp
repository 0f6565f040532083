#include "controls/knob_layout.h"

#include <gtest/gtest.h>

namespace {

KnobLayout Place(QSizeF control, int align, double textHeight = 13, double maxTextWidth = 18) {
    return LayOutKnob({control, align, textHeight, maxTextWidth, {7, 7}});
}

} // namespace

TEST(KnobLayout, TheCircleStandsWithinItsMargins) {
    const KnobLayout k = Place({75, 89}, 0);
    EXPECT_EQ(k.boundary, QRectF(14, 14, 47, 47));
    EXPECT_EQ(k.Radius, 23.5);
    EXPECT_EQ(k.CentreX, 36.5);
    EXPECT_EQ(k.CentreY, 36.5);
    EXPECT_EQ(k.drawnCentre(), k.boundary.center());
}

TEST(KnobLayout, TextBoxAndScrollerLieBelow) {
    const KnobLayout k = Place({75, 89}, 0);
    EXPECT_EQ(k.textBox, QRectF(0, 64, 75, 13));
    EXPECT_EQ(k.scroller, QRectF(14, 77, 47, 0.2 * 47));
    EXPECT_EQ(Place({200, 300}, 0).scroller.height(), 200.0 / 15); // at most
}

TEST(KnobLayout, LabelBelowTheKnob) {
    for (int align : {0, 4, -1, 99}) {
        const KnobLayout k = Place({75, 89}, align);
        EXPECT_EQ(k.label, QRectF(36.5 - 23.5, 64, 47, 13)) << align;
        EXPECT_FALSE(k.labelOnFace);
        EXPECT_FALSE(k.labelLeft);
        EXPECT_EQ(k.scroller.top(), 77);
    }
}

TEST(KnobLayout, LabelOnTheKnob) {
    const KnobLayout k = Place({75, 89}, 1);
    EXPECT_EQ(k.label, QRectF(36.5 - 37.5, 36.5 - 6.5, 75, 13));
    EXPECT_TRUE(k.labelOnFace);
    EXPECT_TRUE(k.labelLeft);
    EXPECT_EQ(k.scroller.top(), 78);
}

TEST(KnobLayout, LabelAboveTheKnob) {
    const KnobLayout k = Place({85, 96}, 2);
    EXPECT_EQ(k.label, QRectF(41.5 - 28.5, 0, 57, 13));
    EXPECT_FALSE(k.labelOnFace);
    EXPECT_FALSE(k.labelLeft);
    EXPECT_EQ(k.scroller.top(), 14 + 57 + 3 + 13 + 1);
}

TEST(KnobLayout, LabelBesideTheKnobMakesRoomForTheLargestNumber) {
    const KnobLayout k = Place({120, 80}, 3);
    EXPECT_EQ(k.boundary, QRectF(60 - 37, 14, 120 - 18 - 28, 74));
    EXPECT_EQ(k.label, QRectF(98, k.CentreY - 6.5, 120, 13));
    EXPECT_EQ(k.scroller.top(), 14 + 74 + 3 + 13 + 1);
    EXPECT_EQ(HiddenRight(k), 98);
    // Only when more than 40 pixels are left, and for no other alignment.
    EXPECT_EQ(Place({58, 80}, 3).boundary.width(), 58 - 28);
    EXPECT_EQ(Place({59, 80}, 3).boundary.width(), 59 - 18 - 28);
    EXPECT_EQ(Place({120, 80}, 0).boundary.width(), 120 - 28);
    EXPECT_EQ(HiddenRight(Place({75, 89}, 0)), 0);
}

TEST(KnobLayout, ZeroButtonIsConcentric) {
    const KnobLayout k = Place({75, 89}, 0);
    EXPECT_EQ(k.zeroButton, QPointF(34, 34));
    EXPECT_EQ(k.zeroButton + QPointF(3.5, 3.5), k.drawnCentre());
}

TEST(KnobLayout, AControlSmallerThanItsMarginsHasNoCircle) {
    for (QSizeF size : {QSizeF(0, 0), QSizeF(10, 10), QSizeF(28, 28)}) {
        for (int align = 0; align < 4; ++align) {
            const KnobLayout k = Place(size, align);
            EXPECT_EQ(k.boundary.width(), 0);
            EXPECT_EQ(k.Radius, 0);
            EXPECT_GE(k.scroller.height(), 0);
        }
    }
}
