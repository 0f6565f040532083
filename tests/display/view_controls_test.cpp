#include "display/view_controls.h"

#include "controls/button_control.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "display/plot_canvas.h"
#include "display/plot_scene.h"
#include "frame/record/record.h"
#include "frame/window/main_form_design.h"
#include "support/call_lists.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

class ViewControlsTest : public testing::Test {
  protected:
    ViewControlsTest() {
        view.Connect();
        QObject::connect(Knob("TriggerKnob"), &KnobControl1::Change, [this] { Note("Change"); });
        calls.clear();
    }
    void Note(const std::string& name) { calls.push_back(name); }
    KnobControl1* Knob(const char* name) { return main.control<KnobControl1>(name); }
    SliderControl1* Slider(const char* name) { return main.control<SliderControl1>(name); }
    PlotCanvas* Plot() { return main.control<PlotCanvas>("MainPlotCanvas"); }
    ViewControls::Calls NotedCalls() {
        return {.PlotNow =
                    [this] {
                        if (!record.PlotInhibit) {
                            Note("PlotNow");
                        }
                    },
                .SetDefaultLayering = [this] { Note("Layering"); },
                .TriggerKnob_Done = [this] { Note("TriggerKnob_Done"); }};
    }

    Record record;
    CallList calls;
    Form main{MainFormDesign(), nullptr, kPlotCanvas};
    ViewControls view{record, ViewControls::Controls::Of(main), NotedCalls()};
    PlotScene scene;
};

TEST_F(ViewControlsTest, AZoomPlotsAndPutsTheWindowsInOrder) {
    for (const char* name : {"HorizZoomKnob", "VertZoomKnob"}) {
        calls.clear();
        Knob(name)->SetKnobValue(7);
        ASSERT_GE(calls.size(), 2U) << name;
        EXPECT_EQ(CallList(calls.begin(), calls.begin() + 2), Calls("PlotNow", "Layering")) << name;
    }
}

TEST_F(ViewControlsTest, ThePansTellWhereTheyStand) {
    Slider("HorizPanSlider")->SetSliderValue(0.25F);
    EXPECT_EQ(Slider("HorizPanSlider")->toolTip(), QStringLiteral("Current horizontal pan: 25%"));
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(CallList(calls.begin(), calls.begin() + 2), Calls("PlotNow", "Layering"));
    SliderControl1* vertical = Slider("VertPanSlider");
    for (const auto& [value, text] :
         {std::pair(0.0F, "50%"), std::pair(0.3F, "20%"), std::pair(0.5F, "0%"), std::pair(1.0F, "-50%")}) {
        vertical->SetSliderValue(value);
        EXPECT_EQ(vertical->toolTip(), QStringLiteral("Current vertical pan: ") + QLatin1String(text));
        EXPECT_EQ(calls.back(), "Layering");
    }
}

TEST_F(ViewControlsTest, NormaliseResetsAllFourWithOnePlot) {
    Knob("HorizZoomKnob")->SetKnobValue(50);
    Knob("VertZoomKnob")->SetKnobValue(20);
    Slider("HorizPanSlider")->SetSliderValue(0.75F);
    Slider("VertPanSlider")->SetSliderValue(0.1F);
    calls.clear();
    emit main.control<ButtonControl1>("NormaliseButton")->Click();
    EXPECT_EQ(Knob("HorizZoomKnob")->KnobValue(), 1);
    EXPECT_EQ(Knob("VertZoomKnob")->KnobValue(), 1);
    EXPECT_EQ(Slider("HorizPanSlider")->SliderValue(), 0);
    EXPECT_EQ(Slider("VertPanSlider")->SliderValue(), 0.5F);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "PlotNow"), 1);
    EXPECT_EQ(calls.back(), "PlotNow");
    EXPECT_FALSE(record.PlotInhibit);
}

TEST_F(ViewControlsTest, NoTimerOfAControlAsksForAnotherPlotAfterNormalise) {
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    Knob("HorizZoomKnob")->SetKnobValue(50);
    QTest::mousePress(Knob("VertZoomKnob"), Qt::LeftButton, {}, {50, 22});
    Slider("HorizPanSlider")->SetSliderValue(0.75F);
    QTest::mouseRelease(Knob("VertZoomKnob"), Qt::LeftButton, {}, {50, 22});
    QTest::qWait(100);
    calls.clear();
    emit main.control<ButtonControl1>("NormaliseButton")->Click();
    QTest::qWait(300);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "PlotNow"), 1);
}

TEST_F(ViewControlsTest, ALeftClickInThePlotSetsTheTriggerLevel) {
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    scene.FillWithEverything();
    DrawPlot(scene.Time(), Plot()->Surface(), Plot());
    calls.clear();
    const int quarter = Plot()->height() / 4;
    QTest::mouseClick(Plot(), Qt::LeftButton, {}, {100, quarter});
    EXPECT_NEAR(Knob("TriggerKnob")->KnobValue(), 50, 1);
    EXPECT_EQ(calls, Calls("Change", "TriggerKnob_Done"));
    calls.clear();
    QTest::mouseClick(Plot(), Qt::RightButton, {}, {100, 3 * quarter});
    QTest::mouseClick(Plot(), Qt::MiddleButton, {}, {100, 3 * quarter});
    EXPECT_EQ(calls, CallList{});
}

TEST_F(ViewControlsTest, TheLevelIsRoundedToEvenAndHeldInTheRangeOfTheKnob) {
    EXPECT_EQ(TriggerPercentAt(63, -100, 100), 50);
    EXPECT_EQ(TriggerPercentAt(0.63, -100, 100), 0); // half a percent
    EXPECT_EQ(TriggerPercentAt(1.89, -100, 100), 2); // one and a half
    EXPECT_EQ(TriggerPercentAt(127.5, -100, 100), 100);
    EXPECT_EQ(TriggerPercentAt(-1e300, -100, 100), -100);
    EXPECT_EQ(TriggerPercentAt(std::nan(""), -100, 100), 0);
}

TEST_F(ViewControlsTest, AClickWhereTheZoomIsTooMuchSetsNothing) {
    scene.XExpansion = 1e6;
    DrawPlot(scene.Time(), Plot()->Surface(), Plot());
    emit Plot()->Pressed(Qt::LeftButton, 10, 10);
    EXPECT_EQ(calls, CallList{});
}

} // namespace
