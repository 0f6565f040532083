#include "display/plot_control_set.h"

#include "display/recording_canvas.h"
#include "frame/record/record.h"
#include "support/scripted_driver.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Calls = std::vector<std::string>;

/// The plotter among controls of its own, recording canvases and a scripted driver.
class PlotterTest : public testing::Test {
  protected:
    PlotterTest() : plotter(record, instrument.driver, controls.Pointers(), main, &companions, MainCalls()) {
        record.SampleDepth = kSampleDepth;
        record.DisplayExpansion = record.HeldZoom = 1;
        record.HeldSamplePeriod = 1;
        record.TriggerMark = -1;
        instrument.script.samplePeriod.Always(1e-6F);
        plotter.SetLargeTimePlot({.Open = [this] { return largeOpen; },
                                  .Surface = [this]() -> Canvas& {
                                      events.push_back("large plot");
                                      return large;
                                  },
                                  .Companions = [this]() -> PlotCompanions* { return &largeCompanions; },
                                  .RefreshAppInfo = Event("large RefreshAppInfo")});
        plotter.SetSpectrumPlot({.Surface = [this]() -> Canvas& {
                                     events.push_back("spectrum plot");
                                     return spectrum;
                                 },
                                 .RefreshAppInfo = Event("RefreshAppInfo"),
                                 .Canvas_UpdateStats = Event("Canvas_UpdateStats"),
                                 .Visible = [this] { return spectrumVisible; },
                                 .Show = Event("Show"),
                                 .Hide = Event("Hide")});
    }

    PlotCalls MainCalls() {
        return {.WorldLineUpdate = [this](double xMin, double xMax, double yMax, double yMin) {
            events.push_back("WorldLineUpdate(" + Figure(xMin) + ", " + Figure(xMax) + ", " + Figure(yMax) +
                             ", " + Figure(yMin) + ")");
        }};
    }

    std::function<void()> Event(const std::string& name) {
        return [this, name] { events.push_back(name); };
    }

    void PlotNow() {
        main.calls.clear();
        large.calls.clear();
        spectrum.calls.clear();
        events.clear();
        plotter.PlotNow();
    }

    Record record;
    ScriptedInstrument instrument;
    PlotControlSet controls;
    RecordingCanvas main{kPlotWidth, kPlotHeight};
    RecordingCompanions companions{main};
    RecordingCanvas large{2 * kPlotWidth, kPlotHeight};
    RecordingCompanions largeCompanions{large};
    RecordingCanvas spectrum{kPlotWidth, kPlotHeight};
    bool largeOpen = false;
    bool spectrumVisible = false;
    Calls events;
    Plotter plotter;
};

TEST_F(PlotterTest, ASpectrumWindowThatAsksForPlotsAsItAppearsGetsOneMore) {
    record.ChannelOn[1] = record.ChannelFFT[1] = true;
    int shows = 0;
    plotter.SetSpectrumPlot({.Surface = [this]() -> Canvas& { return spectrum; },
                             .RefreshAppInfo = {},
                             .Canvas_UpdateStats = {},
                             .Visible = [this] { return spectrumVisible; },
                             .Show =
                                 [this, &shows] {
                                     ++shows;
                                     plotter.PlotNow(); // its arrangement
                                     plotter.PlotNow(); // its canvas
                                     spectrumVisible = true;
                                 },
                             .Hide = {}});
    PlotNow();
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(spectrum.Count("Clear"), 2);
    EXPECT_EQ(main.Count("Clear"), 2);
    PlotNow();
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(main.Count("Clear"), 1);
}

TEST_F(PlotterTest, ASpectrumWindowThatNeverAppearsEndsThePlotAllTheSame) {
    record.ChannelOn[1] = record.ChannelFFT[1] = true;
    int shows = 0;
    plotter.SetSpectrumPlot({.Surface = [this]() -> Canvas& { return spectrum; },
                             .RefreshAppInfo = {},
                             .Canvas_UpdateStats = {},
                             .Visible = [] { return false; },
                             .Show =
                                 [this, &shows] {
                                     ++shows;
                                     plotter.PlotNow();
                                 },
                             .Hide = {}});
    PlotNow();
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(main.Count("Clear"), 2);
}

