#include "display/draw_plot_fixture.h"

#include <cmath>
#include <limits>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(DrawPlotTest, TraceIsDrawnInItsOrderOfSteps) {
    scene.record.ChannelOn[2] = true;
    for (int i = 0; i < kSampleDepth; ++i) {
        scene.record.SampleData(2, i) = 7;
    }
    scene.HorizZoom = 100; // 30 samples, all of different columns
    Draw();
    const Calls trace = canvas.Between("SetDrawStyle(Solid)", "Never");
    Calls expected{"SetForeColor(0xFFFF00)",
                   Scale(0, 126, 29.99 + kPixelX / 100, -127),
                   "GroundLabelCaption(2, B)",
                   "GroundLabelTop(2, 0)",
                   "GroundLabelColour(2, 0xFFFF00)",
                   "GroundLabelVisible(2, true)",
                   "SetCurrent(0, 7)",
                   "SetDrawWidth(2)",
                   "SetForeColor(0xFFFF00)"};
    for (int x = 0; x <= 30; ++x) {
        expected.push_back(Call("LineTo", {static_cast<double>(x), 7}));
    }
    expected.insert(expected.end(), {"SetDrawWidth(1)", kWhite, kWhite, "SetDrawWidth(1)",
                                     Scale(0, 126, 29.99 + kPixelX / 100, -127)});
    EXPECT_THAT(trace, ElementsAreArray(expected));
}

TEST_F(DrawPlotTest, LaterChannelsLieOverEarlierOnes) {
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        scene.record.ChannelOn[channel] = channel != 4;
    }
    Draw();
    EXPECT_THAT(canvas.CallsOf({"GroundLabelTop"}),
                ElementsAre("GroundLabelTop(1, 0)", "GroundLabelTop(2, 0)", "GroundLabelTop(3, 0)",
                            "GroundLabelTop(5, 0)", "GroundLabelTop(6, 0)"));
}

TEST_F(DrawPlotTest, ColumnKeepsItsExtremesInTheirOrder) {
    scene.record.ChannelOn[1] = true;
    // Five samples fall on a pixel column.
    const float values[] = {0, 3, 1, -2, 3, 9, 9, 9, 9, 9};
    for (int i = 0; i < 10; ++i) {
        scene.record.SampleData(1, i) = values[i];
    }
    Draw();
    const Calls lines = canvas.CallsOf({"LineTo"});
    // The columns of a canvas that shows one spare pixel are just wider than five samples.
    EXPECT_THAT(Calls(lines.begin(), lines.begin() + 5),
                ElementsAre("LineTo(0, 0)", "LineTo(1, 3)", "LineTo(3, -2)", "LineTo(5, 9)", "LineTo(6, 9)"));
}

TEST_F(DrawPlotTest, TheColumnRuleBoundsTheLinesByTheWidth) {
    scene.FillWithEverything();
    for (int channel = 2; channel <= kAllChannels; ++channel) {
        scene.record.ChannelOn[channel] = false;
    }
    Draw();
    EXPECT_LT(canvas.Count("LineTo"), 4 * kPlotWidth);
    EXPECT_GT(canvas.Count("LineTo"), kPlotWidth);
}

TEST_F(DrawPlotTest, TraceReachesOneSampleBeyondTheView) {
    scene.record.ChannelOn[1] = true;
    scene.HorizZoom = 100;
    scene.HorizPan = 0.5;
    Draw();
    const Calls lines = canvas.CallsOf({"LineTo"});
    const int first = static_cast<int>(std::floor(scene.record.ViewXMin)) - 1;
    const int last = static_cast<int>(std::floor(scene.record.ViewXMax)) + 1;
    EXPECT_EQ(lines.front(), Call("LineTo", {static_cast<double>(first), 0}));
    EXPECT_EQ(lines.back(), Call("LineTo", {static_cast<double>(last), 0}));
}

TEST_F(DrawPlotTest, StaleTracesKeepOnlyTheTopBitOfAColour) {
    scene.record.TracesStale = true;
    scene.record.ChannelOn[1] = scene.record.ChannelOn[5] = true;
    scene.record.ChannelColour[1] = 0x7FFF80;
    scene.record.ChannelColour[5] = 0xC040F0;
    Draw();
    EXPECT_THAT(canvas.CallsOf({"SetForeColor"}),
                ElementsAre("SetForeColor(0xC00000)", "SetForeColor(0x7FFF80)", "SetForeColor(0x8080)",
                            kWhite, "SetForeColor(0xC040F0)", "SetForeColor(0x800080)", kWhite, kWhite));
    EXPECT_THAT(canvas.CallsOf({"GroundLabelColour"}),
                ElementsAre("GroundLabelColour(1, 0x7FFF80)", "GroundLabelColour(5, 0xC040F0)"));
}

