#include "controls/contrast.h"

#include "controls/button_painting.h"
#include "controls/fonts.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

TEST(Contrast, HasItsKnownValues) {
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(Contrast(Qt::white, Qt::white), 1, 1e-9);
    EXPECT_NEAR(Contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
    EXPECT_DOUBLE_EQ(Contrast(Qt::red, Qt::blue), Contrast(Qt::blue, Qt::red));
}

/// Darkest luminance on a bare button with that caption.
double Darkest(const QColor& fore, const QColor& back) {
    QImage image(40, 40, QImage::Format_RGB32);
    QPainter painter(&image);
    ButtonLook look;
    look.size = image.size();
    look.depth = 0;
    ButtonInk ink;
    ink.fill = ink.back = back;
    ink.fore = fore;
    ink.caption = QStringLiteral("inv");
    ink.font = InstrumentFont(QStringLiteral("Arial Narrow"), 8.25, true);
    DrawButton(painter, look, ink);
    painter.end();
    double darkest = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            darkest = std::min(darkest, Luminance(image.pixelColor(x, y)));
        }
    }
    return darkest;
}

TEST(Contrast, ACaptionThatItsGroundWouldSwallowGetsAShade) {
    const QColor panel(0xBC, 0xB6, 0x98);
    EXPECT_LT(Darkest(Qt::white, panel), 0.5 * Luminance(panel)) << "white on a light panel";
    const QColor tray(0x38, 0x3A, 0x40);
    EXPECT_GT(Darkest(Qt::white, tray), 0.95 * Luminance(tray)) << "white on a dark tray needs none";
}

} // namespace
