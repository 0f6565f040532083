#include "analysis/spectrum_window.h"

#include "analysis/spectrum_design.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "display/plot_canvas.h"
#include "display/plot_control_set.h"
#include "driver/builtin_backend.h"
#include "frame/record/record.h"
#include "support/plain_scale.h"
#include "support/scripted_driver.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QtTest>
#include <cmath>
#include <gtest/gtest.h>

namespace {

const QString kStamp = QStringLiteral("Corvantine Ver1.0.0.  DATA ACQUIRED AT: 21 Nov 2026 21:46:11");

/// The spectrum window on its real form, filled by the real plotter.
class SpectrumWindowTest : public testing::Test {
  protected:
    SpectrumWindowTest() {
        record.SampleDepth = kSampleDepth;
        record.DisplayExpansion = record.HeldZoom = 1;
        record.HeldSamplePeriod = 1e-6;
        record.TriggerMark = -1;
        record.ChannelColour = {0x00FFFF, 0xFFE21B, 0xF71BFF, 0x86FF1B, 0x4040C0, 0x8080F0};
        record.ScopeInUse.fill(true);
        record.ChannelOn.fill(true);
        instrument.script.transform = [](std::span<double> buffer, double, int) {
            for (std::size_t bin = 0; bin < buffer.size(); ++bin) {
                buffer[bin] = -static_cast<double>(bin) / 10;
            }
        };
        scales.fill(&scale);
        window = std::make_unique<SpectrumWindow>(
            form, record, instrument.driver, controls.FFTPlotType0, scales,
            SpectrumWindow::Calls{.PlotNow =
                                      [this] {
                                          ++plots;
                                          plotter.PlotNow();
                                      },
                                  .MakeDataStamp = [] { return kStamp; },
                                  .MainMinimised = [this] { return minimised; }});
        plotter.SetSpectrumPlot(window->Plot());
    }
    void Show(std::initializer_list<int> channels) {
        record.ChannelFFT.fill(false);
        for (int channel : channels) {
            record.ChannelFFT[channel] = true;
        }
        plotter.PlotNow();
    }
    QString Text(const char* name) const { return Label(name).text(); }
    QLabel& Label(const char* name) const { return *form.control<QLabel>(name); }
    QWidget& Widget(const char* name) const { return *form.control<QWidget>(name); }
    PlotCanvas& Plot() const { return *form.control<PlotCanvas>("Canvas"); }
    QPoint Pixel(double bin, double level) const { return Plot().FromUser({bin, level}).toPoint(); }
    void MoveTo(QPoint at) {
        QMouseEvent event(QEvent::MouseMove, at, Plot().mapToGlobal(QPointF(at)), Qt::NoButton, Qt::NoButton,
                          {});
        QApplication::sendEvent(&Plot(), &event);
    }
    void Press(Qt::MouseButton button, QPoint at) { QTest::mousePress(&Plot(), button, {}, at); }
    void ExpectWhole(const char* name) const {
        const QLabel& label = Label(name);
        const QRect text = QFontMetrics(label.font())
                               .boundingRect(QRect(0, 0, label.width(), 10000),
                                             label.wordWrap() ? Qt::TextWordWrap : 0, label.text());
        EXPECT_LE(text.width(), label.width()) << name << " in " << form.width();
        EXPECT_LE(text.height(), label.height() + 1) << name << " in " << form.width();
        EXPECT_TRUE(form.rect().contains(label.geometry())) << name << " in " << form.width();
    }

    Record record;
    ScriptedInstrument instrument;
    PlotControlSet controls;
    RasterCanvas main{300, 200};
    Plotter plotter{record, instrument.driver, controls.Pointers(), main, nullptr, {}};
    Form form{SpectrumDesign(), nullptr, kPlotCanvas};
    PlainScale scale;
    SpectrumWindow::Scales scales;
    std::unique_ptr<SpectrumWindow> window;
    int plots = 0;
    bool minimised = false;
};

} // namespace

TEST_F(SpectrumWindowTest, OpensWithTheFirstSpectrumAndClosesWithTheLast) {
    Show({});
    EXPECT_FALSE(form.isVisible());
    Show({2});
    EXPECT_TRUE(form.isVisible());
    Show({2, 5});
    EXPECT_TRUE(form.isVisible());
    Show({});
    EXPECT_FALSE(form.isVisible());
    Show({6});
    EXPECT_TRUE(form.isVisible());
}

TEST_F(SpectrumWindowTest, NothingElseClosesIt) {
    Show({1});
    form.close();
    EXPECT_TRUE(form.isVisible());
}

