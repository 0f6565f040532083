#include "driver/driver.h"

#include "support/scripted_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr double kNaNDouble = std::numeric_limits<double>::quiet_NaN();

using Calls = std::vector<std::string>;

std::vector<float> Buffer(float value = 0) {
    return std::vector<float>(kSampleRow + 1, value);
}

TEST(DriverWrapper, HandsOverBooleansAsTheInterfaceHasThem) {
    ScriptedInstrument instrument;
    instrument.driver.SetTrigMaster(1, true);
    instrument.driver.SetTrigMaster(2, false);
    instrument.driver.SetNormTrig(3, true);
    instrument.driver.SetRISMode(4, true);
    instrument.driver.SetRISMode(4, false);
    instrument.driver.SetUpFrontEnd(1, 2, true, false);
    instrument.driver.SetUpFrontEnd(1, 0, false, true);
    instrument.driver.InitScope(1, true);
    instrument.driver.GetSamplePeriod(true, 0);
    EXPECT_EQ(instrument.script.calls,
              (Calls{"SetTrigMaster(1, -1)", "SetTrigMaster(2, 0)", "SetNormTrig(3, -1)", "SetRISMode(4, 1)",
                     "SetRISMode(4, 0)", "SetUpFrontEnd(1, 2, -1, 0, 0)", "SetUpFrontEnd(1, 0, 0, -1, 0)",
                     "InitScope(1, -1)", "GetSamplePeriod(-1, 0)"}));
}

TEST(DriverWrapper, DepthIsAlways3000) {
    ScriptedInstrument instrument;
    for (const int depth : {0, -1, 100000, std::numeric_limits<int>::max()}) {
        instrument.script.sampleDepth = depth;
        EXPECT_EQ(instrument.driver.GetSampleDepth(), 3000);
    }
}

TEST(DriverWrapper, ClampsSamplesOfAllFourRowsAndNothingBehindTheBlocks) {
    ScriptedInstrument instrument;
    std::vector<float> blocks(4 * kSampleRow, 5);
    instrument.script.fillBlocks = [](std::span<float> all) {
        for (int row = 0; row < 4; ++row) {
            float* first = all.data() + row * kSampleRow;
            first[0] = kNaN;
            first[1] = kInfinity;
            first[2] = -kInfinity;
            first[3] = 1e20F;
            first[4] = -1e20F;
            first[5] = -126.5F;
            first[kSampleRow - 1] = kNaN;
        }
    };
    instrument.driver.GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
    for (int row = 0; row < 4; ++row) {
        const float* first = blocks.data() + row * kSampleRow;
        EXPECT_EQ((std::vector<float>(first, first + 7)),
                  (std::vector<float>{0, 32767, -32767, 32767, -32767, -126.5F, 5}));
        EXPECT_EQ(first[kSampleRow - 1], 0);
    }

    blocks.assign(blocks.size(), kNaN);
    instrument.script.fillBlocks = [](std::span<float>) {};
    instrument.driver.GetBufferBlocksMultiChan(2, 3, blocks.data(), 1);
    const auto bad = [&](int from, int count) {
        return std::count_if(blocks.begin() + from, blocks.begin() + from + count,
                             [](float x) { return std::isnan(x); });
    };
    EXPECT_EQ(bad(0, kSampleRow), kSampleRow);
    EXPECT_EQ(bad(kSampleRow, 512), 0);
    EXPECT_EQ(bad(kSampleRow + 512, kSampleRow - 512), kSampleRow - 512);
    EXPECT_EQ(bad(3 * kSampleRow, kSampleRow), kSampleRow);
    EXPECT_EQ(instrument.script.TakeViolations(),
              (Calls{"GetBufferBlocksMultiChan(2, 3, 1): channels 1..4",
                     "GetBufferBlocksMultiChan(2, 3, 1): 6 blocks fill a row"}));
}

TEST(DriverWrapper, NoBlocksBeyondTheBufferAreAskedFor) {
    ScriptedInstrument instrument;
    std::vector<float> blocks(4 * kSampleRow);
    instrument.driver.GetBufferBlocksMultiChan(0, 9, blocks.data(), 7);
    EXPECT_EQ(instrument.script.calls, Calls{"GetBufferBlocksMultiChan(1, 4, 6)"});
}

