// What each module of the simulated stack keeps for itself, what it is like before anyone has set it, and
// what changes while a trigger is waited for.

#include "driver/stack_fixture.h"

#include <algorithm>
#include <cmath>

namespace {

class StackSettings : public StackFixture {
  protected:
    static std::string Module(const std::string& keys) { return "[module]\n" + keys + "\n"; }

    /// Places at which a record passes zero upwards.
    static std::vector<int> Rises(const std::vector<float>& record) {
        std::vector<int> places;
        for (int i = 1; i < kSampleDepth; ++i) {
            if (record[static_cast<std::size_t>(i - 1)] < 0 && record[static_cast<std::size_t>(i)] >= 0) {
                places.push_back(i);
            }
        }
        return places;
    }
    bool Idle(int ch) {
        return Until([this, ch] { return driver->GetAcquistionState(ch) == 0; });
    }
};

const char* const kSquare = "[module]\nsignal = square frequency=100kHz amplitude=1V\n";

TEST_F(StackSettings, ClockDepthAndDelayAreEachModulesOwn) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetBaseAdcClk(2, 10);
    driver->SetPreTrigDepth(2, 0.1F);
    driver->SetTriggerDelay(2, 12e-6F); // 120 of its samples
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 2e-8F) << "the first module's";
    Start();
    EXPECT_TRUE(Idle(1) && Idle(2));
    End();
    const auto first = Rises(Row(1));
    const auto second = Rises(Row(2));
    ASSERT_GE(first.size(), 5U);
    ASSERT_GE(second.size(), 29U);
    EXPECT_EQ(first[1] - first[0], 500);
    EXPECT_EQ(second[1] - second[0], 100);
    EXPECT_NE(std::find(first.begin(), first.end(), 1500), first.end());
    EXPECT_NE(std::find_if(second.begin(), second.end(), [](int at) { return std::abs(at - 180) <= 1; }),
              second.end());
}

TEST_F(StackSettings, EachModuleIsBusyForItsOwnTime) {
    // The records take 0.3 s and 1.5 s.
    Open("speed = 200u\n" + std::string(kSquare) + kSquare, 2);
    driver->SetBaseAdcClk(2, 10);
    for (const int ch : {1, 2}) {
        driver->SetNormTrig(ch, false);
        driver->SetPreTrigDepth(ch, 0);
    }
    Start();
    EXPECT_TRUE(Idle(1));
    EXPECT_NE(driver->GetAcquistionState(2), 0);
    EXPECT_EQ(driver->GetSamplesSinceTrigger(1), 3000);
    EXPECT_LT(driver->GetSamplesSinceTrigger(2), 3000);
    EXPECT_TRUE(Idle(2));
    EXPECT_EQ(driver->GetSamplesSinceTrigger(2), 3000);
}

TEST_F(StackSettings, InterleavingIsEachModulesOwn) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetRISMode(2, true);
    Start();
    EXPECT_TRUE(Idle(1) && Idle(2));
    End();
    std::vector<float> entries(kSampleRow + 1);
    EXPECT_EQ(driver->GetBufferRIS(1, entries.data(), 150).status, -1);
    EXPECT_NE(driver->GetBufferRIS(2, entries.data(), 150).status, -1);
}

TEST_F(StackSettings, AModuleThatTakesNoPartTellsOfTheSource) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetTrigMaster(1, false);
    driver->SetTrigMaster(2, true);
    driver->SetTrigThresh(2, 90);
    driver->AcquisitionStart(2);
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    EXPECT_EQ(driver->GetTriggeredStatus(1), 0);
    driver->SetTrigThresh(2, 0);
    EXPECT_TRUE(Until([this] { return driver->GetTriggeredStatus(1) != 0; }));
    EXPECT_TRUE(Idle(1));
    EXPECT_EQ(driver->GetSamplesSinceTrigger(1), 3000);
}

