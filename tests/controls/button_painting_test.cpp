#include "controls/button_painting.h"

#include "controls/button_control.h"
#include "controls/fonts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

constexpr QRgb kFill = qRgb(0, 255, 0);
constexpr QRgb kBack = qRgb(112, 0, 112);
constexpr QRgb kFore = qRgb(255, 255, 0);

ButtonInk Ink(const QString& caption = {}) {
    return {.fill = QColor(kFill),
            .back = QColor(kBack),
            .fore = QColor(kFore),
            .caption = caption,
            .font = InstrumentFont(QStringLiteral("Arial"), 9.75, true),
            .nudge = {}};
}

QImage Drawn(const ButtonLook& look, const ButtonInk& ink, double ratio = 1) {
    QImage image(look.size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    DrawButton(painter, look, ink);
    return image;
}

/// The pixel at an angle and radius around the button's centre.
QRgb At(const QImage& image, const ButtonLook& look, double degrees, double radius) {
    const QPointF centre(look.size.width() / 2.0, look.size.height() / 2.0);
    const double a = degrees * std::numbers::pi / 180;
    return image.pixel(static_cast<int>(std::floor(centre.x() + radius * std::cos(a))),
                       static_cast<int>(std::floor(centre.y() - radius * std::sin(a))));
}

QRgb Grey(int level) {
    return qRgb(level, level, level);
}

/// Bounds of the pixels of one colour.
QRect Inked(const QImage& image, QRgb colour) {
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return bounds;
}

} // namespace

TEST(ButtonPainting, WithoutDepthThereIsTheSurfaceAndTheCaption) {
    const ButtonLook look{.size = {40, 40}, .depth = 0};
    const QImage bare = Drawn(look, Ink());
    EXPECT_EQ(Inked(bare, kBack), QRect(0, 0, 40, 40));
    const QImage captioned = Drawn(look, Ink(QStringLiteral("on")));
    EXPECT_NE(captioned, bare);
    EXPECT_EQ(captioned.pixel(0, 0), kBack);
}

TEST(ButtonPainting, RingAndBevelsStandWhereTheirRadiiSay) {
    const ButtonLook look{.size = {200, 200}, .depth = 10, .sunk = false};
    const QImage image = Drawn(look, Ink());
    // Ring: radius 100 - 6 = 94, ten wide; inner bevel: 100 - 16 = 84, ten wide.
    for (double degrees : {0.0, 90.0, 137.0, 300.0}) {
        EXPECT_EQ(At(image, look, degrees, 94), kFill) << degrees;
        EXPECT_EQ(At(image, look, degrees, 97), kFill) << degrees;
        EXPECT_EQ(At(image, look, degrees, 60), kBack) << degrees;
    }
    for (const BevelArc& arc : kRaisedBevel) {
        EXPECT_EQ(At(image, look, arc.from + ArcSweep(arc) / 2, 84), 0xFF000000 | arc.colour);
    }
}

TEST(ButtonPainting, TheRingsStandInTheMiddleWithSharpEdges) {
    const ButtonLook look{.size = {40, 40}, .depth = 2, .sunk = false};
    const QImage image = Drawn(look, Ink());
    // From one pixel inside the rim on all four sides.
    for (int i : {0, 39}) {
        EXPECT_EQ(image.pixel(i, 20), kBack);
        EXPECT_EQ(image.pixel(20, i), kBack);
    }
    for (int i : {1, 38}) {
        EXPECT_GT(qGreen(image.pixel(i, 20)), 0xF0);
        EXPECT_GT(qGreen(image.pixel(20, i)), 0xF0);
    }
}

TEST(ButtonPainting, TheOuterBevelLiesOverTheRing) {
    const ButtonLook look{.size = {200, 200}, .depth = 4};
    const QImage image = Drawn(look, Ink());
    // Ring 95..99, outer bevel 95..99 (97 +- 2): the bevel is drawn last.
    for (const BevelArc& arc : kSunkBevel) {
        EXPECT_EQ(At(image, look, arc.from + ArcSweep(arc) / 2, 97), 0xFF000000 | arc.colour);
    }
    ButtonLook flat = look;
    flat.sunk = false;
    EXPECT_EQ(At(Drawn(flat, Ink()), look, 135, 97), kFill);
}

TEST(ButtonPainting, ThePressedInnerBevelIsHalfAsWide) {
    ButtonLook look{.size = {200, 200}, .depth = 10, .sunk = false};
    // Up: 84 +- 5. Pressed: line 5, radius 100 - 13.5 = 86.5 +- 2.5.
    EXPECT_EQ(At(Drawn(look, Ink()), look, 140, 81), Grey(0xF0));
    look.pressed = true;
    EXPECT_EQ(At(Drawn(look, Ink()), look, 140, 81), kBack);
    EXPECT_EQ(At(Drawn(look, Ink()), look, 140, 86.5), Grey(0xF0));
}

TEST(ButtonPainting, ATallButtonIsATallEllipse) {
    const ButtonLook look{.size = {100, 200}, .depth = 10, .sunk = false};
    const QImage image = Drawn(look, Ink());
    const QPoint centre = ButtonCentre(look.size);
    // Half height 94, half width 94 x (100 - 6) / (200 - 6) = 45.5.
    EXPECT_EQ(image.pixel(centre.x(), centre.y() - 94), kFill);
    EXPECT_EQ(image.pixel(centre.x() + 46, centre.y()), kFill);
    EXPECT_EQ(image.pixel(1, 1), kBack);
}

