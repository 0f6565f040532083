// The simulated stack counts what the program does that a driver need not accept.

#include "driver/stack_fixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <limits>

namespace {

using testing::HasSubstr;

class StackRules : public StackFixture {
  protected:
    static std::string Once(const std::string& text) {
        return "simulated stack: calls that broke the interface: 1\nsimulated stack: 1 x " + text + "\n";
    }
    /// What is said at the close of a library that these calls follow the opening of.
    std::string AfterOpening(const std::string& stackText, const std::function<void(Driver&)>& use) {
        EXPECT_EQ(Leave(), "");
        qputenv("CORVANTINE_STACK", Write("opening.stack", stackText).c_str());
        Driver early(LibraryBackend::Load(CORVANTINE_SIMULATED_STACK).backend);
        const std::int32_t handle = early.OpenDrvr();
        use(early);
        testing::internal::CaptureStderr();
        early.CloseDrvr(handle);
        return testing::internal::GetCapturedStderr();
    }
};

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
        EXPECT_EQ(Leave(), Once(text));
    }
}

TEST_F(StackRules, WhatTheProgramsOwnWrapperNeverSendsIsNamedToo) {
    using Use = std::function<void(DriverBackend&)>;
    std::vector<float> floats(4 * kSampleRow);
    std::vector<double> doubles(4096);
    std::int32_t nought = 0;
    std::int32_t five = 5;
    const std::vector<std::pair<const char*, Use>> uses = {
        {"SetNormTrig(1, 1): a boolean", [](DriverBackend& d) { d.SetNormTrig(1, 1); }},
        {"SetTrigMaster(1, 1): a boolean", [](DriverBackend& d) { d.SetTrigMaster(1, 1); }},
        {"SetRISMode(1, -1): 0 or 1", [](DriverBackend& d) { d.SetRISMode(1, -1); }},
        {"SetUpFrontEnd(1, 1, -1, 0, 1): the last argument is 0",
         [](DriverBackend& d) { d.SetUpFrontEnd(1, 1, -1, 0, 1); }},
        {"SetUpFrontEnd(1, 1, 1, 0, 0): AC, DC or GND",
         [](DriverBackend& d) { d.SetUpFrontEnd(1, 1, 1, 0, 0); }},
        {"InitScope(2, 1): a boolean",
         [](DriverBackend& d) { d.Close(2), d.OpenAndReset(2), d.InitScope(2, 1); }},
        {"AcquisitionStart(2): before InitScope",
         [](DriverBackend& d) { d.Close(2), d.OpenAndReset(2), d.AcquisitionStart(2); }},
        {"GetBufferBlocksMultiChan(1, 2, 6): channels 1..4",
         [&](DriverBackend& d) { d.GetBufferBlocksMultiChan(1, 2, floats.data(), 6); }},
        {"GetBufferIncremental(1, 10, 3070): positions inside the buffer",
         [&](DriverBackend& d) { d.GetBufferIncremental(1, floats.data(), 10, 3070); }},
        {"GetBufferIncremental(1, 10, -1): positions inside the buffer",
         [&](DriverBackend& d) { d.GetBufferIncremental(1, floats.data(), 10, -1); }},
        {"GetSamplePeriod(1, 0): a boolean", [](DriverBackend& d) { d.GetSamplePeriod(1, 0); }},
        {"ReScaleSampleData(3000, 0, 0, 0, 1): volts per division",
         [&](DriverBackend& d) { d.ReScaleSampleData(floats.data(), floats.data(), 3000, 0, 0, 0, 1); }},
        {"MakeSampleData(2999, 0, 0, 0): a whole record",
         [&](DriverBackend& d) { d.MakeSampleData(doubles.data(), 2999, 0, 0, 0); }},
        {"MakeSampleData(3000, 129, 0, 0): an offset in steps",
         [&](DriverBackend& d) { d.MakeSampleData(doubles.data(), 3000, 129, 0, 0); }},
        {"MakeSampleData(3000, 0, 0, 5): passes times 10",
         [&](DriverBackend& d) { d.MakeSampleData(doubles.data(), 3000, 0, 0, 5); }},
        {"FFT(1024, 0, 0): 2048 samples",
         [&](DriverBackend& d) { d.FFT(doubles.data(), 1024, 0, 0, &nought); }},
        {"FFT(2048, 0.25, 0): scale mode 0 or 0.5",
         [&](DriverBackend& d) { d.FFT(doubles.data(), 2048, 0.25, 0, &nought); }},
        {"FFT(2048, 0, 0): an integer that is 0",
         [&](DriverBackend& d) { d.FFT(doubles.data(), 2048, 0, 0, &five); }},
    };
    LibraryBackend::Loaded raw = LibraryBackend::Load(CORVANTINE_SIMULATED_STACK);
    ASSERT_TRUE(raw.backend);
    for (const auto& [text, use] : uses) {
        Open(kTwo, 2);
        use(*raw.backend);
        EXPECT_EQ(Leave(), Once(text));
    }
}

