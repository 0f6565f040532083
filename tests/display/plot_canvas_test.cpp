#include "display/plot_canvas.h"

#include "controls/colour.h"
#include "display/draw_plot.h"
#include "display/plot_scene.h"
#include "frame/record/record.h"

#include <QSignalSpy>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

class PlotCanvasTest : public testing::Test {
  protected:
    PlotCanvasTest() {
        canvas.resize(301, 201);
        canvas.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&canvas));
    }
    void Draw() { DrawPlot(scene.Time(), canvas.Surface(), &canvas); }
    const GroundLabel& Label(int channel) const { return canvas.ChGroundLabel(channel); }
    QWidget* Line() { return canvas.findChild<QWidget*>(QStringLiteral("TriggerLine")); }

    PlotScene scene;
    PlotCanvas canvas;
};

TEST_F(PlotCanvasTest, RasterHasThePixelsOfTheScreen) {
    const double ratio = canvas.devicePixelRatioF();
    EXPECT_EQ(canvas.Image().width(), std::ceil(301 * ratio));
    EXPECT_EQ(canvas.Image().height(), std::ceil(201 * ratio));
    EXPECT_EQ(canvas.Surface().PixelRatio(), ratio);
    canvas.Surface().SetPixelScale();
    EXPECT_EQ(canvas.Surface().ScaleWidth(), canvas.Image().width());
}

TEST_F(PlotCanvasTest, ShowsEachPixelOfItsRasterOnOneOfTheScreen) {
    scene.FillWithEverything();
    DrawPlot(scene.Time(), canvas.Surface(), nullptr); // labels stay hidden
    const QImage shown = canvas.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QImage raster = canvas.Image();
    // At a broken scale the widget may end within the last pixel.
    ASSERT_NEAR(shown.width(), raster.width(), 1);
    ASSERT_NEAR(shown.height(), raster.height(), 1);
    for (int y = 0; y < std::min(shown.height(), raster.height()); ++y) {
        for (int x = 0; x < std::min(shown.width(), raster.width()); ++x) {
            ASSERT_EQ(shown.pixel(x, y), raster.pixel(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(PlotCanvasTest, HasLettersAndALineAsCompanions) {
    const QString letters = QStringLiteral("ABCDRS");
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        EXPECT_EQ(Label(channel).caption, letters.mid(channel - 1, 1));
        EXPECT_FALSE(Label(channel).visible);
    }
    ASSERT_NE(Line(), nullptr);
    EXPECT_TRUE(Line()->isHidden());
}

TEST_F(PlotCanvasTest, LabelsStandAtTheirGround) {
    scene.record.ChannelOn[2] = scene.record.ChannelOn[3] = scene.record.ChannelOn[6] = true;
    scene.record.ChannelInvert[3] = true;
    scene.record.ChannelOffsetPercent[2] = 50;
    scene.record.ChannelOffsetPercent[3] = 50;
    scene.record.ChannelOffsetPercent[6] = -50;
    Draw();
    EXPECT_FALSE(Label(1).visible);
    EXPECT_TRUE(Label(2).visible);
    EXPECT_TRUE(Label(6).visible);
    EXPECT_EQ(Label(2).place.x(), 0);
    EXPECT_NEAR(Label(2).place.y(), 201 / 4.0, 1.5);
    EXPECT_EQ(Label(3).caption, "c");
    // Ends above its line, mirrored.
    EXPECT_NEAR(Label(3).place.y() + canvas.LabelSize().height(), 201 * 3 / 4.0, 1.5);
    EXPECT_NEAR(Label(6).place.y(), 201 * 3 / 4.0, 1.5);
    EXPECT_EQ(Label(2).colour, scene.record.ChannelColour[2]);
    scene.record.ChannelInvert[3] = false;
    scene.record.ChannelOn[2] = false;
    Draw();
    EXPECT_EQ(Label(3).caption, "C");
    EXPECT_FALSE(Label(2).visible);
}

/// Pixels of the canvas that are not as they were, and lean to green as a label of this test does.
int Inked(PlotCanvas& canvas, const QRect& place, const QImage& before) {
    const QImage shown = canvas.grab().toImage();
    const double ratio = shown.devicePixelRatio();
    int count = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            const QRgb pixel = shown.pixel(x, y);
            count += place.contains(QPoint(static_cast<int>(x / ratio), static_cast<int>(y / ratio))) &&
                             pixel != before.pixel(x, y) && qGreen(pixel) > qRed(pixel)
                         ? 1
                         : 0;
        }
    }
    return count;
}

TEST_F(PlotCanvasTest, LabelsArePaintedInTheirColourWhereTheyStand) {
    canvas.GroundLabelLeft(2, canvas.ToUser({100, 50}).x());
    canvas.GroundLabelTop(2, canvas.ToUser({100, 50}).y());
    canvas.GroundLabelColour(2, 0x20F0A0);
    const QRect place(Label(2).place, canvas.LabelSize());
    EXPECT_EQ(place.topLeft(), QPoint(100, 50));
    const QImage before = canvas.grab().toImage();
    canvas.GroundLabelVisible(2, true);
    const int wide = Inked(canvas, place, before);
    EXPECT_GT(wide, 4);
    EXPECT_EQ(Inked(canvas, canvas.rect(), before), wide) << "nowhere else";
    canvas.GroundLabelCaption(2, u"i");
    EXPECT_LT(Inked(canvas, place, before), wide);
    EXPECT_GT(Inked(canvas, place, before), 0);
    canvas.GroundLabelColour(2, 0x0000F0); // red, no green
    EXPECT_EQ(Inked(canvas, place, before), 0);
    EXPECT_NE(canvas.grab().toImage(), before);
    canvas.GroundLabelVisible(2, false);
    EXPECT_EQ(canvas.grab().toImage(), before);
}

/// Tells which parts of a canvas are painted.
class WatchedCanvas : public PlotCanvas {
  public:
    QRegion painted;

  protected:
    void paintEvent(QPaintEvent* event) override {
        painted |= event->region();
        PlotCanvas::paintEvent(event);
    }
};

TEST(PlotCanvasLabels, AChangeWithoutAPlotPaintsWhereTheLabelWasAndIs) {
    WatchedCanvas canvas;
    canvas.resize(301, 201);
    canvas.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&canvas));
    ASSERT_TRUE(QTest::qWaitFor([&] { return canvas.painted.contains(canvas.rect()); }));
    const auto paintedAfter = [&](auto change) {
        canvas.painted = {};
        change();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !canvas.painted.isEmpty(); }));
        return canvas.painted;
    };
    const QRect before(canvas.ChGroundLabel(1).place, canvas.LabelSize());
    EXPECT_TRUE(paintedAfter([&] { canvas.GroundLabelVisible(1, true); }).contains(before));
    const QRegion moved = paintedAfter([&] { canvas.GroundLabelLeft(1, canvas.ToUser({200, 0}).x()); });
    EXPECT_TRUE(moved.contains(before));
    EXPECT_TRUE(moved.contains(QRect(canvas.ChGroundLabel(1).place, canvas.LabelSize())));
    EXPECT_FALSE((QRegion(canvas.rect()) - moved).isEmpty());
    EXPECT_TRUE(paintedAfter([&] {
                    canvas.GroundLabelVisible(1, false);
                }).contains(moved.boundingRect().bottomRight()));
}

