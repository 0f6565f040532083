#include "driver/stack_fixture.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace {

/// 3 V at full scale is 127 steps.
constexpr double kStepsPerVolt = 127.0 / 3;

class SimulatedStack : public StackFixture {
  protected:
    static std::string Module(const std::string& keys) { return "[module]\n" + keys + "\n"; }
};

float Lowest(const std::vector<float>& x) {
    return *std::min_element(x.begin(), x.end());
}
float Highest(const std::vector<float>& x) {
    return *std::max_element(x.begin(), x.end());
}
/// Of the record without the spare samples behind it.
double Mean(const std::vector<float>& x) {
    return std::accumulate(x.begin(), x.begin() + kSampleDepth, 0.0) / kSampleDepth;
}

// What is on the bus

TEST_F(SimulatedStack, StandsInWithFourModulesWhenNoFileIsNamed) {
    EXPECT_EQ(FindFile({}), 4);
    EXPECT_EQ(driver->GetSampleDepth(), 3000);
    EXPECT_EQ(driver->DrvrIssue(), "Corvantine simulated stack");
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        EXPECT_EQ(driver->GetProductName(ch), "Corvantine");
        EXPECT_EQ(driver->GetSerialNumber(ch), QString("SIM000%1").arg(ch));
        EXPECT_TRUE(driver->OpenAndReset(ch));
        EXPECT_TRUE(driver->PortOpen(ch));
        driver->Close(ch);
        EXPECT_FALSE(driver->PortOpen(ch));
    }
}

TEST_F(SimulatedStack, TellsWhatTheFileSaysOfAModule) {
    EXPECT_EQ(Find("[module]\nproduct = Somebody else's\nserial = a #1\nport = 9\nhardware_revision = 0x2A\n"
                   "controller_revision = 17\nris_band = 5 -6\ntrigger_dac_offset = -7\n"
                   "raw_channel_offset = 1.5\noffset_dac_scale = 0.25\n"),
              1);
    EXPECT_EQ(driver->GetProductName(1), "Somebody else's");
    EXPECT_EQ(driver->GetSerialNumber(1), "a");
    EXPECT_EQ(driver->GetPortNumber(1), 9);
    EXPECT_EQ(driver->GetHWRev(1), 0x2A);
    EXPECT_TRUE(driver->OpenAndReset(1));
    EXPECT_EQ(driver->GetControllerRev(1), 17);
    std::int32_t first = 0;
    std::int32_t second = 0;
    driver->GetRISBand(1, first, second);
    EXPECT_EQ(first, 5);
    EXPECT_EQ(second, -6);
    EXPECT_EQ(driver->GetTriggerDACOffset(1), -7);
    EXPECT_EQ(driver->GetRawChannelOffset(1), 1.5F);
    EXPECT_EQ(driver->GetOffsetDACScale(1), 0.25F);
    for (int ch = 2; ch <= kScopeChannels; ++ch) {
        EXPECT_EQ(driver->GetProductName(ch), "");
    }
}

TEST_F(SimulatedStack, ForcedPortGoesToTheForcedSlot) {
    const std::string three =
        Module("serial = A\nport = 3") + Module("serial = B\nport = 5") + Module("serial = C\nport = 6");
    const auto serials = [&](int port, int channel) {
        EXPECT_EQ(Find(three, port, channel), 3);
        QString found;
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            const QString serial = driver->GetSerialNumber(ch);
            found += serial.isEmpty() ? "-" : serial;
        }
        return found.toStdString();
    };
    EXPECT_EQ(serials(-2, -2), "ABC-");
    EXPECT_EQ(serials(-1, -1), "ABC-");
    EXPECT_EQ(serials(5, -1), "ABC-");
    EXPECT_EQ(serials(5, 1), "BAC-");
    EXPECT_EQ(serials(5, 4), "AC-B");
    EXPECT_EQ(serials(3, 2), "BAC-");
    EXPECT_EQ(serials(99, 2), "A-BC") << "the slot stays free for a module that is not there";
}

TEST_F(SimulatedStack, AModuleMayRefuseToOpen) {
    Find(Module("opens = no"));
    EXPECT_EQ(driver->GetProductName(1), "Corvantine");
    EXPECT_FALSE(driver->OpenAndReset(1));
}

TEST_F(SimulatedStack, WiredStackPassesTheDetectTest) {
    Open(Module("") + Module("") + Module(""), 3);
    EXPECT_NE(driver->GetDetectLine(1), 0);
    driver->SetDetectLine(1, -1, 0);
    EXPECT_EQ(driver->GetDetectLine(2), 0);
    EXPECT_EQ(driver->GetDetectLine(3), 0);
    driver->SetDetectLine(1, 0, 1);
    EXPECT_NE(driver->GetDetectLine(2), 0);
}

