// What each module of the simulated stack keeps for itself, what it is like before anyone has set it, and
// what changes while a trigger is waited for.

#include "driver/stack_fixture.h"

#include <algorithm>
#include <cmath>
#include <functional>

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

TEST_F(StackSettings, OnlyTheSourcesTriggerCounts) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetTrigThresh(2, 90);
    driver->SetTrigType(2, 2);
    const auto record = Acquire();
    EXPECT_LT(record[1499], 0);
    EXPECT_GT(record[1500], 0);
    driver->SetTrigThresh(1, 90);
    driver->SetTrigThresh(2, 0);
    driver->SetNormTrig(2, false);
    Start();
    driver->SetNormTrig(2, false);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(5);
    do {
        ASSERT_EQ(driver->GetTriggeredStatus(1), 0);
        ASSERT_EQ(driver->GetTriggeredStatus(2), 0);
    } while (std::chrono::steady_clock::now() < end);
}

TEST_F(StackSettings, ASourceThatWasEndedTriggersNobody) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetTrigThresh(1, 90);
    Start();
    driver->AcquisitionEnd(1);
    driver->SetTrigThresh(1, 0);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(5);
    do {
        ASSERT_EQ(driver->GetTriggeredStatus(2), 0);
    } while (std::chrono::steady_clock::now() < end);
}

TEST_F(StackSettings, ASlowModuleHasNoMoreBeforeTheTriggerThanItTookSinceTheArm) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetBaseAdcClk(2, 10);
    driver->SetDecimationRatio(2, 10000); // 1 ms a sample
    Start();
    EXPECT_TRUE(Until([this] { return driver->GetTriggeredStatus(2) != 0; }));
    EXPECT_LT(driver->GetSamplesSinceTrigger(2), 1000);
}

TEST_F(StackSettings, AChangedClockEndsTheRecord) {
    Open(kSquare);
    driver->SetNormTrig(1, false);
    const std::vector<std::function<void(Driver&)>> changes = {[](Driver& d) { d.SetBaseAdcClk(1, 50); },
                                                               [](Driver& d) { d.SetDecimationRatio(1, 10); },
                                                               [](Driver& d) { d.SetRISMode(1, true); }};
    for (const auto& change : changes) {
        SetTimebase(10, 400000); // 40 ms a sample
        Start();
        EXPECT_NE(driver->GetAcquistionState(1), 0);
        change(*driver);
        EXPECT_EQ(driver->GetAcquistionState(1), 0);
    }
}