TEST(DriverWrapper, CutsIncrementsToTheBuffer) {
    ScriptedInstrument instrument;
    auto buffer = Buffer();
    instrument.script.sample = [](int, int i) { return static_cast<float>(i); };
    EXPECT_EQ(instrument.driver.GetBufferIncremental(1, buffer.data(), 500, 3000), 73);
    EXPECT_EQ(buffer.back(), 3072);
    EXPECT_EQ(instrument.driver.GetBufferIncremental(1, buffer.data(), std::numeric_limits<int>::max(), 1),
              3072);
    EXPECT_EQ(instrument.driver.GetBufferIncremental(1, buffer.data(), 10, 3073), 0);
    EXPECT_EQ(instrument.driver.GetBufferIncremental(1, buffer.data(), 10, -1), 0);
    EXPECT_EQ(instrument.driver.GetBufferIncremental(1, buffer.data(), -10, 20), 0);
    EXPECT_EQ(instrument.driver.GetBufferIncremental(1, buffer.data(), 0, 20), 0);
    EXPECT_EQ(instrument.script.calls,
              (Calls{"GetBufferIncremental(1, 73, 3000)", "GetBufferIncremental(1, 3072, 1)"}));
}

TEST(DriverWrapper, ClampsTheIncrementAndNothingElse) {
    ScriptedInstrument instrument;
    auto buffer = Buffer(kNaN);
    instrument.script.fillIncrement = [](int, float*, int, int) {};
    instrument.driver.GetBufferIncremental(1, buffer.data(), 20, 100);
    EXPECT_TRUE(std::isnan(buffer[99]));
    EXPECT_EQ(buffer[100], 0);
    EXPECT_EQ(buffer[119], 0);
    EXPECT_TRUE(std::isnan(buffer[120]));
}

TEST(DriverWrapper, CountsSinceTheArmStayInTheBuffer) {
    ScriptedInstrument instrument;
    instrument.script.samplesSinceTrigger.Then(
        {0, 12, 3000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()});
    std::vector<int> counts(5);
    for (int& count : counts) {
        count = instrument.driver.GetSamplesSinceTrigger(1);
    }
    EXPECT_EQ(counts, (std::vector<int>{0, 12, 3000, 3073, 0}));
}

TEST(DriverWrapper, DiscardsRISPassesOutsideTheGap) {
    struct Row {
        RISPass reported;
        bool valid;
    };
    const std::vector<Row> rows = {
        {{0, 0, 0}, true},          {{20, 0, 0}, true},          {{19.99F, 0, 7}, true},
        {{-0.01F, 0, 0}, false},    {{20.01F, 0, 0}, false},     {{kNaN, 0, 0}, false},
        {{kInfinity, 0, 0}, false}, {{-kInfinity, 0, 0}, false}, {{1e9F, 0, 0}, false},
        {{5, 0, -1}, false},
    };
    ScriptedInstrument instrument;
    auto buffer = Buffer();
    for (const Row& row : rows) {
        instrument.script.risPass.Always(row.reported);
        const RISPass pass = instrument.driver.GetBufferRIS(1, buffer.data(), 150);
        EXPECT_EQ(pass.status != -1, row.valid) << row.reported.position;
        EXPECT_TRUE(pass.position >= 0 && pass.position <= 20) << row.reported.position;
        if (row.valid) {
            EXPECT_EQ(pass.position, row.reported.position);
            EXPECT_EQ(pass.status, row.reported.status);
        }
    }
}

TEST(DriverWrapper, ClampsRISSamples) {
    ScriptedInstrument instrument;
    auto buffer = Buffer(kNaN);
    instrument.script.sample = [](int, int i) { return i == 3 ? kNaN : i == 4 ? -kInfinity : 1.0F; };
    instrument.driver.GetBufferRIS(2, buffer.data(), 150);
    EXPECT_EQ((std::vector<float>(buffer.begin() + 2, buffer.begin() + 6)),
              (std::vector<float>{1, 0, -32767, 1}));
    EXPECT_EQ(buffer[149], 1);
    EXPECT_TRUE(std::isnan(buffer[150]));
}

