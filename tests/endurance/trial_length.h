#pragma once

#include <QtGlobal>
#include <cstdint>

// How long a trial is, by the environment: CORVANTINE_TRIAL=long, then CORVANTINE_TRIAL_COUNT and
// CORVANTINE_TRIAL_SEED where a trial counts or draws.

inline bool LongTrial() {
    return qgetenv("CORVANTINE_TRIAL") == "long";
}
inline int TrialCount(int otherwise) {
    bool told = false;
    const int count = qEnvironmentVariableIntValue("CORVANTINE_TRIAL_COUNT", &told);
    return told ? count : otherwise;
}
inline std::uint32_t TrialSeed() {
    return static_cast<std::uint32_t>(qEnvironmentVariableIntValue("CORVANTINE_TRIAL_SEED"));
}