TEST_F(PlotterTest, ThePreTriggerMarkerIsRoundedToEven) {
    record.SampleDepth = 2002; // the middle of 2001 intervals lies between two samples
    record.TriggerMark = 1;
    controls.PretriggerSlider.SetSliderValue(0.5F);
    PlotNow();
    EXPECT_EQ(main.Count("Line(1000, "), 2);
}

TEST_F(PlotterTest, DoesNothingWhilePlotInhibitIsSet) {
    record.PlotInhibit = true;
    record.ChannelInvert[5] = true;
    controls.VertCursorEn[0].setChecked(true);
    PlotNow();
    EXPECT_THAT(main.calls, IsEmpty());
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(record.VertCursorEnabled[0]);
    EXPECT_TRUE(record.ChannelInvert[5]);
    record.PlotInhibit = false;
    PlotNow();
    EXPECT_EQ(main.Count("Clear"), 1);
}

TEST_F(PlotterTest, CopiesTheCheckBoxesOfTheCursors) {
    controls.VertCursorEn[1].setChecked(true);
    controls.HorizCursorEn[2].setCheckState(Qt::PartiallyChecked);
    record.VertCursorEnabled[0] = record.HorizCursorEnabled[0] = true;
    PlotNow();
    EXPECT_FALSE(record.VertCursorEnabled[0]);
    EXPECT_TRUE(record.VertCursorEnabled[1]);
    EXPECT_FALSE(record.HorizCursorEnabled[0]);
    EXPECT_TRUE(record.HorizCursorEnabled[2]);
}

TEST_F(PlotterTest, OffsetIsPercentOfTheHalfSpan) {
    controls.OffsetKnob(1).SetKnobValue(127);
    controls.OffsetKnob(2).SetKnobValue(-127);
    controls.OffsetKnob(3).SetKnobValue(-30);
    controls.OffsetKnob(4).SetKnobMin(-100);
    controls.OffsetKnob(4).SetKnobMax(100);
    controls.OffsetKnob(4).SetKnobValue(25);
    record.ChannelOffsetPercent[5] = 12;
    PlotNow();
    EXPECT_FLOAT_EQ(record.ChannelOffsetPercent[1], 100);
    EXPECT_FLOAT_EQ(record.ChannelOffsetPercent[2], -100);
    EXPECT_FLOAT_EQ(record.ChannelOffsetPercent[3], -30 * 200.0F / 254);
    EXPECT_FLOAT_EQ(record.ChannelOffsetPercent[4], 25);
    EXPECT_EQ(record.ChannelOffsetPercent[5], 12); // the math channels' are not its own
}

TEST_F(PlotterTest, MathChannelsAreNeverInverted) {
    record.ChannelInvert.fill(true);
    PlotNow();
    EXPECT_TRUE(record.ChannelInvert[4]);
    EXPECT_FALSE(record.ChannelInvert[5]);
    EXPECT_FALSE(record.ChannelInvert[6]);
}

TEST_F(PlotterTest, DelayIsActiveAboveTheLeastOfItsKnob) {
    controls.DelayKnob.SetKnobMin(10);
    controls.DelayKnob.SetKnobMax(90);
    controls.DelayKnob.SetKnobValue(10);
    PlotNow();
    EXPECT_FALSE(record.DelayActive);
    controls.DelayKnob.SetKnobValue(11);
    PlotNow();
    EXPECT_TRUE(record.DelayActive);
}

TEST_F(PlotterTest, AsksTheDriverForThePeriodOfWhatIsShown) {
    record.HeldSamplePeriod = 0.25;
    controls.VertCursorEn[0].setChecked(true);
    record.VertCursorTime[0] = 100e-6;
    instrument.script.samplePeriod.By([](bool running, double held) {
        return running ? 1e-6F : static_cast<float>(held * 4e-6); // then 1e-06, too
    });
    PlotNow();
    EXPECT_THAT(main.calls, Contains("Line(100, 126, 100, -126)"));
    record.Running = true;
    PlotNow();
    EXPECT_THAT(instrument.script.CallsOf({"GetSamplePeriod"}),
                ElementsAre("GetSamplePeriod(0, 0.25)", "GetSamplePeriod(-1, 0.25)"));
}

