// The simulated stack counts what the program does that a driver need not accept.

#include "driver/stack_fixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <functional>

namespace {

using testing::HasSubstr;

class StackRules : public StackFixture {};

const char* const kTwo = "[module]\n[module]\n";

TEST_F(StackRules, EachIsNamed) {
    using Use = std::function<void(Driver&)>;
    std::vector<float> floats(4 * kSampleRow);
    std::vector<double> doubles(4096);
    const std::vector<std::pair<const char*, Use>> uses = {
        {"AcquisitionStart(0): no such channel", [](Driver& d) { d.AcquisitionStart(0); }},
        {"GetAcquistionState(5): no such channel", [](Driver& d) { d.GetAcquistionState(5); }},
        {"SetTrigThresh(3, 0): the channel is not open", [](Driver& d) { d.SetTrigThresh(3, 0); }},
        {"GetRISBand(4): the channel is not open",
         [](Driver& d) {
             std::int32_t x = 0;
             d.GetRISBand(4, x, x);
         }},
        {"SetBaseAdcClk(1, 20): clock 50, 25 or 10", [](Driver& d) { d.SetBaseAdcClk(1, 20); }},
        {"SetDecimationRatio(1, 0): decimation 1..400000", [](Driver& d) { d.SetDecimationRatio(1, 0); }},
        {"SetDecimationRatio(1, 400001): decimation 1..400000",
         [](Driver& d) { d.SetDecimationRatio(1, 400001); }},
        {"SetUpFrontEnd(1, 3, -1, 0, 0): range 0..2", [](Driver& d) { d.SetUpFrontEnd(1, 3, true, false); }},
        {"SetUpFrontEnd(1, 1, -1, -1, 0): AC, DC or GND",
         [](Driver& d) { d.SetUpFrontEnd(1, 1, true, true); }},
        {"SetOffset(1, 101): percent of span", [](Driver& d) { d.SetOffset(1, 101); }},
        {"SetCalSource(1, -1): 0 or 1", [](Driver& d) { d.SetCalSource(1, -1); }},
        {"SetLEDMode(1, 0): mode 1..3", [](Driver& d) { d.SetLEDMode(1, 0); }},
        {"SetTriggerDelay(1, -0.5): a time that lies ahead", [](Driver& d) { d.SetTriggerDelay(1, -0.5F); }},
        {"SetTrigThresh(1, 100.5): percent of span", [](Driver& d) { d.SetTrigThresh(1, 100.5F); }},
        {"SetTrigType(1, 4): type 0..3", [](Driver& d) { d.SetTrigType(1, 4); }},
        {"SetPreTrigDepth(1, 1): fraction 0..0.99", [](Driver& d) { d.SetPreTrigDepth(1, 1); }},
        {"SetDetectLine(1, -1, 1): neither drive nor release", [](Driver& d) { d.SetDetectLine(1, -1, 1); }},
        {"SetTrigMaster(2, -1): another channel is the source of the trigger",
         [](Driver& d) { d.SetTrigMaster(2, true); }},
        {"AcquisitionStart(2): no channel is the source of the trigger",
         [](Driver& d) { d.SetTrigMaster(1, false), d.AcquisitionStart(2); }},
        {"SetDemoMode(1): there are modules", [](Driver& d) { d.SetDemoMode(1); }},
        {"GetBufferBlocksMultiChan(1, 4, 5): 6 blocks fill a row",
         [&](Driver& d) { d.GetBufferBlocksMultiChan(1, 4, floats.data(), 5); }},
        {"GetBufferRIS(1, 151): 150 samples", [&](Driver& d) { d.GetBufferRIS(1, floats.data(), 151); }},
        {"GetSamplePeriod(0, 0): a held period to give back", [](Driver& d) { d.GetSamplePeriod(false, 0); }},
        {"ReScaleSampleData(2999, 0, 0, 1, 1): a whole record",
         [&](Driver& d) { d.ReScaleSampleData(floats.data(), floats.data(), 2999, 0, 0, 1, 1); }},
        {"MakeSampleData(3000, 0, 4, 0): channel less 1",
         [&](Driver& d) { d.MakeSampleData(doubles.data(), 3000, 0, 4, 0); }},
        {"FFT(2048, 0, 5): window 0..4", [&](Driver& d) { d.FFT(doubles.data(), 2048, 0, 5); }},
        {"OpenAndReset(1): opened twice", [](Driver& d) { d.OpenAndReset(1), d.InitScope(1, true); }},
        {"OpenAndReset(4): an empty slot", [](Driver& d) { d.OpenAndReset(4); }},
        {"InitScope(2, 0): initialised twice", [](Driver& d) { d.InitScope(2, false); }},
        {"SetOffset(2, 3): before InitScope",
         [](Driver& d) { d.Close(2), d.OpenAndReset(2), d.SetOffset(2, 3); }},
        {"AcquisitionEnd(2): the channel is not open", [](Driver& d) { d.Close(2), d.AcquisitionEnd(2); }},
        {"Enumerate(-2, -2): enumerated twice",
         [](Driver& d) {
             std::int32_t port = -2;
             std::int32_t channel = -2;
             d.Enumerate(port, channel);
         }},
    };
    for (const auto& [text, use] : uses) {
        Open(kTwo, 2);
        use(*driver);
        EXPECT_EQ(Leave(), "simulated stack: calls that broke the interface: 1\nsimulated stack: 1 x " +
                               std::string(text) + "\n");
    }
}

TEST_F(StackRules, AChannelIsAskedForOnlyAfterEnumerate) {
    qputenv("CORVANTINE_STACK", Write("early.stack", kTwo).c_str());
    driver = std::make_unique<Driver>(LibraryBackend::Load(CORVANTINE_SIMULATED_STACK).backend);
    driver->OpenDrvr();
    driver->GetHWRev(2);
    testing::internal::CaptureStderr();
    driver->CloseDrvr(2);
    driver.reset();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::AllOf(HasSubstr("1 x GetHWRev(2): before Enumerate\n"),
                               HasSubstr("1 x CloseDrvr(2): the handle of OpenDrvr\n")));
}

