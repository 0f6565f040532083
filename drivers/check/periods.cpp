// Every setting of the time base.

#include "sections.h"

#include <cmath>

namespace check {

namespace {

struct Setting {
    int megahertz;
    int ratio;
    bool ris;
    double Period() const { return ris ? 1e-9 : ratio / (megahertz * 1e6); }
};

constexpr Setting kSettings[] = {
    {50, 1, true},      {50, 1, false},     {25, 1, false},     {10, 1, false},      {10, 2, false},
    {10, 4, false},     {10, 10, false},    {10, 20, false},    {10, 40, false},     {10, 100, false},
    {10, 200, false},   {10, 400, false},   {10, 1000, false},  {10, 2000, false},   {10, 4000, false},
    {10, 10000, false}, {10, 20000, false}, {10, 40000, false}, {10, 100000, false}, {10, 200000, false},
    {10, 400000, false}};

bool IsAbout(double value, double expected) {
    return std::abs(value - expected) <= 1e-5 * expected;
}

} // namespace

void CheckPeriods(const Subject& subject) {
    const Driver& driver = subject.driver;
    const Session session(subject);
    const auto expect = [&](const Setting& setting, const char* rule) {
        const double period = static_cast<double>(driver.GetSamplePeriod(CORVANTINE_TRUE, 0));
        subject.findings.That(IsAbout(period, setting.Period()), rule,
                              "%d MHz by %d%s should be %.6g s, it returned %.6g", setting.megahertz,
                              setting.ratio, setting.ris ? " interleaved" : "", setting.Period(), period);
    };
    for (const Setting& setting : kSettings) {
        session.Timebase(setting.megahertz, setting.ratio, setting.ris);
        expect(setting, setting.ris ? "GetSamplePeriod is 1 ns in RIS"
                                    : "GetSamplePeriod is the ratio over the clock");
    }
    // Backwards, and only what differs, as the program sends it.
    const Setting* before = nullptr;
    for (auto setting = std::rbegin(kSettings); setting != std::rend(kSettings); ++setting) {
        session.ForEach([&](int ch) {
            if (before != nullptr && before->megahertz != setting->megahertz) {
                driver.SetBaseAdcClk(ch, setting->megahertz);
            }
            if (before == nullptr || before->ratio != setting->ratio) {
                driver.SetDecimationRatio(ch, setting->ratio);
            }
            driver.SetRISMode(ch, setting->ris ? 1 : 0);
        });
        expect(*setting, "a clock, ratio or RIS mode that is not sent again stays in force");
        before = &*setting;
    }
    session.Timebase(50, 400, false);
    for (const int megahertz : {25, 10, 50}) {
        session.ForEach([&](int ch) { driver.SetBaseAdcClk(ch, megahertz); });
        expect({megahertz, 400, false}, "a clock, ratio or RIS mode that is not sent again stays in force");
    }
    for (const float held : {1.0F, 4e-8F, 0.04F, 1e-9F}) {
        const float period = driver.GetSamplePeriod(CORVANTINE_FALSE, held);
        subject.findings.That(period == held,
                              "GetSamplePeriod gives the held period back when it is asked to",
                              "%g became %g", static_cast<double>(held), static_cast<double>(period));
    }
}

} // namespace check
