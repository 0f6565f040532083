#include "display/draw_plot_fixture.h"

#include <limits>

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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