TEST_F(StackSettings, AnotherSourceActsWhileTheTriggerIsAwaited) {
    Open(std::string(kSquare) + kSquare, 2);
    driver->SetTrigThresh(1, 90);
    Start();
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    driver->SetTrigMaster(1, false);
    driver->SetTrigMaster(2, true);
    EXPECT_TRUE(Idle(1) && Idle(2));
    EXPECT_NE(driver->GetTriggeredStatus(1), 0);
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

/// All that the program sets before a record, but for one call.
class ForgottenCall : public StackSettings {
  protected:
    void OpenWithout(const std::string& keys, const std::string& forgotten) {
        Find(Module(keys));
        ASSERT_TRUE(driver->OpenAndReset(1));
        opened = 1;
        const std::vector<std::pair<const char*, std::function<void(Driver&)>>> calls = {
            {"SetDetectLine", [](Driver& d) { d.SetDetectLine(1, 0, 1); }},
            {"InitScope", [](Driver& d) { d.InitScope(1, true); }},
            {"SetTrigMaster", [](Driver& d) { d.SetTrigMaster(1, true); }},
            {"SetUpFrontEnd", [](Driver& d) { d.SetUpFrontEnd(1, 1, true, false); }},
            {"SetOffset", [](Driver& d) { d.SetOffset(1, 0); }},
            {"SetCalSource", [](Driver& d) { d.SetCalSource(1, 0); }},
            {"SetTrigType", [](Driver& d) { d.SetTrigType(1, 3); }},
            {"SetTrigThresh", [](Driver& d) { d.SetTrigThresh(1, 0); }},
            {"SetPreTrigDepth", [](Driver& d) { d.SetPreTrigDepth(1, 0.5F); }},
            {"SetTriggerDelay", [](Driver& d) { d.SetTriggerDelay(1, 0); }},
            {"SetNormTrig", [](Driver& d) { d.SetNormTrig(1, true); }},
        };
        for (const auto& [name, call] : calls) {
            if (forgotten != name) {
                call(*driver);
            }
        }
        SetTimebase(50, 1);
    }
    /// Of a wave of 100 Hz that passes its middle at the trigger. A record of 60 us sees one edge at most.
    int EdgeWithout(const std::string& forgotten) {
        OpenWithout("signal = square frequency=100Hz amplitude=1V", forgotten);
        const auto rises = Rises(Acquire());
        return rises.empty() ? -1 : rises.front();
    }
    bool FiresWithout(const std::string& forgotten) {
        OpenWithout("signal = sine frequency=100kHz amplitude=1V", forgotten);
        Start();
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(10);
        bool fires = false;
        while (!fires && std::chrono::steady_clock::now() < end) {
            fires = driver->GetTriggeredStatus(1) != 0;
        }
        End();
        return fires;
    }
};

TEST_F(ForgottenCall, ShowsInTheRecord) {
    EXPECT_EQ(EdgeWithout("nothing"), 1500);
    EXPECT_EQ(EdgeWithout("SetPreTrigDepth"), 370);
    EXPECT_EQ(EdgeWithout("SetTriggerDelay"), -1);
    OpenWithout("signal = compensation amplitude=1V", "SetCalSource");
    driver->SetNormTrig(1, false);
    SetTimebase(10, 10);
    const auto record = Acquire();
    EXPECT_GT(*std::max_element(record.begin(), record.end()), 40);
}

TEST_F(ForgottenCall, ShowsAsNoTrigger) {
    EXPECT_TRUE(FiresWithout("nothing"));
    EXPECT_FALSE(FiresWithout("SetTrigType"));
    EXPECT_FALSE(FiresWithout("SetTrigThresh"));
    EXPECT_FALSE(FiresWithout("SetUpFrontEnd"));
}

TEST_F(ForgottenCall, ShowsOnTheDetectLine) {
    OpenWithout("", "nothing");
    EXPECT_NE(driver->GetDetectLine(1), 0);
    OpenWithout("", "SetDetectLine");
    EXPECT_EQ(driver->GetDetectLine(1), 0);
}

TEST_F(StackSettings, AnOpenForgetsTheFrontEndToo) {
    Open(Module("signal = compensation amplitude=1V"));
    driver->SetOffset(1, 10);
    driver->Close(1);
    ASSERT_TRUE(driver->OpenAndReset(1));
    driver->InitScope(1, true);
    driver->SetTrigMaster(1, true);
    driver->SetNormTrig(1, false);
    SetTimebase(50, 1);
    driver->SetTriggerDelay(1, 0);
    EXPECT_EQ(Acquire()[0], 123);
}

TEST_F(StackSettings, InterleavingGoesByEachModulesOwnClock) {
    const std::string fast = "[module]\nsignal = square frequency=500kHz amplitude=1V\n";
    Open(fast + fast, 2);
    SetTimebase(50, 1, true);
    driver->SetBaseAdcClk(2, 10);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 1e-9F);
    Start();
    EXPECT_TRUE(Idle(1) && Idle(2));
    End();
    std::vector<float> entries(kSampleRow + 1);
    const auto periods = [&](int ch) {
        EXPECT_NE(driver->GetBufferRIS(ch, entries.data(), 150).status, -1);
        int rises = 0;
        for (std::size_t i = 1; i < 150; ++i) {
            rises += entries[i - 1] < 0 && entries[i] >= 0 ? 1 : 0;
        }
        return rises;
    };
    EXPECT_NEAR(periods(1), 1.5, 0.6) << "3 us";
    EXPECT_NEAR(periods(2), 7.5, 0.6) << "15 us: the program forgot its clock";
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

/// An edge that came before the change, and that nobody has asked for yet, has fired all the same.
class ChangedAfterTheEdge : public StackSettings {
  protected:
    bool IsTriggeredAfter(const std::function<void()>& change) {
        // Rises every 2 ms and never again within a record.
        Open(Module("signal = square frequency=500Hz amplitude=1V"));
        driver->SetPreTrigDepth(1, 0);
        Start();
        std::this_thread::sleep_for(std::chrono::milliseconds(4));
        change();
        return driver->GetTriggeredStatus(1) != 0;
    }
};

TEST_F(ChangedAfterTheEdge, AThresholdIsTooLate) {
    EXPECT_TRUE(IsTriggeredAfter([this] { driver->SetTrigThresh(1, 90); }));
}

TEST_F(ChangedAfterTheEdge, ATypeIsTooLate) {
    EXPECT_TRUE(IsTriggeredAfter([this] { driver->SetTrigType(1, 2); }));
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
