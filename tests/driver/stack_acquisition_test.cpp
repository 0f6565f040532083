#include "driver/simulated_stack_fixture.h"

#include <cmath>
#include <numbers>

namespace {

TEST_F(SimulatedStack, PeriodFollowsTheTimebase) {
    Open(Module(""));
    SetTimebase(50, 1);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 2e-8F);
    SetTimebase(25, 1);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 4e-8F);
    SetTimebase(10, 400000);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 4e-2F);
    SetTimebase(50, 1, true);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 1e-9F);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(false, 3), 3);
}

TEST_F(SimulatedStack, SamplesAreTheirPeriodApart) {
    Open(Module("signal = sine frequency=10kHz amplitude=2V"));
    for (const auto& [megahertz, decimation] : {std::pair{50, 1}, {25, 1}, {10, 1}, {10, 4}}) {
        SetTimebase(megahertz, decimation);
        const auto record = Acquire();
        const double period = decimation / (megahertz * 1e6);
        // The clock does not wait for the trigger, so a record may lie up to a sample off.
        const double tolerance = 0.6 + 2 * kStepsPerVolt * 2 * std::numbers::pi * 1e4 * period;
        for (const int i : {0, 700, 1400, 1600, 2999}) {
            const double expected =
                2 * kStepsPerVolt * std::sin(2 * std::numbers::pi * 1e4 * (i - 1500) * period);
            EXPECT_NEAR(record[static_cast<std::size_t>(i)], expected, tolerance)
                << megahertz << " " << decimation;
        }
    }
}

TEST_F(SimulatedStack, TriggerTypes) {
    Open(Module("signal = sine frequency=50kHz amplitude=2V"));
    driver->SetTrigThresh(1, static_cast<float>(100.0 / 3)); // of 3 V
    const auto slope = [](const std::vector<float>& x) { return x[1520] - x[1480]; };
    for (int repeat = 0; repeat < 3; ++repeat) {
        driver->SetTrigType(1, 3);
        auto record = Acquire();
        EXPECT_NEAR(record[1500], kStepsPerVolt, 1.2) << "rising";
        EXPECT_GT(slope(record), 10);

        driver->SetTrigType(1, 2);
        record = Acquire();
        EXPECT_NEAR(record[1500], kStepsPerVolt, 1.2) << "falling";
        EXPECT_LT(slope(record), -10);

        driver->SetTrigType(1, 1);
        record = Acquire();
        EXPECT_GE(record[1500], kStepsPerVolt - 0.6) << "greater than";

        driver->SetTrigType(1, 0);
        record = Acquire();
        EXPECT_LE(record[1500], kStepsPerVolt + 0.6) << "less than";
    }
}

TEST_F(SimulatedStack, PreTriggerDepthPlacesTheTrigger) {
    Open(Module("signal = square frequency=10kHz amplitude=1V"));
    for (const float depth : {0.0F, 0.1F, 0.5F, 0.99F}) {
        driver->SetPreTrigDepth(1, depth);
        const auto record = Acquire();
        const auto at = static_cast<std::size_t>(std::lround(depth * 3000));
        EXPECT_GT(record[at], 0) << depth;
        if (at > 0) {
            EXPECT_LT(record[at - 1], 0) << depth;
        }
    }
}

TEST_F(SimulatedStack, DelayMovesTheRecordOn) {
    Open(Module("signal = square frequency=10kHz amplitude=1V"));
    driver->SetTriggerDelay(1, 8e-6F); // 400 samples
    const auto record = Acquire();
    EXPECT_LT(record[1500 - 402], 0);
    EXPECT_GT(record[1500 - 398], 0);
}

TEST_F(SimulatedStack, WaitsForATriggerThatDoesNotCome) {
    Open(Module("signal = sine frequency=50kHz amplitude=1V"));
    driver->SetTrigThresh(1, 90);
    Start();
    // A hundred records' time.
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(6);
    do {
        EXPECT_NE(driver->GetAcquistionState(1), 0);
        EXPECT_EQ(driver->GetTriggeredStatus(1), 0);
    } while (std::chrono::steady_clock::now() < end);

    driver->SetTrigThresh(1, 0);
    EXPECT_TRUE(Until([this] { return driver->GetTriggeredStatus(1) != 0; })) << "it still listens";
    EXPECT_TRUE(Finish());
}

TEST_F(SimulatedStack, FreeRunningNeedsNoTrigger) {
    Open(Module("signal = sine frequency=50kHz amplitude=1V"));
    driver->SetTrigThresh(1, 90);
    driver->SetNormTrig(1, false);
    const auto record = Acquire();
    EXPECT_NE(driver->GetTriggeredStatus(1), 0);
    EXPECT_NEAR(Highest(record), kStepsPerVolt, 0.6);
}

TEST_F(SimulatedStack, LeavingNormalTriggeringReleasesAWaitingRecord) {
    Open(Module("signal = sine frequency=50kHz amplitude=1V"));
    driver->SetTrigThresh(1, 90);
    Start();
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    driver->SetNormTrig(1, false);
    EXPECT_TRUE(Finish());
    EXPECT_NEAR(Highest(Row(1)), kStepsPerVolt, 0.6);
}

