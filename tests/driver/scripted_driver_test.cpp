#include "support/scripted_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace {

using Calls = std::vector<std::string>;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(ScriptedDriver, RecordsCallsInOrderWithTheEventsOfTheTest) {
    ScriptedInstrument instrument;
    instrument.driver.AcquisitionStart(2);
    instrument.script.Note("PlotNow");
    instrument.driver.GetAcquistionState(1);
    instrument.driver.SetTrigThresh(1, 12.5F);
    EXPECT_EQ(instrument.script.CallsButPolls(),
              (Calls{"AcquisitionStart(2)", "PlotNow", "SetTrigThresh(1, 12.5)"}));
    EXPECT_EQ(instrument.script.CallsOf({"GetAcquistionState", "PlotNow"}),
              (Calls{"PlotNow", "GetAcquistionState(1)"}));
    EXPECT_EQ(instrument.script.Count("AcquisitionStart"), 1);
    EXPECT_THAT(instrument.script.TakeCalls(), SizeIs(4));
    EXPECT_THAT(instrument.script.calls, IsEmpty());
}

TEST(ScriptedDriver, AnswersTheQueueFirst) {
    ScriptedInstrument instrument;
    instrument.script.acquistionState.Then({1, 2});
    instrument.script.acquistionState.By([](int ch) { return 10 * ch; });
    EXPECT_EQ(instrument.driver.GetAcquistionState(1), 1);
    EXPECT_EQ(instrument.driver.GetAcquistionState(1), 2);
    EXPECT_EQ(instrument.driver.GetAcquistionState(3), 30);
}

TEST(ScriptedDriver, PeriodFollowsTheClockUnlessScripted) {
    ScriptedInstrument instrument;
    instrument.driver.SetBaseAdcClk(1, 10);
    instrument.driver.SetDecimationRatio(1, 100);
    EXPECT_FLOAT_EQ(instrument.driver.GetSamplePeriod(true, 0), 1e-5F);
    EXPECT_FLOAT_EQ(instrument.driver.GetSamplePeriod(false, 3e-3), 3e-3F);
    instrument.driver.SetRISMode(1, true);
    EXPECT_FLOAT_EQ(instrument.driver.GetSamplePeriod(true, 0), 1e-9F);
}

TEST(ScriptedDriver, DetectLineTellsTheStackTest) {
    ScriptedInstrument instrument(3);
    instrument.script.modules[3].hearsLine = false;
    for (int ch = 1; ch <= 3; ++ch) {
        instrument.driver.SetDetectLine(ch, 0, 1);
        EXPECT_NE(instrument.driver.GetDetectLine(ch), 0);
    }
    instrument.driver.SetDetectLine(1, -1, 0);
    EXPECT_EQ(instrument.driver.GetDetectLine(2), 0);
    EXPECT_NE(instrument.driver.GetDetectLine(3), 0);
    instrument.driver.SetDetectLine(1, 0, 1);
    instrument.script.modules[2].lineHeldLow = true;
    EXPECT_EQ(instrument.driver.GetDetectLine(1), 0);
}

TEST(ScriptedDriver, AcceptsAWholeLife) {
    ScriptedInstrument instrument(1, ScriptedInstrument::State::BeforeStartUp);
    Driver& driver = instrument.driver;
    const auto handle = driver.OpenDrvr();
    std::int32_t port = -2;
    std::int32_t channel = -2;
    EXPECT_EQ(driver.Enumerate(port, channel), 1);
    EXPECT_EQ(driver.GetProductName(1), "Corvantine");
    EXPECT_EQ(driver.GetProductName(2), "");
    EXPECT_TRUE(driver.OpenAndReset(1));
    driver.SetNormTrig(3, false);
    driver.Close(1);
    driver.CloseDrvr(handle);
}

TEST(ScriptedDriver, NotesCallsOutsideTheLibrarysLife) {
    ScriptedInstrument early(4, ScriptedInstrument::State::BeforeStartUp);
    early.driver.AcquisitionStart(1);
    EXPECT_THAT(early.script.TakeViolations(),
                ElementsAre(HasSubstr("not open"), HasSubstr("before Enumerate")));

    ScriptedInstrument late;
    late.driver.CloseDrvr(77);
    EXPECT_THAT(late.script.TakeViolations(), IsEmpty());
    late.driver.AcquisitionEnd(1);
    EXPECT_THAT(late.script.TakeViolations(), ElementsAre("AcquisitionEnd(1): the library is closed"));
}

