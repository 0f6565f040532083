#include "driver/simulated_stack_fixture.h"

#include <cmath>
#include <numbers>

namespace {

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
    for (const char* fault :
         {"stops_answering", "stays_busy", "invalid_passes", "misplaced_passes", "bad_readings", "slow"}) {
        EXPECT_EQ(FindFile(examples + "/" + fault + ".stack"), 2);
    }
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
        EXPECT_FALSE(driver->PortOpen(ch));
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