TEST_F(StackSettings, AnUnarmedSlotHandsOutNoPass) {
    Open(std::string(kSquare) + kSquare, 2);
    SetTimebase(50, 1, true);
    std::vector<float> entries(kSampleRow + 1);
    Start();
    EXPECT_TRUE(Finish());
    EXPECT_NE(driver->GetBufferRIS(1, entries.data(), 150).status, -1);
    EXPECT_NE(driver->GetBufferRIS(2, entries.data(), 150).status, -1);
    driver->AcquisitionStart(1); // channel 2 is switched off
    EXPECT_TRUE(Finish());
    EXPECT_NE(driver->GetBufferRIS(1, entries.data(), 150).status, -1);
    EXPECT_EQ(driver->GetBufferRIS(2, entries.data(), 150).status, -1) << "the pass of the time before";
}

TEST_F(StackSettings, WhatWasNeverSetShows) {
    Find(Module("signal = sine frequency=1MHz amplitude=1V"));
    ASSERT_TRUE(driver->OpenAndReset(1));
    driver->SetTrigMaster(1, true);
    driver->InitScope(1, true);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 1e-9F);
    driver->SetRISMode(1, false);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 75e-9F) << "no setting of the program";
    driver->SetPreTrigDepth(1, 0);
    Start();
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(5);
    do {
        EXPECT_EQ(driver->GetTriggeredStatus(1), 0) << "without a type nothing fires";
    } while (std::chrono::steady_clock::now() < end);
    driver->SetTriggerDelay(1, 0);
    driver->SetNormTrig(1, false);
    EXPECT_TRUE(Idle(1));
    driver->AcquisitionEnd(1);
    EXPECT_EQ(Row(1), std::vector<float>(kSampleRow, 123)) << "grounded, at the upper end";
}

TEST_F(StackSettings, AnOpenForgetsWhatWasSetBefore) {
    Open(kSquare);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 2e-8F);
    driver->Close(1);
    ASSERT_TRUE(driver->OpenAndReset(1));
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 1e-9F);
}

/// A signal that rises once in a second of the clock, a hundred of the stack's, first at 0.99 s.
class ChangedWhileWaiting : public StackSettings {
  protected:
    /// Arms before the edge, lets it pass without a look, and makes the change.
    void LetTheEdgePass(const std::function<void()>& before, const std::function<void()>& change) {
        for (int attempt = 0; attempt < 20; ++attempt) {
            const auto began = std::chrono::steady_clock::now();
            Open("speed = 100\n" + Module("signal = square frequency=0.01Hz amplitude=1V"));
            before();
            Start();
            std::this_thread::sleep_until(began + std::chrono::milliseconds(1150));
            change();
            const int triggered = driver->GetTriggeredStatus(1);
            if (std::chrono::steady_clock::now() - began < std::chrono::milliseconds(1900)) {
                EXPECT_EQ(triggered, 0) << "the edge has passed";
                EXPECT_TRUE(Until([this] { return driver->GetTriggeredStatus(1) != 0; }))
                    << "it fires on the next one";
                return;
            }
        }
        FAIL() << "the machine is too slow to look between two edges";
    }
};

TEST_F(ChangedWhileWaiting, AThresholdActsFromThatMomentOn) {
    LetTheEdgePass([this] { driver->SetTrigThresh(1, 90); }, [this] { driver->SetTrigThresh(1, 0); });
}

TEST_F(ChangedWhileWaiting, ATypeActsFromThatMomentOn) {
    LetTheEdgePass([this] { driver->SetTrigType(1, 2), driver->SetTrigThresh(1, 90); },
                   [this] { driver->SetTrigThresh(1, 0), driver->SetTrigType(1, 3); });
}

TEST_F(ChangedWhileWaiting, AnOffsetActsFromThatMomentOn) {
    LetTheEdgePass([this] { driver->SetOffset(1, -90); }, [this] { driver->SetOffset(1, 0); });
}

TEST_F(ChangedWhileWaiting, AFallingEdgeThatWasSeenCountsAsOne) {
    Open(Module("signal = square frequency=100kHz amplitude=1V"));
    driver->SetTrigThresh(1, 90);
    Start();
    driver->SetTrigType(1, 2);
    driver->SetTrigThresh(1, 0);
    EXPECT_TRUE(Finish());
    EXPECT_GT(Row(1)[1499], 0);
    EXPECT_LT(Row(1)[1500], 0);
}

} // namespace
