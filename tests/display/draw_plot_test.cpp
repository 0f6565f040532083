#include "display/draw_plot.h"

#include "display/plot_scene.h"
#include "display/recording_canvas.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using Calls = std::vector<std::string>;

constexpr double kPixelX = 2999.0 / kPlotWidth;

std::string Call(const char* name, std::initializer_list<double> figures) {
    std::string text = std::string(name) + "(";
    const char* separator = "";
    for (double figure : figures) {
        text += separator + Figure(figure);
        separator = ", ";
    }
    return text + ")";
}

std::string Scale(double left, double top, double right, double bottom) {
    return Call("SetScale", {left, top, right, bottom});
}

const std::string kNormal = Scale(0, 126, 2999 + kPixelX, -127);
const std::string kUpsideDown = Scale(0, -127, 2999 + kPixelX, 126);
const std::string kWhite = "SetForeColor(0xFFFFFF)";

class DrawPlotTest : public testing::Test {
  protected:
    void Draw() { DrawPlot(scene.Time(), canvas, &companions); }
    void DrawSpectrum() { DrawPlot(scene.Spectrum(), canvas, nullptr); }

    PlotScene scene;
    RecordingCanvas canvas{kPlotWidth, kPlotHeight};
    RecordingCompanions companions{canvas};
};

// What begins a plot

TEST_F(DrawPlotTest, BeginsWithAnEmptyCanvasInPixelsThenItsOwnScale) {
    Draw();
    EXPECT_THAT(Calls(canvas.calls.begin(), canvas.calls.begin() + 7),
                ElementsAre("Clear()", "SetDrawModeCopy()", "SetDrawWidth(1)", "SetPixelScale()", kNormal,
                            "SetForeColor(0xC00000)", "SetDrawStyle(Dotted)"));
}

TEST_F(DrawPlotTest, ReportsTheView) {
    scene.HorizZoom = 4;
    scene.HorizPan = 0.5;
    scene.VertZoom = 2;
    scene.VertPan = -0.25;
    Draw();
    EXPECT_DOUBLE_EQ(scene.record.ViewXMin, 2999 * 3 / 8.0);
    EXPECT_DOUBLE_EQ(scene.record.ViewXMax, 2999 * 5 / 8.0);
    EXPECT_DOUBLE_EQ(scene.record.ViewYMin, -31.5 - 63);
    EXPECT_DOUBLE_EQ(scene.record.ViewYMax, -31.5 + 63);
}

TEST_F(DrawPlotTest, ClearsACanvasOfOnePixelAndNothingElse) {
    scene.FillWithEverything();
    for (const auto& [width, height] : {std::pair{1, 200}, {200, 1}, {0, 0}}) {
        RecordingCanvas tiny(width, height);
        DrawPlot(scene.Time(), tiny, &companions);
        EXPECT_THAT(tiny.calls, ElementsAre("Clear()", "SetDrawModeCopy()", "SetDrawWidth(1)"));
    }
    EXPECT_THAT(canvas.calls, IsEmpty());
    RecordingCanvas small(2, 2);
    DrawPlot(scene.Time(), small, &companions);
    EXPECT_THAT(small.calls, SizeIs(testing::Gt(10)));
}

TEST_F(DrawPlotTest, TooMuchZoomIsOnlyAText) {
    scene.FillWithEverything();
    scene.record.ViewYMin = -5;
    scene.HorizZoom = 100;
    scene.XExpansion = 25;
    Draw();
    EXPECT_THAT(canvas.calls, ElementsAre("Clear()", "SetDrawModeCopy()", "SetDrawWidth(1)",
                                          "SetPixelScale()", "SetCurrent(0, 0)",
                                          "Print(TOO MUCH ZOOM (reduce timebase and/or horizontal zoom) !)"));
    EXPECT_LT(scene.record.ViewXMax - scene.record.ViewXMin, 2.0);
    EXPECT_EQ(scene.record.ViewYMin, -5); // told only after that test
}

TEST_F(DrawPlotTest, AnExpansionOfNothingDrawsNothingAndKeepsTheView) {
    scene.FillWithEverything();
    Draw();
    for (double expansion : {0.0, std::numeric_limits<double>::quiet_NaN()}) {
        canvas.calls.clear();
        scene.XExpansion = expansion;
        Draw();
        EXPECT_EQ(canvas.calls.back(), "SetPixelScale()");
        EXPECT_EQ(scene.record.ViewXMax, 2999);
    }
}

// Grid and ground labels

