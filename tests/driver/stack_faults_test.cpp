// Modules of the simulated stack that fail in the way their file says.

#include "driver/stack_fixture.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

class StackFaults : public StackFixture {
  protected:
    /// A module with a sine on it and these keys.
    static std::string Faulty(const std::string& keys) {
        return "[module]\nsignal = sine frequency=100kHz amplitude=1V\n" + keys + "\n";
    }
    bool Idle(int ch) {
        return Until([this, ch] { return driver->GetAcquistionState(ch) == 0; });
    }
};

TEST_F(StackFaults, AModuleThatStopsAnsweringShowsAsNoTrigger) {
    Open(Faulty("stops_answering_after = 300ms"));
    while (driver->PortOpen(1)) {
        Start();
        EXPECT_TRUE(Until([this] { return driver->GetAcquistionState(1) == 0 || !driver->PortOpen(1); }));
        End();
    }
    const auto before = Row(1);
    EXPECT_EQ(before, std::vector<float>(kSampleRow, 0)) << "nothing is read any more";
    EXPECT_EQ(driver->GetAcquistionState(1), 0);
    Start();
    EXPECT_NE(driver->GetAcquistionState(1), 0) << "armed, and no end comes";
    driver->SetNormTrig(1, false);
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    EXPECT_EQ(driver->GetTriggeredStatus(1), 0);
    EXPECT_EQ(driver->GetSamplesSinceTrigger(1), 0);
    std::vector<float> buffer(kSampleRow + 1, 5);
    driver->GetBufferIncremental(1, buffer.data(), 10, 0);
    EXPECT_EQ(buffer[0], 5);
    EXPECT_EQ(driver->GetBufferRIS(1, buffer.data(), 150).status, -1);
    EXPECT_EQ(driver->GetDetectLine(1), 0);
    driver->AcquisitionEnd(1);
    EXPECT_EQ(driver->GetAcquistionState(1), 0);
}

TEST_F(StackFaults, TheirTimesBeginAtTheOpening) {
    Find("speed = 1000\n" + Faulty("stops_answering_after = 30") + Faulty("busy_after = 30"));
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    for (int attempt = 0; attempt < 50; ++attempt) {
        const auto began = std::chrono::steady_clock::now();
        for (const int ch : {1, 2}) {
            driver->Close(ch);
            ASSERT_TRUE(driver->OpenAndReset(ch));
        }
        const bool answers = driver->PortOpen(1);
        const bool busy = driver->GetAcquistionState(2) != 0;
        if (std::chrono::steady_clock::now() - began < std::chrono::milliseconds(25)) {
            EXPECT_TRUE(answers);
            EXPECT_FALSE(busy);
            EXPECT_TRUE(Until([this] { return !driver->PortOpen(1); }));
            EXPECT_TRUE(Until([this] { return driver->GetAcquistionState(2) != 0; }));
            return;
        }
    }
    FAIL() << "the machine is too slow to look in time";
}

TEST_F(StackFaults, ASilentSlaveLeavesTheOthersAlone) {
    Open(Faulty("") + Faulty("stops_answering_after = 0"), 2);
    Start();
    EXPECT_TRUE(Finish());
    const auto row = Row(1);
    EXPECT_NEAR(*std::max_element(row.begin(), row.end()), 127.0 / 3, 0.6);
    EXPECT_EQ(Row(2), std::vector<float>(kSampleRow, 0));
}

TEST_F(StackFaults, ASilentSourceLeavesTheOthersWaiting) {
    Open(Faulty("") + Faulty("stops_answering_after = 0"), 2);
    driver->SetTrigMaster(1, false);
    driver->SetTrigMaster(2, true);
    Start(2);
    EXPECT_NE(driver->GetAcquistionState(1), 0);
    EXPECT_EQ(driver->GetTriggeredStatus(1), 0);
    End();
    EXPECT_EQ(driver->GetAcquistionState(1), 0);
}

TEST_F(StackFaults, AMasterMayStayBusy) {
    Open(Faulty("busy_after = 100ms"));
    Start();
    EXPECT_TRUE(Until([this] { return driver->GetTriggeredStatus(1) != 0; }));
    EXPECT_TRUE(Until([this] { return driver->GetSamplesSinceTrigger(1) == 3000; }));
    EXPECT_TRUE(Until([this] { return driver->GetAcquistionState(1) != 0; }));
    End();
    EXPECT_NE(driver->GetAcquistionState(1), 0) << "whatever is done";
    const auto row = Row(1);
    EXPECT_NEAR(*std::max_element(row.begin(), row.end()), 127.0 / 3, 0.6) << "all else works";
}

TEST_F(StackFaults, PassesMayBeInvalidOrOutOfPlace) {
    LibraryBackend::Loaded raw = LibraryBackend::Load(CORVANTINE_SIMULATED_STACK);
    ASSERT_TRUE(raw.backend);
    for (const char* passes : {"valid", "invalid", "misplaced"}) {
        Open(Faulty(std::string("ris_passes = ") + passes));
        SetTimebase(50, 1, true);
        bool before = false;
        bool behind = false;
        bool nowhere = false;
        for (int pass = 0; pass < 5; ++pass) {
            Start();
            EXPECT_TRUE(Finish());
            std::vector<float> entries(kSampleRow + 1);
            float position = 0;
            float second = 0;
            std::int32_t status = 0;
            // Beneath the wrapper, which lets no such pass through.
            for (int read = 0; read < 4; ++read) {
                raw.backend->GetBufferRIS(1, entries.data(), 150, &position, &second, &status);
                EXPECT_EQ(status == -1, std::string(passes) == "invalid");
                const bool placed = position >= 0 && position <= 20;
                EXPECT_EQ(placed, std::string(passes) != "misplaced") << position;
                before = before || position < 0;
                behind = behind || position > 20;
                nowhere = nowhere || std::isnan(position);
            }
            EXPECT_EQ(driver->GetBufferRIS(1, entries.data(), 150).status != -1,
                      std::string(passes) == "valid");
        }
        EXPECT_EQ(before && behind && nowhere, std::string(passes) == "misplaced");
    }
}

TEST_F(StackFaults, ReadingsMayBeNoNumber) {
    LibraryBackend::Loaded raw = LibraryBackend::Load(CORVANTINE_SIMULATED_STACK);
    ASSERT_TRUE(raw.backend);
    Open(Faulty("bad_readings = 0.01"));
    Acquire();
    std::vector<float> blocks(4 * kSampleRow);
    raw.backend->GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
    const auto bad =
        std::count_if(blocks.begin(), blocks.begin() + kSampleRow, [](float x) { return !std::isfinite(x); });
    EXPECT_NEAR(static_cast<double>(bad), 30, 2);
    EXPECT_TRUE(std::any_of(blocks.begin(), blocks.end(), [](float x) { return std::isnan(x); }));
    EXPECT_TRUE(std::any_of(blocks.begin(), blocks.end(), [](float x) { return std::isinf(x); }));
    const auto row = Row(1);
    EXPECT_TRUE(std::all_of(row.begin(), row.end(), [](float x) { return std::isfinite(x); }));
}

TEST_F(StackFaults, AnswersMayBeSlow) {
    Open(Faulty("answer_time = 5ms") + Faulty(""), 2);
    const auto began = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i) {
        driver->GetAcquistionState(1);
    }
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(50));
    Start();
    EXPECT_TRUE(Finish());
}

} // namespace
