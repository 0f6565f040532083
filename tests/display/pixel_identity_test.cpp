#include "display/plain_canvas.h"
#include "display/plot_scene.h"
#include "display/raster_canvas.h"
#include "frame/record/record.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr int kRasterWidth = 150;
constexpr int kRasterHeight = 90;

/// How many pixels differ between the two roads.
int Differing(const QImage& fast, const QImage& plain) {
    EXPECT_EQ(fast.size(), plain.size());
    int count = 0;
    for (int y = 0; y < plain.height(); ++y) {
        const auto bytes = static_cast<std::size_t>(plain.width()) * 4;
        if (std::memcmp(fast.constScanLine(y), plain.constScanLine(y), bytes) == 0) {
            continue;
        }
        for (int x = 0; x < plain.width(); ++x) {
            count += fast.pixel(x, y) != plain.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

int Painted(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) != 0xFF000000U ? 1 : 0;
        }
    }
    return count;
}

/// Both roads, told the same.
struct BothRoads {
    BothRoads(int width, int height, double ratio = 1)
        : fast(width, height, ratio), plain(width, height, ratio) {
        fast.SetPixelScale();
    }
    template <class Draw> void Do(Draw draw) {
        draw(static_cast<Canvas&>(fast));
        draw(static_cast<Canvas&>(plain));
    }
    int Differing() const { return ::Differing(fast.Image(), plain.Image()); }

    RasterCanvas fast;
    PlainCanvas plain;
};

CanvasPoint RandomPoint(Noise& noise, double beyond) {
    return {noise.In(-beyond, kRasterWidth + beyond), noise.In(-beyond, kRasterHeight + beyond)};
}

using Points = std::vector<CanvasPoint>;

class PixelIdentity : public testing::TestWithParam<std::tuple<double, PenStyle>> {
  protected:
    void Check(const Points& points, const std::string& what) {
        const auto [ratio, style] = GetParam();
        for (int width : {1, 2}) {
            BothRoads roads(kRasterWidth, kRasterHeight, ratio);
            roads.Do([&, s = style](Canvas& canvas) {
                canvas.SetDrawWidth(width);
                canvas.SetDrawStyle(s);
                canvas.SetForeColor(0x3366CC);
                canvas.SetCurrent(points.front().x, points.front().y);
                canvas.LinesTo(points.data(), static_cast<int>(points.size()));
            });
            ASSERT_EQ(roads.Differing(), 0) << what << ", width " << width;
        }
    }
};

TEST_P(PixelIdentity, OfLinesFromAnywhereToAnywhere) {
    Noise noise(1);
    for (double beyond : {0.0, 5.0, 60.0, 3000.0}) {
        for (int i = 0; i < 150; ++i) {
            Check({RandomPoint(noise, beyond), RandomPoint(noise, beyond)}, "line " + std::to_string(i));
        }
    }
}

TEST_P(PixelIdentity, OfLinesToEveryDirection) {
    for (int dx = -9; dx <= 9; ++dx) {
        for (int dy = -9; dy <= 9; ++dy) {
            Check({{70, 40}, {70.0 + dx, 40.0 + dy}}, std::to_string(dx) + "/" + std::to_string(dy));
        }
    }
}

TEST_P(PixelIdentity, OfPolylinesThatWanderToAllSides) {
    Noise noise(2);
    for (double beyond : {0.0, 40.0, 2000.0}) {
        for (int i = 0; i < 40; ++i) {
            Points points;
            for (int k = 0; k < 30; ++k) {
                points.push_back(RandomPoint(noise, beyond));
            }
            Check(points, "polyline " + std::to_string(i));
        }
    }
}

TEST_P(PixelIdentity, OfTracesFromLeftToRight) {
    Noise noise(3);
    for (double pitch : {0.05, 0.3, 0.64, 1.0, 1.7, 9.0}) {
        for (double height : {2.0, 45.0, 400.0}) {
            Points points;
            for (double x = -7; x < kRasterWidth + 7; x += pitch) {
                points.push_back({x, kRasterHeight / 2.0 + height * noise.Next()});
            }
            Check(points, "pitch " + std::to_string(pitch));
        }
    }
}

TEST_P(PixelIdentity, OfLinesAlongAndAcrossTheEdges) {
    for (double edge : {-2.0, -1.0, 0.0, 1.0}) {
        Check({{edge, -5}, {edge, kRasterHeight + 5.0}}, "left");
        Check({{kRasterWidth + edge, -5}, {kRasterWidth + edge, kRasterHeight + 5.0}}, "right");
        Check({{-5, edge}, {kRasterWidth + 5.0, edge}}, "top");
        Check({{kRasterWidth + 5.0, kRasterHeight + edge}, {-5, kRasterHeight + edge}}, "bottom");
    }
}

INSTANTIATE_TEST_SUITE_P(Pens, PixelIdentity,
                         testing::Combine(testing::Values(1.0, 1.5, 2.0, 3.0),
                                          testing::Values(PenStyle::Solid, PenStyle::Dotted)));

