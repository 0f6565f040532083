#include "controls/slider_geometry.h"

#include <algorithm>
#include <cmath>
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

TEST(SliderGeometry, TheThumbSitsOnWholePixels) {
    struct Known {
        QSize size;
        double value;
        double start;
    };
    // c = round((max - min) v + min), the whole part of half a thumb before it, and the ends at the ends.
    for (const Known& known :
         {Known{{17, 239}, 0, 0}, Known{{17, 239}, 0.5, 112}, Known{{17, 239}, 1, 222},
          Known{{17, 239}, 0.01, 2}, Known{{17, 239}, 0.02, 4}, Known{{357, 17}, 0, 0},
          Known{{357, 17}, 0.5, 170}, Known{{357, 17}, 1, 340}, Known{{357, 17}, 0.25, 85},
          Known{{357, 15}, 0, 0}, Known{{357, 15}, 0.5, 171}, Known{{357, 15}, 1, 342}, Known{{13, 85}, 0, 0},
          Known{{13, 85}, 1, 72}, Known{{100, 20}, 0, 0}, Known{{100, 20}, 1, 80}}) {
        const SliderLayout layout = LayOutSlider(known.size, known.value);
        const double side = std::min(known.size.width(), known.size.height());
        const QRectF thumb = PlaceThumb(layout, known.value);
        EXPECT_EQ(thumb.size(), QSizeF(side, side));
        EXPECT_EQ(layout.horizontal ? thumb.topLeft() : QPointF(thumb.top(), thumb.left()),
                  QPointF(known.start, 0))
            << known.size.width() << "x" << known.size.height() << " at " << known.value;
    }
}

TEST(SliderGeometry, TheThumbStandsWhereTheMouseHasPutIt) {
    for (const QSize size : {QSize(357, 17), QSize(17, 239), QSize(357, 15), QSize(13, 85), QSize(100, 20)}) {
        const SliderLayout layout = LayOutSlider(size, 0);
        const int length = layout.horizontal ? size.width() : size.height();
        const int side = layout.horizontal ? size.height() : size.width();
        for (int along = 0; along < length; ++along) {
            const QRectF thumb = PlaceThumb(layout, ValueAt(layout, along));
            const int start = static_cast<int>(layout.horizontal ? thumb.left() : thumb.top());
            EXPECT_GE(start, 0);
            EXPECT_LE(start + side, length);
            // The mouse counts one pixel more than the thumb has to go, which its upper half shows.
            const int held = std::clamp(along, side / 2, length - 1 - side / 2);
            EXPECT_GE(start + side / 2, held - 1) << along;
            EXPECT_LE(start + side / 2, held + 1 - side % 2) << along;
        }
    }
}

TEST(SliderGeometry, GrooveThumbAndBevelHaveOneMiddle) {
    for (const QSize size : {QSize(357, 17), QSize(17, 239), QSize(357, 15), QSize(13, 85), QSize(100, 20)}) {
        for (const double value : {0.0, 0.3, 1.0}) {
            const SliderLayout layout = LayOutSlider(size, value);
            const QRectF thumb = PlaceThumb(layout, value);
            const QPointF groove = DrawnBar(layout, size).center();
            EXPECT_EQ(ThumbBevel(thumb, 1).centre, thumb.center());
            EXPECT_EQ(layout.horizontal ? groove.y() : groove.x(),
                      layout.horizontal ? thumb.center().y() : thumb.center().x());
            EXPECT_EQ(layout.horizontal ? groove.x() : groove.y(),
                      (layout.horizontal ? size.width() : size.height()) / 2.0);
        }
    }
}

TEST(SliderGeometry, TheThumbNeverLeavesPixelSteps) {
    for (const QSize size : {QSize(357, 17), QSize(17, 239), QSize(357, 15), QSize(13, 85)}) {
        double last = -1;
        for (int i = 0; i <= 1000; ++i) {
            const QRectF thumb = PlaceThumb(LayOutSlider(size, i / 1000.0), i / 1000.0);
            const double start = size.width() > size.height() ? thumb.left() : thumb.top();
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
    EXPECT_EQ(ring.centre, QPointF(8.5, 8.5));
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
