#include "controls/fonts.h"

#include <QFontInfo>
#include <gtest/gtest.h>
#include <limits>

TEST(Fonts, EveryFamilyOfTheFormsHasAStandInThatIsInstalled) {
    for (const char* family : {"Arial", "Aerial", "MS Sans Serif", "Microsoft Sans Serif", "Arial Narrow",
                               "Small Fonts", "Comic Sans MS"}) {
        const QFont font = InstrumentFont(QString::fromLatin1(family), 8.25);
        EXPECT_EQ(font.family().toStdString(), family);
        const QString shown = QFontInfo(font).family();
        EXPECT_TRUE(shown == SubstituteFamily(font.family()) || shown == font.family())
            << family << " is shown as " << shown.toStdString();
    }
    EXPECT_EQ(SubstituteFamily(u"arial narrow"), QStringLiteral("Liberation Sans Narrow"));
    EXPECT_EQ(SubstituteFamily(u"Corvantine"), QStringLiteral("Corvantine"));
}

TEST(Fonts, SizesAreFixedInPixels) {
    EXPECT_EQ(InstrumentFont("Arial", 8.25).pixelSize(), 11);
    EXPECT_EQ(InstrumentFont("Small Fonts", 6.75).pixelSize(), 9);
    EXPECT_EQ(InstrumentFont("Arial", 9.75, true).pixelSize(), 13);
    EXPECT_EQ(InstrumentFont("Corvantine", 21.75).pixelSize(), 29);
    EXPECT_TRUE(InstrumentFont("Arial", 9.75, true).bold());
    EXPECT_DOUBLE_EQ(FontPoints(InstrumentFont("Arial", 8.25)), 8.25);
    QFont points;
    points.setPointSizeF(12);
    EXPECT_DOUBLE_EQ(FontPoints(points), 12);
}

TEST(Fonts, ABadSizeIsTheDefault) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (double points : {0.0, -3.0, nan, 1e9}) {
        EXPECT_EQ(InstrumentFont("Arial", points).pixelSize(), 11);
    }
    EXPECT_GE(InstrumentFont("Arial", 0.001).pixelSize(), 1);
}
