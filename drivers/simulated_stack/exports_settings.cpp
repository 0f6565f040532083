// The exports of the simulated stack: front end, clocks and trigger.

#include "corvantine_driver.h"

#include "library.h"

#include <cmath>

// A value outside its range is left unused.

void CorvantineDrvr_SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                                  std::int32_t zero) {
    const Call call("SetUpFrontEnd", ch, range, dc, gnd, zero);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        const bool isRange = call.Expect(range >= 0 && range < sim::kRanges, "range 0..2");
        const bool isCoupling =
            call.Expect(IsFlag(dc) && IsFlag(gnd) && (dc == 0 || gnd == 0), "AC, DC or GND");
        if (call.Expect(zero == 0, "the last argument is 0") && isRange && isCoupling) {
            library->stack.SetUpFrontEnd(ch, range, dc != 0, gnd != 0);
        }
    }
}

void CorvantineDrvr_SetOffset(std::int32_t ch, float percent) {
    const Call call("SetOffset", ch, percent);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(std::abs(percent) <= 100.001F, "percent of span")) {
            library->stack.SetOffset(ch, percent);
        }
    }
}

void CorvantineDrvr_SetCalSource(std::int32_t ch, std::int32_t value) {
    const Call call("SetCalSource", ch, value);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(value == 0 || value == 1, "0 or 1")) {
            library->stack.SetCompensation(ch, value != 0);
        }
    }
}

// There is no lamp to see.
void CorvantineDrvr_SetLEDMode(std::int32_t ch, std::int32_t value) {
    const Call call("SetLEDMode", ch, value);
    if (call.On(ch, Needs::Initialised) != nullptr) {
        call.Expect(value >= 1 && value <= 3, "mode 1..3");
    }
}

void CorvantineDrvr_SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) {
    const Call call("SetBaseAdcClk", ch, megahertz);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(megahertz == 50 || megahertz == 25 || megahertz == 10, "clock 50, 25 or 10")) {
            library->stack.SetClock(ch, megahertz);
        }
    }
}

void CorvantineDrvr_SetDecimationRatio(std::int32_t ch, std::int32_t ratio) {
    const Call call("SetDecimationRatio", ch, ratio);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(ratio >= 1 && ratio <= 400000, "decimation 1..400000")) {
            library->stack.SetDecimation(ch, ratio);
        }
    }
}

void CorvantineDrvr_SetRISMode(std::int32_t ch, std::int32_t on) {
    const Call call("SetRISMode", ch, on);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(on == 0 || on == 1, "0 or 1")) {
            library->stack.SetRIS(ch, on != 0);
        }
    }
}

void CorvantineDrvr_SetTriggerDelay(std::int32_t ch, float seconds) {
    const Call call("SetTriggerDelay", ch, seconds);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(seconds >= 0 && std::isfinite(seconds), "a time that lies ahead")) {
            library->stack.SetDelay(ch, seconds);
        }
    }
}

void CorvantineDrvr_SetTrigThresh(std::int32_t ch, float percent) {
    const Call call("SetTrigThresh", ch, percent);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(std::abs(percent) <= 100, "percent of span")) {
            library->stack.SetThreshold(ch, percent);
        }
    }
}

void CorvantineDrvr_SetTrigType(std::int32_t ch, std::int32_t type) {
    const Call call("SetTrigType", ch, type);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(type >= 0 && type <= 3, "type 0..3")) {
            library->stack.SetType(ch, type);
        }
    }
}

void CorvantineDrvr_SetPreTrigDepth(std::int32_t ch, float fraction) {
    const Call call("SetPreTrigDepth", ch, fraction);
    if (Library* library = call.On(ch, Needs::Initialised)) {
        if (call.Expect(fraction >= 0 && fraction <= 0.99F, "fraction 0..0.99")) {
            library->stack.SetPreTrigger(ch, fraction);
        }
    }
}

// The program makes these two on channels that are not in use as well.

void CorvantineDrvr_SetNormTrig(std::int32_t ch, std::int32_t on) {
    const Call call("SetNormTrig", ch, on);
    call.Expect(IsFlag(on), "a boolean");
    if (Library* library = call.On(ch, Needs::Enumerated)) {
        library->stack.SetNormal(ch, on != 0);
    }
}

void CorvantineDrvr_SetTrigMaster(std::int32_t ch, std::int32_t on) {
    const Call call("SetTrigMaster", ch, on);
    call.Expect(IsFlag(on), "a boolean");
    if (Library* library = call.On(ch, Needs::Enumerated)) {
        const int source = library->stack.Source();
        call.Expect(on == 0 || source == 0 || source == ch, "another channel is the source of the trigger");
        library->stack.SetSource(ch, on != 0);
    }
}