TEST_F(StackRules, SoIsTheOrderOfTheStart) {
    const auto enumerate = [](Driver& d, std::int32_t port, std::int32_t channel) {
        EXPECT_EQ(d.Enumerate(port, channel), 1);
    };
    const std::string foreign = "[module]\nproduct = Somebody else's\n";
    const auto forced = "Enumerate(-3, 5): a port and a channel 1..4, or -1, or -2";
    EXPECT_EQ(AfterOpening(foreign, [&](Driver& d) { enumerate(d, -3, 5); }), Once(forced));
    EXPECT_EQ(AfterOpening(foreign, [](Driver& d) { d.SetDemoMode(1); }),
              Once("SetDemoMode(1): before Enumerate"));
    EXPECT_EQ(AfterOpening(foreign, [&](Driver& d) { enumerate(d, -2, -2), d.SetDemoMode(0); }),
              Once("SetDemoMode(0): 1 is the only argument"));
    EXPECT_EQ(AfterOpening(foreign,
                           [&](Driver& d) {
                               enumerate(d, -2, -2);
                               d.OpenAndReset(1);
                               d.SetDemoMode(1);
                               d.Close(1);
                           }),
              Once("SetDemoMode(1): a channel is open"));
}

TEST_F(StackRules, ASecondOpeningForgetsNothingOfTheFirst) {
    EXPECT_EQ(AfterOpening(kTwo,
                           [](Driver& d) {
                               d.GetHWRev(2);
                               d.OpenDrvr();
                           }),
              "simulated stack: calls that broke the interface: 2\n"
              "simulated stack: 1 x GetHWRev(2): before Enumerate\n"
              "simulated stack: 1 x OpenDrvr(): opened twice\n");
}

TEST_F(StackRules, AProgramThatForgetsTheCloseIsTold) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            Open(kTwo, 2);
            driver->SetTrigType(1, 9);
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "simulated stack: the library was not closed\n"
        "simulated stack: calls that broke the interface: 1\n"
        "simulated stack: 1 x SetTrigType\\(1, 9\\): type 0\\.\\.3");
}

TEST_F(StackRules, WhatIsOutOfRangeIsLeftUnused) {
    Open("[module]\nsignal = square frequency=10kHz amplitude=1V\n");
    const auto before = Acquire();
    EXPECT_LT(before[1499], 0);
    EXPECT_GT(before[1500], 0);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const int range : {-1, 3}) {
        driver->SetUpFrontEnd(1, range, true, false);
    }
    driver->SetUpFrontEnd(1, 1, true, true);
    driver->SetCalSource(1, 2);
    for (const int megahertz : {0, 20, 100}) {
        driver->SetBaseAdcClk(1, megahertz);
    }
    for (const int ratio : {-1, 0, 400001}) {
        driver->SetDecimationRatio(1, ratio);
    }
    for (const int type : {-1, 4}) {
        driver->SetTrigType(1, type);
    }
    for (const float wrong : {-101.0F, 101.0F, nan}) {
        driver->SetOffset(1, wrong);
        driver->SetTrigThresh(1, wrong);
    }
    for (const float wrong : {-1e-3F, nan, std::numeric_limits<float>::infinity()}) {
        driver->SetTriggerDelay(1, wrong);
    }
    for (const float wrong : {-0.1F, 1.0F, nan}) {
        driver->SetPreTrigDepth(1, wrong);
    }
    EXPECT_FLOAT_EQ(driver->GetSamplePeriod(true, 0), 2e-8F);
    EXPECT_EQ(Acquire(), before);
    EXPECT_THAT(Leave(), HasSubstr("broke the interface: 24\n"));
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
