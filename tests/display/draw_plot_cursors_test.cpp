#include "display/draw_plot_fixture.h"

#include <cmath>
#include <limits>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

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

} // namespace