TEST_F(DrawPlotTest, GridIsAnchoredToTheRecord) {
    scene.HorizZoom = 3;
    scene.HorizPan = 0.7;
    Draw();
    const Calls lines = canvas.CallsOf({"Line"});
    constexpr int kFirst = 13; // the view begins at 1399.5, one line before it is drawn too
    ASSERT_THAT(lines, SizeIs(21 + 12));
    for (int i = 0; i <= 20; ++i) {
        EXPECT_EQ(lines[static_cast<std::size_t>(i)],
                  Call("Line", {0, 12.6 * (i - 10), 2999, 12.6 * (i - 10)}));
    }
    for (int i = kFirst; i < kFirst + 12; ++i) {
        EXPECT_EQ(lines[static_cast<std::size_t>(21 + i - kFirst)],
                  Call("Line", {i * 2999 / 30.0, 126, i * 2999 / 30.0, -126}));
    }
}

TEST_F(DrawPlotTest, ExpansionMakesDivisionsNarrowerAndMore) {
    scene.XExpansion = 5;
    Draw();
    const Calls lines = canvas.CallsOf({"Line"});
    ASSERT_THAT(lines, SizeIs(21 + 32)) << "0 to 30 are in view, and one more";
    EXPECT_EQ(lines[21], Call("Line", {0, 126, 0, -126}));
    EXPECT_EQ(lines[22], Call("Line", {2999 / 150.0, 126, 2999 / 150.0, -126}));
    scene.HorizPan = 1;
    canvas.calls.clear();
    Draw();
    EXPECT_EQ(canvas.CallsOf({"Line"}).back(), Call("Line", {2999, 126, 2999, -126}));
}

TEST_F(DrawPlotTest, GridLinesFarFromTheViewAreNotEvenAskedFor) {
    for (const double expansion : {25.0, 1499.0}) {
        for (const double pan : {0.0, 0.3, 1.0}) {
            scene.XExpansion = expansion;
            scene.HorizPan = pan;
            canvas.calls.clear();
            Draw();
            EXPECT_THAT(canvas.CallsOf({"Line"}), SizeIs(testing::Le(21 + 33U))) << expansion << ", " << pan;
            EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft"}), SizeIs(kAllChannels));
        }
    }
}

TEST_F(DrawPlotTest, CursorsStandOnTheSampleWithTiesToEven) {
    scene.SamplePeriod = 1;
    scene.record.VertCursorEnabled = {true, true, false};
    scene.record.HorizCursorEnabled = {true, true, false};
    scene.record.VertCursorTime = {100.5, 101.5, 0.0};
    scene.record.HorizCursorVolts = {2.5, -3.5, 0.0};
    Draw();
    EXPECT_THAT(canvas.CallsOf({"Line"}), Contains(Call("Line", {100, 126, 100, -126})));
    EXPECT_THAT(canvas.CallsOf({"Line"}), Contains(Call("Line", {102, 126, 102, -126})));
    EXPECT_THAT(canvas.CallsOf({"Line"}), Contains(Call("Line", {0, 2, 2999, 2})));
    EXPECT_THAT(canvas.CallsOf({"Line"}), Contains(Call("Line", {0, -4, 2999, -4})));
}

TEST_F(DrawPlotTest, GroundLabelsGoToTheViewAtTheLastGridLine) {
    scene.record.ChannelOn[2] = scene.record.ChannelOn[6] = true;
    scene.HorizZoom = 2;
    scene.HorizPan = 1;
    Draw();
    const Calls placed = canvas.Between(Call("Line", {2999, 126, 2999, -126}), "SetDrawStyle(Solid)");
    const std::string left = ", " + Figure(2999 / 2.0) + ")";
    Calls expected;
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        const std::string number = std::to_string(channel);
        const bool on = channel == 2 || channel == 6;
        expected.push_back("GroundLabelLeft(" + number + left);
        expected.push_back("GroundLabelVisible(" + number + (on ? ", true)" : ", false)"));
    }
    EXPECT_THAT(placed, ElementsAreArray(expected));
}

TEST_F(DrawPlotTest, GroundLabelsStayWhenTheDivisionsAreNoWholeNumber) {
    scene.XExpansion = 1.01; // 30.3 divisions: 30 lines, and none of them is the last one
    Draw();
    EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft", "GroundLabelVisible"}), IsEmpty());
    canvas.calls.clear();
    scene.XExpansion = 2.5; // 75
    Draw();
    EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft"}), SizeIs(kAllChannels));
    canvas.calls.clear();
    scene.XExpansion = 0.1; // 3
    Draw();
    EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft"}), SizeIs(kAllChannels));
    canvas.calls.clear();
    scene.XExpansion = 0.001; // 0.03
    Draw();
    EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft"}), IsEmpty());
}