TEST_F(SpectrumWindowTest, StaysAwayWhileThePanelIsMinimised) {
    Show({1});
    minimised = true;
    form.hide();
    Show({1});
    EXPECT_FALSE(form.isVisible());
    minimised = false;
    Show({1});
    EXPECT_TRUE(form.isVisible());
}

TEST_F(SpectrumWindowTest, AChannelThatIsOffTakesNoPart) {
    record.ChannelOn[3] = false;
    Show({1, 3});
    EXPECT_TRUE(Text("FFTStatsFreq").contains(QStringLiteral(" CH1: ")));
    EXPECT_FALSE(Text("FFTStatsFreq").contains(QStringLiteral("CH3")));
    EXPECT_FALSE(Text("FFTStatsMag").contains(QStringLiteral("CH3")));
}

TEST_F(SpectrumWindowTest, TheCrossHairFollowsTheMouseAndReads) {
    Show({1});
    MoveTo(Pixel(256, 6));
    EXPECT_EQ(Widget("FFTCursorLineVert").x(), Pixel(256, 6).x());
    EXPECT_EQ(Widget("FFTCursorLineHoriz").y(), Pixel(256, 6).y());
    EXPECT_EQ(Widget("FFTCursorLineVert").height(), Plot().height());
    EXPECT_EQ(Widget("FFTCursorLineHoriz").width(), Plot().width());
    // A pixel of this canvas is about one bin and a half wide and a sixth of a decibel high.
    const double bin = Plot().ToUser(Pixel(256, 6)).x();
    const double level = Plot().ToUser(Pixel(256, 6)).y() - 24;
    QString expected;
    const std::vector<SpectrumReading> readings{
        {.channel = 1, .value = static_cast<float>(24 - std::nearbyint(bin) / 10)}};
    WriteCursorReadOut(expected, {bin, level + 24}, Nyquist(1e-6F), true, readings);
    EXPECT_EQ(Text("FFTStatsFreq"), expected);
    EXPECT_NEAR(bin, 256, 1);
    EXPECT_NEAR(level, -18, 0.1);
}

TEST_F(SpectrumWindowTest, ARightPressLocksAtItsPlaceAndTheNextSetsFree) {
    Show({1});
    MoveTo(Pixel(100, 0));
    Press(Qt::RightButton, Pixel(300, 10));
    EXPECT_TRUE(window->CursorLocked);
    const QString locked = Text("FFTStatsFreq");
    EXPECT_EQ(Widget("FFTCursorLineVert").x(), Pixel(300, 10).x());
    MoveTo(Pixel(900, -20));
    EXPECT_EQ(Text("FFTStatsFreq"), locked);
    EXPECT_EQ(Widget("FFTCursorLineHoriz").y(), Pixel(300, 10).y());
    Press(Qt::RightButton, Pixel(900, -20));
    EXPECT_FALSE(window->CursorLocked);
    MoveTo(Pixel(800, -20));
    EXPECT_NE(Text("FFTStatsFreq"), locked);
    Press(Qt::LeftButton, Pixel(700, -20));
    Press(Qt::MiddleButton, Pixel(700, -20));
    EXPECT_FALSE(window->CursorLocked);
}

TEST_F(SpectrumWindowTest, ANewPlotReadsTheSameBin) {
    Show({1});
    MoveTo(Pixel(500, 3));
    const QString before = Text("FFTStatsFreq");
    instrument.script.transform = [](std::span<double> buffer, double, int) {
        std::fill(buffer.begin(), buffer.end(), -7.0);
    };
    plotter.PlotNow();
    EXPECT_NE(Text("FFTStatsFreq"), before);
    EXPECT_TRUE(Text("FFTStatsFreq").endsWith(QStringLiteral(" CH1: -7.0dB")));
}

TEST_F(SpectrumWindowTest, AResizeKeepsBinAndLevel) {
    Show({1});
    MoveTo(Pixel(300, -12));
    const QString before = Text("FFTStatsFreq");
    form.resize(1111, 777);
    EXPECT_EQ(Text("FFTStatsFreq"), before);
    EXPECT_NEAR(Widget("FFTCursorLineVert").x(), Plot().FromUser({300, -12}).x(), 2);
    EXPECT_NEAR(Widget("FFTCursorLineHoriz").y(), Plot().FromUser({300, -12}).y(), 2);
    EXPECT_EQ(Widget("FFTCursorLineHoriz").width(), 1111);
}

