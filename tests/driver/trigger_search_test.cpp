// What it costs to wait for a trigger: counted in looks at the signal, not in time.

#include "trigger_search.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A saw of 1 MHz between -1 V and 1 V that counts who looks at it.
class CountedSaw : public sim::Wave {
  public:
    explicit CountedSaw(int& looks) : looks_(looks) {}
    double At(double time) const override {
        ++looks_;
        const double turn = time * 1e6 - static_cast<double>(static_cast<std::int64_t>(time * 1e6));
        return 2 * turn - 1;
    }
    void AddTo(std::span<float>, double, double) const override {}
    double Mean() const override { return 0; }
    double Lowest() const override { return -1; }
    double Highest() const override { return 1.1; } // so that no search is given up at once
    double SteepestSlope() const override { return 2e6; }

  private:
    int& looks_;
};

class TriggerSearchWork : public testing::Test {
  protected:
    static constexpr double kLag = 0.2;

    void SetUp() override {
        sim::ModuleDescription description;
        description.signal.Add(std::make_unique<CountedSaw>(looks));
        module = std::make_unique<sim::Module>(std::move(description), 1);
        module->SetUpFrontEnd(1, true, false);
        module->SetOffset(0);
        settings.type = sim::TriggerSettings::GreaterThan;
        settings.thresholdPercent = 35; // 1.05 of 3 V
        search.Begin(1, 1e-9);
    }
    int LooksUntil(double now) {
        looks = 0;
        EXPECT_FALSE(search.Find(*module, settings, now, kLag));
        return looks;
    }

    int looks = 0;
    std::unique_ptr<sim::Module> module;
    sim::TriggerSettings settings;
    sim::TriggerSearch search;
};

TEST_F(TriggerSearchWork, IsTheSameHoweverLongAgoTheArmWas) {
    LooksUntil(1.001);
    const int soon = LooksUntil(1.0011);
    EXPECT_GT(soon, 100);
    LooksUntil(100000);
    EXPECT_NEAR(LooksUntil(100000.0001), soon, soon / 50.0);
}

TEST_F(TriggerSearchWork, HasAnEndAfterAnHourWithoutAQuestion) {
    const int most = LooksUntil(1 + kLag);
    EXPECT_LT(most, 100000);
    EXPECT_LE(LooksUntil(3600), most) << "what lies further back is left";
    EXPECT_EQ(LooksUntil(3600), 0) << "nothing is looked at twice, and no backlog is kept";
}

TEST_F(TriggerSearchWork, LooksAtNothingFurtherBackThanTheLag) {
    settings.thresholdPercent = 0;
    const auto found = search.Find(*module, settings, 1000, 2e-6);
    ASSERT_TRUE(found);
    EXPECT_GE(*found, 1000 - 2e-6);
}

} // namespace
