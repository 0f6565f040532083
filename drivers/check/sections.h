#pragma once

#include "session.h"

namespace check {

// What is looked at, each in a process of its own.

void CheckNames(const Subject& subject);
void CheckForcing(const Subject& subject);
void CheckStack(const Subject& subject);
void CheckPeriods(const Subject& subject);
void CheckRecords(const Subject& subject);
void CheckTrigger(const Subject& subject);
void CheckRoll(const Subject& subject);
void CheckRIS(const Subject& subject);
void CheckDemonstration(const Subject& subject);
void CheckRescaling(const Subject& subject);
void CheckSpectrum(const Subject& subject);
void CheckOrder(const Subject& subject);
void CheckWildCalls(const Subject& subject);
void CheckHousekeeping(const Subject& subject);

struct Section {
    const char* name;
    void (*run)(const Subject&);
};

inline constexpr Section kSections[] = {
    {"names", CheckNames},
    {"forcing", CheckForcing},
    {"stack", CheckStack},
    {"periods", CheckPeriods},
    {"records", CheckRecords},
    {"trigger", CheckTrigger},
    {"roll", CheckRoll},
    {"ris", CheckRIS},
    {"demonstration", CheckDemonstration},
    {"rescaling", CheckRescaling},
    {"spectrum", CheckSpectrum},
    {"order", CheckOrder},
    {"wild calls", CheckWildCalls},
    {"housekeeping", CheckHousekeeping},
};

} // namespace check
