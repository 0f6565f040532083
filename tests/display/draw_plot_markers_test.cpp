#include "display/draw_plot_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

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
    EXPECT_THAT(canvas.CallsOf({"GroundLabelLeft"}), IsEmpty());
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

TEST_F(DrawPlotTest, AChannelThatIsOffHidesItsLabelWhateverTheDivisionsAre) {
    scene.record.ChannelOn[1] = true;
    for (const double expansion : {1.0, 1.01, 1e6}) { // all lines; not the last; too much zoom
        canvas.calls.clear();
        scene.XExpansion = expansion;
        Draw();
        for (int channel = 2; channel <= kAllChannels; ++channel) {
            EXPECT_THAT(canvas.calls, Contains("GroundLabelVisible(" + std::to_string(channel) + ", false)"))
                << expansion;
        }
        EXPECT_THAT(canvas.calls, Not(Contains("GroundLabelVisible(1, false)"))) << expansion;
    }
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

} // namespace
