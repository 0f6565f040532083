#include "controls/slider_fixture.h"

#include <algorithm>
#include <cmath>

TEST_F(SliderControl, NoSizeIsTooSmall) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(0, 50), QSize(50, 0), QSize(2, 2)}) {
        for (int depth : {0, 1, 32767}) {
            slider.resize(size);
            slider.SetSliderDepth(depth);
            slider.SetSliderValue(0.5F);
            Press({0, 0});
            Move({1, 1});
            Release({1, 1});
            Turn(120);
            QImage image(60, 60, QImage::Format_RGB32);
            slider.render(&image);
            EXPECT_GE(slider.SliderValue(), 0.0F);
            EXPECT_LE(slider.SliderValue(), 1.0F);
        }
    }
}

TEST_F(SliderControl, TheLookIsGrooveFrameAndThumb) {
    slider.resize(100, 16); // groove from y = 6 to 10
    slider.SetSliderFillColor(QColor(0, 0, 255));
    slider.SetSliderDepth(0);
    slider.SetSliderValue(0);
    QImage image(100, 16, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image.pixel(60, 5), QColor(Qt::magenta).rgb());
    EXPECT_EQ(image.pixel(60, 6), qRgb(0x40, 0x40, 0x40));
    EXPECT_EQ(image.pixel(60, 7), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(60, 8), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(60, 9), qRgb(0xC0, 0xC0, 0xC0));
    EXPECT_EQ(image.pixel(60, 10), QColor(Qt::magenta).rgb());
    EXPECT_EQ(image.pixel(99, 6), qRgb(0xC0, 0xC0, 0xC0));
    EXPECT_EQ(image.pixel(8, 8), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(0, 0), QColor(Qt::magenta).rgb()); // the thumb is round
    slider.SetSliderDepth(1);
    QImage bevelled = image;
    slider.render(&bevelled, {}, {}, QWidget::RenderFlags());
    EXPECT_NE(bevelled, image);
    slider.SetSliderValue(1);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image.pixel(92, 8), qRgb(0, 0, 255));
}

TEST_F(SliderControl, TheVerticalLookIsTheSameOnItsSide) {
    slider.resize(16, 100); // groove from x = 6 to 10
    slider.SetSliderValue(1);
    QImage image(16, 100, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    const std::vector<QRgb> across = {
        QColor(Qt::magenta).rgb(), qRgb(0x40, 0x40, 0x40),   qRgb(0, 0, 0), qRgb(0, 0, 0),
        qRgb(0xC0, 0xC0, 0xC0),    QColor(Qt::magenta).rgb()};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(image.pixel(5 + i, 50), across[static_cast<std::size_t>(i)]) << i;
    }
    EXPECT_EQ(image.pixel(7, 0), qRgb(0, 0, 0)); // the near end is closed one pixel in
    EXPECT_EQ(image.pixel(7, 1), qRgb(0x40, 0x40, 0x40));
    slider.SetSliderValue(0);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image.pixel(7, 99), qRgb(0xC0, 0xC0, 0xC0));
}

TEST_F(SliderControl, GrooveAndThumbStandOnTheMiddleAtEveryScale) {
    const double ratio = slider.devicePixelRatioF();
    for (const QSize size : {QSize(100, 17), QSize(100, 15), QSize(100, 16), QSize(13, 85), QSize(17, 239)}) {
        slider.resize(size);
        slider.SetSliderDepth(0);
        slider.SetSliderFillColor(Qt::green);
        slider.SetSliderValue(0.5F);
        QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        slider.render(&image, {}, {}, QWidget::RenderFlags());
        const bool wide = size.width() > size.height();
        // Across the groove: the pixels that a line through thumb or groove finds, from the first to behind
        // the last, around the middle of the control.
        const auto middleOf = [&](int along, auto counts) {
            const int breadth = wide ? image.height() : image.width();
            int first = breadth;
            int last = -1;
            for (int across = 0; across < breadth; ++across) {
                if (counts(wide ? image.pixelColor(along, across) : image.pixelColor(across, along))) {
                    first = std::min(first, across);
                    last = across;
                }
            }
            return (first + last + 1) / 2.0 / ratio;
        };
        const double middle = (wide ? size.height() : size.width()) / 2.0;
        const double tolerance = 0.5 / ratio * (ratio == std::floor(ratio) ? 0 : 1) + 1e-9;
        const int length = wide ? image.width() : image.height();
        EXPECT_NEAR(middleOf(3, [](const QColor& c) { return c != QColor(Qt::magenta); }), middle, tolerance)
            << "groove of " << size.width() << "x" << size.height();
        EXPECT_NEAR(middleOf(length / 2, [](const QColor& c) { return c == QColor(Qt::green); }), middle,
                    tolerance)
            << "thumb of " << size.width() << "x" << size.height();
    }
}
