// A driver library with four modules that breaks the rule which the environment variable CORVANTINE_LIE
// names, and keeps the others. It writes where it is told to write and nowhere else: what it writes is the
// lie.
#include "corvantine_driver.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

namespace {

using Float = std::numeric_limits<float>;
using Int = std::numeric_limits<std::int32_t>;

bool Lie(std::string_view name) {
    const char* chosen = std::getenv("CORVANTINE_LIE");
    return chosen != nullptr && name == chosen;
}

/// A sample of a record: none of the bad ones unless that is the lie.
float Sample(int i) {
    if (i % 7 == 3) {
        if (Lie("sample not a number")) {
            return Float::quiet_NaN();
        }
        if (Lie("sample infinite")) {
            return i % 2 == 0 ? Float::infinity() : -Float::infinity();
        }
        if (Lie("sample huge")) {
            return i % 2 == 0 ? Float::max() : Float::lowest();
        }
    }
    return static_cast<float>(i % 100);
}

template <class Real> void Fill(Real* buffer, int from, int count) {
    if (Lie("silent")) {
        return;
    }
    for (int i = from; i < from + count; ++i) {
        buffer[i] = static_cast<Real>(Sample(i));
    }
}

void Name(std::uint8_t* buffer, std::int32_t* length) {
    if (Lie("silent")) {
        return;
    }
    constexpr std::string_view kName = "Corvantine";
    std::memset(buffer, 'n', CORVANTINE_NAME_BYTES);
    std::copy(kName.begin(), kName.end(), buffer);
    *length = Lie("name length negative")   ? -1
              : Lie("name length 102")      ? 102
              : Lie("name length huge")     ? Int::max()
              : Lie("name length smallest") ? Int::min()
                                            : 10;
}

void Number(std::int32_t* out) {
    if (!Lie("silent")) {
        *out = Lie("numbers huge") ? Int::max() : Lie("numbers negative") ? Int::min() : 5;
    }
}

void Real(float* out) {
    if (!Lie("silent")) {
        *out = Sample(3);
    }
}

bool lineDriven = false;

bool LiesInNumbers() {
    return Lie("numbers huge") || Lie("numbers negative");
}

std::int32_t Answer() {
    return Lie("numbers huge") ? Int::max() : Lie("numbers negative") ? Int::min() : 1;
}

} // namespace

