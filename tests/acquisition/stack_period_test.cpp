#include "acquisition/acquisition_rig.h"
#include "driver/stack_fixture.h"
#include "frame/record/record.h"

#include <cmath>
#include <memory>

namespace {

/// The acquisition parts on the simulated stack, one module with a signal that the test knows.
class OnTheStack : public StackFixture {
  protected:
    static constexpr double kSamplesPerPeriod = 200;

    /// text: keys of the stack and its one module.
    void OpenParts(const std::string& text, int count = 1) {
        Open(text, count);
        parts = std::make_unique<AcquisitionParts>(
            *driver, opened, [this](const std::string& call) { plots += call == "PlotNow" ? 1 : 0; });
        parts->duringSleep = [](int milliseconds) {
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        };
        parts->trigger.Connect();
        parts->timebase.Connect();
        parts->scales[1].range = 1;
    }

    void Tick() { parts->loop.RunTimer_Timer(); }
    /// Ticks until so many plots have been made since now.
    bool Plots(int count) {
        const int end = plots + count;
        return Until([&] {
            Tick();
            return plots >= end;
        });
    }

    /// Samples from one rising passage through zero to the next, over the whole record.
    double MeasuredPeriod() const {
        const Record& record = parts->record;
        constexpr float kFar = 10; // noise and steps cannot pass from below to above
        bool below = false;
        double first = -1;
        double last = -1;
        int passages = 0;
        float before = record.SampleData(1, 0);
        double at = 0;
        for (int i = 1; i < kSampleDepth; ++i) {
            const float x = record.SampleData(1, i);
            if (before <= 0 && x > 0) {
                at = i - 1 + static_cast<double>(before) / static_cast<double>(before - x);
            }
            below = below || x < -kFar;
            if (below && x > kFar) {
                below = false;
                first = passages == 0 ? at : first;
                last = at;
                ++passages;
            }
            before = x;
        }
        return passages < 2 ? 0 : (last - first) / (passages - 1);
    }

