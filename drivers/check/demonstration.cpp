// What a driver owes when no module was found.

#include "sections.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace check {

namespace {

constexpr double kSlowestFill = 0.01; ///< seconds; four traces come up to a hundred times a second

std::vector<double> Trace(const Subject& subject, double offset, int channel, int phase) {
    Guarded<double> buffer("buffer of 3000 reals", kDepth);
    subject.driver.MakeSampleData(buffer.Get(), kDepth, offset, channel, phase);
    const int missing = buffer.FirstUntouched(0, kDepth);
    subject.findings.That(missing == kDepth && buffer.FrontIsIntact(), "MakeSampleData fills 3000 samples",
                          "sample %d was not written", missing);
    const auto odd =
        std::find_if(buffer.begin(), buffer.end(), [](double x) { return !(std::abs(x) <= 128); });
    subject.findings.That(odd == buffer.end(), "MakeSampleData makes steps within full scale, -127..127",
                          "with offset %g, channel less one %d and phase %d a sample is %g", offset, channel,
                          phase, odd == buffer.end() ? 0.0 : *odd);
    return {buffer.begin(), buffer.end()};
}

double Mean(const std::vector<double>& trace) {
    return std::accumulate(trace.begin(), trace.end(), 0.0) / static_cast<double>(trace.size());
}

double Difference(const std::vector<double>& a, const std::vector<double>& b) {
    double most = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        most = std::max(most, std::abs(a[i] - b[i]));
    }
    return most;
}

void CheckWaveforms(const Subject& subject) {
    Findings& findings = subject.findings;
    for (int channel = 0; channel < kSlots; ++channel) {
        const std::vector<double> trace = Trace(subject, 0, channel, 10);
        const auto [low, high] = std::minmax_element(trace.begin(), trace.end());
        findings.That(*high - *low >= 5, "MakeSampleData makes a trace that is no flat line",
                      "channel less one %d spans %g steps", channel, *high - *low);
        for (int other = 0; other < channel; ++other) {
            findings.That(Difference(trace, Trace(subject, 0, other, 10)) > 1,
                          "MakeSampleData makes another trace for each channel", "%d and %d are the same",
                          other, channel);
        }
        findings.That(Difference(trace, Trace(subject, 0, channel, 200)) > 1,
                      "the phase of MakeSampleData moves the trace", "channel less one %d stands still",
                      channel);
        const double moved = Mean(Trace(subject, 10, channel, 10)) - Mean(Trace(subject, -10, channel, 10));
        findings.That(moved > 5 && moved < 25, "the offset of MakeSampleData moves the trace up",
                      "channel less one %d: 20 steps of offset moved it %.3g", channel, moved);
        for (const int phase : {0, -10, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            Trace(subject, 127, channel, phase);
            Trace(subject, -127, channel, phase);
        }
    }
    const auto index = static_cast<std::size_t>(subject.driver.MakeSampleData.Index());
    const double median = findings.Table().timings[index].Median();
    findings.That(median <= kSlowestFill, "MakeSampleData takes a few milliseconds at most",
                  "half of the calls took more than %.0f ms", median * 1e3);
}

} // namespace

void CheckDemonstration(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const Session session(subject, Session::Mode::Demonstration);
    for (int ch = 1; ch <= kSlots; ++ch) {
        findings.That(driver.OpenAndReset(ch) != 0,
                      "in the demonstration OpenAndReset opens all four channels",
                      "channel %d: it returned 0", ch);
        driver.InitScope(ch, ch == 1 ? CORVANTINE_TRUE : CORVANTINE_FALSE);
    }
    driver.SetDetectLine(1, CORVANTINE_TRUE, CORVANTINE_FALSE);
    for (int ch = 2; ch <= kSlots; ++ch) {
        driver.SetDetectLine(ch, CORVANTINE_FALSE, 1);
        findings.That(driver.GetDetectLine(ch) == 0,
                      "in the demonstration GetDetectLine returns 0 for all but the master",
                      "channel %d: it returned not zero", ch);
    }
    for (const auto& [megahertz, ratio] : {std::pair(50, 1), std::pair(10, 400), std::pair(25, 1)}) {
        session.Timebase(megahertz, ratio, false);
        const double expected = ratio / (megahertz * 1e6);
        const auto period = static_cast<double>(driver.GetSamplePeriod(CORVANTINE_TRUE, 0));
        findings.That(std::abs(period - expected) <= 1e-5 * expected,
                      "in the demonstration GetSamplePeriod follows the clocks",
                      "%d MHz by %d should be %.6g s, it returned %.6g", megahertz, ratio, expected, period);
    }
    session.Start();
    driver.GetAcquistionState(1);
    driver.GetTriggeredStatus(1);
    session.End();
    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    session.Read(blocks);
    session.Timebase(50, 1, true);
    for (int ch = 1; ch <= kSlots; ++ch) {
        Guarded<float> buffer("buffer of 3073 samples", CORVANTINE_BUFFER);
        float position = 0;
        float second = 0;
        std::int32_t status = -2;
        driver.GetBufferRIS(ch, buffer.Get(), kRISSamples, &position, &second, &status);
        findings.That(status == -1 || (status != -2 && position >= 0 && position <= 20 &&
                                       buffer.FirstUntouched(0, kRISSamples) == kRISSamples),
                      "in the demonstration GetBufferRIS tells the status -1, or makes a pass",
                      "channel %d: neither", ch);
    }
    CheckWaveforms(subject);
}

} // namespace check