TEST_F(PlotCanvasTest, TheLineIsOnlyTouchedWhenSomethingChanged) {
    scene.FillWithEverything();
    Draw();
    struct Watch : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            const auto type = event->type();
            changes += type == QEvent::Move || type == QEvent::Resize || type == QEvent::PaletteChange ||
                               type == QEvent::Show || type == QEvent::Hide || type == QEvent::UpdateRequest
                           ? 1
                           : 0;
            return false;
        }
        int changes = 0;
    } watch;
    Line()->show();
    Line()->installEventFilter(&watch);
    Draw();
    EXPECT_EQ(watch.changes, 0);
    scene.TriggerLevel = scene.TriggerLevel > 0 ? -20 : 20;
    Draw();
    EXPECT_GT(watch.changes, 0);
}

TEST_F(PlotCanvasTest, TriggerLineRunsAtTheLevel) {
    scene.TriggerLevel = 50;
    Line()->show();
    Draw();
    EXPECT_NEAR(Line()->y(), 201 / 4.0, 1.5);
    EXPECT_EQ(Line()->x(), 0);
    EXPECT_NEAR(Line()->width(), 300, 1.5);
    EXPECT_EQ(Line()->height(), 1);
    EXPECT_TRUE(Line()->isVisible()); // who shows and hides it is told elsewhere
}

TEST_F(PlotCanvasTest, MouseSpeaksInTheUserScale) {
    Draw();
    QSignalSpy pressed(&canvas, &PlotCanvas::Pressed);
    QSignalSpy moved(&canvas, &PlotCanvas::Moved);
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, {150, 50});
    ASSERT_EQ(pressed.size(), 1);
    EXPECT_EQ(pressed[0][0].value<Qt::MouseButton>(), Qt::LeftButton);
    EXPECT_NEAR(pressed[0][1].toDouble(), 150 / 301.0 * 3009, 5);
    EXPECT_NEAR(pressed[0][2].toDouble(), 126 - 50 / 201.0 * 253, 0.5);
    QTest::mouseClick(&canvas, Qt::RightButton, {}, {1, 1});
    EXPECT_EQ(pressed[1][0].value<Qt::MouseButton>(), Qt::RightButton);
    QTest::mouseMove(&canvas, {10, 100});
    ASSERT_GE(moved.size(), 1);
    EXPECT_NEAR(moved.back()[2].toDouble(), 0, 1);
    const QPointF back = canvas.FromUser(canvas.ToUser({33, 44}));
    EXPECT_NEAR(back.x(), 33, 1e-6);
    EXPECT_NEAR(back.y(), 44, 1e-6);
}

