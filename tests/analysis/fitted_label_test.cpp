#include "analysis/fitted_label.h"

#include "controls/fonts.h"

#include <QFontMetrics>
#include <QLabel>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

class FittedLabelTest : public testing::Test {
  protected:
    static QFont Font(int pixels) {
        QFont font = InstrumentFont(QStringLiteral("Arial"), 8);
        font.setPixelSize(pixels);
        return font;
    }
    static int Width(const QString& text, int pixels) {
        return QFontMetrics(Font(pixels)).horizontalAdvance(text) + 2; // and what letters overhang
    }
    void Begin(int first, int second) {
        fitted.Begin(
            {{QRect(10, 100, first, 15), {Font(14), Font(10)}}, {QRect(0, 100, second, 15), {Font(10)}}});
    }

    QWidget window;
    QLabel label{&window};
    FittedLabel fitted{label, FittedLabel::Grow::Up};
    const QString text = QStringLiteral("twelve figures and four words of text");
};

} // namespace

TEST_F(FittedLabelTest, TakesTheFirstFontThatHolds) {
    Begin(Width(text, 14), 1000);
    EXPECT_TRUE(fitted.Show(text));
    EXPECT_EQ(label.font().pixelSize(), 14);
    EXPECT_EQ(label.geometry(), QRect(10, 100, Width(text, 14), 15));
    EXPECT_FALSE(fitted.Show(text));
    Begin(Width(text, 14) - 1, 1000);
    EXPECT_TRUE(fitted.Show(text));
    EXPECT_EQ(label.font().pixelSize(), 10);
    EXPECT_EQ(fitted.InRoom(), 0U);
}

TEST_F(FittedLabelTest, TakesTheNextRoomWhenNoFontHolds) {
    Begin(Width(text, 10) - 1, 1000);
    fitted.Show(text);
    EXPECT_EQ(fitted.InRoom(), 1U);
    EXPECT_EQ(label.geometry(), QRect(0, 100, 1000, 15));
    EXPECT_FALSE(label.wordWrap());
}

TEST_F(FittedLabelTest, BreaksTheLineInTheLastRoomAndGrows) {
    Begin(10, Width(text, 10) - 3);
    fitted.Show(text);
    EXPECT_TRUE(label.wordWrap());
    EXPECT_GE(label.height(), 2 * 10);
    EXPECT_EQ(label.geometry().bottom(), 114) << "upwards";
    Begin(10, 60);
    fitted.Show(text);
    EXPECT_GE(label.height(),
              QFontMetrics(Font(10)).boundingRect(QRect(0, 0, 60, 1000), Qt::TextWordWrap, text).height());
}

TEST_F(FittedLabelTest, KeepsItsFontForAShorterTextUntilItBeginsAnew) {
    Begin(Width(text, 14) - 1, 1000);
    fitted.Show(text);
    EXPECT_FALSE(fitted.Show(QStringLiteral("short")));
    EXPECT_EQ(label.font().pixelSize(), 10);
    Begin(Width(text, 14) - 1, 1000);
    EXPECT_TRUE(fitted.Show(QStringLiteral("short")));
    EXPECT_EQ(label.font().pixelSize(), 14);
}

TEST_F(FittedLabelTest, ABrokenLineBecomesWholeAgain) {
    Begin(10, 60);
    fitted.Show(text);
    fitted.Show(QStringLiteral("one"));
    EXPECT_FALSE(label.wordWrap());
    EXPECT_EQ(label.height(), 15);
}
