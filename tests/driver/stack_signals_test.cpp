#include "driver/simulated_stack_fixture.h"

#include <cmath>

namespace {

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

} // namespace