std::int32_t CorvantineDrvr_OpenDrvr() {
    return Answer();
}
std::int32_t CorvantineDrvr_GetSampleDepth() {
    return Lie("depth huge") ? Int::max() : Lie("depth negative") ? -1 : 3000;
}
void CorvantineDrvr_DrvrIssue(char text[100]) {
    if (!Lie("silent")) {
        std::memset(text, Lie("issue unterminated") ? 'i' : ' ', CORVANTINE_ISSUE_BYTES);
    }
}
std::int32_t CorvantineDrvr_Enumerate(std::int32_t* port, std::int32_t* channel) {
    if (Lie("forced values overwritten")) {
        *port = Int::max();
        *channel = Int::min();
    }
    return Answer();
}
void CorvantineDrvr_GetProductName(std::int32_t, std::uint8_t buffer[101], std::int32_t* length) {
    Name(buffer, length);
}
void CorvantineDrvr_GetSerialNumber(std::int32_t, std::uint8_t buffer[101], std::int32_t* length) {
    Name(buffer, length);
}
void CorvantineDrvr_GetHWRev(std::int32_t, std::int32_t* out) {
    Number(out);
}
void CorvantineDrvr_GetPortNumber(std::int32_t, std::int32_t* out) {
    Number(out);
}
void CorvantineDrvr_GetControllerRev(std::int32_t, std::int32_t* out) {
    Number(out);
}
void CorvantineDrvr_SetDemoMode(std::int32_t) {}
std::int32_t CorvantineDrvr_OpenAndReset(std::int32_t) {
    return Answer();
}
void CorvantineDrvr_SetTrigMaster(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetDetectLine(std::int32_t, std::int32_t drive, std::int32_t) {
    lineDriven = lineDriven || drive != 0;
}
std::int32_t CorvantineDrvr_GetDetectLine(std::int32_t) {
    return lineDriven && !LiesInNumbers() ? 0 : Answer();
}
void CorvantineDrvr_Close(std::int32_t) {}
void CorvantineDrvr_InitScope(std::int32_t, std::int32_t) {}
void CorvantineDrvr_GetRISBand(std::int32_t, std::int32_t* first, std::int32_t* second) {
    Number(first);
    Number(second);
}
void CorvantineDrvr_GetTriggerDACOffset(std::int32_t, std::int32_t* offset) {
    Number(offset);
}
void CorvantineDrvr_GetRawChannelOffset(std::int32_t, float* out) {
    Real(out);
}
void CorvantineDrvr_GetOffsetDACScale(std::int32_t, float* out) {
    Real(out);
}
void CorvantineDrvr_SetUpFrontEnd(std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetOffset(std::int32_t, float) {}
void CorvantineDrvr_SetCalSource(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetLEDMode(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetBaseAdcClk(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetDecimationRatio(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetRISMode(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetTriggerDelay(std::int32_t, float) {}
void CorvantineDrvr_SetTrigThresh(std::int32_t, float) {}
void CorvantineDrvr_SetTrigType(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetNormTrig(std::int32_t, std::int32_t) {}
void CorvantineDrvr_SetPreTrigDepth(std::int32_t, float) {}
void CorvantineDrvr_AcquisitionStart(std::int32_t) {}
void CorvantineDrvr_AcquisitionEnd(std::int32_t) {}
std::int32_t CorvantineDrvr_GetAcquistionState(std::int32_t) {
    return LiesInNumbers() ? Answer() : 0; // every record is there at once
}
std::int32_t CorvantineDrvr_GetTriggeredStatus(std::int32_t) {
    return Answer();
}
std::int32_t CorvantineDrvr_GetSamplesSinceTrigger(std::int32_t) {
    return Answer();
}
void CorvantineDrvr_GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                             std::int32_t count) {
    for (std::int32_t ch = first; ch <= last; ++ch) {
        Fill(blocks, (ch - 1) * CORVANTINE_ROW, count * 512);
    }
}
void CorvantineDrvr_GetBufferIncremental(std::int32_t, float* buffer, std::int32_t count,
                                         std::int32_t start) {
    Fill(buffer, start, count);
}
void CorvantineDrvr_GetBufferRIS(std::int32_t, float* buffer, std::int32_t count, float* position,
                                 float* second, std::int32_t* status) {
    Fill(buffer, 0, count);
    if (Lie("silent")) {
        return;
    }
    *position = Lie("RIS position not a number") ? Float::quiet_NaN()
                : Lie("RIS position infinite")   ? Float::infinity()
                : Lie("RIS position negative")   ? -3.0F
                : Lie("RIS position far")        ? 1e6F
                                                 : 10.5F;
    *second = *position;
    *status = 0;
}
float CorvantineDrvr_GetSamplePeriod(std::int32_t running, float held_period) {
    return Lie("period zero")           ? 0.0F
           : Lie("period negative")     ? -1e-6F
           : Lie("period not a number") ? Float::quiet_NaN()
           : Lie("period infinite")     ? Float::infinity()
           : Lie("period tiny")         ? Float::denorm_min()
           : Lie("period huge")         ? Float::max()
           : running != 0               ? 1e-6F
                                        : held_period;
}
void CorvantineDrvr_ReScaleSampleData(const float*, float* destination, std::int32_t count, float, float,
                                      float, float) {
    Fill(destination, 0, count);
}
void CorvantineDrvr_MakeSampleData(double* buffer, std::int32_t count, double, std::int32_t, std::int32_t) {
    Fill(buffer, 0, count);
}
void CorvantineDrvr_FFT(double* buffer, std::int32_t length, double, std::int32_t, std::int32_t* reserved) {
    Fill(buffer, 0, length);
    Number(reserved);
}
std::int32_t CorvantineDrvr_PortOpen(std::int32_t) {
    return Answer();
}
void CorvantineDrvr_CloseDrvr(std::int32_t) {}
