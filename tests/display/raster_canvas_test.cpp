#include "display/raster_canvas.h"

#include "display/plot_scene.h"
#include "display/span_paint.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

constexpr QRgb kBlack = 0xFF000000;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

int Painted(const RasterCanvas& canvas) {
    int count = 0;
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            count += canvas.Image().pixel(x, y) != kBlack ? 1 : 0;
        }
    }
    return count;
}

/// The canvas as text, a letter a pixel.
std::vector<std::string> Picture(const RasterCanvas& canvas) {
    std::vector<std::string> rows;
    for (int y = 0; y < canvas.height(); ++y) {
        std::string row;
        for (int x = 0; x < canvas.width(); ++x) {
            row += canvas.Image().pixel(x, y) == kBlack ? '.' : '#';
        }
        rows.push_back(row);
    }
    return rows;
}

using Rows = std::vector<std::string>;

TEST(RasterCanvas, RedIsTheLowByteOfAColour) {
    RasterCanvas canvas(4, 4);
    canvas.SetForeColor(0x332211);
    canvas.PSet(1, 1);
    EXPECT_EQ(canvas.Image().pixel(1, 1), 0xFF112233U);
    canvas.SetBackColor(0x0000FF);
    canvas.Clear();
    EXPECT_EQ(canvas.Image().pixel(1, 1), 0xFFFF0000U);
}

TEST(RasterCanvas, ARowOfPixelsIsAnOddNumberOfCacheLines) {
    for (int width : {1, 15, 16, 17, 357, 1024, 1920, 2048, 4096}) {
        Raster raster(width, 3);
        EXPECT_EQ(raster.stride() % 32, 16) << width;
        EXPECT_GE(raster.stride(), width);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(raster.row(1)) % 64, 0U);
    }
}

TEST(RasterCanvas, SizesAreHeldWithinReason) {
    RasterCanvas none(0, -5);
    EXPECT_EQ(none.width(), 1);
    EXPECT_EQ(none.height(), 1);
    EXPECT_EQ(Raster(1 << 20, 1).width(), Raster::kMaxSide);
}

TEST(RasterCanvas, ALineOfTwoPixelsIsAStampAtEachPoint) {
    RasterCanvas canvas(6, 5);
    canvas.SetDrawWidth(2);
    canvas.Line(1, 1, 4, 3);
    EXPECT_EQ(Picture(canvas), (Rows{
                                   "##....", //
                                   "####..", //
                                   ".####.", //
                                   "...##.", //
                                   "......",
                               }));
}

TEST(RasterCanvas, PenGrowsWithTheScreensScale) {
    RasterCanvas canvas(12, 12, 1.5);
    canvas.SetPixelScale();
    canvas.SetDrawWidth(2);
    canvas.PSet(5, 5);
    EXPECT_EQ(Painted(canvas), 9);
    canvas.Clear();
    canvas.SetDrawWidth(1); // 1.5 rounds to 2
    canvas.PSet(5, 5);
    EXPECT_EQ(Painted(canvas), 4);
}

TEST(RasterCanvas, DotsStandStillOnTheirLineWhateverIsSeen) {
    const auto dotsFrom = [](double left) {
        RasterCanvas canvas(8, 1);
        canvas.SetScale(left, 0, left + 8, 1);
        canvas.SetDrawStyle(PenStyle::Dotted);
        canvas.Line(0, 0, 2999, 0);
        return Picture(canvas).front();
    };
    EXPECT_EQ(dotsFrom(0), "#.#.#.#.");
    EXPECT_EQ(dotsFrom(1), ".#.#.#.#");
    EXPECT_EQ(dotsFrom(1000), "#.#.#.#.");
    EXPECT_EQ(dotsFrom(2995), ".#.#....");
    EXPECT_EQ(dotsFrom(-4), "....#.#.");
}

TEST(RasterCanvas, ScaleGoesFromCornerToCorner) {
    RasterCanvas canvas(100, 50);
    canvas.SetScale(1000, 126, 2000, -126);
    EXPECT_DOUBLE_EQ(canvas.ScaleWidth(), 1000);
    EXPECT_DOUBLE_EQ(canvas.ScaleHeight(), -252);
    EXPECT_DOUBLE_EQ(canvas.WidthToPixels(20), 2);
    canvas.PSet(1500, 126);
    EXPECT_NE(canvas.Image().pixel(50, 0), kBlack);
    canvas.PSet(1010, -121);
    EXPECT_NE(canvas.Image().pixel(1, 49), kBlack);
    canvas.SetPixelScale();
    EXPECT_DOUBLE_EQ(canvas.ScaleWidth(), 100);
    EXPECT_DOUBLE_EQ(canvas.ScaleHeight(), 50);
}

