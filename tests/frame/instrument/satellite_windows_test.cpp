#include "frame/instrument/instrument_fixture.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"

using testing::IsEmpty;

namespace {

struct ShowCounter : QObject {
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Show ? 1 : 0;
        return false;
    }
};

/// The windows beside the panel, with the timers of the run stopped, so that only what a test does happens.
class SatelliteWindows : public InstrumentTest {
  protected:
    void Begin() {
        Start(2);
        for (const char* timer : {"RunTimer", "AutoTriggerTimer", "TabTimer"}) {
            instrument->forms.MainForm->timer(timer)->stop();
        }
        QApplication::processEvents();
    }
    Form& Spectrum() { return *instrument->forms.FFTForm; }
    Form& LargeTime() { return *instrument->forms.FullScreenTimeForm; }
    Form& Stats() { return *instrument->forms.StatsForm; }
    Form& Null() { return *instrument->forms.OffsetNullForm; }
    Surface& Face() { return *instrument->forms.surface; }

    void SwitchSpectrum(bool on) {
        record->ChannelFFT[1] = on;
        instrument->plotter->PlotNow();
    }
    void Restore() {
        Face().showNormal();
        QApplication::processEvents();
        instrument->tabPanels->TabTimer_Timer();
        QApplication::processEvents();
    }
    /// Counts what the controls of the instrument say from now on.
    void CountEvents() {
        for (auto* knob : Face().findChildren<KnobControl1*>()) {
            QObject::connect(knob, &KnobControl1::Change, &counter, [this] { ++events; });
            QObject::connect(knob, &KnobControl1::Done, &counter, [this] { ++events; });
            QObject::connect(knob, &KnobControl1::KnobXlateValue, &counter, [this] { ++events; });
            ++controls;
        }
        for (auto* slider : Face().findChildren<SliderControl1*>()) {
            QObject::connect(slider, &SliderControl1::Change, &counter, [this] { ++events; });
            ++controls;
        }
        for (auto* button : Face().findChildren<ButtonControl1*>()) {
            QObject::connect(button, &ButtonControl1::Init, &counter, [this] { ++events; });
            QObject::connect(button, &ButtonControl1::Click, &counter, [this] { ++events; });
            ++controls;
        }
    }

    QObject counter;
    int events = 0;
    int controls = 0;
};

TEST_F(SatelliteWindows, ARestoreSendsNothingAndNoControlSpeaks) {
    Begin();
    // The slowest setting: a roll that a repeated change of timebase would begin anew.
    auto* timeBase = instrument->forms.MainForm->control<KnobControl1>("TimeBaseKnob");
    timeBase->SetKnobValue(timeBase->KnobMax());
    ASSERT_TRUE(record->RollMode);
    QApplication::processEvents();
    instrument->forms.MainForm->timer("RunTimer")->stop(); // the change has started it anew
    script().Clear();
    CountEvents();
    ASSERT_GT(controls, 30);

    ShowCounter shows;
    timeBase->installEventFilter(&shows);
    Face().showMinimized();
    QApplication::processEvents();
    Restore();
    instrument->shell->MinimiseButton_Click();
    QApplication::processEvents();
    Restore();
    EXPECT_EQ(shows.count, 2) << "the toolkit hides the controls of a minimised window and shows them again";
    EXPECT_EQ(events, 0);
    EXPECT_THAT(script().CallsButPolls(), IsEmpty());
}

TEST_F(SatelliteWindows, TheSpectrumStaysAwayWhileMinimisedThoughPlotsGoOn) {
    Begin();
    SwitchSpectrum(true);
    ASSERT_TRUE(Spectrum().isVisible());
    Spectrum().move(321, 123);
    instrument->shell->MinimiseButton_Click();
    EXPECT_FALSE(Spectrum().isVisible());
    instrument->plotter->PlotNow();
    instrument->plotter->PlotNow();
    EXPECT_FALSE(Spectrum().isVisible());
    Restore();
    EXPECT_TRUE(Spectrum().isVisible());
    EXPECT_EQ(Spectrum().pos(), QPoint(321, 123));
    instrument->plotter->PlotNow();
    EXPECT_TRUE(Spectrum().isVisible());
    SwitchSpectrum(false);
    EXPECT_FALSE(Spectrum().isVisible());
}

TEST_F(SatelliteWindows, AMinimiseByTheWindowManagerTakesThemAlong) {
    Begin();
    SwitchSpectrum(true);
    instrument->shell->FullScreenButton_Click();
    Null().show();
    const QPoint stats = Stats().pos();
    Face().showMinimized();
    QApplication::processEvents();
    for (const Form* window : {&Spectrum(), &LargeTime(), &Stats(), &Null()}) {
        EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
    }
    Restore();
    for (const Form* window : {&Spectrum(), &LargeTime(), &Stats(), &Null()}) {
        EXPECT_TRUE(window->isVisible()) << window->objectName().toStdString();
    }
    EXPECT_EQ(Stats().pos(), stats);
}

TEST_F(SatelliteWindows, TheSmallMinimiseLeavesTheLargeTimeWindowInView) {
    Begin();
    instrument->shell->FullScreenButton_Click();
    instrument->shell->MinimiseMostlyButton_Click();
    QApplication::processEvents();
    EXPECT_TRUE(LargeTime().isVisible());
    EXPECT_FALSE(Stats().isVisible());
    Restore();
    EXPECT_TRUE(LargeTime().isVisible());
    EXPECT_TRUE(Stats().isVisible());
}

TEST_F(SatelliteWindows, PlacesSavedWhileMinimisedAreThoseInView) {
    Begin();
    SwitchSpectrum(true);
    Spectrum().setGeometry(222, 111, 540, 300);
    Stats().move(77, 88);
    instrument->shell->MinimiseButton_Click();
    QApplication::processEvents();
    ShutDown(*instrument);
    Start(2);
    EXPECT_EQ(Spectrum().geometry(), QRect(222, 111, 540, 300));
    EXPECT_EQ(Stats().pos(), QPoint(77, 88));
}

TEST_F(SatelliteWindows, AskedToCloseTheLargeTimeWindowGoesOffAsByItsButton) {
    Begin();
    instrument->shell->FullScreenButton_Click();
    ASSERT_TRUE(LargeTime().isVisible());
    LargeTime().close();
    EXPECT_FALSE(LargeTime().isVisible());
    EXPECT_FALSE(instrument->shell->FullScreenOn);
    instrument->shell->FullScreenButton_Click();
    EXPECT_TRUE(LargeTime().isVisible()) << "one click brings it back";
}

TEST_F(SatelliteWindows, AskedToCloseTheNullDialogIsDone) {
    Begin();
    Null().show();
    int done = 0;
    QObject::connect(Null().control<ButtonControl1>("DoneNullButton"), &ButtonControl1::Click, &counter,
                     [&done] { ++done; });
    Null().close();
    EXPECT_FALSE(Null().isVisible());
    EXPECT_EQ(done, 1);
}

TEST_F(SatelliteWindows, AskedToCloseMeasurementsAndSpectrumStay) {
    Begin();
    SwitchSpectrum(true);
    EXPECT_FALSE(Stats().close());
    EXPECT_FALSE(Spectrum().close());
    EXPECT_TRUE(Stats().isVisible());
    EXPECT_TRUE(Spectrum().isVisible());
}

} // namespace