TEST(DriverWrapper, KeepsTheLastUsablePeriod) {
    ScriptedInstrument instrument;
    auto& period = instrument.script.samplePeriod;
    for (const float bad : {0.0F, -1e-6F, kNaN, kInfinity, -kInfinity, 1e-40F, 1e30F}) {
        period.Then({bad});
        EXPECT_EQ(instrument.driver.GetSamplePeriod(true, 0), 2e-8F) << bad;
    }
    period.Then({1e-3F, 0});
    EXPECT_EQ(instrument.driver.GetSamplePeriod(true, 0), 1e-3F);
    EXPECT_EQ(instrument.driver.GetSamplePeriod(true, 0), 1e-3F);
}

TEST(DriverWrapper, HeldDataKeepTheirOwnPeriod) {
    ScriptedInstrument instrument;
    auto& period = instrument.script.samplePeriod;
    period.Then({1e-3F, kNaN, 0, 0, 5e-6F, 0});
    instrument.driver.GetSamplePeriod(true, 0);
    EXPECT_EQ(instrument.driver.GetSamplePeriod(false, 4e-6), 4e-6F);
    EXPECT_EQ(instrument.driver.GetSamplePeriod(false, 0), 1e-3F);
    EXPECT_EQ(instrument.script.TakeViolations(), Calls{"GetSamplePeriod(0, 0): a held period to give back"});
    EXPECT_EQ(instrument.driver.GetSamplePeriod(true, 0), 1e-3F);
    EXPECT_EQ(instrument.driver.GetSamplePeriod(false, 4e-6), 5e-6F);
    EXPECT_EQ(instrument.driver.GetSamplePeriod(true, 0), 1e-3F) << "what was held is not what runs";
}

TEST(DriverWrapper, RescaledSamplesAreNumbers) {
    ScriptedInstrument instrument;
    const std::vector<float> source = {1, kNaN, -1, 0};
    std::vector<float> destination = {9, 9, 9, 9};
    instrument.driver.ReScaleSampleData(source.data(), destination.data(), 3, 0, 0, 1, 0);
    EXPECT_EQ(destination, (std::vector<float>{67108864, 0, -67108864, 9}));
    EXPECT_EQ(instrument.script.TakeViolations(),
              (Calls{"ReScaleSampleData(3, 0, 0, 1, 0): a whole record",
                     "ReScaleSampleData(3, 0, 0, 1, 0): volts per division"}));
}

TEST(DriverWrapper, AThousandfoldRescalingKeepsTheVoltage) {
    ScriptedInstrument instrument;
    std::vector<float> source(kSampleDepth);
    for (int i = 0; i < kSampleDepth; ++i) {
        source[static_cast<std::size_t>(i)] = static_cast<float>(i % 2 == 0 ? i : -i) * 10;
    }
    std::vector<float> destination(kSampleDepth);
    instrument.driver.ReScaleSampleData(source.data(), destination.data(), kSampleDepth, 0, 0, 30, 0.03F);
    for (std::size_t i = 0; i < source.size(); ++i) {
        EXPECT_NEAR(destination[i] * 0.03, source[i] * 30.0, 1e-6 * std::abs(source[i] * 30.0)) << i;
    }
}

TEST(DriverWrapper, DemonstrationSamplesAreNumbers) {
    ScriptedInstrument instrument;
    instrument.script.demoSample = [](int, int, int i) {
        return i == 0 ? kNaNDouble : i == 1 ? 1e300 : i == 2 ? -1e300 : 12.5;
    };
    std::vector<double> buffer(3000, -1);
    instrument.driver.MakeSampleData(buffer.data(), 3000, 0, 0, 10);
    EXPECT_EQ((std::vector<double>(buffer.begin(), buffer.begin() + 4)),
              (std::vector<double>{0, 32767, -32767, 12.5}));
}