TEST_F(SimulatedStack, ModuleOutsideTheStackDoesNotHearTheMaster) {
    Open(Module("") + Module("stacked = no"), 2);
    EXPECT_NE(driver->GetDetectLine(1), 0);
    driver->SetDetectLine(1, -1, 0);
    EXPECT_NE(driver->GetDetectLine(2), 0);
}

TEST_F(SimulatedStack, ModuleWithoutPowerIsNotFoundAndHoldsTheLine) {
    EXPECT_EQ(Find(Module("serial = A") + Module("powered = no\nserial = B")), 1);
    EXPECT_EQ(driver->GetSerialNumber(2), "");
    driver->OpenAndReset(1);
    driver->SetDetectLine(1, 0, 1);
    EXPECT_EQ(driver->GetDetectLine(1), 0);
}

TEST_F(SimulatedStack, ExampleFilesSayWhatTheyAreNamedAfter) {
    const std::string examples = CORVANTINE_STACK_EXAMPLES;
    EXPECT_EQ(FindFile(examples + "/four_modules.stack"), 4);
    EXPECT_EQ(FindFile(examples + "/one_module.stack"), 1);
    EXPECT_EQ(FindFile(examples + "/miswired.stack"), 2);
    EXPECT_EQ(FindFile(examples + "/unpowered.stack"), 1);
}

// The front end

TEST_F(SimulatedStack, ConvertsVoltsToStepsOfTheRange) {
    Open(Module("signal = sine frequency=100kHz amplitude=0.2V"));
    SetTimebase(50, 1);
    const double fullScale[] = {0.3, 3, 30};
    for (int range = 0; range < 3; ++range) {
        driver->SetUpFrontEnd(1, range, true, false);
        const auto record = Acquire();
        const double expected = 0.2 * 127 / fullScale[range];
        EXPECT_NEAR(Highest(record), expected, 0.51) << range;
        EXPECT_NEAR(Lowest(record), -expected, 0.51) << range;
    }
}

TEST_F(SimulatedStack, ConverterHasWholeStepsAndClips) {
    Open(Module("noise = 3\nsignal = triangle frequency=100kHz amplitude=5V"));
    const auto record = Acquire();
    EXPECT_EQ(Highest(record), 127);
    EXPECT_EQ(Lowest(record), -127);
    for (const float sample : record) {
        ASSERT_EQ(sample, std::round(sample));
    }
}

TEST_F(SimulatedStack, ProbeDividesTheInput) {
    Open(Module("probe = 10\nsignal = square frequency=100kHz amplitude=10V"));
    EXPECT_NEAR(Highest(Acquire()), kStepsPerVolt, 0.5);
}

TEST_F(SimulatedStack, CouplingOffsetAndRangeOffset) {
    Open(Module("range_offsets = 9 4 1\nsignal = square frequency=200kHz amplitude=0.5V level=1V"));
    driver->SetNormTrig(1, false);
    const double level = kStepsPerVolt;
    EXPECT_NEAR(Mean(Acquire()), level + 4, 0.6);

    driver->SetUpFrontEnd(1, 1, false, false); // AC
    EXPECT_NEAR(Mean(Acquire()), 4, 0.6);
    EXPECT_NEAR(Highest(Acquire()) - Lowest(Acquire()), level, 1.1);

    driver->SetUpFrontEnd(1, 1, false, true); // GND
    auto grounded = Acquire();
    EXPECT_EQ(Lowest(grounded), 4);
    EXPECT_EQ(Highest(grounded), 4);

    driver->SetOffset(1, 50);
    EXPECT_EQ(Acquire()[0], std::round(4 + 63.5));
    driver->SetOffset(1, -100);
    EXPECT_EQ(Acquire()[0], -123);
    driver->SetUpFrontEnd(1, 0, false, true);
    EXPECT_EQ(Acquire()[0], -118);
}

TEST_F(SimulatedStack, CompensationOutputIsThereOnlyWhileItIsOn) {
    Open(Module("signal = compensation amplitude=2V"));
    driver->SetNormTrig(1, false);
    SetTimebase(10, 10);
    EXPECT_EQ(Highest(Acquire()), 0);
    driver->SetCalSource(1, 1);
    auto record = Acquire();
    EXPECT_NEAR(Highest(record), 2 * kStepsPerVolt, 0.5);
    EXPECT_EQ(Lowest(record), 0);
    // 1 kHz at 1 us a sample: 3000 samples hold three periods.
    int edges = 0;
    for (std::size_t i = 1; i < 3000; ++i) {
        edges += record[i] != record[i - 1];
    }
    EXPECT_NEAR(edges, 6, 1);
    driver->SetCalSource(1, 0);
    EXPECT_EQ(Highest(Acquire()), 0);
}

