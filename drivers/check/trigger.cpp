// Normal triggering against a flat line, whose place the offset decides.

#include "sections.h"

namespace check {

namespace {

constexpr double kLook = 0.15; ///< seconds in which a trigger that must not come would come

struct Case {
    float offset;
    int type;
    float threshold;
    bool fires;
    const char* rule;
};

constexpr const char* kLessThan = "trigger type 0 fires when the signal is less than the threshold";
constexpr const char* kGreaterThan = "trigger type 1 fires when the signal is greater than the threshold";
constexpr const char* kEdges = "trigger types 2 and 3 wait for an edge";
constexpr const char* kOffset = "the threshold is compared with samples that contain the offset";

constexpr Case kCases[] = {
    {0, 0, 50, true, kLessThan},     {0, 0, -50, false, kLessThan}, {0, 1, -50, true, kGreaterThan},
    {0, 1, 50, false, kGreaterThan}, {0, 2, 50, false, kEdges},     {0, 3, -50, false, kEdges},
    {60, 1, 30, true, kOffset},      {-60, 0, -30, true, kOffset},
};

} // namespace

void CheckTrigger(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const Session session(subject);
    if (session.Modules() == 0) {
        findings.Skip("the trigger", "no module was found");
        return;
    }
    session.Timebase(10, 1, false);
    session.Flatten();
    for (const Case& c : kCases) {
        session.ForEach([&](int ch) { driver.SetOffset(ch, c.offset); });
        session.SetTrigger(true, c.type, c.threshold);
        session.Start();
        const double patience = c.fires ? subject.patience : kLook;
        const bool ended = WaitFor(patience, [&] { return !session.Runs(); });
        const bool fired = driver.GetTriggeredStatus(1) != 0;
        findings.That(ended == c.fires, c.rule,
                      "with type %d, a flat line at %g percent and the threshold at %g, the record %s",
                      c.type, static_cast<double>(c.offset), static_cast<double>(c.threshold),
                      ended ? "ended without a trigger" : "waited");
        if (c.fires && ended) {
            findings.That(fired, "GetTriggeredStatus is not zero once the trigger has fired",
                          "a complete record read 0");
        }
        if (!c.fires && !ended) {
            findings.That(!fired, "GetTriggeredStatus is 0 while the trigger is awaited",
                          "it was not zero, though the record went on waiting");
        }
        session.End();
        findings.That(!session.Runs(), "AcquisitionEnd ends a record that waits for its trigger",
                      "GetAcquistionState was still not zero");
    }
    // What comes for channels that are not in use has to leave the others alone.
    session.SetTrigger(true, 1, 50);
    session.ForEach([&](int ch) { driver.SetOffset(ch, 0); });
    session.Start();
    for (int ch = session.Modules() + 1; ch <= kSlots; ++ch) {
        driver.SetNormTrig(ch, CORVANTINE_FALSE);
    }
    findings.That(!WaitFor(kLook, [&] { return !session.Runs(); }),
                  "SetNormTrig on a channel that is not in use does nothing",
                  "a record that waited was released");
    session.End();
    session.SetTrigger(false, 1, 50);
    session.Start();
    findings.That(session.Finish(), "with SetNormTrig False a record does not wait for a trigger",
                  "it still ran after %g s", subject.patience);
}

} // namespace check
