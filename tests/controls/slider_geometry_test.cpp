#include "controls/slider_geometry.h"

#include <gtest/gtest.h>
#include <limits>

TEST(SliderGeometry, HorizontalForm) {
    const SliderLayout layout = LayOutSlider({357, 17}, 0.25);
    EXPECT_TRUE(layout.horizontal);
    EXPECT_EQ(layout.centre, QPoint(177, 7));
    EXPECT_EQ(layout.bar, QRectF(0, 7 - 17 / 8.0, 357, 17 / 4.0));
    EXPECT_EQ(layout.thumb, QRectF((357 - 17) * 0.25, 0, 17, 17));
    EXPECT_EQ(layout.minPixel, 8); // 8.5, the tie goes to even
    EXPECT_EQ(layout.maxPixel, 349);
}

TEST(SliderGeometry, VerticalForm) {
    const SliderLayout layout = LayOutSlider({17, 239}, 0.5);
    EXPECT_FALSE(layout.horizontal);
    EXPECT_EQ(layout.centre, QPoint(7, 118));
    EXPECT_EQ(layout.bar, QRectF(7 - 17 / 8.0, 0, 17 / 4.0, 239));
    EXPECT_EQ(layout.thumb, QRectF(0, (239 - 17) * 0.5, 17, 17));
    EXPECT_EQ(layout.minPixel, 8);
    EXPECT_EQ(layout.maxPixel, 231);
}

TEST(SliderGeometry, HalfAThumbIsRoundedToEven) {
    EXPECT_EQ(LayOutSlider({357, 15}, 0).minPixel, 8); // 7.5
    EXPECT_EQ(LayOutSlider({357, 15}, 0).maxPixel, 349);
    EXPECT_EQ(LayOutSlider({13, 85}, 0).minPixel, 6); // 6.5
    EXPECT_EQ(LayOutSlider({13, 85}, 0).maxPixel, 79);
    EXPECT_EQ(LayOutSlider({100, 20}, 0).minPixel, 10);
}

TEST(SliderGeometry, ASquareIsHorizontal) {
    EXPECT_TRUE(LayOutSlider({20, 20}, 0).horizontal);
    EXPECT_TRUE(LayOutSlider({21, 20}, 0).horizontal);
    EXPECT_FALSE(LayOutSlider({20, 21}, 0).horizontal);
}

TEST(SliderGeometry, TheVerticalGrooveIsFramed) {
    const SliderLayout layout = LayOutSlider({16, 100}, 0); // groove from x = 5 to 9
    ASSERT_EQ(layout.bar, QRectF(5, 0, 4, 100));
    const auto lines = EdgingOfBar(layout);
    EXPECT_EQ(lines[0], QLineF(5, 1, 8, 1));
    EXPECT_EQ(lines[1], QLineF(5, 0, 5, 99));
    EXPECT_EQ(lines[2], QLineF(8, 0, 8, 99));
    EXPECT_EQ(lines[3], QLineF(5, 99, 8, 99));
}

TEST(SliderGeometry, TheHorizontalGrooveIsFramedByTheSameRule) {
    const SliderLayout layout = LayOutSlider({100, 16}, 0);
    ASSERT_EQ(layout.bar, QRectF(0, 5, 100, 4));
    const auto lines = EdgingOfBar(layout);
    EXPECT_EQ(lines[0], QLineF(0, 5, 99, 5)); // above
    EXPECT_EQ(lines[1], QLineF(1, 5, 1, 8));  // left
    EXPECT_EQ(lines[2], QLineF(99, 5, 99, 8));
    EXPECT_EQ(lines[3], QLineF(0, 8, 99, 8));
}

TEST(SliderGeometry, TheVerticalThumbSitsOnWholePixels) {
    struct Known {
        double value;
        double top;
        double centre;
    };
    // c = round(223 v + 8), top = round(c - 8.5), centre = round(8.5 + top - 1), ties to even.
    for (const Known& known :
         {Known{0, 0, 8}, Known{0.5, 112, 120}, Known{1, 222, 230}, Known{0.01, 2, 10}, Known{0.02, 4, 12}}) {
        const ThumbPlace place = PlaceThumb(LayOutSlider({17, 239}, known.value), known.value);
        EXPECT_EQ(place.thumb, QRectF(0, known.top, 17, 17)) << known.value;
        EXPECT_EQ(place.centre, QPointF(7, known.centre)) << known.value;
    }
}

TEST(SliderGeometry, TheHorizontalThumbCutsItsHalfWidth) {
    struct Known {
        double value;
        double left;
    };
    // c = round(341 v + 8), left = c - 8.
    for (const Known& known : {Known{0, 0}, Known{0.5, 170}, Known{1, 341}, Known{0.25, 85}}) {
        const ThumbPlace place = PlaceThumb(LayOutSlider({357, 17}, known.value), known.value);
        EXPECT_EQ(place.thumb, QRectF(known.left, 0, 17, 17)) << known.value;
        EXPECT_EQ(place.centre, QPointF(8.5 + known.left - 1, 7)) << known.value;
    }
}