TEST(RasterCanvas, CurrentPositionFollowsTheDrawing) {
    RasterCanvas canvas(50, 50);
    canvas.Line(1, 2, 3, 4);
    EXPECT_EQ(canvas.CurrentX(), 3);
    EXPECT_EQ(canvas.CurrentY(), 4);
    canvas.LineTo(kNan, 6);
    EXPECT_EQ(canvas.CurrentY(), 6);
    canvas.FillBox(1, 1, 9, 8);
    EXPECT_EQ(canvas.CurrentX(), 9);
    const CanvasPoint points[] = {{20, 21}, {30, 31}};
    canvas.LinesTo(points, 2);
    EXPECT_EQ(canvas.CurrentX(), 30);
    canvas.LinesTo(points, 0);
    EXPECT_EQ(canvas.CurrentY(), 31);
}

TEST(RasterCanvas, PrintGoesToTheNextLine) {
    RasterCanvas canvas(200, 100);
    canvas.SetScale(0, 126, 200, -126);
    canvas.SetCurrent(10, 100);
    const double height = canvas.TextHeight(QStringLiteral(" "));
    EXPECT_GT(height, 0);
    canvas.Print(QStringLiteral("t1@"));
    EXPECT_EQ(canvas.CurrentX(), 10);
    EXPECT_NEAR(canvas.CurrentY(), 100 - height, 1e-9);
    EXPECT_GT(Painted(canvas), 10);
}

TEST(RasterCanvas, CharacterTwentySixIsAnArrow) {
    RasterCanvas canvas(200, 40);
    RasterCanvas arrow(200, 40);
    canvas.Print(QString(QChar(26)));
    arrow.Print(QStringLiteral("→"));
    EXPECT_EQ(canvas.Image(), arrow.Image());
    EXPECT_EQ(canvas.TextWidth(QString(QChar(26))), arrow.TextWidth(QStringLiteral("→")));
    EXPECT_GT(Painted(canvas), 5);
}

TEST(RasterCanvas, TextsOverTheEdgesAreCut) {
    RasterCanvas canvas(30, 30);
    const QString text = QStringLiteral("TOO MUCH ZOOM");
    for (const auto& [x, y] :
         {std::pair{-20.0, -5.0}, {25.0, 25.0}, {-1e9, 5.0}, {kInf, -kInf}, {kNan, 0.0}}) {
        canvas.SetCurrent(x, y);
        canvas.Print(text);
    }
    EXPECT_GT(Painted(canvas), 0);
}

TEST(RasterCanvas, RememberedTextsAreTheOnesAskedFor) {
    RasterCanvas canvas(100, 20);
    RasterCanvas fresh(100, 20);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 40; ++i) { // more than are kept
            const QString text = QString::number(i * 37);
            canvas.Clear();
            canvas.SetCurrent(0, 0);
            canvas.Print(text);
            fresh.Resize(100, 20, 1);
            fresh.SetCurrent(0, 0);
            fresh.Print(text);
            ASSERT_EQ(canvas.Image(), fresh.Image()) << i;
        }
    }
}

TEST(RasterCanvas, ANewFontChangesTheTexts) {
    RasterCanvas canvas(100, 60);
    const double small = canvas.TextWidth(QStringLiteral("MMM"));
    QFont large;
    large.setPixelSize(40);
    canvas.SetFont(large);
    EXPECT_GT(canvas.TextWidth(QStringLiteral("MMM")), small);
    const double before = canvas.TextHeight(QStringLiteral(" "));
    canvas.Resize(200, 120, 2);
    EXPECT_NEAR(canvas.TextHeight(QStringLiteral(" ")), before, 1); // in pixels of the face
    canvas.SetPixelScale();
    EXPECT_NEAR(canvas.TextHeight(QStringLiteral(" ")), 2 * before, 2);
}

TEST(RasterCanvas, CoordinatesFarOutsideAreSafe) {
    const double far[] = {0, 5, -1, 1e3, -1e8, 1e8, 3e9, -3e9, 1e18, -1e300, 1e300, kInf, -kInf, kNan};
    for (double ratio : {1.0, 3.0}) {
        RasterCanvas canvas(40, 30, ratio);
        for (PenStyle style : {PenStyle::Solid, PenStyle::Dotted}) {
            canvas.SetDrawStyle(style);
            canvas.SetDrawWidth(2);
            for (double a : far) {
                for (double b : far) {
                    for (double c : far) {
                        canvas.Line(a, b, c, 7);
                        canvas.Line(3, a, b, c);
                        const CanvasPoint points[] = {{a, 1}, {b, c}, {2, a}, {c, b}, {5, 5}};
                        canvas.LinesTo(points, 5);
                        canvas.FillBox(a, b, c, a);
                        canvas.PSet(a, b);
                    }
                }
            }
        }
        EXPECT_GT(Painted(canvas), 100);
    }
}