TEST_F(DrawPlotTest, GroundLabelStandsAtItsChannelsGround) {
    scene.record.ChannelOn[3] = true;
    scene.record.ChannelOffsetPercent[3] = 50;
    Draw();
    EXPECT_THAT(
        canvas.CallsOf({"GroundLabelCaption", "GroundLabelTop", "GroundLabelColour"}),
        ElementsAre("GroundLabelCaption(3, C)", "GroundLabelTop(3, 63)", "GroundLabelColour(3, 0xFF00FF)"));
}

TEST_F(DrawPlotTest, InvertedLabelIsALowerLetterAboveTheLine) {
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        scene.record.ChannelOn[channel] = true;
        scene.record.ChannelInvert[channel] = true;
        scene.record.ChannelOffsetPercent[channel] = -100;
    }
    Draw();
    EXPECT_THAT(canvas.CallsOf({"GroundLabelCaption"}),
                ElementsAre("GroundLabelCaption(1, a)", "GroundLabelCaption(2, b)",
                            "GroundLabelCaption(3, c)", "GroundLabelCaption(4, d)"));
    // The labels are 8 units high; those of the math channels keep caption and place.
    EXPECT_THAT(canvas.CallsOf({"GroundLabelTop"}),
                ElementsAre("GroundLabelTop(1, -134)", "GroundLabelTop(2, -134)", "GroundLabelTop(3, -134)",
                            "GroundLabelTop(4, -134)", "GroundLabelTop(5, -126)", "GroundLabelTop(6, -126)"));
}

TEST_F(DrawPlotTest, LabelIsPlacedInItsChannelsScale) {
    scene.record.ChannelOn[1] = scene.record.ChannelOn[2] = true;
    scene.record.ChannelInvert[2] = true;
    Draw();
    EXPECT_THAT(
        canvas.CallsOf({"SetScale", "GroundLabelTop"}),
        ElementsAre(kNormal, kNormal, "GroundLabelTop(1, 0)", kUpsideDown, "GroundLabelTop(2, -8)", kNormal));
}

// Markers

TEST_F(DrawPlotTest, TriggerMarkerIsABoxOpenToTheLeft) {
    scene.TriggerLevel = 50;
    Draw();
    const double x = 2999 - kPixelX;
    const double a = 5 * kPixelX;
    EXPECT_THAT(canvas.Between("SetDrawStyle(Solid)", "Never"),
                ElementsAre(Call("TriggerLine", {0, 63, x, 63}), kWhite, Call("Line", {x - a, 63, x, 63}),
                            Call("Line", {x - a, 68, x - a, 58}), Call("Line", {x - 2 * a, 58, x - a, 58}),
                            Call("Line", {x - 2 * a, 68, x - a, 68}), Call("PSet", {x, 63}), kWhite,
                            "SetDrawWidth(1)", kNormal));
}

TEST_F(DrawPlotTest, TriggerMarkerIsDrawnOutsideTheViewToo) {
    scene.VertZoom = 10;
    for (int level : {-100, 100}) {
        canvas.calls.clear();
        scene.TriggerLevel = level;
        Draw();
        EXPECT_EQ(canvas.Count("PSet"), 1);
        EXPECT_EQ(canvas.CallsOf({"PSet"}).front(), Call("PSet", {2999 - kPixelX, 1.26 * level}));
    }
    for (int level : {-101, 101}) {
        canvas.calls.clear();
        scene.TriggerLevel = level;
        Draw();
        EXPECT_THAT(canvas.CallsOf({"PSet", "TriggerLine"}), IsEmpty());
    }
}

TEST_F(DrawPlotTest, PreTriggerMarkerIsATriangleOnItsTip) {
    scene.TriggerMarkOn = 0;
    scene.TriggerPositionX = 600;
    Draw();
    const double a = 5 * kPixelX;
    EXPECT_THAT(canvas.Between("SetDrawStyle(Solid)", "SetDrawWidth"),
                ElementsAre(kWhite, Call("Line", {600, -126, 600 + a, -121}),
                            Call("Line", {600, -126, 600 - a, -121}),
                            Call("Line", {600 - a, -121, 600 + a, -121}), kWhite));
    canvas.calls.clear();
    scene.TriggerMarkOn = -1;
    Draw();
    EXPECT_THAT(canvas.CallsOf({"Line"}), SizeIs(21 + 31));
}

