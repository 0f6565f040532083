#include "support/scripted_driver_calls.h"

#include <algorithm>
#include <cmath>

// Acquisition

namespace {
constexpr int kBuffer = CORVANTINE_BUFFER;
} // namespace

void ScriptedDriver::AcquisitionStart(std::int32_t ch) {
    if (ChannelCall(Needs::Enumerated, "AcquisitionStart", ch)) {
        settings[ch].armed = settings[ch].open;
        if (onStart) {
            onStart(ch);
        }
    }
}

void ScriptedDriver::AcquisitionEnd(std::int32_t ch) {
    if (ChannelCall(Needs::OpenChannel, "AcquisitionEnd", ch)) {
        settings[ch].armed = false;
        if (onEnd) {
            onEnd(ch);
        }
    }
}

std::int32_t ScriptedDriver::GetAcquistionState(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "GetAcquistionState", ch) ? acquistionState(ch) : 0;
}

std::int32_t ScriptedDriver::GetTriggeredStatus(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "GetTriggeredStatus", ch) ? triggeredStatus(ch) : 0;
}

std::int32_t ScriptedDriver::GetSamplesSinceTrigger(std::int32_t ch) {
    return ChannelCall(Needs::Enumerated, "GetSamplesSinceTrigger", ch) ? samplesSinceTrigger(ch) : 0;
}

void ScriptedDriver::GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                              std::int32_t count) {
    Call("GetBufferBlocksMultiChan", first, last, count);
    Expect(first == 1 && last == kScopeChannels, "channels 1..4");
    Expect(count == 6, "6 blocks fill a row");
    if (fillBlocks) {
        fillBlocks({blocks, static_cast<std::size_t>(kScopeChannels) * kSampleRow});
        return;
    }
    for (int ch = 1; ch <= kScopeChannels && !demoMode; ++ch) {
        for (int i = 0; i < kSampleRow; ++i) {
            blocks[(ch - 1) * kSampleRow + i] = sample(ch, i);
        }
    }
}

void ScriptedDriver::GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                          std::int32_t start) {
    if (!ChannelCall(Needs::OpenChannel, "GetBufferIncremental", ch, count, start)) {
        return;
    }
    const bool inside = start >= 0 && start < kBuffer && count >= 1 && count <= kBuffer - start;
    Expect(inside, "positions inside the buffer");
    if (fillIncrement) {
        fillIncrement(ch, buffer, count, start);
    } else if (inside) {
        for (int i = start; i < start + count; ++i) {
            buffer[i] = sample(ch, i);
        }
    }
}

void ScriptedDriver::GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                  float* second, std::int32_t* status) {
    if (!ChannelCall(Needs::OpenChannel, "GetBufferRIS", ch, count)) {
        return;
    }
    Expect(count == 150, "150 samples");
    const RISPass pass = risPass(ch);
    *position = pass.position;
    *second = pass.second;
    *status = pass.status;
    const int entries = std::clamp(count, 0, kBuffer);
    if (fillRIS) {
        fillRIS(ch, {buffer, static_cast<std::size_t>(entries)});
        return;
    }
    for (int i = 0; i < entries; ++i) {
        buffer[i] = sample(ch, i);
    }
}

float ScriptedDriver::GetSamplePeriod(std::int32_t running, float held_period) {
    Call("GetSamplePeriod", running, held_period);
    Expect(IsFlag(running), "a boolean");
    Expect(running != 0 || held_period > 0, "a held period to give back");
    return samplePeriod(running != 0, held_period);
}

// Arithmetic

void ScriptedDriver::ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                       float old_offset, float new_offset, float old_volts, float new_volts) {
    Call("ReScaleSampleData", count, old_offset, new_offset, old_volts, new_volts);
    Expect(count == kSampleDepth, "a whole record");
    Expect(old_volts > 0 && new_volts > 0, "volts per division");
    for (int i = 0; i < count; ++i) {
        destination[i] = (source[i] - old_offset * 1.27F) * (old_volts / new_volts) + new_offset * 1.27F;
    }
}

void ScriptedDriver::MakeSampleData(double* buffer, std::int32_t count, double offset,
                                    std::int32_t channel_less_one, std::int32_t phase) {
    Call("MakeSampleData", count, offset, channel_less_one, phase);
    Expect(count == kSampleDepth, "a whole record");
    Expect(std::abs(offset) <= 128, "an offset in steps");
    Expect(channel_less_one >= 0 && channel_less_one < kScopeChannels, "channel less 1");
    Expect(phase >= 0 && phase % 10 == 0, "passes times 10");
    for (int i = 0; i < count; ++i) {
        buffer[i] = offset + demoSample(channel_less_one, phase, i);
    }
}

void ScriptedDriver::FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                         std::int32_t* reserved) {
    Call("FFT", length, scale_mode, window);
    Expect(length == 2048, "2048 samples");
    Expect(scale_mode == 0 || scale_mode == 0.5, "scale mode 0 or 0.5");
    Expect(window >= 0 && window <= 4, "window 0..4");
    Expect(reserved != nullptr && *reserved == 0, "an integer that is 0");
    if (transform) {
        transform({buffer, static_cast<std::size_t>(length)}, scale_mode, window);
    } else {
        std::fill_n(buffer, length / 2 + 1, scale_mode == 0 ? 0.0 : -300.0);
    }
}