TEST(RasterCanvas, ALineToInfinityGoesToTheEdge) {
    RasterCanvas canvas(9, 9);
    canvas.Line(4, 4, 4, kInf);
    EXPECT_EQ(Painted(canvas), 5);
    canvas.Clear();
    canvas.Line(-1e200, 3, 1e200, 3);
    EXPECT_EQ(Painted(canvas), 9);
    canvas.Clear();
    canvas.Line(-1e15, -1e15, 1e15, 1e15);
    EXPECT_EQ(Painted(canvas), 9);
    canvas.Clear();
    canvas.Line(-1e15, 1e6, 1e15, 1e6);
    EXPECT_EQ(Painted(canvas), 0);
}

TEST(RasterCanvas, ScalesThatAreNoneDrawNothingAndDoNoHarm) {
    for (const auto& [left, right] : {std::pair{5.0, 5.0}, {kNan, 3.0}, {0.0, kInf}, {-kInf, kInf}}) {
        RasterCanvas canvas(40, 30);
        canvas.SetScale(left, 0, right, 30);
        canvas.Line(1, 2, 30, 20);
        canvas.FillBox(1, 2, 30, 20);
        canvas.Print(QStringLiteral("x"));
        SUCCEED();
    }
}

TEST(RasterCanvas, ResizeGivesAnEmptyPictureInPixelsOfTheFace) {
    RasterCanvas canvas(40, 30);
    canvas.SetScale(0, 126, 3000, -126);
    canvas.FillBox(0, 126, 3000, -126);
    canvas.SetDrawWidth(2);
    canvas.Resize(80, 60, 2);
    EXPECT_EQ(Painted(canvas), 0);
    EXPECT_EQ(canvas.ScaleHeight(), 30);
    EXPECT_EQ(canvas.PixelRatio(), 2);
    canvas.PSet(10, 10);
    EXPECT_EQ(Painted(canvas), 16); // the pen stays 2, now of 4 pixels
}

TEST(RasterCanvas, ARatioThatIsNoneCountsAsOne) {
    EXPECT_EQ(RasterCanvas(4, 4, 0).PixelRatio(), 1);
    EXPECT_EQ(RasterCanvas(4, 4, -2).PixelRatio(), 1);
    EXPECT_EQ(RasterCanvas(4, 4, kNan).PixelRatio(), 1);
}

TEST(RasterCanvas, TellsItsOwnerOfANewPictureAndOfATextOnIt) {
    RasterCanvas canvas(40, 30);
    int told = 0;
    canvas.OnTouch([&] { ++told; });
    canvas.Clear();
    EXPECT_EQ(told, 1);
    canvas.Line(0, 0, 9, 9);
    EXPECT_EQ(told, 1);
    canvas.Print(QStringLiteral("WARNING"));
    EXPECT_EQ(told, 2);
}

// The columns' painters

TEST(PaintSpans, AllWidthsOfRegisterPaintTheSame) {
    Noise noise(11);
    constexpr int kWidth = 64;
    constexpr int kHeight = 40;
    for (int round = 0; round < 300; ++round) {
        alignas(64) std::uint32_t wide[kWidth * kHeight] = {};
        alignas(64) std::uint32_t plain[kWidth * kHeight] = {};
        std::uint32_t expected[kWidth * kHeight] = {};
        std::vector<int> tops(kWidth, kHeight);
        std::vector<int> bottoms(kWidth, -1);
        const int first = noise.Index(kWidth);
        const int last = first + noise.Index(kWidth - first);
        for (int c = first; c <= last; ++c) {
            if (noise.Next() > -0.8) {
                tops[static_cast<std::size_t>(c)] = noise.Index(kHeight);
                bottoms[static_cast<std::size_t>(c)] =
                    noise.Index(kHeight - tops[static_cast<std::size_t>(c)]) +
                    tops[static_cast<std::size_t>(c)];
            }
            for (int y = tops[static_cast<std::size_t>(c)]; y <= bottoms[static_cast<std::size_t>(c)]; ++y) {
                expected[y * kWidth + c] = 5;
            }
        }
        PaintSpans({wide, kWidth, tops.data(), bottoms.data()}, first, last, 5);
        PaintSpansPlain({plain, kWidth, tops.data(), bottoms.data()}, first, last, 5);
        ASSERT_TRUE(std::equal(std::begin(expected), std::end(expected), wide)) << round;
        ASSERT_TRUE(std::equal(std::begin(expected), std::end(expected), plain)) << round;
    }
}

} // namespace