TEST_F(PlotterTest, HandsTheControlsToThePlot) {
    controls.VertPanSlider.SetSliderValue(0.25F);
    controls.VertZoomKnob.SetKnobValue(2);
    controls.HorizPanSlider.SetSliderValue(0.5F);
    controls.HorizZoomKnob.SetKnobValue(4);
    record.DisplayExpansion = 2.5;
    record.HeldZoom = 0.4;
    controls.TriggerKnob.SetKnobValue(-50);
    controls.PretriggerSlider.SetSliderValue(0.25F);
    record.TriggerMark = 1;
    PlotNow();
    EXPECT_NEAR(record.ViewXMin, 2999 * 3 / 8.0, 1e-6);
    EXPECT_NEAR(record.ViewYMax - record.ViewYMin, 126, 1e-9);
    EXPECT_NEAR(record.ViewYMax + record.ViewYMin, 2 * 126 * 0.25, 1e-6);
    EXPECT_THAT(main.CallsOf({"TriggerLine"}).front(), testing::HasSubstr("TriggerLine(0, -63, "));
    EXPECT_EQ(main.Count("Line(750, "), 2); // the tip of the pre-trigger marker: 749.75 rounded
}

TEST_F(PlotterTest, LargeWindowIsDrawnOnlyWhenOpen) {
    record.ChannelOn[1] = true;
    PlotNow();
    EXPECT_THAT(events, ElementsAre("WorldLineUpdate(0, 2999, 126, -126)"));
    largeOpen = true;
    controls.HorizZoomKnob.SetKnobValue(3);
    PlotNow();
    EXPECT_THAT(events, ElementsAre("large plot", "large RefreshAppInfo",
                                    "WorldLineUpdate(0, " + Figure(2999 / 3.0) + ", 126, -126)"));
    EXPECT_EQ(main.Count("Clear"), 1);
    EXPECT_EQ(large.Count("Clear"), 1);
    EXPECT_THAT(large.calls, Contains("GroundLabelTop(1, 0)"));
    EXPECT_THAT(large.calls, Contains("SetDrawWidth(2)"));
}

TEST_F(PlotterTest, SpectrumWindowComesAndGoesWithItsSwitches) {
    PlotNow();
    EXPECT_THAT(events, ElementsAre("WorldLineUpdate(0, 2999, 126, -126)")); // neither shown nor hidden
    record.ChannelFFT[2] = true;
    PlotNow();
    EXPECT_THAT(events, ElementsAre("WorldLineUpdate(0, 2999, 126, -126)")); // the channel is off
    record.ChannelOn[2] = true;
    PlotNow();
    EXPECT_THAT(events, ElementsAre("WorldLineUpdate(0, 2999, 126, -126)", "spectrum plot", "RefreshAppInfo",
                                    "Canvas_UpdateStats", "Show"));
    spectrumVisible = true;
    PlotNow();
    EXPECT_EQ(events.back(), "Canvas_UpdateStats");
    record.ChannelFFT[2] = false;
    PlotNow();
    EXPECT_THAT(events, ElementsAre("WorldLineUpdate(0, 2999, 126, -126)", "Hide"));
    EXPECT_THAT(spectrum.calls, IsEmpty());
}

TEST_F(PlotterTest, SpectrumIsDrawnOfTheChannelsThatAreOn) {
    record.ChannelFFT.fill(true);
    record.ChannelOn[1] = record.ChannelOn[6] = true;
    record.ChannelInvert[1] = true;
    record.ChannelColour[1] = 0x111111;
    record.ChannelColour[6] = 0x666666;
    for (auto* en : {&controls.VertCursorEn[0], &controls.HorizCursorEn[0]}) {
        en->setChecked(true);
    }
    PlotNow();
    EXPECT_EQ(spectrum.Count("SetForeColor(0x111111)"), 2);
    EXPECT_EQ(spectrum.Count("SetForeColor(0x666666)"), 2);
    EXPECT_EQ(spectrum.Count("SetForeColor(0x0)"), 0);
    EXPECT_EQ(spectrum.Count("Print"), 0);
    EXPECT_EQ(instrument.script.Count("FFT"), 2);
    EXPECT_EQ(record.ViewYMax, 30); // the spectrum was drawn last
}

