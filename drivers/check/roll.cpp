// A slow record, fetched while it runs.

#include "sections.h"

#include <algorithm>
#include <cmath>

namespace check {

namespace {

constexpr int kPolls = 1001;          ///< as often as the program asks whether the record has begun
constexpr double kSlowestPoll = 1e-3; ///< seconds
constexpr double kWatched = 1.5;      ///< seconds of a record of 3 s

void CheckPolls(const Subject& subject) {
    const Driver& driver = subject.driver;
    const auto atOnce = [&](const auto& question) {
        for (int i = 0; i < Timing::kKept; ++i) {
            question(1);
        }
        const auto index = static_cast<std::size_t>(question.Index());
        const double median = subject.findings.Table().timings[index].Median();
        subject.findings.That(median <= kSlowestPoll, "questions for state, trigger and count return at once",
                              "half of the calls of %s took more than %.1f ms", question.Name(),
                              median * 1e3);
    };
    atOnce(driver.GetAcquistionState);
    atOnce(driver.GetTriggeredStatus);
    atOnce(driver.GetSamplesSinceTrigger);
}

/// Reads n new samples, as the program does, and looks at what was touched.
void Fetch(const Subject& subject, int ch, Guarded<float>& buffer, int n, int start) {
    buffer.Clear();
    subject.driver.GetBufferIncremental(ch, buffer.Get(), n, start);
    const int missing = buffer.FirstUntouched(start, start + n);
    subject.findings.That(missing == start + n, "GetBufferIncremental fills start .. start+count-1",
                          "channel %d, %d samples from %d on: position %d was not written", ch, n, start,
                          missing);
    subject.findings.That(buffer.IsUntouched(0, start) && buffer.IsUntouched(start + n, buffer.Count()) &&
                              buffer.FrontIsIntact(),
                          "GetBufferIncremental touches nothing else in the buffer",
                          "channel %d, %d samples from %d on: others were written", ch, n, start);
    const bool good = std::all_of(buffer.Get() + start, buffer.Get() + missing,
                                  [](float x) { return std::abs(x) <= kMostSteps; });
    subject.findings.That(good, "samples of a roll are steps within full scale, -127..127",
                          "channel %d: one of those from %d on is not", ch, start);
}

} // namespace

void CheckRoll(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const Session session(subject);
    if (session.Modules() == 0) {
        findings.Skip("roll", "no module was found");
        return;
    }
    Guarded<float> buffer("buffer of 3073 samples", CORVANTINE_BUFFER);
    session.Timebase(10, 10000, false); // 1 ms a sample
    session.Start();
    int polls = 0;
    while (polls < kPolls && !session.Runs()) {
        ++polls;
    }
    findings.That(polls < kPolls, "a roll runs within 1001 polls of the arm",
                  "GetAcquistionState stayed 0, so that the program would never fetch a sample");
    int read = 0;
    int first = 0;
    double firstAt = 0;
    double lastAt = 0;
    bool falls = false;
    const double until = Now() + kWatched;
    while (Now() < until) {
        const int count = driver.GetSamplesSinceTrigger(1);
        falls = falls || count < read;
        if (count - read > 10) {
            session.ForEach([&](int ch) {
                const int n = std::min(count, kDepth) - read;
                if (n > 0) {
                    Fetch(subject, ch, buffer, n, read);
                }
            });
            read = std::max(read, std::min(count, kDepth));
            lastAt = Now();
            if (firstAt == 0) {
                first = read;
                firstAt = lastAt;
            }
        }
        Sleep(5e-3);
    }
    CheckPolls(subject);
    findings.That(!falls, "GetSamplesSinceTrigger never falls while a record runs", "it fell below %d", read);
    findings.That(read > 100, "GetSamplesSinceTrigger grows while a slow record runs",
                  "after %g s of 1000 samples a second the program would have fetched %d", kWatched, read);
    if (read > 100 && read < kDepth) {
        const double rate = (read - first) / std::max(lastAt - firstAt, 1e-3);
        findings.That(rate > 700 && rate < 1300, "samples come as fast as GetSamplePeriod says",
                      "%.0f a second, though the period is 1 ms", rate);
    } else if (read >= kDepth) {
        findings.That(false, "samples come as fast as GetSamplePeriod says",
                      "a record of 3 s was complete after %g s", lastAt - firstAt);
    }
    session.End();
    findings.That(!session.Runs(), "AcquisitionEnd ends a roll", "GetAcquistionState was still not zero");
}

} // namespace check