TEST(ButtonPainting, TheRingsStandInTheMiddleOfEverySize) {
    for (const double ratio : {1.0, 2.0}) {
        for (const QSize size : {QSize(15, 15), QSize(16, 16), QSize(24, 24), QSize(25, 25), QSize(72, 26),
                                 QSize(73, 27), QSize(27, 40)}) {
            // Pressed, a button of depth 1 has the ring alone, which has no light and no shade.
            const ButtonLook look{.size = size, .depth = 1, .sunk = false, .pressed = true};
            const QImage image = Drawn(look, Ink(), ratio);
            const auto differ = [&](int x, int y, int otherX, int otherY) {
                const QColor a(image.pixel(x, y));
                const QColor b(image.pixel(otherX, otherY));
                return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                       std::abs(a.blue() - b.blue());
            };
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    ASSERT_LT(differ(x, y, image.width() - 1 - x, y), 60) << size.width() << " at " << x;
                    ASSERT_LT(differ(x, y, x, image.height() - 1 - y), 60) << size.height() << " at " << y;
                }
            }
        }
    }
}

TEST(ButtonPainting, TheCaptionStandsInTheMiddleOfTheRings) {
    for (const QSize size : {QSize(60, 60), QSize(61, 61)}) {
        const QRect inked = Inked(Drawn({.size = size, .depth = 0}, Ink(QStringLiteral("HHH"))), kFore);
        const QPointF middle = QRectF(inked).center();
        EXPECT_NEAR(middle.x(), size.width() / 2.0, 1) << size.width();
        EXPECT_NEAR(middle.y(), size.height() / 2.0, 1.5) << size.width();
    }
}

TEST(ButtonPainting, APressMovesTheCaptionDownAndRight) {
    ButtonLook look{.size = {60, 60}, .depth = 2};
    const QRect up = Inked(Drawn(look, Ink(QStringLiteral("H"))), kFore);
    look.pressed = true;
    const QRect down = Inked(Drawn(look, Ink(QStringLiteral("H"))), kFore);
    EXPECT_GT(down.top(), up.top());
    EXPECT_GE(down.left(), up.left());
    EXPECT_LE(down.top() - up.top(), 2);
}

TEST(ButtonPainting, TheNudgeMovesTheCaption) {
    const ButtonLook look{.size = {60, 60}, .depth = 2};
    ButtonInk ink = Ink(QStringLiteral("H"));
    const QRect plain = Inked(Drawn(look, ink), kFore);
    ink.nudge = {3, -4};
    EXPECT_EQ(Inked(Drawn(look, ink), kFore), plain.translated(3, -4));
}

TEST(ButtonPainting, AWideCaptionIsCondensedRatherThanCutOff) {
    EXPECT_EQ(CaptionSqueeze(30, 40), 1);
    EXPECT_EQ(CaptionSqueeze(40, 40), 1);
    EXPECT_DOUBLE_EQ(CaptionSqueeze(50, 40), 0.8);
    // Never beyond legibility, whatever the room.
    EXPECT_EQ(CaptionSqueeze(50, 1), CaptionSqueeze(50, -30));
    EXPECT_GT(CaptionSqueeze(50, 1), 0.6);

    const ButtonInk ink = Ink(QStringLiteral("HHHH"));
    const double natural = QFontMetricsF(ink.font).horizontalAdvance(ink.caption);
    const int width = static_cast<int>(natural * 0.8);
    const QRect text = Inked(Drawn({.size = {width, 40}, .depth = 0}, ink), kFore);
    EXPECT_GE(text.left(), 0);
    EXPECT_LT(text.right(), width);
    EXPECT_GT(text.width(), width * 0.7);
}

TEST(ButtonPainting, AtScaleTwoTheEdgesAreDrawnAnew) {
    const ButtonLook look{.size = {40, 40}, .depth = 2};
    const QImage once = Drawn(look, Ink(QStringLiteral("on")));
    const QImage twice = Drawn(look, Ink(QStringLiteral("on")), 2);
    ASSERT_EQ(twice.size(), QSize(80, 80));
    int mixed = 0;
    for (int y = 0; y < 80; y += 2) {
        for (int x = 0; x < 80; x += 2) {
            const QRgb corner = twice.pixel(x, y);
            mixed += corner != twice.pixel(x + 1, y) || corner != twice.pixel(x, y + 1);
        }
    }
    // An enlarged picture would have none.
    EXPECT_GT(mixed, 200);
    EXPECT_EQ(once.pixel(0, 0), twice.pixel(0, 0));
}

TEST(ButtonPainting, NoSizeIsTooSmall) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(0, 30), QSize(3, 200), QSize(7, 7)}) {
        for (int depth : {0, 1, 2, 32767}) {
            ButtonControl1 button;
            button.SetButtonDepth(depth);
            button.SetButtonCaption(QStringLiteral("running"));
            button.setMinimumSize(0, 0);
            button.resize(size);
            QImage image(210, 210, QImage::Format_RGB32);
            button.render(&image);
        }
    }
}
