#include "support/scripted_driver_calls.h"

#include <cmath>

// Front end, clocks, trigger

void ScriptedDriver::SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                                   std::int32_t zero) {
    if (ChannelCall(Needs::OpenChannel, "SetUpFrontEnd", ch, range, dc, gnd, zero)) {
        Expect(range >= 0 && range <= 2, "range 0..2");
        Expect(IsFlag(dc) && IsFlag(gnd) && (dc == 0 || gnd == 0), "AC, DC or GND");
        Expect(zero == 0, "the last argument is 0");
        settings[ch].range = range;
        settings[ch].dc = dc;
        settings[ch].gnd = gnd;
    }
}

void ScriptedDriver::SetOffset(std::int32_t ch, float percent) {
    if (ChannelCall(Needs::OpenChannel, "SetOffset", ch, percent)) {
        Expect(std::abs(percent) <= 100.001F, "percent of span");
        settings[ch].offsetPercent = percent;
    }
}

void ScriptedDriver::SetCalSource(std::int32_t ch, std::int32_t value) {
    if (ChannelCall(Needs::OpenChannel, "SetCalSource", ch, value)) {
        Expect(value == 0 || value == 1, "0 or 1");
        settings[ch].calSource = value;
    }
}

void ScriptedDriver::SetLEDMode(std::int32_t ch, std::int32_t value) {
    if (ChannelCall(Needs::OpenChannel, "SetLEDMode", ch, value)) {
        Expect(value >= 1 && value <= 3, "mode 1..3");
        settings[ch].ledMode = value;
    }
}

void ScriptedDriver::SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) {
    if (ChannelCall(Needs::OpenChannel, "SetBaseAdcClk", ch, megahertz)) {
        Expect(megahertz == 50 || megahertz == 25 || megahertz == 10, "clock 50, 25 or 10");
        settings[ch].clock = megahertz;
    }
}

void ScriptedDriver::SetDecimationRatio(std::int32_t ch, std::int32_t ratio) {
    if (ChannelCall(Needs::OpenChannel, "SetDecimationRatio", ch, ratio)) {
        Expect(ratio >= 1 && ratio <= 400000, "decimation 1..400000");
        settings[ch].decimation = ratio;
    }
}

void ScriptedDriver::SetRISMode(std::int32_t ch, std::int32_t on) {
    if (ChannelCall(Needs::OpenChannel, "SetRISMode", ch, on)) {
        Expect(on == 0 || on == 1, "0 or 1");
        settings[ch].ris = on;
    }
}

void ScriptedDriver::SetTriggerDelay(std::int32_t ch, float seconds) {
    if (ChannelCall(Needs::OpenChannel, "SetTriggerDelay", ch, seconds)) {
        Expect(seconds >= 0 && std::isfinite(seconds), "a time that lies ahead");
        settings[ch].delay = seconds;
    }
}

void ScriptedDriver::SetTrigThresh(std::int32_t ch, float percent) {
    if (ChannelCall(Needs::OpenChannel, "SetTrigThresh", ch, percent)) {
        Expect(std::abs(percent) <= 100, "percent of span");
        settings[ch].threshold = percent;
    }
}

void ScriptedDriver::SetTrigType(std::int32_t ch, std::int32_t type) {
    if (ChannelCall(Needs::OpenChannel, "SetTrigType", ch, type)) {
        Expect(type >= 0 && type <= 3, "type 0..3");
        settings[ch].trigType = type;
    }
}

void ScriptedDriver::SetNormTrig(std::int32_t ch, std::int32_t on) {
    if (ChannelCall(Needs::Enumerated, "SetNormTrig", ch, on)) {
        Expect(IsFlag(on), "a boolean");
        settings[ch].normTrig = on;
    }
}

void ScriptedDriver::SetPreTrigDepth(std::int32_t ch, float fraction) {
    if (ChannelCall(Needs::OpenChannel, "SetPreTrigDepth", ch, fraction)) {
        Expect(fraction >= 0 && fraction <= 0.99F, "fraction 0..0.99");
        settings[ch].preTrigger = fraction;
    }
}
