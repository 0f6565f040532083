#include "display/plot_view.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

const PlotAxis kWholeRecord{0, 2999, 1, 0};
const PlotAxis kWholeSpan{-126, 126, 1, 0};

TEST(PlotView, ShowsAllOfThePlotAtZoomOne) {
    const PlotView view = MakePlotView(600, 504, kWholeRecord, kWholeSpan);
    EXPECT_DOUBLE_EQ(view.UnitsPerPixelX, 2999.0 / 600);
    EXPECT_DOUBLE_EQ(view.UnitsPerPixelY, 0.5);
    EXPECT_DOUBLE_EQ(view.ViewXMin, 0);
    EXPECT_DOUBLE_EQ(view.ViewXMax, 2999);
    EXPECT_DOUBLE_EQ(view.ViewYMin, -126);
    EXPECT_DOUBLE_EQ(view.ViewYMax, 126);
}

TEST(PlotView, PanOfZeroShowsTheLeftEndAndOfOneTheRightEnd) {
    const PlotView left = MakePlotView(500, 100, {0, 2999, 10, 0}, kWholeSpan);
    EXPECT_DOUBLE_EQ(left.ViewXMin, 0);
    EXPECT_NEAR(left.ViewXMax, 299.9, 1e-9);
    const PlotView right = MakePlotView(500, 100, {0, 2999, 10, 1}, kWholeSpan);
    EXPECT_NEAR(right.ViewXMin, 2699.1, 1e-9);
    EXPECT_NEAR(right.ViewXMax, 2999, 1e-9);
    const PlotView between = MakePlotView(500, 100, {0, 2999, 10, 0.25}, kWholeSpan);
    EXPECT_NEAR(between.ViewXMin, 674.775, 1e-9);
}

TEST(PlotView, LeftEndNeedNotBeZero) {
    const PlotView view = MakePlotView(1023, 60, {1, 1024, 1, 0}, {-30, 30, 1, 0});
    EXPECT_DOUBLE_EQ(view.ViewXMin, 1);
    EXPECT_DOUBLE_EQ(view.ViewXMax, 1024);
    EXPECT_DOUBLE_EQ(view.UnitsPerPixelX, 1);
}

TEST(PlotView, VerticalPanMovesTheCentre) {
    const PlotView view = MakePlotView(500, 100, kWholeRecord, {-126, 126, 4, 0.5});
    // A view of 63 units; the other 189, halved, are where its centre stands.
    EXPECT_DOUBLE_EQ(view.ViewYMin, 94.5 - 31.5);
    EXPECT_DOUBLE_EQ(view.ViewYMax, 94.5 + 31.5);
    const PlotView below = MakePlotView(500, 100, kWholeRecord, {-126, 126, 4, -0.5});
    EXPECT_DOUBLE_EQ(below.ViewYMin, -126);
    const PlotView unzoomed = MakePlotView(500, 100, kWholeRecord, {-126, 126, 1, 0.5});
    EXPECT_DOUBLE_EQ(unzoomed.ViewYMax, 126);
}

TEST(PlotView, FewerThanTwoUnitsAreTooMuchZoom) {
    EXPECT_FALSE(MakePlotView(500, 100, {0, 2999, 1499, 0}, kWholeSpan).TooMuchZoom());
    EXPECT_TRUE(MakePlotView(500, 100, {0, 2999, 1500, 0}, kWholeSpan).TooMuchZoom());
    EXPECT_FALSE(MakePlotView(500, 100, {0, 2, 1, 0}, kWholeSpan).TooMuchZoom()); // exactly two
}

TEST(PlotView, IsOfNoUseWithoutAZoom) {
    EXPECT_TRUE(MakePlotView(500, 100, kWholeRecord, kWholeSpan).Usable());
    EXPECT_FALSE(MakePlotView(500, 100, {0, 2999, 0, 0}, kWholeSpan).Usable());
    EXPECT_FALSE(MakePlotView(500, 100, kWholeRecord, {-126, 126, 0, 0}).Usable());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(MakePlotView(500, 100, {0, 2999, nan, 0}, kWholeSpan).Usable());
    EXPECT_FALSE(MakePlotView(500, 100, {0, 2999, 1, nan}, kWholeSpan).Usable());
}

void ExpectSpan(double viewMin, double viewMax, int first, int last) {
    const SampleSpan span = VisibleSamples(viewMin, viewMax, 0, 2999);
    EXPECT_EQ(span.first, first) << viewMin;
    EXPECT_EQ(span.last, last) << viewMax;
}

TEST(VisibleSamples, ReachOneBeyondEachEdge) {
    ExpectSpan(0, 2999, 0, 2999);
    ExpectSpan(0.9, 2998.9, 0, 2999);
    ExpectSpan(1, 2997, 0, 2998);
    ExpectSpan(1.99, 2997.99, 0, 2998);
    ExpectSpan(1000.5, 1200.5, 999, 1201);
}

TEST(VisibleSamples, StayInTheRecordWhateverTheView) {
    ExpectSpan(-3e6, 3e6, 0, 2999);
    ExpectSpan(5000, 1e300, 2999, 2999);
    ExpectSpan(-1e300, -5000, 0, 0);
}

} // namespace
