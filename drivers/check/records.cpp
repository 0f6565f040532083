// Records in normal refresh: that they end, what they hold, and what the front end does to them.

#include "sections.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace check {

namespace {

constexpr double kSlowestSetting = 0.05; ///< seconds; settings follow a knob
constexpr double kSlowestRead = 0.05;    ///< seconds; the program reads up to a hundred times a second

/// What the read-out of a record has to be, for each module.
void ExpectSamples(const Subject& subject, const Session& session, Guarded<float>& blocks) {
    subject.findings.That(blocks.FrontIsIntact(), "GetBufferBlocksMultiChan writes to its rows only",
                          "it wrote before the first one");
    session.ForEach([&](int ch) {
        const int base = (ch - 1) * CORVANTINE_ROW;
        const int missing = blocks.FirstUntouched(base, base + kDepth + 1) - base;
        subject.findings.That(missing > kDepth, "a read-out fills the samples 0..3000 of each module's row",
                              "channel %d: sample %d was not written", ch, missing);
        const float* row = Row(blocks, ch);
        const float* odd = std::find_if(row, row + std::min(missing, kDepth + 1),
                                        [](float x) { return !(std::abs(x) <= kMostSteps); });
        const auto at = static_cast<int>(odd - row);
        subject.findings.That(at >= std::min(missing, kDepth + 1),
                              "samples are steps within full scale, -127..127", "channel %d: sample %d is %g",
                              ch, at, at <= kDepth ? static_cast<double>(*odd) : 0.0);
    });
}

double Mean(Guarded<float>& blocks, int ch) {
    return std::accumulate(Row(blocks, ch), Row(blocks, ch) + kDepth, 0.0) / kDepth;
}

void CheckFrontEnd(const Subject& subject, const Session& session, Guarded<float>& blocks) {
    std::array<std::array<double, 2>, kSlots> means{};
    for (const int side : {0, 1}) {
        session.Flatten();
        session.ForEach([&](int ch) { subject.driver.SetOffset(ch, side == 0 ? -50.0F : 50.0F); });
        session.Start();
        session.Finish();
        session.Read(blocks);
        session.ForEach([&](int ch) {
            means[static_cast<std::size_t>(ch - 1)][static_cast<std::size_t>(side)] = Mean(blocks, ch);
            const auto [low, high] = std::minmax_element(Row(blocks, ch), Row(blocks, ch) + kDepth);
            subject.findings.That(*high - *low <= 25, "with the input on ground the trace is a flat line",
                                  "channel %d: it spans %g steps", ch, static_cast<double>(*high - *low));
        });
    }
    session.ForEach([&](int ch) {
        const auto& mean = means[static_cast<std::size_t>(ch - 1)];
        subject.findings.That(
            std::abs(mean[1] - mean[0] - 127) <= 13, "an offset of 1 percent moves the trace 1.27 steps up",
            "channel %d: from -50 to 50 percent it moved %.4g steps, expected 127", ch, mean[1] - mean[0]);
    });
}

void CheckBlocks(const Subject& subject, int modules) {
    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    const int ch = modules;
    const int base = (ch - 1) * CORVANTINE_ROW;
    subject.driver.GetBufferBlocksMultiChan(ch, ch, blocks.Get(), 1);
    subject.findings.That(
        blocks.FirstUntouched(base, base + kBlock) == base + kBlock && blocks.IsUntouched(0, base) &&
            blocks.IsUntouched(base + kBlock, CORVANTINE_BLOCKS),
        "GetBufferBlocksMultiChan fills the asked blocks of the asked rows and nothing else",
        "asked for one block of channel %d: its 512 samples are not there, or others are", ch);
}

void CheckSettingTimes(const Subject& subject) {
    const Driver& driver = subject.driver;
    const auto isQuick = [&](const auto& setting) {
        const auto index = static_cast<std::size_t>(setting.Index());
        const double median = subject.findings.Table().timings[index].Median();
        subject.findings.That(median <= kSlowestSetting, "settings take some milliseconds",
                              "half of the calls of %s took more than %.0f ms", setting.Name(), median * 1e3);
    };
    isQuick(driver.SetUpFrontEnd);
    isQuick(driver.SetOffset);
    isQuick(driver.SetBaseAdcClk);
    isQuick(driver.SetDecimationRatio);
    isQuick(driver.SetRISMode);
    isQuick(driver.SetTriggerDelay);
    isQuick(driver.SetTrigThresh);
    isQuick(driver.SetTrigType);
    isQuick(driver.SetNormTrig);
    isQuick(driver.SetPreTrigDepth);
}

/// How many samples a record says that it has, once it is complete.
void CheckLength(const Subject& subject, const Session& session) {
    session.Timebase(10, 10, false);
    session.Start();
    const bool complete = WaitFor(subject.patience, [&] { return !session.Runs(); });
    const int count = subject.driver.GetSamplesSinceTrigger(1);
    session.End();
    subject.findings.That(!complete || (count >= kDepth && count <= CORVANTINE_ROW),
                          "a complete record counts 3000 samples", "GetSamplesSinceTrigger returned %d",
                          count);
}

/// A record long enough to be looked at while it runs.
void CheckSlowRecord(const Subject& subject, const Session& session) {
    session.Timebase(10, 4000, false); // 1.2 s
    session.Start();
    subject.findings.That(WaitFor(0.5, [&] { return session.Runs(); }),
                          "GetAcquistionState is not zero while a record runs",
                          "a record of 1.2 s read 0 for its first 0.5 s");
    session.End();
    subject.findings.That(!session.Runs(), "AcquisitionEnd ends a record that runs",
                          "GetAcquistionState was still not zero");
    session.End();
    subject.findings.That(!session.Runs(), "AcquisitionEnd is harmless when nothing runs",
                          "GetAcquistionState was not zero after it");
}

} // namespace

void CheckRecords(const Subject& subject) {
    const Session session(subject);
    if (session.Modules() == 0) {
        subject.findings.Skip("records of the modules", "no module was found");
        return;
    }
    Guarded<float> blocks("buffer of 4 x 3072 samples", CORVANTINE_BLOCKS);
    subject.findings.That(!session.Runs(), "GetAcquistionState is 0 before the first AcquisitionStart",
                          "it was not zero");
    for (const auto& [megahertz, ratio] : {std::pair(50, 1), std::pair(25, 1), std::pair(10, 10)}) {
        session.Timebase(megahertz, ratio, false);
        for (int pass = 0; pass < 3; ++pass) {
            session.Start();
            const bool complete = session.Finish();
            subject.findings.That(complete, "a free-running record ends by itself",
                                  "at %d MHz by %d it still ran after %g s", megahertz, ratio,
                                  subject.patience);
            if (!complete) {
                return; // the rest would only wait
            }
            session.Read(blocks);
            ExpectSamples(subject, session, blocks);
        }
    }
    CheckBlocks(subject, session.Modules());
    CheckFrontEnd(subject, session, blocks);
    const auto index = static_cast<std::size_t>(subject.driver.GetBufferBlocksMultiChan.Index());
    const double median = subject.findings.Table().timings[index].Median();
    subject.findings.That(median <= kSlowestRead, "a read-out of all channels takes some milliseconds",
                          "half of them took more than %.0f ms", median * 1e3);
    CheckSettingTimes(subject);
    CheckLength(subject, session);
    CheckSlowRecord(subject, session);
}

} // namespace check