TEST_F(SimulatedStack, FindsARarePulse) {
    Open(Module("signal = pulse frequency=20Hz amplitude=1V width=100ns\n"
                "signal = sine frequency=1MHz amplitude=0.1V"));
    driver->SetTrigThresh(1, 20);
    const auto record = Acquire();
    EXPECT_GT(record[1502], 0.8 * kStepsPerVolt);
    EXPECT_LT(record[1498], 0.2 * kStepsPerVolt);
    EXPECT_LT(record[1508], 0.2 * kStepsPerVolt);
}

TEST_F(SimulatedStack, AnyModuleCanBeTheSource) {
    Open(Module("signal = sine frequency=50kHz amplitude=1V") +
             Module("signal = sine frequency=50kHz amplitude=1V phase=90"),
         2);
    driver->SetTrigMaster(1, false);
    driver->SetTrigMaster(2, true);
    Start(2);
    EXPECT_TRUE(Finish());
    EXPECT_NEAR(Row(2)[1500], 0, 1);
    EXPECT_GT(Row(2)[1550], 5);
    EXPECT_NEAR(Row(1)[1500], -kStepsPerVolt, 1) << "a quarter behind, at the same moment";
}

TEST_F(SimulatedStack, OnlyArmedChannelsTakeARecord) {
    Open(Module("signal = sine frequency=50kHz amplitude=1V") +
             Module("signal = sine frequency=50kHz amplitude=1V"),
         2);
    driver->AcquisitionStart(1);
    EXPECT_TRUE(Finish());
    EXPECT_NEAR(Highest(Row(1)), kStepsPerVolt, 0.6);
    EXPECT_EQ(Row(2), std::vector<float>(kSampleRow, 0));
}

TEST_F(SimulatedStack, SlaveAloneDoesNotStart) {
    Open(Module("signal = sine frequency=50kHz amplitude=1V") + Module(""), 2);
    driver->AcquisitionStart(2);
    EXPECT_EQ(driver->GetAcquistionState(1), 0);
    EXPECT_NE(driver->GetAcquistionState(2), 0) << "it is armed and waits for the source";
    for (const int ch : {1, 2}) {
        EXPECT_EQ(driver->GetTriggeredStatus(ch), 0);
        EXPECT_EQ(driver->GetSamplesSinceTrigger(ch), 0);
    }
    driver->AcquisitionEnd(2);
    EXPECT_EQ(driver->GetAcquistionState(2), 0);
}

TEST_F(SimulatedStack, RollCountsAndReadsWhatIsThere) {
    // 1 ms a sample: three seconds, in a fifth of that.
    Open("speed = 5\n" + Module("noise = 2\nsignal = triangle frequency=1Hz amplitude=2V"));
    driver->SetNormTrig(1, false);
    SetTimebase(10, 10000);
    Start();
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    EXPECT_NE(driver->GetTriggeredStatus(1), 0);
    std::vector<float> rolled(kSampleRow + 1, 999);
    std::vector<int> counts;
    int position = 0;
    EXPECT_TRUE(Until([&] {
        const int count = driver->GetSamplesSinceTrigger(1) - position;
        if (count > 10) {
            EXPECT_EQ(driver->GetBufferIncremental(1, rolled.data(), count, position), count);
            position += count;
            counts.push_back(position);
            EXPECT_EQ(rolled[static_cast<std::size_t>(position)], 999) << "nothing beyond the count";
        }
        return driver->GetAcquistionState(1) == 0;
    }));
    EXPECT_GT(counts.size(), 1U) << "it grows in real time";
    EXPECT_TRUE(std::is_sorted(counts.begin(), counts.end()));
    EXPECT_LE(position, 3000);
    EXPECT_EQ(driver->GetSamplesSinceTrigger(1), 3000);
    End();
    const auto record = Row(1);
    EXPECT_TRUE(std::equal(record.begin(), record.begin() + position, rolled.begin()))
        << "the block read at the end brings the same samples";
    EXPECT_NEAR(Highest(record), 2 * kStepsPerVolt, 8);
}

TEST_F(SimulatedStack, WaitingMemoryHoldsThePartBeforeTheTrigger) {
    // Half a period is 25 s, 625 samples, a quarter of a second of the clock.
    Open("speed = 100\n" + Module("signal = square frequency=0.02Hz amplitude=1V"));
    SetTimebase(10, 400000);
    driver->SetPreTrigDepth(1, 0.1F);
    std::vector<float> rolled(kSampleRow + 1);
    for (int repeat = 0; repeat < 2; ++repeat) {
        // The second time it is armed just behind the edge, so that what comes first is not what stays.
        Start();
        EXPECT_TRUE(Until([&] {
            const bool triggered = driver->GetTriggeredStatus(1) != 0;
            const int count = driver->GetSamplesSinceTrigger(1);
            EXPECT_TRUE(triggered || driver->GetTriggeredStatus(1) != 0 || count <= 300) << count;
            driver->GetBufferIncremental(1, rolled.data(), count, 0);
            return triggered && count > 310;
        }));
        End();
        const auto record = Row(1);
        EXPECT_LT(*std::max_element(record.begin(), record.begin() + 300), 0);
        EXPECT_GT(*std::min_element(record.begin() + 300, record.begin() + 310), 0);
    }
}