TEST_F(PlotterTest, TransformGetsSamplesWindowAndReference) {
    record.ChannelFFT[3] = record.ChannelOn[3] = true;
    for (int i = 0; i <= kSampleRow; ++i) {
        record.SampleData(3, i) = static_cast<float>(i);
    }
    controls.FFTWindowCombo.setCurrentIndex(4);
    std::vector<double> seen;
    std::vector<double> scaleModes;
    int windowSeen = -1;
    instrument.script.transform = [&](std::span<double> buffer, double scaleMode, int window) {
        seen.assign(buffer.begin(), buffer.end());
        scaleModes.push_back(scaleMode);
        windowSeen = window;
        std::fill(buffer.begin(), buffer.end(), 0.25);
        buffer[0] = -80;
        buffer[1024] = 6;
    };
    PlotNow();
    EXPECT_EQ(seen.size(), 2048U);
    EXPECT_DOUBLE_EQ(seen[2047], 2047 / 255.0);
    EXPECT_EQ(windowSeen, 4);
    EXPECT_FLOAT_EQ(record.SpectrumData(3, 0), -30.01F);
    EXPECT_FLOAT_EQ(record.SpectrumData(3, 1), 24.25F);
    EXPECT_FLOAT_EQ(record.SpectrumData(3, 1024), 30);
    controls.FFTPlotType0.setChecked(false);
    PlotNow();
    EXPECT_THAT(scaleModes, ElementsAre(0.5, 0.0));
    EXPECT_FLOAT_EQ(record.SpectrumData(3, 1), 0); // 120 * 0.25 - 30
    EXPECT_EQ(record.SpectrumData(2, 1), 0.0F);
}

TEST_F(PlotterTest, WorksBeforeTheOtherWindowsAreThere) {
    Plotter alone(record, instrument.driver, controls.Pointers(), main, nullptr, {});
    record.ChannelOn[1] = record.ChannelFFT[1] = true;
    alone.PlotNow();
    EXPECT_GT(main.Count("LineTo"), 100);
}

TEST_F(PlotterTest, ARecordThatNobodyHasFilledIsSurvived) {
    Record empty;
    Plotter early(empty, instrument.driver, controls.Pointers(), main, &companions, {});
    early.PlotNow();
    EXPECT_EQ(main.calls.back(), "SetPixelScale()");
    EXPECT_EQ(instrument.script.TakeViolations(), Calls{"GetSamplePeriod(0, 0): a held period to give back"});
}

TEST(SpectrumValue, ClampsUnderTheFloorInBothPlotTypes) {
    const SpectrumScale decibels = SpectrumScale::Decibels();
    EXPECT_FLOAT_EQ(SpectrumValue(6, decibels), 30);
    EXPECT_FLOAT_EQ(SpectrumValue(0, decibels), 24);
    EXPECT_FLOAT_EQ(SpectrumValue(-54, decibels), -30);
    EXPECT_FLOAT_EQ(SpectrumValue(-54.005, decibels), -30.01F);
    EXPECT_FLOAT_EQ(SpectrumValue(-80, decibels), -30.01F);
    const SpectrumScale linear = SpectrumScale::Linear();
    EXPECT_FLOAT_EQ(SpectrumValue(0.5, linear), 30);
    EXPECT_FLOAT_EQ(SpectrumValue(0, linear), -30);
    EXPECT_FLOAT_EQ(SpectrumValue(-60, linear), static_cast<float>(120 * -54.01 - 30));
    EXPECT_TRUE(std::isfinite(SpectrumValue(1e300, linear)));
}

} // namespace
