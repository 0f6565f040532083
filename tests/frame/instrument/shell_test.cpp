#include "frame/instrument/instrument_fixture.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"
#include "frame/window/shell.h"
#include "skin/tab_panels.h"

#include <QTest>
#include <QTimer>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Writes down which of the windows was put to another place in the stack.
class Restacked : public QObject {
  public:
    void Watch(QWidget* window, const char* name) {
        window->setObjectName(QString::fromLatin1(name));
        window->installEventFilter(this);
    }
    bool eventFilter(QObject* window, QEvent* event) override {
        if (event->type() == QEvent::ZOrderChange) {
            order << window->objectName();
        }
        return false;
    }
    QStringList order;
};

/// A shell on the whole instrument's windows, whose calls only write down that they came.
class ShellTest : public InstrumentTest {
  protected:
    void SetUp() override {
        InstrumentTest::SetUp();
        Start(2);
        shell = std::make_unique<Shell>(
            *record, instrument->forms, *instrument->tabPanels,
            Shell::Calls{.PlotNow = [this] { calls.emplace_back("PlotNow"); },
                         .Close = [this] { calls.emplace_back("Close"); },
                         .IDButton_Click =
                             [this](int channel) { calls.push_back("IDButton " + std::to_string(channel)); },
                         .OpenDocument =
                             [this](const QString& file) { calls.push_back("Open " + file.toStdString()); }});
        restacked.Watch(instrument->forms.StatsForm, "stats");
        restacked.Watch(instrument->forms.FFTForm.get(), "spectrum");
        restacked.Watch(instrument->forms.FullScreenTimeForm.get(), "large time");
        script().Clear();
    }
    template <class T> T* Control(const char* name) const {
        return instrument->forms.MainForm->control<T>(name);
    }
    /// A plot asks for the sample period before it draws.
    int PlotsOfTheInstrument() { return script().Count("GetSamplePeriod"); }

    std::vector<std::string> calls;
    Restacked restacked;
    std::unique_ptr<Shell> shell;
};

} // namespace

TEST_F(ShellTest, NormaliseBringsTheWholeRecordBackWithExactlyOnePlot) {
    Control<SliderControl1>("VertPanSlider")->SetSliderValue(0.1F);
    Control<SliderControl1>("HorizPanSlider")->SetSliderValue(0.9F);
    Control<KnobControl1>("VertZoomKnob")->SetKnobValue(13);
    Control<KnobControl1>("HorizZoomKnob")->SetKnobValue(77);
    EXPECT_GT(PlotsOfTheInstrument(), 0) << "each of these plots";
    script().Clear();
    restacked.order.clear();
    emit Control<ButtonControl1>("NormaliseButton")->Click();
    EXPECT_EQ(Control<SliderControl1>("VertPanSlider")->SliderValue(), 0.5F);
    EXPECT_EQ(Control<SliderControl1>("HorizPanSlider")->SliderValue(), 0.0F);
    EXPECT_EQ(Control<KnobControl1>("VertZoomKnob")->KnobValue(), 1);
    EXPECT_EQ(Control<KnobControl1>("HorizZoomKnob")->KnobValue(), 1);
    EXPECT_EQ(PlotsOfTheInstrument(), 1);
    EXPECT_FALSE(record->PlotInhibit);
    restacked.order.removeDuplicates();
    EXPECT_EQ(restacked.order, QStringList("stats"));
}

TEST_F(ShellTest, TheButtonsOfTheFaceReachTheInstrumentsOwnShell) {
    emit Control<ButtonControl1>("SampleDotsButton")->Click();
    EXPECT_EQ(PlotsOfTheInstrument(), 1);
    EXPECT_TRUE(record->SampleDots);
    emit Control<ButtonControl1>("FullScreenButton")->Click();
    EXPECT_TRUE(instrument->forms.FullScreenTimeForm->isVisible());
    EXPECT_GT(PlotsOfTheInstrument(), 1);
}

TEST_F(ShellTest, AnActivationPutsTheMeasurementsInFrontAndTheLargeWindowsBehind) {
    restacked.order.clear();
    shell->SetDefaultLayering();
    EXPECT_EQ(restacked.order, QStringList("stats"));
    restacked.order.clear();
    shell->Form_Activate();
    EXPECT_EQ(restacked.order, (QStringList{"stats", "spectrum", "large time"}));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ShellTest, TheLargeTimeWindowIsPlottedWhenItAppears) {
    shell->FullScreenButton_Click();
    EXPECT_TRUE(shell->FullScreenOn);
    EXPECT_TRUE(instrument->forms.FullScreenTimeForm->isVisible());
    EXPECT_THAT(calls, ElementsAre("PlotNow"));
    calls.clear();
    shell->FullScreenButton_Click();
    EXPECT_FALSE(shell->FullScreenOn);
    EXPECT_FALSE(instrument->forms.FullScreenTimeForm->isVisible());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ShellTest, SampleDotsAreALitButtonAndAPlot) {
    const auto* button = Control<ButtonControl1>("SampleDotsButton");
    shell->SampleDotsButton_Click();
    EXPECT_TRUE(record->SampleDots);
    EXPECT_EQ(button->ButtonFillColor(), QColor(0, 255, 0));
    shell->SampleDotsButton_Click();
    EXPECT_FALSE(record->SampleDots);
    EXPECT_EQ(button->ButtonFillColor(), QColor(128, 128, 128));
    EXPECT_THAT(calls, ElementsAre("PlotNow", "PlotNow"));
}

TEST_F(ShellTest, TheGuideIsOpenedFromTheApplicationsFolder) {
    shell->UsersGuideButton_Click();
    EXPECT_THAT(calls, ElementsAre("Open UsersGuide/Corvantineug.pdf"));
}

TEST_F(ShellTest, TheEndOfAnIdentificationIsAClickOnItsOwnButton) {
    record->IDActive = true;
    record->IDChannel = 2;
    shell->IDTimer_Timer();
    EXPECT_THAT(calls, ElementsAre("IDButton 2"));
    EXPECT_FALSE(record->IDActive);
}

TEST_F(ShellTest, AnIdentificationEndsByItsTimerAndLeavesTheLampsAsTheyWere) {
    auto* id = instrument->forms.TabForm[2]->control<ButtonControl1>("IDButton");
    QTimer* timer = instrument->forms.MainForm->timer("IDTimer");
    EXPECT_EQ(timer->interval(), 4000);
    const QColor off = id->ButtonFillColor();
    emit id->Click();
    EXPECT_TRUE(record->IDActive);
    EXPECT_TRUE(timer->isActive());
    EXPECT_NE(id->ButtonFillColor(), off);
    EXPECT_NE(script().settings[2].ledMode, script().settings[1].ledMode);
    const int normal = 1;
    timer->setInterval(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !record->IDActive; }));
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(id->ButtonFillColor(), off);
    EXPECT_EQ(script().settings[1].ledMode, normal);
    EXPECT_EQ(script().settings[2].ledMode, normal);
}