TEST(ScriptedDriver, NotesWhatADriverNeedNotAccept) {
    using Use = std::function<void(Driver&)>;
    std::vector<float> floats(4 * kSampleRow);
    std::vector<double> doubles(4096);
    const std::vector<std::pair<const char*, Use>> uses = {
        {"channel 0", [](Driver& d) { d.AcquisitionStart(0); }},
        {"channel 5", [](Driver& d) { d.GetAcquistionState(5); }},
        {"closed channel", [](Driver& d) { d.SetTrigThresh(3, 0); }},
        {"clock", [](Driver& d) { d.SetBaseAdcClk(1, 20); }},
        {"decimation", [](Driver& d) { d.SetDecimationRatio(1, 0); }},
        {"decimation", [](Driver& d) { d.SetDecimationRatio(1, 400001); }},
        {"range", [](Driver& d) { d.SetUpFrontEnd(1, 3, true, false); }},
        {"coupling", [](Driver& d) { d.SetUpFrontEnd(1, 1, true, true); }},
        {"offset", [](Driver& d) { d.SetOffset(1, 101); }},
        {"calibration", [](Driver& d) { d.SetCalSource(1, -1); }},
        {"LED", [](Driver& d) { d.SetLEDMode(1, 0); }},
        {"delay", [](Driver& d) { d.SetTriggerDelay(1, -1e-9F); }},
        {"threshold", [](Driver& d) { d.SetTrigThresh(1, 100.5F); }},
        {"type", [](Driver& d) { d.SetTrigType(1, 4); }},
        {"depth", [](Driver& d) { d.SetPreTrigDepth(1, 1); }},
        {"detect line", [](Driver& d) { d.SetDetectLine(1, -1, 1); }},
        {"demo argument", [](Driver& d) { d.SetDemoMode(-1); }},
        {"blocks", [&](Driver& d) { d.GetBufferBlocksMultiChan(1, 4, floats.data(), 5); }},
        {"RIS count", [&](Driver& d) { d.GetBufferRIS(1, floats.data(), 151); }},
        {"held period", [](Driver& d) { d.GetSamplePeriod(false, 0); }},
        {"rescale count",
         [&](Driver& d) { d.ReScaleSampleData(floats.data(), floats.data(), 2999, 0, 0, 1, 1); }},
        {"demo count", [&](Driver& d) { d.MakeSampleData(doubles.data(), 3072, 0, 0, 0); }},
        {"demo channel", [&](Driver& d) { d.MakeSampleData(doubles.data(), 3000, 0, 4, 0); }},
        {"demo phase", [&](Driver& d) { d.MakeSampleData(doubles.data(), 3000, 0, 0, 7); }},
        {"FFT length", [&](Driver& d) { d.FFT(doubles.data(), 1024, 0, 0); }},
        {"FFT scale", [&](Driver& d) { d.FFT(doubles.data(), 2048, 1, 0); }},
        {"FFT window", [&](Driver& d) { d.FFT(doubles.data(), 2048, 0, 5); }},
        {"handle", [](Driver& d) { d.CloseDrvr(1); }},
        {"opened twice", [](Driver& d) { d.OpenDrvr(); }},
        {"module opened twice", [](Driver& d) { d.OpenAndReset(1); }},
        {"empty slot opened", [](Driver& d) { d.OpenAndReset(4); }},
    };
    for (const auto& [name, use] : uses) {
        ScriptedInstrument instrument(2);
        use(instrument.driver);
        EXPECT_THAT(instrument.script.TakeViolations(), SizeIs(1)) << name;
    }
}

TEST(ScriptedDriver, CallsOnUnusedChannelsThatTheProgramMakesAreFine) {
    ScriptedInstrument instrument(1);
    instrument.driver.GetAcquistionState(2);
    instrument.driver.GetTriggeredStatus(2);
    instrument.driver.GetSamplesSinceTrigger(2);
    instrument.driver.SetNormTrig(2, true);
    instrument.driver.SetTrigMaster(2, false);
    instrument.driver.SetDetectLine(2, -1, 0);
    instrument.driver.AcquisitionStart(2);
    EXPECT_FALSE(instrument.driver.PortOpen(2));
}

TEST(ScriptedDriver, FailsTheTestThatLeavesAViolation) {
    const auto leave = [](int type) {
        ScriptedInstrument instrument;
        instrument.driver.SetTrigType(1, type);
    };
    leave(3);
    EXPECT_NONFATAL_FAILURE(leave(4), "SetTrigType(1, 4): type 0..3");
}

} // namespace