TEST_F(DrawPlotTest, DelayIsAnArrowToTheLeft) {
    scene.TriggerMarkOn = 1;
    scene.TriggerPositionX = 600;
    scene.DelayFlag = true;
    Draw();
    // A blank is 6 pixels of 3003.998 / 600 wide and 10 of 253 / 252 high.
    const double width = 6 * (2999 + kPixelX) / kPlotWidth;
    const double height = 10 * 253.0 / kPlotHeight;
    EXPECT_THAT(canvas.CallsOf({"SetCurrent", "Print"}),
                ElementsAre(Call("SetCurrent", {600 - width, -126 + 1.2 * height}), "Print(<)"));
}

TEST_F(DrawPlotTest, MarkersKeepTheirSizeOnAFineScreen) {
    scene.TriggerLevel = 0;
    scene.record.VertCursorEnabled[0] = true;
    scene.record.ChannelOn[1] = true;
    RecordingCanvas fine(2 * kPlotWidth, 2 * kPlotHeight, 2);
    DrawPlot(scene.Time(), fine, nullptr);
    const double x = 2999 - kPixelX / 2;
    EXPECT_THAT(fine.calls, Contains(Call("Line", {x - 5 * kPixelX, 5, x - 5 * kPixelX, -5})));
    EXPECT_THAT(fine.CallsOf({"FillBox"}), ElementsAre(Call("FillBox", {-4 * kPixelX, 0, 4 * kPixelX, 0})));
}

// Traces

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

// Sample dots

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

// Cursors

TEST_F(DrawPlotTest, CursorsAreLinesAcrossThePlot) {
    scene.record.VertCursorEnabled[1] = true;
    scene.record.VertCursorTime[1] = 1000.4e-6;
    scene.record.HorizCursorEnabled[1] = scene.record.HorizCursorEnabled[2] = true;
    scene.record.HorizCursorVolts[1] = 20.6;
    scene.record.HorizCursorVolts[2] = -20.6;
    Draw();
    const Calls lines = canvas.CallsOf({"Line", "SetCurrent"});
    EXPECT_THAT(Calls(lines.end() - 4, lines.end()),
                ElementsAre("Line(1000, 126, 1000, -126)", "Line(0, 21, 2999, 21)", "Line(0, -21, 2999, -21)",
                            Call("SetCurrent", {1000 + 3 * kPixelX, 126})));
    EXPECT_THAT(canvas.CallsOf({"Print"}), ElementsAre("Print(t2@ 1.000ms)"));
}

TEST_F(DrawPlotTest, ReadOutTellsTheWayToTheNextCursorOfTheCycle) {
    scene.record.VertCursorTime[0] = 100e-6;
    scene.record.VertCursorTime[1] = 250e-6;
    scene.record.VertCursorTime[2] = 2e-6;
    const auto textsWith = [&](bool first, bool second, bool third) {
        canvas.calls.clear();
        scene.record.VertCursorEnabled[0] = first;
        scene.record.VertCursorEnabled[1] = second;
        scene.record.VertCursorEnabled[2] = third;
        Draw();
        return canvas.CallsOf({"Print"});
    };
    EXPECT_THAT(textsWith(true, false, false), ElementsAre("Print(t1@ 100.000us)"));
    EXPECT_THAT(textsWith(true, true, false),
                ElementsAre("Print(t1@ 100.000us \x1A t2: 150.000us)", "Print(t2@ 250.000us)"));
    EXPECT_THAT(textsWith(false, true, true),
                ElementsAre("Print(t2@ 250.000us \x1A t3: -248.000us)", "Print(t3@ 2.000us)"));
    EXPECT_THAT(textsWith(true, false, true),
                ElementsAre("Print(t1@ 100.000us)", "Print(t3@ 2.000us \x1A t1: 98.000us)"));
    EXPECT_THAT(textsWith(true, true, true), ElementsAre("Print(t1@ 100.000us \x1A t2: 150.000us)",
                                                         "Print(t2@ 250.000us \x1A t3: -248.000us)",
                                                         "Print(t3@ 2.000us \x1A t1: 98.000us)"));
    EXPECT_THAT(textsWith(false, false, false), IsEmpty());
}

TEST_F(DrawPlotTest, ReadOutsStackAndFlipNearTheRightEdge) {
    const double character = RecordingCanvas::kCharacter * (2999 + kPixelX) / kPlotWidth;
    const double line = RecordingCanvas::kTextLine * 253.0 / kPlotHeight;
    scene.record.VertCursorEnabled[0] = scene.record.VertCursorEnabled[2] = true;
    scene.record.VertCursorTime[0] = 2900e-6;
    scene.record.VertCursorTime[2] = 20e-6;
    Draw();
    const double flipped = 2900 - 3 * kPixelX - 11 * character; // "t1@ 2.900ms"
    EXPECT_THAT(
        canvas.CallsOf({"SetCurrent"}),
        ElementsAre(Call("SetCurrent", {flipped, 126}), Call("SetCurrent", {20 + 3 * kPixelX, 126 - line})));
}

