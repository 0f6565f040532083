#include "controls/symbol_font.h"

#include "controls/fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <gtest/gtest.h>
#include <set>

namespace {

const QString kGlyphs = QStringLiteral("012345678");

QImage Drawn(QChar c, int pixels) {
    QFont font{QString::fromLatin1(kSymbolFamily)};
    font.setPixelSize(pixels);
    QImage image(2 * pixels, 2 * pixels, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.drawText(QPointF(pixels / 2.0, pixels / 2.0 + QFontMetricsF(font).ascent()), QString(c));
    return image;
}

/// Share of the em that is inked, and the bounds of the ink.
std::pair<double, QRect> Ink(const QImage& image) {
    double ink = 0;
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int dark = 255 - qGray(image.pixel(x, y));
            ink += dark / 255.0;
            if (dark > 40) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return {ink * 4 / (image.width() * image.height()), bounds};
}

} // namespace

TEST(SymbolFont, IsCompiledInUnderItsFamily) {
    ASSERT_TRUE(LoadSymbolFont());
    EXPECT_TRUE(LoadSymbolFont());
    EXPECT_TRUE(QFontDatabase::families().contains(QStringLiteral("Corvantine")));
    EXPECT_EQ(QFontInfo(QFont(QStringLiteral("Corvantine"))).family(), QStringLiteral("Corvantine"));
    EXPECT_EQ(QFontInfo(InstrumentFont(QStringLiteral("Corvantine"), 8.25)).family(),
              QStringLiteral("Corvantine"));
}

TEST(SymbolFont, HoldsTheNinePicturesAndABlank) {
    ASSERT_TRUE(LoadSymbolFont());
    const QRawFont raw = QRawFont::fromFont(QFont(QStringLiteral("Corvantine")));
    ASSERT_EQ(raw.familyName(), QStringLiteral("Corvantine"));
    for (QChar c : kGlyphs + QLatin1Char(' ')) {
        EXPECT_TRUE(raw.supportsCharacter(c)) << c.toLatin1();
    }
    EXPECT_FALSE(raw.supportsCharacter(QLatin1Char('9')));
    EXPECT_EQ(Ink(Drawn(QLatin1Char(' '), 40)).first, 0);
}

TEST(SymbolFont, EveryPictureHasInkAtEverySizeInUse) {
    ASSERT_TRUE(LoadSymbolFont());
    for (double points : {8.25, 12.0, 15.75, 21.75, 54.0}) {
        const int pixels = static_cast<int>(points * 96 / 72);
        std::set<QByteArray> seen;
        for (QChar c : kGlyphs) {
            const QImage image = Drawn(c, pixels);
            const auto [share, bounds] = Ink(image);
            EXPECT_GT(share, 0.06) << c.toLatin1() << " at " << pixels;
            EXPECT_LT(share, 0.6) << c.toLatin1() << " at " << pixels;
            // Wide enough to be seen, and inside the em.
            EXPECT_GE(bounds.width(), pixels / 2) << c.toLatin1() << " at " << pixels;
            EXPECT_TRUE(QRect(pixels / 2 - 1, pixels / 2 - 1, pixels + 2, pixels + 2).contains(bounds))
                << c.toLatin1() << " at " << pixels;
            seen.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
        }
        EXPECT_EQ(seen.size(), 9U) << "at " << pixels;
    }
}

TEST(SymbolFont, PicturesAreCentredInTheirCell) {
    ASSERT_TRUE(LoadSymbolFont());
    QFont font{QString::fromLatin1(kSymbolFamily)};
    font.setPixelSize(100);
    const QFontMetricsF metrics(font);
    EXPECT_NEAR(metrics.height(), 100, 1);
    for (QChar c : kGlyphs) {
        EXPECT_NEAR(metrics.horizontalAdvance(c), 100, 1);
        const QRect bounds = Ink(Drawn(c, 100)).second;
        EXPECT_NEAR(bounds.center().x(), 100, 2) << c.toLatin1();
        if (c != QLatin1Char('5')) { // the bar of the minimised window lies low
            EXPECT_NEAR(bounds.center().y(), 100, 8) << c.toLatin1();
        }
    }
}

TEST(SymbolFont, LevelsAndEdgesPointTheirWay) {
    ASSERT_TRUE(LoadSymbolFont());
    // At 100 pixels the em goes from 50 to 150 in both directions.
    auto inked = [](QChar c, int x, int y) { return qGray(Drawn(c, 100).pixel(50 + x, 50 + y)) < 128; };
    const int left = 15, right = 85, high = 20, low = 80;
    EXPECT_TRUE(inked(u'2', left, high) && inked(u'2', right, low));
    EXPECT_FALSE(inked(u'2', left, low) || inked(u'2', right, high));
    EXPECT_TRUE(inked(u'3', left, low) && inked(u'3', right, high));
    EXPECT_FALSE(inked(u'3', left, high) || inked(u'3', right, low));
    // The level of "less than" lies above its arrow, that of "greater than" below.
    EXPECT_TRUE(inked(u'0', left, 29) && inked(u'0', 50, 80));
    EXPECT_FALSE(inked(u'0', left, 71));
    EXPECT_TRUE(inked(u'1', left, 71) && inked(u'1', 50, 20));
    EXPECT_FALSE(inked(u'1', left, 29));
}

TEST(SymbolFont, WithoutItTheCaptionsReadAsNearAsTheyCan) {
    const QFont symbols(QStringLiteral("Corvantine"));
    const QFont plain(QStringLiteral("Arial"));
    EXPECT_EQ(PrintedCaption(QStringLiteral("4"), symbols, true), QStringLiteral("4"));
    EXPECT_EQ(PrintedCaption(QStringLiteral("4"), plain, false), QStringLiteral("4"));
    EXPECT_EQ(PrintedCaption(QStringLiteral("01 x9"), symbols, false), QStringLiteral("<> x9"));
    for (QChar c : kGlyphs) {
        EXPECT_NE(PrintedCaption(c, symbols, false), QString(c));
    }
}