TEST_F(PlotCanvasTest, AWarningIsPrintedOverTheFinishedPicture) {
    Draw();
    const QImage before = canvas.Image();
    canvas.SetCurrent(0, 0);
    EXPECT_EQ(canvas.CurrentX(), 0);
    canvas.Print(QStringLiteral("WARNING: CH1"));
    EXPECT_NE(canvas.Image(), before);
    EXPECT_LT(canvas.CurrentY(), 0); // the next line, and y grows upwards
    Draw();
    EXPECT_EQ(canvas.Image(), before);
}

TEST_F(PlotCanvasTest, ResizeMakesANewRasterAndSaysSo) {
    Draw();
    QSignalSpy resized(&canvas, &PlotCanvas::Resized);
    canvas.resize(120, 80);
    EXPECT_EQ(resized.size(), 1);
    EXPECT_EQ(canvas.Image().width(), std::ceil(120 * canvas.devicePixelRatioF()));
    EXPECT_GT(canvas.Surface().ScaleHeight(), 0); // pixel scale, so that a minimised canvas is known
    for (const QSize size : {QSize(1, 1), QSize(1, 90), QSize(90, 1), QSize(0, 0)}) {
        canvas.resize(size);
        Draw();
        const QImage picture = canvas.Image();
        QImage empty(picture.size(), QImage::Format_RGB32);
        empty.fill(Qt::black);
        EXPECT_EQ(picture, empty);
    }
}

/// A canvas whose screen is told by the test.
class CanvasOnScreens : public PlotCanvas {
  public:
    double ratio = 0; ///< 0: as it is

  protected:
    int metric(PaintDeviceMetric what) const override {
        if (ratio > 0 && what == PdmDevicePixelRatioScaled) {
            return static_cast<int>(ratio * devicePixelRatioFScale());
        }
        return PlotCanvas::metric(what);
    }
};

TEST(PlotCanvasScreens, AnotherResolutionMakesANewRasterAfterThePaintEvent) {
    CanvasOnScreens canvas;
    canvas.resize(100, 60);
    canvas.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&canvas));
    bool painting = false;
    int inPaint = 0;
    int after = 0;
    QObject::connect(&canvas, &PlotCanvas::Resized, [&] { painting ? ++inPaint : ++after; });
    canvas.ratio = canvas.devicePixelRatioF() + 1;
    QImage target(400, 400, QImage::Format_RGB32);
    painting = true;
    canvas.render(&target);
    canvas.render(&target);
    painting = false;
    EXPECT_EQ(inPaint, 0);
    EXPECT_NE(canvas.Surface().PixelRatio(), canvas.ratio);
    ASSERT_TRUE(QTest::qWaitFor([&] { return after > 0; }, 30000));
    EXPECT_EQ(after, 1);
    EXPECT_EQ(canvas.Surface().PixelRatio(), canvas.ratio);
    EXPECT_EQ(canvas.Image().width(), std::ceil(100 * canvas.ratio));
}

TEST_F(PlotCanvasTest, CompanionsMayBeToldAnything) {
    Draw();
    for (double value :
         {std::numeric_limits<double>::infinity(), -1e300, 1e18, std::numeric_limits<double>::quiet_NaN()}) {
        canvas.GroundLabelLeft(1, value);
        canvas.GroundLabelTop(2, value);
        canvas.TriggerLine(0, value, value, value);
    }
    EXPECT_LT(std::abs(Label(1).place.x()), 40000);
    EXPECT_LT(std::abs(Line()->y()), 40000);
}

TEST_F(PlotCanvasTest, FontOfTheCanvasIsThatOfTextsAndLabels) {
    const int before = canvas.LabelSize().height();
    const double text = canvas.Surface().TextWidth(QStringLiteral("t1@"));
    QFont font = canvas.font();
    font.setPixelSize(40);
    canvas.setFont(font);
    EXPECT_GT(canvas.LabelSize().height(), before);
    EXPECT_GT(canvas.Surface().TextWidth(QStringLiteral("t1@")), text);
}

TEST(PlotCanvasMaker, BuildsTheCanvasRowsOfAForm) {
    FormDesign design;
    design.name = QStringLiteral("Corvantine_Form");
    design.size = {400, 300};
    ControlDesign row{.kind = ControlKind::Canvas, .name = "MainPlotCanvas"};
    row.place = {10, 10, 357, 240};
    design.controls.push_back(row);
    Form form(design, nullptr, kPlotCanvas);
    EXPECT_EQ(form.control<PlotCanvas>("MainPlotCanvas")->size(), QSize(357, 240));
}

} // namespace