TEST_F(SimulatedStack, AnEndKeepsTheRecordAsFarAsItGot) {
    // Forty milliseconds a sample, in a hundredth of that.
    Open("speed = 100\n" + Module("signal = square frequency=0.001Hz amplitude=1V level=2V"));
    driver->SetNormTrig(1, false);
    SetTimebase(10, 400000);
    Start();
    EXPECT_TRUE(Until([this] { return driver->GetSamplesSinceTrigger(1) > 100; }));
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    End();
    EXPECT_EQ(driver->GetAcquistionState(1), 0);
    const int count = driver->GetSamplesSinceTrigger(1);
    EXPECT_LT(count, 3000);
    const auto record = Row(1);
    EXPECT_EQ(std::count_if(record.begin(), record.end(), [](float x) { return x != 0; }), count);
    driver->AcquisitionEnd(1); // harmless when nothing runs
}

TEST_F(SimulatedStack, AChangedFrontEndActsFromThenOn) {
    Open("speed = 100\n" + Module(""));
    driver->SetNormTrig(1, false);
    SetTimebase(10, 400000);
    Start();
    EXPECT_TRUE(Until([this] { return driver->GetSamplesSinceTrigger(1) > 100; }));
    driver->SetOffset(1, 100);
    const int before = driver->GetSamplesSinceTrigger(1);
    EXPECT_TRUE(Until([&] { return driver->GetSamplesSinceTrigger(1) > before + 100; }));
    End();
    const auto record = Row(1);
    EXPECT_EQ(record[99], 0);
    EXPECT_EQ(record[static_cast<std::size_t>(before + 99)], 127);
    EXPECT_TRUE(std::is_sorted(record.begin(), record.begin() + before + 100));
}

TEST_F(SimulatedStack, RecordTakesItsTime) {
    Open(Module("signal = sine frequency=1kHz amplitude=1V"));
    driver->SetNormTrig(1, false);
    SetTimebase(10, 100); // 30 ms
    const auto began = std::chrono::steady_clock::now();
    Start();
    EXPECT_TRUE(Finish());
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(30));
}

TEST_F(SimulatedStack, RISPassesRebuildARepetitiveSignal) {
    Open(Module("signal = sine frequency=7.3MHz amplitude=2V"));
    SetTimebase(50, 1, true);
    std::vector<float> record(kSampleRow, 0);
    std::vector<float> entries(kSampleRow + 1);
    float lowest = 20;
    float highest = 0;
    for (int pass = 0; pass < 1200; ++pass) {
        Start();
        ASSERT_TRUE(Finish());
        const RISPass ris = driver->GetBufferRIS(1, entries.data(), 150);
        ASSERT_NE(ris.status, -1);
        lowest = std::min(lowest, ris.position);
        highest = std::max(highest, ris.position);
        // As the read-out interleaves it.
        const int grid = static_cast<int>(std::floor(ris.position));
        const float old = std::abs(2 * (ris.position - static_cast<float>(grid) - 0.5F));
        for (int i = 0; i < 150; ++i) {
            float& sample = record[static_cast<std::size_t>(grid + 20 * i)];
            sample = old * sample + (1 - old) * entries[static_cast<std::size_t>(i)];
        }
    }
    EXPECT_LT(lowest, 1);
    EXPECT_GT(highest, 19);
    double squares = 0;
    double most = 0;
    for (int i = 0; i < kSampleDepth; ++i) {
        const double expected =
            2 * kStepsPerVolt * std::sin(2 * std::numbers::pi * 7.3e6 * (i - 1500) * 1e-9);
        const double error = static_cast<double>(record[static_cast<std::size_t>(i)]) - expected;
        squares += error * error;
        most = std::max(most, std::abs(error));
    }
    EXPECT_LT(std::sqrt(squares / kSampleDepth), 1);
    EXPECT_LT(most, 5);
}

TEST_F(SimulatedStack, RISWithoutAFinishedPassIsNotValid) {
    Open(Module("signal = sine frequency=1MHz amplitude=1V"));
    std::vector<float> entries(kSampleRow + 1);
    EXPECT_EQ(driver->GetBufferRIS(1, entries.data(), 150).status, -1);
    Acquire();
    EXPECT_EQ(driver->GetBufferRIS(1, entries.data(), 150).status, -1) << "that was no RIS record";
    SetTimebase(50, 1, true);
    driver->SetTrigThresh(1, 90);
    Start();
    End();
    EXPECT_EQ(driver->GetBufferRIS(1, entries.data(), 150).status, -1) << "no trigger, no pass";
}

} // namespace