TEST_F(SpectrumWindowTest, TheCrossHairKeepsItsPlaceWhileTheWindowIsHidden) {
    Show({1});
    MoveTo(Pixel(700, 20));
    const QString before = Text("FFTStatsFreq");
    Show({});
    Show({1});
    EXPECT_EQ(Text("FFTStatsFreq"), before);
}

TEST_F(SpectrumWindowTest, ArrangesItselfAtEveryResize) {
    Show({1, 5});
    plots = 0;
    form.resize(640, 300);
    const int line = QFontMetrics(form.font()).height();
    EXPECT_EQ(Plot().geometry(), QRect(0, line, 640, 300 - 3 * line));
    EXPECT_EQ(Widget("ClipboardButton").y(), 300 - 2 * line);
    EXPECT_TRUE(form.rect().contains(Widget("ClipboardButton").geometry()));
    EXPECT_EQ(Widget("FFTStatsMag").y(), 300 - 2 * line);
    EXPECT_EQ(Widget("OtherInfoLabel").y(), 300 - line);
    EXPECT_EQ(Widget("FFTStatsFreq").y(), 0);
    EXPECT_EQ(Widget("TitleLabel").y(), 0);
    EXPECT_EQ(Widget("IdentFrame").geometry().bottomRight(), QPoint(639, 299));
    EXPECT_EQ(plots, 1);
    EXPECT_EQ(Text("OtherInfoLabel"), kStamp);
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        EXPECT_EQ(FromQColor(form.control<QLabel>("Ch", channel)->palette().color(QPalette::WindowText)),
                  record.ChannelColour[channel]);
    }
    const int height = Plot().height();
    form.setMinimumSize(0, 0);
    form.resize(640, 2 * line);
    EXPECT_EQ(Plot().height(), height);
}

TEST_F(SpectrumWindowTest, NothingIsCutOffWithSixSpectraAtAnySize) {
    record.ChannelBWLimit.fill(true);
    for (const bool decibels : {true, false}) {
        controls.FFTPlotType0.setChecked(decibels);
        for (const int width : {320, 520, 600, 720, 960, 1920}) {
            form.resize(width, 420);
            Show({1, 2, 3, 4, 5, 6});
            ExpectWhole("FFTStatsFreq");
            ExpectWhole("FFTStatsMag");
            ExpectWhole("OtherInfoLabel");
            EXPECT_FALSE(Widget("IdentFrame").geometry().intersects(Label("OtherInfoLabel").geometry()));
            EXPECT_FALSE(Label("FFTStatsMag").geometry().intersects(Label("OtherInfoLabel").geometry()));
            if (Label("TitleLabel").isVisible()) {
                EXPECT_FALSE(Label("TitleLabel").geometry().intersects(Label("FFTStatsFreq").geometry()));
            }
            EXPECT_FALSE(Widget("IdentFrame").geometry().intersects(Label("FFTStatsMag").geometry()));
            EXPECT_FALSE(Widget("ClipboardButton").geometry().intersects(Label("FFTStatsMag").geometry()));
        }
    }
    form.resize(1920, 420);
    EXPECT_TRUE(Label("TitleLabel").isVisible());
    EXPECT_EQ(Label("FFTStatsFreq").font(), form.font());
}

TEST_F(SpectrumWindowTest, ATransformThatGivesNoNumberReadsAsNothing) {
    instrument.script.transform = [](std::span<double> buffer, double, int) {
        std::fill(buffer.begin(), buffer.end(), std::numeric_limits<double>::quiet_NaN());
    };
    Show({1});
    EXPECT_TRUE(Text("FFTStatsFreq").endsWith(QStringLiteral(" CH1: -54.0dB")))
        << Text("FFTStatsFreq").toStdString();
    for (int bin = 0; bin < kSpectrumBins; ++bin) {
        ASSERT_FLOAT_EQ(record.SpectrumData(1, bin), -30.01F);
    }
}

TEST_F(SpectrumWindowTest, ChannelsWithoutVoltsReadZero) {
    scales.fill(nullptr);
    window = std::make_unique<SpectrumWindow>(form, record, instrument.driver, controls.FFTPlotType0, scales,
                                              SpectrumWindow::Calls{.PlotNow = [] {},
                                                                    .MakeDataStamp = [] { return QString(); },
                                                                    .MainMinimised = [] { return false; }});
    plotter.SetSpectrumPlot(window->Plot());
    controls.FFTPlotType0.setChecked(false);
    Show({1});
    EXPECT_TRUE(Text("FFTStatsFreq").endsWith(QStringLiteral("CH1: 0.00V")));
    EXPECT_TRUE(Text("FFTStatsMag").endsWith(QStringLiteral(" CH1:±0V")));
}