TEST_F(StackRules, ModulesAreClosedBeforeTheLibrary) {
    Open(kTwo, 2);
    testing::internal::CaptureStderr();
    driver->CloseDrvr(1);
    driver.reset();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("CloseDrvr(1): a channel is still open"));
}

TEST_F(StackRules, TheSameIsCountedAndTheListHasAnEnd) {
    Open(kTwo, 2);
    for (int i = 0; i < 3; ++i) {
        driver->SetTrigType(1, 9);
    }
    for (int type = 100; type < 200; ++type) {
        driver->SetTrigType(2, type);
    }
    const std::string said = Leave();
    EXPECT_THAT(said, HasSubstr("broke the interface: 103\n"));
    EXPECT_THAT(said, HasSubstr("simulated stack: 3 x SetTrigType(1, 9): type 0..3\n"));
    EXPECT_THAT(said, HasSubstr("simulated stack: 51 more\n"));
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 52);
}

TEST_F(StackRules, WhatTheProgramDoesOnUnusedChannelsIsFine) {
    Open(kTwo, 1);
    for (const int ch : {2, 3}) {
        driver->GetAcquistionState(ch);
        driver->GetTriggeredStatus(ch);
        driver->GetSamplesSinceTrigger(ch);
        driver->SetNormTrig(ch, true);
        driver->SetTrigMaster(ch, false);
        driver->SetDetectLine(ch, -1, 0);
        driver->AcquisitionStart(ch);
        driver->PortOpen(ch);
        driver->Close(ch);
    }
}

TEST_F(StackRules, TheFirstEndsTheProgramIfTheFileSaysSo) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            Open(std::string("on_violation = end\n") + kTwo, 2);
            driver->SetTrigType(1, 9);
        },
        testing::KilledBySignal(SIGABRT), "simulated stack: SetTrigType\\(1, 9\\): type 0\\.\\.3");
    Open(std::string("on_violation = tell\n") + kTwo, 2);
    driver->SetTrigType(1, 9);
    EXPECT_NE(Leave(), "");
}

} // namespace
