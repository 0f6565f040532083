#include "controls/form.h"
#include "controls/knob_control.h"
#include "display/large_time_design.h"
#include "display/large_time_window.h"
#include "display/plot_canvas.h"
#include "frame/record/record.h"

#include <QFontMetrics>
#include <QLabel>
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
