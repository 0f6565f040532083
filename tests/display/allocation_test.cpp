#include "display/plot_canvas.h"
#include "display/plot_control_set.h"
#include "driver/builtin_backend.h"
#include "frame/record/record.h"
#include "support/counted_new.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

/// A main canvas on the screen, a large one and a spectrum, four channels and their spectra.
class PlotAllocations : public testing::Test {
  protected:
    PlotAllocations()
        : driver(std::make_unique<BuiltinBackend>()),
          plotter(record, driver, controls.Pointers(), main.Surface(), &main, {}) {
        record.SampleDepth = kSampleDepth;
        record.DisplayExpansion = record.HeldZoom = 1;
        record.TriggerMark = 1;
        record.SampleDots = true;
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            record.ChannelOn[channel] = true;
            record.ChannelColour[channel] = 0x40FF40;
            for (int i = 0; i < record.SampleData.positions(); ++i) {
                record.SampleData(channel, i) = static_cast<float>((i * channel * 7919) % 200 - 100);
            }
        }
        record.ChannelFFT.fill(true);
        plotter.SetLargeTimePlot({.Open = [] { return true; },
                                  .Surface = [this]() -> Canvas& { return large.Surface(); },
                                  .Companions = [this]() -> PlotCompanions* { return &large; },
                                  .RefreshAppInfo = [] {}});
        plotter.SetSpectrumPlot({.Surface = [this]() -> Canvas& { return spectrum.Surface(); },
                                 .RefreshAppInfo = [] {},
                                 .Canvas_UpdateStats = [] {},
                                 .Visible = [] { return true; },
                                 .Show = [] {},
                                 .Hide = [] {}});
        main.resize(357, 240);
        large.resize(900, 560);
        spectrum.resize(400, 200);
        for (QWidget* canvas : {&main, &large, &spectrum}) {
            canvas->show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(canvas));
        }
    }

    /// Allocations of some plots after the first one, with new samples for each. The canvases have asked for
    /// their repaint then; the toolkit spends three allocations on each request and some more on a repaint,
    /// which nothing here can save.
    std::size_t Counted() {
        plotter.PlotNow();
        const std::size_t before = AllocationsSoFar();
        for (int round = 1; round <= 5; ++round) {
            for (int i = 0; i < kSampleDepth; ++i) {
                record.SampleData(1, i) = static_cast<float>((i * round * 31) % 200 - 100);
            }
            plotter.PlotNow();
        }
        return AllocationsSoFar() - before;
    }

    Record record;
    Driver driver;
    PlotControlSet controls;
    PlotCanvas main, large, spectrum;
    Plotter plotter;
};

TEST_F(PlotAllocations, NoneWithoutCursors) {
    EXPECT_EQ(Counted(), 0U);
}

TEST_F(PlotAllocations, NoneWithAllCursorsAndTheirReadOuts) {
    for (int i = 0; i < kCursors; ++i) {
        controls.VertCursorEn[i].setChecked(true);
        controls.HorizCursorEn[i].setChecked(true);
        record.VertCursorTime[i] = 1e-6 * i;
    }
    controls.DelayKnob.SetKnobValue(50);
    EXPECT_EQ(Counted(), 0U);
}

TEST_F(PlotAllocations, NoneAtAHighZoomWithDots) {
    controls.HorizZoomKnob.SetKnobValue(60);
    controls.VertZoomKnob.SetKnobValue(7);
    EXPECT_EQ(Counted(), 0U);
}

TEST_F(PlotAllocations, NoneWhenThereIsTooMuchZoom) {
    controls.HorizZoomKnob.SetKnobValue(100);
    record.DisplayExpansion = 25;
    record.ChannelFFT = {};
    EXPECT_EQ(Counted(), 0U);
}

} // namespace