TEST(PixelIdentityOfRoads, GapsAtNoNumbersAreTheSame) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    BothRoads roads(kRasterWidth, kRasterHeight);
    const Points points{{10, 10}, {nan, 20}, {30, 30}, {40, 10}, {50, nan}, {nan, nan}, {70, 20}, {80, 80}};
    roads.Do([&](Canvas& canvas) {
        canvas.SetDrawWidth(2);
        canvas.SetCurrent(0, 0);
        canvas.LinesTo(points.data(), static_cast<int>(points.size()));
    });
    EXPECT_EQ(roads.Differing(), 0);
    EXPECT_GT(Painted(roads.fast.Image()), 60);
    EXPECT_EQ(roads.fast.Image().pixel(25, 25), 0xFF000000U);
}

TEST(PixelIdentityOfRoads, BoxesAndPointsAreTheSame) {
    Noise noise(4);
    for (double ratio : {1.0, 2.0}) {
        BothRoads roads(kRasterWidth, kRasterHeight, ratio);
        for (int i = 0; i < 60; ++i) {
            const CanvasPoint a = RandomPoint(noise, 20);
            const CanvasPoint b{a.x + noise.In(-4, 4), a.y + noise.In(-4, 4)};
            roads.Do([&](Canvas& canvas) {
                canvas.SetForeColor(static_cast<Colour>(0x40 + i));
                canvas.FillBox(a.x, a.y, b.x, b.y);
                canvas.PSet(b.y, a.x);
            });
        }
        EXPECT_EQ(roads.Differing(), 0);
    }
}

/// Ink beyond the advance on either side, above and below the line, and from a font that lends a letter.
TEST(PixelIdentityOfRoads, TextsAreTheSameInAnyFont) {
    for (const char* family : {"Liberation Sans", "Liberation Serif", "Liberation Mono", "Comic Neue"}) {
        for (int size : {9, 11, 40}) {
            for (double ratio : {1.0, 1.5, 2.0}) {
                QFont font(QString::fromLatin1(family));
                font.setPixelSize(size);
                font.setItalic(true);
                BothRoads roads(300, 200, ratio);
                roads.fast.SetFont(font);
                roads.plain.SetFont(font);
                roads.Do([](Canvas& canvas) {
                    canvas.SetForeColor(0x3366CC);
                    canvas.FillBox(0, 60, 100, 100);
                    canvas.SetForeColor(0x20C0FF);
                    canvas.SetCurrent(90, 70);
                    canvas.Print(QStringLiteral("j\u00C5\u1EA4f"));
                    canvas.Print(QStringLiteral("f") + QChar(26) + QStringLiteral(" \u222B\u2588W"));
                });
                EXPECT_EQ(roads.Differing(), 0) << family << ' ' << size << " at " << ratio;
                EXPECT_GT(Painted(roads.fast.Image()), size);
            }
        }
    }
}

struct View {
    const char* name;
    double horizZoom, vertZoom, horizPan, vertPan, expansion;
    friend void PrintTo(const View& view, std::ostream* out) { *out << view.name; }
};

class PlotIdentity : public testing::TestWithParam<std::tuple<View, double>> {};

TEST_P(PlotIdentity, OfAWholePlot) {
    const auto [view, ratio] = GetParam();
    PlotScene scene;
    scene.FillWithEverything();
    scene.record.ChannelInvert[2] = true;
    scene.record.ChannelOn[5] = false;
    scene.DotsRequested = true;
    scene.HorizZoom = view.horizZoom;
    scene.VertZoom = view.vertZoom;
    scene.HorizPan = view.horizPan;
    scene.VertPan = view.vertPan;
    scene.XExpansion = view.expansion;
    for (const auto& [width, height] : {std::pair{357, 240}, {641, 333}, {96, 500}}) {
        BothRoads roads(static_cast<int>(width * ratio), static_cast<int>(height * ratio), ratio);
        roads.Do([&](Canvas& canvas) { DrawPlot(scene.Time(), canvas, nullptr); });
        EXPECT_EQ(roads.Differing(), 0) << width << " x " << height;
        EXPECT_GT(Painted(roads.fast.Image()), width * height / 100);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Views, PlotIdentity,
    testing::Combine(testing::Values(View{"whole", 1, 1, 0, 0, 1}, View{"wide", 7, 1, 0.4, 0, 1},
                                     View{"close", 90, 18, 0.7, 0.3, 1}, View{"tall", 1, 20, 0, -0.5, 1},
                                     View{"squeezed", 1, 1, 0.5, 0, 0.05}, View{"fast", 3, 2, 1, 0.5, 25}),
                     testing::Values(1.0, 1.5, 2.0)),
    [](const auto& set) {
        return std::string(std::get<0>(set.param).name) + "_" +
               std::to_string(static_cast<int>(std::get<1>(set.param) * 10));
    });

TEST(PixelIdentityOfRoads, SpectraAreTheSame) {
    PlotScene scene;
    Noise noise(5);
    scene.record.ChannelFFT[1] = scene.record.ChannelFFT[6] = true;
    for (int bin = 0; bin < kSpectrumBins; ++bin) {
        scene.record.SpectrumData(1, bin) = static_cast<float>(noise.In(-30, 30));
        scene.record.SpectrumData(6, bin) = static_cast<float>(noise.In(-30.01, -20));
    }
    BothRoads roads(500, 260);
    roads.Do([&](Canvas& canvas) { DrawPlot(scene.Spectrum(), canvas, nullptr); });
    EXPECT_EQ(roads.Differing(), 0);
}

} // namespace