    std::unique_ptr<AcquisitionParts> parts;
    int plots = 0;
};

/// A sine whose period is 200 samples at the setting, on a stack whose clock makes the record last 30 ms.
std::string StackFor(const TimebaseSetting& setting) {
    const double period = SamplePeriodOf(setting);
    const double speed = std::max(1.0, period * kSampleDepth / 0.03);
    return "speed = " + std::to_string(speed) +
           "\n[module]\nnoise = 0.4\nsignal = sine frequency=" + std::to_string(1 / (200 * period)) +
           " amplitude=2V\n";
}

class EverySetting : public OnTheStack, public testing::WithParamInterface<int> {};

TEST_P(EverySetting, ShowsAKnownSineWithItsPeriod) {
    const TimebaseSetting& setting = *FindTimebaseSetting(GetParam());
    OpenParts(StackFor(setting));
    parts->TimeBaseKnob.SetKnobValue(GetParam());
    EXPECT_EQ(parts->TimeBaseKnob.KnobXlatedValue(), setting.label);
    while (parts->record.TrigMode != 1) {
        parts->trigger.TrigModeButton_Click();
    }
    parts->loop.RunButton_Click();
    const double period = static_cast<double>(driver->GetSamplePeriod(true, 0));
    EXPECT_NEAR(period, SamplePeriodOf(setting), SamplePeriodOf(setting) * 1e-6);
    if (setting.mode == SamplingMode::RIS) {
        ASSERT_TRUE(Plots(60)) << "a RIS record builds up over many passes";
    } else {
        ASSERT_TRUE(Until([&] {
            Tick();
            return parts->StatusText() == "trigger !";
        }));
    }
    EXPECT_NEAR(MeasuredPeriod(), kSamplesPerPeriod, setting.mode == SamplingMode::RIS ? 2 : 0.5);
    if (setting.mode == SamplingMode::Roll) {
        EXPECT_GT(plots, 1) << "shown as it grows";
    }
}

INSTANTIATE_TEST_SUITE_P(Timebase, EverySetting, testing::Range(0, kTimebaseSettings),
                         [](const testing::TestParamInfo<int>& setting) {
                             std::string name = FindTimebaseSetting(setting.param)->label;
                             return "At" + name.substr(0, name.find('/'));
                         });

TEST_F(OnTheStack, RollFollowsTheMasterAndStartsWithAnotherSource) {
    // 1 ms a sample; the source rises every half second, its neighbour never.
    OpenParts("speed = 20\n[module]\n[module]\nsignal = square frequency=2Hz amplitude=2V\n", 2);
    driver->SetTrigMaster(1, false);
    driver->SetTrigMaster(2, true);
    parts->record.TriggerChannel = 2;
    parts->scales[2].range = 1;
    parts->TimeBaseKnob.SetKnobValue(22);
    while (parts->record.TrigMode != 1) {
        parts->trigger.TrigModeButton_Click();
    }
    parts->loop.RunButton_Click();
    int last = 0;
    bool grows = false;
    ASSERT_TRUE(Until([&] {
        Tick();
        const int position = parts->state.RollPosition;
        grows = grows || (last > 0 && position > last);
        last = position;
        return parts->StatusText() == "trigger !";
    }));
    EXPECT_TRUE(grows);
    EXPECT_LT(parts->record.SampleData(2, 1499), 0);
    EXPECT_GT(parts->record.SampleData(2, 1500), 0) << "the source's edge in the middle";
    EXPECT_EQ(parts->record.SampleData(1, 1500), 0);
}

TEST_F(OnTheStack, ARunBeginsWithTheDelayInSamplesOfItsOwn) {
    OpenParts("[module]\nsignal = sine frequency=100kHz amplitude=2V\n");
    parts->TimeBaseKnob.SetKnobValue(22); // 1 ms a sample
    parts->loop.RunButton_Click();
    parts->DelayKnob.SetKnobValue(parts->DelayKnob.KnobMin() + 60000);
    EXPECT_EQ(parts->DelayLabel.text(), "60.000s");
    parts->loop.RunButton_Click();
    parts->TimeBaseKnob.SetKnobValue(8); // 20 ns
    EXPECT_EQ(parts->DelayLabel.text(), "60.000s") << "of the record that is held";
    parts->loop.RunButton_Click();
    EXPECT_EQ(parts->DelayLabel.text(), "1.200ms");
    EXPECT_TRUE(Plots(3)) << "the instrument waits no minute for what comes behind the trigger";
}

class AutoTrigger : public OnTheStack {
  protected:
    void SetUp() override {
        OpenParts("[module]\nsignal = sine frequency=100kHz amplitude=2V\n");
        parts->TimeBaseKnob.SetKnobValue(8); // 20 ns, a record of 60 us
        parts->TriggerKnob.SetKnobValue(0);
        parts->loop.RunButton_Click();
    }
    /// A quarter of a second as the run loop counts it.
    void Quarter() {
        for (int tick = 0; tick < 3; ++tick) {
            Tick();
        }
        parts->loop.AutoTriggerTimer_Timer();
        Tick();
    }
    bool Red() const { return parts->StatusColour() == kStatusRed; }
    /// Quarters until the colour is reached, at most so many.
    int QuartersUntil(bool red, int most) {
        int count = 0;
        while (Red() != red && count < most) {
            Quarter();
            ++count;
        }
        return count;
    }
    /// Rising passage nearest to the trigger's place, in samples from it.
    bool StandsStill() {
        EXPECT_TRUE(Plots(1));
        const float first = parts->record.SampleData(1, 1500);
        EXPECT_TRUE(Plots(3));
        return std::fabs(first - parts->record.SampleData(1, 1500)) < 4;
    }
};

TEST_F(AutoTrigger, ProbesSoonAfterTheStartAndTurnsRed) {
    EXPECT_FALSE(Red());
    EXPECT_LE(QuartersUntil(true, 10), 2);
    EXPECT_TRUE(Red());
    EXPECT_TRUE(StandsStill());
}

TEST_F(AutoTrigger, ThresholdOutOfTheSignalReleasesItAfterASecondAndAHalf) {
    QuartersUntil(true, 10);
    parts->TriggerKnob.SetKnobValue(95);
    const int quarters = QuartersUntil(false, 40);
    EXPECT_GE(quarters, 6);
    EXPECT_LE(quarters, 8);
    const int before = plots;
    for (int i = 0; i < 60; ++i) { // 15 s, three probes
        Quarter();
        EXPECT_FALSE(Red());
    }
    EXPECT_GT(plots - before, 60) << "free running goes on";
    parts->TriggerKnob.SetKnobValue(10);
    EXPECT_LE(QuartersUntil(true, 10), 2);
    EXPECT_TRUE(Red());
    EXPECT_TRUE(StandsStill());
}

TEST_F(AutoTrigger, SignalThatGoesAwayAndComesBackIsFoundByTheNextProbe) {
    QuartersUntil(true, 10);
    driver->SetUpFrontEnd(1, 1, false, true); // grounded
    EXPECT_GE(QuartersUntil(false, 40), 6);
    EXPECT_FALSE(Red());
    for (int i = 0; i < 22; ++i) {
        Quarter();
        EXPECT_FALSE(Red());
    }
    driver->SetUpFrontEnd(1, 1, true, false);
    const int quarters = QuartersUntil(true, 40);
    EXPECT_LE(quarters, 22) << "a probe every 5 s";
    EXPECT_TRUE(Red());
}

} // namespace