TEST_F(SimulatedStack, NoiseHasItsSizeAndItsSeed) {
    const std::string noisy = "seed = 7\n[module]\nnoise = 4\n";
    const auto record = [&](const std::string& text) {
        Open(text);
        driver->SetNormTrig(1, false);
        return Acquire();
    };
    const auto first = record(noisy);
    double squares = 0;
    for (const float sample : first) {
        squares += static_cast<double>(sample) * static_cast<double>(sample);
    }
    EXPECT_NEAR(std::sqrt(squares / static_cast<double>(first.size())), 4, 0.4);
    EXPECT_EQ(first, record(noisy));
    EXPECT_NE(first, record("seed = 8\n[module]\nnoise = 4\n"));
}

TEST_F(SimulatedStack, SignalsAddUp) {
    Open(Module("signal = sine frequency=1MHz amplitude=0.1V\n"
                "signal = square frequency=20kHz amplitude=1V level=0.5V"));
    const auto record = Acquire();
    EXPECT_NEAR(Highest(record), 1.6 * kStepsPerVolt, 0.6);
    EXPECT_NEAR(Lowest(record), -0.6 * kStepsPerVolt, 0.6);
}

TEST_F(SimulatedStack, PulseAndTriangleHaveTheirShapes) {
    Open(Module("signal = pulse frequency=100kHz amplitude=1V width=2us level=-0.5V"));
    auto record = Acquire();
    EXPECT_NEAR(Highest(record), 0.5 * kStepsPerVolt, 0.5);
    EXPECT_NEAR(Lowest(record), -0.5 * kStepsPerVolt, 0.5);
    // 60 us hold six pulses of 100 samples, whatever the phase.
    EXPECT_NEAR(static_cast<double>(std::count(record.begin(), record.begin() + 3000, Highest(record))), 600,
                2);

    Open(Module("signal = triangle frequency=20kHz amplitude=2V symmetry=0.25"));
    record = Acquire();
    // From the rising crossing at 1500 a quarter of the rise is half of 625 samples further.
    EXPECT_NEAR(record[1500], 0, 1);
    EXPECT_NEAR(record[1500 + 156], kStepsPerVolt, 1);
    EXPECT_NEAR(record[1500 + 312], 2 * kStepsPerVolt, 1);
    EXPECT_NEAR(record[1500 - 312], -2 * kStepsPerVolt, 1);
}

TEST_F(SimulatedStack, PlaysASavedRecordBack) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += i < 250 ? "2.0000\r\n" : "-1,0000\r\n";
    }
    text += "\r\nDATA FOR CH: 1\r\nVERTICAL FULL SCALE (+/-v): 3\r\nSAMPLE PERIOD (s): 2E-08\r\n"
            "BANDWIDTH LIMIT: False\r\nDATE: today\r\nSOFTWARE: Corvantine Ver1.0.0\r\n";
    Write("my record.txt", text);
    Open(Module("signal = file path=\"my record.txt\""));
    auto record = Acquire();
    EXPECT_NEAR(Highest(record), 2 * kStepsPerVolt, 0.5);
    EXPECT_NEAR(Lowest(record), -kStepsPerVolt, 0.5);
    EXPECT_NEAR(static_cast<double>(std::count(record.begin(), record.begin() + 3000, Highest(record))), 750,
                3);
    EXPECT_NEAR(record[1500 + 5], 2 * kStepsPerVolt, 0.5);
    EXPECT_NEAR(record[1500 - 5], -kStepsPerVolt, 0.5);

    Open(Module("signal = file path=\"my record.txt\" interval=40ns gain=0.5"));
    record = Acquire();
    EXPECT_NEAR(Highest(record), kStepsPerVolt, 0.5);
    EXPECT_NEAR(record[1500 + 490], kStepsPerVolt, 0.5);
    EXPECT_NEAR(record[1500 + 510], -kStepsPerVolt / 2, 0.5);
}

// The clock

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

// The trigger

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

// Roll

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

// RIS

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

// What a driver has to bear

