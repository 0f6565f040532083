// Opening, and the wire that joins the modules.

#include "sections.h"

namespace check {

void CheckStack(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const int handle = driver.OpenDrvr();
    std::int32_t port = -2;
    std::int32_t channel = -2;
    driver.Enumerate(&port, &channel);
    int modules = 0;
    while (modules < kSlots && IdentityOf(driver, modules + 1).IsModule()) {
        ++modules;
    }
    for (int ch = modules + 1; ch <= kSlots; ++ch) {
        findings.That(driver.OpenAndReset(ch) == 0, "OpenAndReset returns 0 for a slot without a module",
                      "slot %d opened", ch);
    }
    if (modules == 0) {
        findings.Skip("the modules hear each other on the detect line", "no module was found");
        driver.CloseDrvr(handle);
        return;
    }
    for (int ch = 1; ch <= modules; ++ch) {
        findings.That(driver.PortOpen(ch) == 0, "PortOpen returns 0 before OpenAndReset",
                      "slot %d: it returned not zero", ch);
        findings.That(driver.OpenAndReset(ch) != 0, "OpenAndReset opens each module",
                      "slot %d: it returned 0", ch);
        findings.That(driver.PortOpen(ch) != 0, "PortOpen returns not zero after OpenAndReset",
                      "slot %d: it returned 0", ch);
        driver.SetTrigMaster(ch, CORVANTINE_FALSE);
        driver.SetDetectLine(ch, CORVANTINE_FALSE, 1);
    }
    for (int master = 1; master <= modules; ++master) {
        for (int ch = 1; ch <= modules; ++ch) {
            driver.SetDetectLine(ch, CORVANTINE_FALSE, 1);
        }
        findings.That(driver.GetDetectLine(master) != 0, "the detect line is high when nobody pulls it",
                      "slot %d reads 0", master);
        driver.SetDetectLine(master, CORVANTINE_TRUE, CORVANTINE_FALSE);
        for (int ch = 1; ch <= modules; ++ch) {
            const int level = driver.GetDetectLine(ch);
            findings.That(level == 0, "every module reads 0 while one of them pulls the detect line",
                          "slot %d pulls, and slot %d reads %d", master, ch, level);
        }
        driver.SetDetectLine(master, CORVANTINE_FALSE, CORVANTINE_TRUE);
        findings.That(driver.GetDetectLine(master) != 0, "the detect line is high again when it is let go",
                      "slot %d reads 0", master);
    }
    for (int ch = 1; ch <= modules; ++ch) {
        driver.Close(ch);
        findings.That(driver.PortOpen(ch) == 0, "PortOpen returns 0 after Close",
                      "slot %d: it returned not zero", ch);
    }
    findings.That(driver.OpenAndReset(1) != 0, "a closed module can be opened again",
                  "slot 1: OpenAndReset returned 0");
    driver.Close(1);
    driver.CloseDrvr(handle);
}

} // namespace check
