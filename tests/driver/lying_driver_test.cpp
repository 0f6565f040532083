#include "driver/driver.h"
#include "driver/library_backend.h"
#include "driver/lies.h"

#include "frame/record/samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace {

/// A driver library that breaks one rule. Buffers are on the heap and exactly as large as the interface has
/// them, so that a sanitizer sees a single step beyond.
class Lying {
  public:
    explicit Lying(const char* lie) : lie_(lie) { qputenv("CORVANTINE_LIE", lie); }
    ~Lying() { qunsetenv("CORVANTINE_LIE"); }

    bool Lies(const char* lie) const { return lie_ == lie; }
    bool LiesAbout(const char* subject) const { return lie_.find(subject) == 0; }

    Driver driver{LibraryBackend::Load(CORVANTINE_LYING_DRIVER).backend};

  private:
    std::string lie_;
};

void ForEachLie(const std::function<void(const Lying&, Driver&)>& check) {
    for (const char* lie : kLies) {
        SCOPED_TRACE(lie);
        Lying lying(lie);
        check(lying, lying.driver);
    }
}

template <class Values> bool AllAreSamples(const Values& values, int most = 32767) {
    return std::all_of(values.begin(), values.end(), [most](auto x) { return std::abs(x) <= most; });
}

TEST(LyingDriver, ReportsNamesAndNumbersThatCanBeUsed) {
    ForEachLie([](const Lying& lying, Driver& driver) {
        driver.OpenDrvr();
        EXPECT_EQ(driver.GetSampleDepth(), 3000);
        EXPECT_LE(driver.DrvrIssue().size(), 100);
        std::int32_t port = -2;
        std::int32_t channel = -2;
        driver.Enumerate(port, channel);
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            const auto name = driver.GetProductName(ch);
            EXPECT_EQ(name.size(), lying.Lies("name length 102") || lying.Lies("name length huge") ? 101
                                   : lying.Lies("name length negative") ||
                                           lying.Lies("name length smallest") || lying.Lies("silent")
                                       ? 0
                                       : 10);
            EXPECT_EQ(driver.GetSerialNumber(ch), name);
            driver.GetHWRev(ch);
            driver.GetPortNumber(ch);
            driver.GetControllerRev(ch);
            std::int32_t first = 0;
            std::int32_t second = 0;
            driver.GetRISBand(ch, first, second);
            driver.GetTriggerDACOffset(ch);
            EXPECT_TRUE(std::isfinite(driver.GetRawChannelOffset(ch)));
            EXPECT_TRUE(std::isfinite(driver.GetOffsetDACScale(ch)));
        }
    });
}

TEST(LyingDriver, FillsBuffersWithSamples) {
    ForEachLie([](const Lying& lying, Driver& driver) {
        std::vector<float> blocks(4 * kSampleRow);
        driver.GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
        EXPECT_TRUE(AllAreSamples(blocks));

        std::vector<float> buffer(kSampleRow + 1);
        const RISPass pass = driver.GetBufferRIS(1, buffer.data(), 150);
        EXPECT_TRUE(AllAreSamples(buffer));
        EXPECT_TRUE(pass.position >= 0 && pass.position <= 20);
        const bool badPosition = lying.LiesAbout("RIS position");
        EXPECT_EQ(pass.status == -1, badPosition || lying.Lies("silent"));

        std::vector<double> demo(kSampleDepth);
        driver.MakeSampleData(demo.data(), kSampleDepth, 0, 0, 10);
        EXPECT_TRUE(AllAreSamples(demo));

        std::vector<float> rescaled(kSampleRow + 1);
        driver.ReScaleSampleData(buffer.data(), rescaled.data(), kSampleDepth, 0, 0, 1, 1);
        EXPECT_TRUE(AllAreSamples(rescaled, 1 << 26));

        for (const double reference : {0.0, 0.5}) {
            std::vector<double> spectrum(2048);
            driver.FFT(spectrum.data(), 2048, reference, 1);
            spectrum.resize(kSpectrumBins);
            EXPECT_TRUE(AllAreSamples(spectrum));
        }
    });
}

TEST(LyingDriver, IncrementsStayInTheBuffer) {
    ForEachLie([](const Lying& lying, Driver& driver) {
        std::vector<float> buffer(kSampleRow + 1);
        int rollPosition = 0;
        for (int tick = 0; tick < 3; ++tick) {
            // As a roll reads: whatever was counted since the last read.
            const int count = driver.GetSamplesSinceTrigger(1) - rollPosition;
            rollPosition += driver.GetBufferIncremental(1, buffer.data(), count, rollPosition);
            EXPECT_GE(rollPosition, 0);
            EXPECT_LE(rollPosition, kSampleRow + 1);
        }
        EXPECT_EQ(rollPosition, lying.Lies("numbers huge") ? 3073 : lying.Lies("numbers negative") ? 0 : 1);
        EXPECT_TRUE(AllAreSamples(buffer));
    });
}

TEST(LyingDriver, PeriodIsATime) {
    ForEachLie([](const Lying& lying, Driver& driver) {
        const bool badPeriod = lying.LiesAbout("period");
        EXPECT_EQ(driver.GetSamplePeriod(true, 0), badPeriod ? 2e-8F : 1e-6F);
        EXPECT_EQ(driver.GetSamplePeriod(false, 4e-3), 4e-3F);
    });
}

} // namespace