TEST_F(DrawPlotTest, ThinDrawsOneSampleAPixel) {
    scene.record.ChannelOn[1] = true;
    scene.Thin = true;
    for (int i = 0; i < kSampleDepth; ++i) {
        scene.record.SampleData(1, i) = static_cast<float>(i) / 100; // each a new extreme
    }
    Draw(); // 4.998 samples a pixel
    const Calls lines = canvas.CallsOf({"LineTo"});
    EXPECT_THAT(lines, SizeIs(600));
    EXPECT_EQ(lines[1], "LineTo(5, 0.05)");
    canvas.calls.clear();
    scene.HorizZoom = 50;
    Draw(); // a tenth of a sample a pixel
    EXPECT_EQ(canvas.CallsOf({"LineTo"})[1], "LineTo(1, 0.01)");
}

TEST_F(DrawPlotTest, DataShorterThanTheAxisIsDrawnAsFarAsItGoes) {
    ChannelTable shortTable(10);
    DrawPlotArguments whole = scene.Time();
    scene.record.ChannelOn[1] = true;
    scene.record.VertCursorEnabled[0] = true;
    scene.record.VertCursorTime[0] = 10e-6; // index 10, the first that is not there
    const DrawPlotArguments arguments{.Data = shortTable,
                                      .Colours = whole.Colours,
                                      .Stale = whole.Stale,
                                      .Shown = whole.Shown,
                                      .Inverted = whole.Inverted,
                                      .YMax = 126,
                                      .YMin = -126,
                                      .GroundPercent = whole.GroundPercent,
                                      .XMax = 2999,
                                      .HorizDivs = 30,
                                      .SamplePeriod = 1e-6,
                                      .VertCursorPos = whole.VertCursorPos,
                                      .VertCursorEn = whole.VertCursorEn,
                                      .HorizCursorPos = whole.HorizCursorPos,
                                      .HorizCursorEn = whole.HorizCursorEn,
                                      .ViewXMin = whole.ViewXMin,
                                      .ViewXMax = whole.ViewXMax,
                                      .ViewYMin = whole.ViewYMin,
                                      .ViewYMax = whole.ViewYMax,
                                      .Readouts = whole.Readouts};
    DrawPlot(arguments, canvas, nullptr);
    EXPECT_THAT(canvas.CallsOf({"LineTo"}), ElementsAre("LineTo(0, 0)", "LineTo(6, 0)"));
    EXPECT_THAT(canvas.CallsOf({"FillBox"}), IsEmpty());
}

TEST_F(DrawPlotTest, DotsNeedAZoomOfFiveOnEitherAxis) {
    scene.record.ChannelOn[1] = true;
    scene.DotsRequested = true;
    const auto dotsAt = [&](double horizontal, double vertical) {
        canvas.calls.clear();
        scene.HorizZoom = horizontal;
        scene.VertZoom = vertical;
        Draw();
        return canvas.Count("FillBox") > 0;
    };
    EXPECT_FALSE(dotsAt(4, 4));
    EXPECT_TRUE(dotsAt(5, 1));
    EXPECT_TRUE(dotsAt(1, 5));
    scene.DotsRequested = false;
    EXPECT_FALSE(dotsAt(100, 20));
}

TEST_F(DrawPlotTest, DotsAreThreePixelsWideAndStayInThePlotsLimits) {
    scene.record.ChannelOn[1] = true;
    scene.DotsRequested = true;
    scene.HorizZoom = 750; // 4 samples
    scene.record.SampleData(1, 0) = 126;
    scene.record.SampleData(1, 1) = 126.5F;
    scene.record.SampleData(1, 2) = -127;
    scene.record.SampleData(1, 3) = -126;
    scene.record.SampleData(1, 4) = std::numeric_limits<float>::quiet_NaN();
    Draw();
    const double a = kPixelX / 750;
    EXPECT_THAT(canvas.CallsOf({"FillBox"}),
                ElementsAre(Call("FillBox", {-a, 127, a, 125}), Call("FillBox", {3 - a, -125, 3 + a, -127})));
    EXPECT_THAT(canvas.Between("SetDrawWidth(2)", "FillBox"), Contains(kWhite));
}

} // namespace