TEST_F(DrawPlotTest, ReadOutFlipsOnlyBeyondTheEdge) {
    const double width = 11 * RecordingCanvas::kCharacter * (2999 + kPixelX) / kPlotWidth;
    const double edge = 2999 - width - 3 * kPixelX;
    scene.record.VertCursorEnabled[0] = true;
    scene.record.VertCursorTime[0] = std::floor(edge) * 1e-6;
    Draw();
    EXPECT_THAT(canvas.calls, Contains(Call("SetCurrent", {std::floor(edge) + 3 * kPixelX, 126})));
    canvas.calls.clear();
    scene.record.VertCursorTime[0] = std::ceil(edge) * 1e-6;
    Draw();
    EXPECT_THAT(canvas.calls, Contains(Call("SetCurrent", {std::ceil(edge) - 3 * kPixelX - width, 126})));
}

TEST_F(DrawPlotTest, CrossingsAreTicksInTheChannelsOwnScale) {
    scene.record.ChannelOn[1] = scene.record.ChannelOn[3] = true;
    scene.record.ChannelInvert[3] = true;
    scene.record.SampleData(1, 500) = 11;
    scene.record.SampleData(3, 500) = 33;
    scene.record.VertCursorEnabled[2] = true;
    scene.record.VertCursorTime[2] = 500e-6;
    Draw();
    const double a = 4 * kPixelX;
    EXPECT_THAT(canvas.Between("Print", "Never"),
                ElementsAre(kNormal, Call("FillBox", {500 - a, 11, 500 + a, 11}), kNormal, kUpsideDown,
                            Call("FillBox", {500 - a, 33, 500 + a, 33}), kNormal));
}

TEST_F(DrawPlotTest, ACursorWhereverItStandsReadsNothingOutsideTheRecord) {
    scene.FillWithEverything();
    for (double time : {-1.0, 4e-3, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN()}) {
        canvas.calls.clear();
        scene.record.VertCursorTime.fill(time);
        scene.record.HorizCursorVolts.fill(time);
        Draw();
        EXPECT_THAT(canvas.CallsOf({"FillBox"}), IsEmpty()) << time;
    }
    canvas.calls.clear();
    scene.record.VertCursorTime.fill(3000e-6); // the end of the record: the spare positions are there
    Draw();
    EXPECT_EQ(canvas.Count("FillBox"), 3 * kAllChannels);
}

TEST_F(DrawPlotTest, ASamplePeriodOfZeroIsSurvived) {
    scene.FillWithEverything();
    scene.SamplePeriod = 0;
    Draw();
    EXPECT_EQ(canvas.Count("LineTo") > 0, true);
}

// The spectrum

TEST_F(DrawPlotTest, SpectrumHasGridAndTracesOnly) {
    scene.FillWithEverything();
    scene.record.ChannelFFT[1] = scene.record.ChannelFFT[5] = true;
    scene.record.ChannelInvert[1] = true;
    DrawSpectrum();
    const double pixel = 1023.0 / kPlotWidth;
    EXPECT_EQ(canvas.calls[4], Scale(1, 30, 1024 + pixel, -30 - 60.0 / kPlotHeight));
    EXPECT_EQ(canvas.Count("SetScale"), 4); // once, for each trace, and at the end: never upside down
    EXPECT_THAT(canvas.CallsOf({"Line"}), SizeIs(21 + 21));
    EXPECT_THAT(canvas.CallsOf({"FillBox", "PSet", "Print", "TriggerLine", "GroundLabelLeft",
                                "GroundLabelVisible", "GroundLabelTop"}),
                IsEmpty());
    EXPECT_THAT(canvas.CallsOf({"SetDrawWidth"}), Each("SetDrawWidth(1)"));
    EXPECT_EQ(canvas.CallsOf({"SetCurrent"}).front(), "SetCurrent(1, 0)");
}

TEST_F(DrawPlotTest, SpectrumLeavesCompanionsAloneEvenIfItIsHandedSome) {
    scene.record.ChannelFFT[1] = true;
    DrawPlot(scene.Spectrum(), canvas, &companions);
    EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft", "GroundLabelVisible", "GroundLabelCaption",
                                "GroundLabelTop", "GroundLabelColour", "TriggerLine"}),
                IsEmpty());
}

} // namespace
