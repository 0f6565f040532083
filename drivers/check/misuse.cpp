// What the program never does: out of order, on channels that are none, with values that are none.

#include "sections.h"

#include <cmath>
#include <limits>

namespace check {

namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kNoChannels[] = {0, 5, -1, 100, kMost, kLeast};

void ExpectSilence(const Subject& subject, int ch, const char* rule) {
    const Driver& driver = subject.driver;
    const auto zero = [&](const auto& question) {
        const int answer = question(ch);
        subject.findings.That(answer == 0, rule, "%s(%d) returned %d", question.Name(), ch, answer);
    };
    zero(driver.GetAcquistionState);
    zero(driver.GetTriggeredStatus);
    zero(driver.GetSamplesSinceTrigger);
    zero(driver.GetDetectLine);
    zero(driver.PortOpen);
}

/// Every operation that takes a channel, with values that would be right for one.
void CallAll(const Driver& driver, int ch) {
    driver.SetTrigMaster(ch, CORVANTINE_FALSE);
    driver.SetDetectLine(ch, CORVANTINE_FALSE, 1);
    driver.SetUpFrontEnd(ch, 1, CORVANTINE_TRUE, CORVANTINE_FALSE, 0);
    driver.SetOffset(ch, 10);
    driver.SetCalSource(ch, 0);
    driver.SetLEDMode(ch, 1);
    driver.SetBaseAdcClk(ch, 50);
    driver.SetDecimationRatio(ch, 1);
    driver.SetRISMode(ch, 0);
    driver.SetTriggerDelay(ch, 0);
    driver.SetTrigThresh(ch, 0);
    driver.SetTrigType(ch, 3);
    driver.SetNormTrig(ch, CORVANTINE_FALSE);
    driver.SetPreTrigDepth(ch, 0.5F);
    driver.AcquisitionStart(ch);
    driver.AcquisitionEnd(ch);
    Guarded<float> buffer("buffer of 3073 samples", CORVANTINE_BUFFER);
    driver.GetBufferIncremental(ch, buffer.Get(), 20, 0);
    float position = 0;
    float second = 0;
    std::int32_t status = -1;
    driver.GetBufferRIS(ch, buffer.Get(), kRISSamples, &position, &second, &status);
    driver.Close(ch);
}

void CallReaders(const Driver& driver, int ch) {
    IdentityOf(driver, ch);
    std::int32_t whole = 0;
    std::int32_t other = 0;
    float real = 0;
    driver.GetHWRev(ch, &whole);
    driver.GetControllerRev(ch, &whole);
    driver.GetRISBand(ch, &whole, &other);
    driver.GetTriggerDACOffset(ch, &whole);
    driver.GetRawChannelOffset(ch, &real);
    driver.GetOffsetDACScale(ch, &real);
}

void ExpectStillWorks(const Subject& subject, const Session& session, const char* after) {
    if (session.Modules() == 0) {
        return;
    }
    session.Timebase(10, 1, false);
    session.SetTrigger(false, 3, 0);
    session.Start();
    const bool complete = session.Finish();
    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    session.Read(blocks);
    const int missing = blocks.FirstUntouched(0, kDepth);
    subject.findings.That(complete && missing == kDepth, "after calls that never come it works as before",
                          "%s: %s", after, complete ? "no record was read" : "a record did not end");
}

void SendWildValues(const Driver& driver, int ch) {
    const float none = std::nanf("");
    for (const float value : {none, HUGE_VALF, -HUGE_VALF, 1e30F, -1e30F}) {
        driver.SetOffset(ch, value);
        driver.SetTriggerDelay(ch, value);
        driver.SetTrigThresh(ch, value);
        driver.SetPreTrigDepth(ch, value);
    }
    for (const int value : {kMost, kLeast, -1, 4, 99}) {
        driver.SetUpFrontEnd(ch, value, value, value, value);
        driver.SetCalSource(ch, value);
        driver.SetLEDMode(ch, value);
        driver.SetTrigType(ch, value);
        driver.SetRISMode(ch, value);
    }
    driver.SetRISMode(ch, 0);
}

/// Read-outs whose place lies outside the buffers, wholly or in part.
void ReadWildly(const Driver& driver) {
    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    driver.GetBufferBlocksMultiChan(1, kSlots, blocks.Get(), 7);
    driver.GetBufferBlocksMultiChan(0, 5, blocks.Get(), 6);
    driver.GetBufferBlocksMultiChan(kLeast, kMost, blocks.Get(), kMost);
    driver.GetBufferBlocksMultiChan(4, 1, blocks.Get(), 6);
    driver.GetBufferBlocksMultiChan(1, kSlots, blocks.Get(), -1);
    Guarded<float> buffer("buffer of 3073 samples", CORVANTINE_BUFFER);
    for (const auto& [count, start] :
         {std::pair(3073, 0), std::pair(1, 3072), std::pair(3073, 1), std::pair(10, 3070), std::pair(10, -5),
          std::pair(-10, 20), std::pair(10, 4000), std::pair(kMost, 10), std::pair(10, kMost),
          std::pair(kMost, kMost), std::pair(kLeast, kLeast)}) {
        driver.GetBufferIncremental(1, buffer.Get(), count, start);
    }
    Guarded<float> pass("buffer of 150 samples", kRISSamples);
    float position = 0;
    float second = 0;
    std::int32_t status = -1;
    for (const int count : {kRISSamples, 0, -1}) {
        driver.GetBufferRIS(1, pass.Get(), count, &position, &second, &status);
    }
}

} // namespace

