#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "display/large_time_design.h"
#include "display/large_time_window.h"
#include "display/plot_canvas.h"
#include "frame/record/record.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <gtest/gtest.h>

namespace {

class LargeTimeWindowTest : public testing::Test {
  protected:
    LargeTimeWindowTest() {
        LargeTimeWindow::Controls controls{.TimeBaseKnob = &timeBase, .VoltsKnob = {}};
        QObject::connect(&timeBase, &KnobControl1::KnobXlateValue,
                         [](float, QString& text) { text = QStringLiteral("2us/div"); });
        for (int channel = 1; channel <= kScopeChannels; ++channel) {
            controls.VoltsKnob[channel] = &volts[static_cast<std::size_t>(channel - 1)];
            QObject::connect(controls.VoltsKnob[channel], &KnobControl1::KnobXlateValue,
                             [](float, QString& text) { text = QStringLiteral("3V/div"); });
            controls.VoltsKnob[channel]->RefreshValue();
            record.ScopeInUse[channel] = channel != 3;
            record.ChannelOn[channel] = channel != 4;
        }
        timeBase.RefreshValue();
        window = std::make_unique<LargeTimeWindow>(
            form, record, controls,
            LargeTimeWindow::Calls{.PlotNow = [this] { ++plots; },
                                   .MakeDataStamp = [] { return QStringLiteral("stamp"); }});
    }

    Record record;
    Form form{LargeTimeDesign(), nullptr, kPlotCanvas};
    KnobControl1 timeBase;
    std::array<KnobControl1, kScopeChannels> volts;
    std::unique_ptr<LargeTimeWindow> window;
    int plots = 0;
};

} // namespace

TEST_F(LargeTimeWindowTest, TellsTheSettingsOfTheChannelsThatShow) {
    record.ChannelBWLimit[2] = true;
    window->RedrawSettings();
    EXPECT_EQ(form.control<QLabel>("ScopeSettingsLabel")->text(),
              QStringLiteral("HORZ:2us/div VERT: CH1:3V/div CH2:3V/div(bw)"));
    EXPECT_EQ(form.control<QLabel>("OtherInfoLabel")->text(), QStringLiteral("stamp"));
}

TEST_F(LargeTimeWindowTest, AfterATurnOfTheTimebaseTheTextHasTheNewLabel) {
    QObject::connect(&timeBase, &KnobControl1::KnobXlateValue, [this](float, QString& text) {
        text = QStringLiteral("4us/div");
        window->RedrawSettings(); // as the change of timebase does, before the knob has its text
    });
    timeBase.SetKnobValue(1);
    EXPECT_EQ(form.control<QLabel>("ScopeSettingsLabel")->text(),
              QStringLiteral("HORZ:4us/div VERT: CH1:3V/div CH2:3V/div"));
}

TEST_F(LargeTimeWindowTest, GivesTheCanvasAllButTwoLines) {
    form.show();
    form.resize(700, 400);
    const int line = QFontMetrics(form.font()).height();
    EXPECT_EQ(form.control<PlotCanvas>("Canvas")->geometry(), QRect(0, 0, 700, 400 - 2 * line));
    EXPECT_EQ(form.control<QWidget>("ScopeSettingsLabel")->y(), 400 - 2 * line);
    EXPECT_EQ(form.control<QWidget>("OtherInfoLabel")->y(), 400 - line);
    const QWidget* key = form.control<QWidget>("IdentFrame");
    EXPECT_EQ(key->geometry().bottomRight(), QPoint(699, 399));
    EXPECT_EQ(form.control<QWidget>("ClipboardButton")->geometry().bottom(), 399);
    EXPECT_GT(plots, 0);
}

TEST_F(LargeTimeWindowTest, AWindowTooLowForItsTextKeepsTheCanvasHeight) {
    form.show();
    form.resize(700, 400);
    const int height = form.control<PlotCanvas>("Canvas")->height();
    form.resize(700, 10);
    EXPECT_EQ(form.control<PlotCanvas>("Canvas")->height(), height);
}

TEST_F(LargeTimeWindowTest, ADoubleClickFillsTheScreenButForATwentiethBelow) {
    form.show();
    plots = 0;
    emit form.control<PlotCanvas>("Canvas")->DoubleClicked(10, 10);
    const QSize screen = QGuiApplication::primaryScreen()->size();
    EXPECT_EQ(form.geometry(), QRect(0, 0, screen.width(), screen.height() * 95 / 100));
    const int line = QFontMetrics(form.font()).height();
    EXPECT_EQ(form.control<PlotCanvas>("Canvas")->size(), form.size() - QSize(0, 2 * line));
    EXPECT_GT(plots, 0);
}

TEST_F(LargeTimeWindowTest, TheKeyOfTheChannelsTakesTheirColours) {
    form.show();
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        record.ChannelColour[channel] = static_cast<Colour>(0x102030 * channel);
    }
    form.resize(700, 400);
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        EXPECT_EQ(form.control<QLabel>("Ch", channel)->palette().color(QPalette::WindowText),
                  ToQColor(record.ChannelColour[channel]));
    }
    EXPECT_EQ(form.control<QLabel>("Ch", 5)->text(), QStringLiteral("M1"));
    EXPECT_EQ(form.control<QLabel>("Ch", 6)->text(), QStringLiteral("M2"));
}
