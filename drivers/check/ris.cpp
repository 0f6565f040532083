// Repetitive interleaved sampling.

#include "sections.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace check {

namespace {

constexpr int kPasses = 60;

struct Outputs {
    Guarded<float> buffer{"buffer of 3073 samples", CORVANTINE_BUFFER};
    Guarded<float> position{"position of a pass", 1};
    Guarded<float> second{"second output of a pass", 1};
    Guarded<std::int32_t> status{"status of a pass", 1};

    bool Read(const Driver& driver, int ch) {
        buffer.Clear();
        position.Clear();
        second.Clear();
        status.Clear();
        driver.GetBufferRIS(ch, buffer.Get(), kRISSamples, position.Get(), second.Get(), status.Get());
        return !status.IsUntouched(0, 1) && status[0] != -1;
    }
};

} // namespace

void CheckRIS(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const Session session(subject);
    if (session.Modules() == 0) {
        findings.Skip("interleaved sampling", "no module was found");
        return;
    }
    Outputs pass;
    session.Timebase(50, 1, true);
    session.ForEach([&](int ch) {
        const bool isValid = pass.Read(driver, ch);
        const bool untouched = pass.status.IsUntouched(0, 1);
        findings.That(!isValid && !untouched, "GetBufferRIS tells the status -1 when there is no pass",
                      "channel %d, before the first acquisition: %s", ch,
                      untouched ? "the status was not written" : "the pass was told to be valid");
    });
    session.Flatten();
    session.SetTrigger(true, 1, -50); // fires at once
    std::array<int, kSlots> valid{};
    float lowest = 20;
    float highest = 0;
    for (int i = 0; i < kPasses; ++i) {
        session.Start();
        findings.That(session.Finish(), "an interleaved pass ends", "it still ran after %g s",
                      subject.patience);
        session.ForEach([&](int ch) {
            const bool isValid = pass.Read(driver, ch);
            findings.That(!pass.status.IsUntouched(0, 1), "GetBufferRIS writes its status",
                          "channel %d: it did not", ch);
            findings.That(pass.buffer.IsUntouched(kRISSamples, pass.buffer.Count()) &&
                              pass.buffer.FrontIsIntact(),
                          "GetBufferRIS writes 150 samples and no more",
                          "channel %d: entries from 150 on, or before the first, were written", ch);
            if (!isValid) {
                return;
            }
            ++valid[static_cast<std::size_t>(ch - 1)];
            const float position = pass.position[0];
            findings.That(!pass.position.IsUntouched(0, 1) && position >= 0 && position <= 20,
                          "the position of a valid pass lies in 0..20", "channel %d: it is %g", ch,
                          static_cast<double>(position));
            lowest = std::min(lowest, position);
            highest = std::max(highest, position);
            const int missing = pass.buffer.FirstUntouched(0, kRISSamples);
            findings.That(missing == kRISSamples, "a valid pass has 150 samples",
                          "channel %d: entry %d was not written", ch, missing);
            findings.That(std::all_of(pass.buffer.Get(), pass.buffer.Get() + missing,
                                      [](float x) { return std::abs(x) <= kMostSteps; }),
                          "samples of a pass are steps within full scale, -127..127",
                          "channel %d: one is not", ch);
        });
    }
    const char* spread = "positions differ from pass to pass and cover the gap of 20 ns";
    const int passes = std::accumulate(valid.begin(), valid.end(), 0);
    session.ForEach([&](int ch) {
        findings.That(passes == 0 || valid[static_cast<std::size_t>(ch - 1)] > 0,
                      "either every module interleaves or none does",
                      "channel %d: %d passes, and none of them valid", ch, kPasses);
    });
    if (passes == 0) {
        findings.Skip(spread, "every pass was told to be invalid: no interleaving");
    } else {
        findings.That(highest - lowest >= 10, spread, "%d passes lay between %g and %g", passes,
                      static_cast<double>(lowest), static_cast<double>(highest));
    }
}

} // namespace check
