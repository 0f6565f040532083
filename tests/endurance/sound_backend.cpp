#include "endurance/sound_backend.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kProduct = "Corvantine";
constexpr int kQuestions = 3; ///< until a record is there
constexpr int kHandle = 77;
constexpr int kBlock = 512;
constexpr int kRISPositions = 20;

SoundBackend::Open open;

void Write(std::string_view text, std::uint8_t* buffer, std::int32_t* length) {
    std::copy(text.begin(), text.end(), buffer);
    *length = static_cast<std::int32_t>(text.size());
}

} // namespace

SoundBackend::Open SoundBackend::NowOpen() {
    return open;
}

std::int32_t SoundBackend::OpenDrvr() {
    ++open.libraries;
    return kHandle;
}

std::int32_t SoundBackend::Enumerate(std::int32_t*, std::int32_t*) {
    return modules_;
}

void SoundBackend::GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    Write(IsModule(ch) ? kProduct : std::string_view(), buffer, length);
}

void SoundBackend::GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    if (IsModule(ch)) {
        Write("SOUND" + std::to_string(ch), buffer, length);
    } else {
        BuiltinBackend::GetSerialNumber(ch, buffer, length);
    }
}

void SoundBackend::GetPortNumber(std::int32_t ch, std::int32_t* out) {
    *out = 2 + ch;
}

std::int32_t SoundBackend::OpenAndReset(std::int32_t ch) {
    if (!IsModule(ch)) {
        return BuiltinBackend::OpenAndReset(ch);
    }
    if (fails_[ch]) {
        return 0;
    }
    open.modules += open_[ch] ? 0 : 1;
    open_[ch] = true;
    return -1;
}

void SoundBackend::SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t) {
    if (IsModule(ch)) {
        drives_[ch] = drive != 0;
    }
}

std::int32_t SoundBackend::GetDetectLine(std::int32_t) {
    const bool low = modules_ == 0 || std::any_of(drives_.begin(), drives_.end(), [](bool on) { return on; });
    return low ? 0 : 1;
}

void SoundBackend::Close(std::int32_t ch) {
    if (IsModule(ch) && open_[ch]) {
        --open.modules;
        open_[ch] = false;
    }
}

void SoundBackend::AcquisitionStart(std::int32_t) {
    armed_ = kQuestions;
}

void SoundBackend::AcquisitionEnd(std::int32_t) {
    armed_ = 0;
    ++passes_;
}

std::int32_t SoundBackend::GetAcquistionState(std::int32_t) {
    armed_ = std::max(armed_ - 1, 0);
    return armed_ > 0 ? -1 : 0;
}

std::int32_t SoundBackend::GetTriggeredStatus(std::int32_t) {
    return -1;
}

std::int32_t SoundBackend::GetSamplesSinceTrigger(std::int32_t) {
    return kSampleDepth * (kQuestions - armed_) / kQuestions;
}

float SoundBackend::Sample(std::int32_t ch, int position) const {
    return 30 * std::sin(static_cast<float>(position + 3 * passes_) * 0.02F * static_cast<float>(ch));
}

void SoundBackend::GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                            std::int32_t count) {
    for (std::int32_t ch = first; ch <= last; ++ch) {
        for (int i = 0; i < count * kBlock; ++i) {
            blocks[(ch - 1) * kSampleRow + i] = Sample(ch, i);
        }
    }
}

void SoundBackend::GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                        std::int32_t start) {
    for (int i = start; i < start + count; ++i) {
        buffer[i] = Sample(ch, i);
    }
}

void SoundBackend::GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                float* second, std::int32_t* status) {
    for (int i = 0; i < count; ++i) {
        buffer[i] = Sample(ch, i * kRISPositions);
    }
    *position = static_cast<float>(passes_ % kRISPositions) + 0.5F;
    *second = *position;
    *status = 0;
}

std::int32_t SoundBackend::PortOpen(std::int32_t ch) {
    return IsModule(ch) && open_[ch] ? -1 : 0;
}

void SoundBackend::CloseDrvr(std::int32_t) {
    --open.libraries;
}