TEST(DriverWrapper, SpectrumBinsAreNumbers) {
    ScriptedInstrument instrument;
    instrument.script.transform = [](std::span<double> buffer, double, int) {
        buffer[0] = kNaNDouble;
        buffer[1] = -std::numeric_limits<double>::infinity();
        buffer[2] = std::numeric_limits<double>::infinity();
        buffer[1024] = kNaNDouble;
        buffer[1025] = kNaNDouble;
    };
    std::vector<double> buffer(2048, -3);
    instrument.driver.FFT(buffer.data(), 2048, 0.5, 0);
    EXPECT_LT(buffer[0], -54) << "no level at all, not full scale";
    EXPECT_EQ(buffer[1], -32767);
    EXPECT_EQ(buffer[2], 32767);
    EXPECT_EQ(buffer[3], -3);
    EXPECT_LT(buffer[1024], -54);
    EXPECT_TRUE(std::isnan(buffer[1025])) << "not part of the spectrum";
    instrument.driver.FFT(buffer.data(), 2048, 0, 0);
    EXPECT_EQ(buffer[0], 0);
}

/// A driver whose names are what the test says, whatever the length.
class NamingDriver : public ScriptedDriver {
  public:
    std::int32_t length = 0;
    std::string issueText;
    bool writesNothing = false;
    void GetProductName(std::int32_t, std::uint8_t* buffer, std::int32_t* out) override {
        if (!writesNothing) {
            std::fill_n(buffer, 101, 'x');
            *out = length;
        }
    }
    void DrvrIssue(char* text) override {
        std::copy_n(issueText.begin(), std::min<std::size_t>(100, issueText.size()), text);
    }
    void GetRawChannelOffset(std::int32_t, float* out) override { *out = kNaN; }
    void GetOffsetDACScale(std::int32_t, float* out) override { *out = -kInfinity; }
    void GetHWRev(std::int32_t, std::int32_t*) override {}
    void GetRISBand(std::int32_t, std::int32_t*, std::int32_t* second) override { *second = 4; }
};

struct Naming {
    NamingDriver* script = new NamingDriver;
    Driver driver{std::unique_ptr<DriverBackend>(script)};
};

TEST(DriverWrapper, CutsNameLengths) {
    Naming naming;
    for (const auto& [length, expected] : {std::pair{-5, 0},
                                           {0, 0},
                                           {10, 10},
                                           {101, 101},
                                           {102, 101},
                                           {std::numeric_limits<int>::max(), 101}}) {
        naming.script->length = length;
        EXPECT_EQ(naming.driver.GetProductName(1), QString(expected, 'x')) << length;
    }
    naming.script->writesNothing = true;
    EXPECT_EQ(naming.driver.GetProductName(1), QString());
}

TEST(DriverWrapper, NamesHoldEightBitCharacters) {
    ScriptedInstrument instrument;
    instrument.script.modules[2].serial = "A\xE9\x01 b";
    EXPECT_EQ(instrument.driver.GetSerialNumber(2), QString::fromUtf8("A\u00E9\x01 b"));
}

TEST(DriverWrapper, IssueIsBlankPaddedOrZeroTerminated) {
    Naming naming;
    const auto issue = [&](std::string text) {
        naming.script->issueText = std::move(text);
        return naming.driver.DrvrIssue();
    };
    EXPECT_EQ(issue("one" + std::string(97, ' ')), "one");
    EXPECT_EQ(issue(std::string("two\0rubbish", 11)), "two");
    EXPECT_EQ(issue(std::string(100, 'z')), QString(100, 'z'));
    EXPECT_EQ(issue(""), "");
}

TEST(DriverWrapper, NumbersThatAreOnlyShownAreNumbers) {
    Naming naming;
    EXPECT_EQ(naming.driver.GetRawChannelOffset(1), 0);
    EXPECT_EQ(naming.driver.GetOffsetDACScale(1), 0);
    EXPECT_EQ(naming.driver.GetHWRev(1), 0) << "what a driver leaves unwritten is 0";
    int first = 9;
    int second = 9;
    naming.driver.GetRISBand(1, first, second);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 4);
}

} // namespace