TEST_F(SimulatedStack, ClosedEmptyAndImpossibleChannelsDoNothing) {
    Find(Module("signal = sine frequency=1MHz amplitude=1V"));
    for (const int ch : {-1, 0, 1, 2, 5, 1000000}) {
        driver->SetTrigMaster(ch, true);
        driver->SetDetectLine(ch, -1, 0);
        driver->InitScope(ch, true);
        driver->SetUpFrontEnd(ch, 99, true, true);
        driver->SetOffset(ch, 1e30F);
        driver->SetCalSource(ch, 1);
        driver->SetLEDMode(ch, 2);
        driver->SetBaseAdcClk(ch, 0);
        driver->SetDecimationRatio(ch, -5);
        driver->SetRISMode(ch, true);
        driver->SetTriggerDelay(ch, -1);
        driver->SetTrigThresh(ch, 1e30F);
        driver->SetTrigType(ch, 77);
        driver->SetNormTrig(ch, true);
        driver->SetPreTrigDepth(ch, 50);
        driver->AcquisitionStart(ch);
        EXPECT_EQ(driver->GetAcquistionState(ch), 0);
        EXPECT_EQ(driver->GetTriggeredStatus(ch), 0);
        EXPECT_EQ(driver->GetSamplesSinceTrigger(ch), 0);
        EXPECT_EQ(driver->GetDetectLine(ch), 0);
        EXPECT_FALSE(driver->PortOpen(ch));
        std::vector<float> buffer(kSampleRow + 1, 5);
        driver->GetBufferIncremental(ch, buffer.data(), 100, 0);
        EXPECT_EQ(buffer[0], 5);
        EXPECT_EQ(driver->GetBufferRIS(ch, buffer.data(), 150).status, -1);
        driver->AcquisitionEnd(ch);
        driver->Close(ch);
        EXPECT_LE(driver->GetProductName(ch).size(), 10);
    }
    EXPECT_NE(Leave(), "");
}

TEST_F(SimulatedStack, OpenModuleBearsImpossibleSettings) {
    Open(Module("signal = sine frequency=1MHz amplitude=1V"));
    const float nan = std::nanf("");
    driver->SetUpFrontEnd(1, -3, true, false);
    driver->SetOffset(1, nan);
    driver->SetTriggerDelay(1, nan);
    driver->SetTrigThresh(1, nan);
    driver->SetPreTrigDepth(1, nan);
    driver->SetBaseAdcClk(1, 0);
    driver->SetDecimationRatio(1, 0);
    EXPECT_EQ(Acquire().size(), 3072U);
    driver->SetPreTrigDepth(1, 5);
    driver->SetTriggerDelay(1, -5);
    driver->SetTrigType(1, 3);
    EXPECT_EQ(Acquire().size(), 3072U);
    EXPECT_NE(Leave(), "");
}

TEST_F(SimulatedStack, CallsAfterTheEndDoNothing) {
    Open(Module("signal = sine frequency=1MHz amplitude=1V"));
    driver->Close(1);
    testing::internal::CaptureStderr();
    driver->CloseDrvr(1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    driver->AcquisitionStart(1);
    EXPECT_EQ(driver->GetAcquistionState(1), 0);
    EXPECT_EQ(driver->GetProductName(1), "");
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 2e-8F) << "the last usable one";
    driver->CloseDrvr(1);
    driver.reset();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "simulated stack: AcquisitionStart(1): the library is not open\n"
              "simulated stack: GetAcquistionState(1): the library is not open\n"
              "simulated stack: GetProductName(1): the library is not open\n"
              "simulated stack: GetSamplePeriod(-1, 0): the library is not open\n"
              "simulated stack: CloseDrvr(1): the library is not open\n");
}

TEST_F(SimulatedStack, RunsTheDemonstrationWithoutModules) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(FindFile(folder.filePath("none").toStdString()), 0);
    testing::internal::GetCapturedStderr();
    driver->SetDemoMode(1);
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        EXPECT_TRUE(driver->OpenAndReset(ch));
        EXPECT_EQ(driver->GetDetectLine(ch), 0);
        EXPECT_EQ(driver->GetSerialNumber(ch), QString("DEMO%1").arg(ch));
    }
    std::vector<double> demo(kSampleDepth);
    driver->MakeSampleData(demo.data(), kSampleDepth, 0, 0, 10);
    EXPECT_GT(*std::max_element(demo.begin(), demo.end()), 100);
    std::vector<double> sine(2048);
    for (std::size_t i = 0; i < sine.size(); ++i) {
        sine[i] = 0.5 * std::sin(2 * std::numbers::pi * 64 * static_cast<double>(i) / 2048);
    }
    driver->FFT(sine.data(), 2048, 0.5, 1);
    EXPECT_NEAR(sine[64], 0, 0.1);
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        driver->InitScope(ch, ch == 1);
        driver->SetBaseAdcClk(ch, ch == 1 ? 10 : 50);
        driver->SetDecimationRatio(ch, ch == 1 ? 400 : 1);
        driver->SetRISMode(ch, false);
    }
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 4e-5F);
    driver->SetDecimationRatio(1, 2);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 2e-7F);
    driver->SetRISMode(1, true);
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 1e-9F);
    std::vector<float> source(3000, 12.7F);
    driver->ReScaleSampleData(source.data(), source.data(), 3000, 0, 10, 1, 2);
    EXPECT_NEAR(source[0], 6.35 + 12.7, 1e-4);
}

} // namespace