TEST(SliderGeometry, TheThumbNeverLeavesPixelSteps) {
    for (const QSize size : {QSize(357, 17), QSize(17, 239), QSize(357, 15), QSize(13, 85)}) {
        double last = -1;
        for (int i = 0; i <= 1000; ++i) {
            const ThumbPlace place = PlaceThumb(LayOutSlider(size, i / 1000.0), i / 1000.0);
            const double start = size.width() > size.height() ? place.thumb.left() : place.thumb.top();
            EXPECT_EQ(start, std::floor(start));
            EXPECT_GE(start, last);
            last = start;
        }
    }
}

TEST(SliderGeometry, TheBevelLiesTwoPixelsInsideTheThumb) {
    const Ring ring = ThumbBevel(PlaceThumb(LayOutSlider({357, 17}, 0), 0), 1);
    EXPECT_EQ(ring.radius, 6.5);
    EXPECT_EQ(ring.aspect, 1);
    EXPECT_EQ(ring.lineWidth, 1);
    EXPECT_EQ(ring.centre, QPointF(7.5, 7));
}

TEST(SliderGeometry, PointerPlacesGiveTheValue) {
    const SliderLayout layout = LayOutSlider({357, 17}, 0);
    EXPECT_EQ(ValueAt(layout, -1000), 0);
    EXPECT_EQ(ValueAt(layout, 0), 0);
    EXPECT_EQ(ValueAt(layout, 8), 0);
    EXPECT_DOUBLE_EQ(ValueAt(layout, 9), 1 / 342.0);
    EXPECT_DOUBLE_EQ(ValueAt(layout, 178), 170 / 342.0);
    EXPECT_DOUBLE_EQ(ValueAt(layout, 348), 340 / 342.0);
    EXPECT_EQ(ValueAt(layout, 349), 1);
    EXPECT_EQ(ValueAt(layout, 356), 1);
    EXPECT_EQ(ValueAt(layout, std::numeric_limits<int>::max()), 1);
    for (int along = 9; along < 349; ++along) {
        EXPECT_GT(ValueAt(layout, along), 0);
        EXPECT_LT(ValueAt(layout, along), 1);
    }
}

TEST(SliderGeometry, AGrooveWithoutLengthHasTwoEndsOnly) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(15, 15), QSize(16, 16), QSize(0, 40)}) {
        const SliderLayout layout = LayOutSlider(size, 0.5);
        for (int along = -2; along < 20; ++along) {
            const double value = ValueAt(layout, along);
            EXPECT_GE(value, 0);
            EXPECT_LE(value, 1);
        }
    }
    SliderLayout crossed;
    crossed.minPixel = 8;
    crossed.maxPixel = 7;
    EXPECT_EQ(ValueAt(crossed, 7), 0);
    EXPECT_EQ(ValueAt(crossed, 9), 1);
}

TEST(SliderGeometry, StepsRoundTiesToEven) {
    EXPECT_FLOAT_EQ(QuantizeValue(0.125, 0.25F), 0); // half a step
    EXPECT_FLOAT_EQ(QuantizeValue(0.375, 0.25F), 0.5);
    EXPECT_FLOAT_EQ(QuantizeValue(0.625, 0.25F), 0.5);
    EXPECT_FLOAT_EQ(QuantizeValue(0.126, 0.25F), 0.25);
    EXPECT_FLOAT_EQ(QuantizeValue(0.524, 0.05F), 0.5);
}

TEST(SliderGeometry, StepOneIsNoQuantizing) {
    EXPECT_EQ(QuantizeValue(0.3, 1.0F), 0.3F);
    EXPECT_EQ(QuantizeValue(0.7, 1.0F), 0.7F);
}

TEST(SliderGeometry, TheEndsStayExactWithTheStepsInUse) {
    for (float step : {0.0001F, 0.01F, 0.05F, 0.1F, 0.001F}) {
        EXPECT_EQ(QuantizeValue(0, step), 0.0F);
        EXPECT_EQ(QuantizeValue(1, step), 1.0F);
    }
}

TEST(SliderGeometry, AbsurdStepsStayInRange) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    for (float step : {0.0F, 0.6F, 2.0F, -0.25F, 1e-38F, 1e38F, inf, nan}) {
        for (double value : {0.0, 0.3, 1.0}) {
            const float quantized = QuantizeValue(value, step);
            EXPECT_GE(quantized, 0.0F) << step;
            EXPECT_LE(quantized, 1.0F) << step;
        }
    }
}