void CheckWildCalls(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const Session session(subject);
    for (const int ch : kNoChannels) {
        findings.That(!IdentityOf(driver, ch).IsModule(), "only the slots 1..4 hold modules",
                      "slot %d is named \"Corvantine\" as well", ch);
        findings.That(driver.OpenAndReset(ch) == 0, "OpenAndReset returns 0 for a channel that is none",
                      "channel %d opened", ch);
        driver.InitScope(ch, CORVANTINE_FALSE);
        CallReaders(driver, ch);
        CallAll(driver, ch);
        ExpectSilence(subject, ch, "questions about a channel that is none are answered with 0");
    }
    ExpectStillWorks(subject, session, "channels that are none");
    for (const int value : {0, -1, kLeast}) {
        driver.SetBaseAdcClk(1, value);
        driver.SetDecimationRatio(1, value);
        const float period = driver.GetSamplePeriod(CORVANTINE_TRUE, 0);
        findings.That(std::isfinite(period) && period > 0, "the sample period is always above 0",
                      "with the clock and the ratio set to %d it is %g", value, static_cast<double>(period));
    }
    session.Timebase(50, 1, false);
    SendWildValues(driver, 1);
    ExpectStillWorks(subject, session, "settings out of range");
    ReadWildly(driver);
    session.Timebase(50, 1, true);
    ReadWildly(driver);
    ExpectStillWorks(subject, session, "read-outs out of range");
}

void CheckOrder(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    // Before OpenDrvr; nothing has to come of it.
    driver.GetSampleDepth();
    driver.GetSamplePeriod(CORVANTINE_TRUE, 1);
    for (int ch = 1; ch <= kSlots; ++ch) {
        ExpectSilence(subject, ch, "questions before OpenDrvr are answered with 0");
        CallReaders(driver, ch);
        CallAll(driver, ch);
    }
    driver.CloseDrvr(0);

    // Before OpenAndReset, and in slots that stay closed.
    int handle = driver.OpenDrvr();
    std::int32_t port = -2;
    std::int32_t channel = -2;
    driver.Enumerate(&port, &channel);
    for (int ch = 1; ch <= kSlots; ++ch) {
        CallAll(driver, ch);
        ExpectSilence(subject, ch, "questions about a channel that is not open are answered with 0");
    }
    driver.CloseDrvr(handle);

    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    {
        const Session session(subject);
        session.Read(blocks); // before any record
        session.End();
        session.Start();
        session.Start(); // twice
        if (session.Modules() > 0) {
            findings.That(session.Finish(), "AcquisitionStart twice starts anew", "no record ended");
        }
        for (int ch = session.Modules() + 1; ch <= kSlots && session.Modules() > 0; ++ch) {
            CallAll(driver, ch);
            ExpectSilence(subject, ch, "questions about a channel that is not open are answered with 0");
        }
        ExpectStillWorks(subject, session, "calls on channels that are not open");
        session.Timebase(10, 4000, false);
        session.Start();
        session.ForEach([&](int ch) { driver.Close(ch); }); // in the middle of a record
        session.ForEach([&](int ch) { driver.Close(ch); });
        session.ForEach([&](int ch) {
            ExpectSilence(subject, ch, "questions about a closed channel are answered with 0");
            CallAll(driver, ch);
        });
        session.Read(blocks);
    }
    // After CloseDrvr.
    for (int ch = 1; ch <= kSlots; ++ch) {
        ExpectSilence(subject, ch, "questions after CloseDrvr are answered with 0");
        CallAll(driver, ch);
    }
    driver.CloseDrvr(1);
    handle = driver.OpenDrvr();
    findings.That(driver.GetSampleDepth() == kDepth, "the library can be opened again after CloseDrvr",
                  "GetSampleDepth is not 3000 any more");
    driver.CloseDrvr(handle);
}

} // namespace check
