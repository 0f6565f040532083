#include "endurance/lying_backend.h"

#include "frame/record/samples.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kNameBytes = 101;
constexpr std::size_t kIssueBytes = 100;
constexpr int kBlock = 512;

using Op = Operation;
using B = DriverBackend;

} // namespace

LyingBackend::LyingBackend(std::unique_ptr<DriverBackend> honest, std::vector<Lie> lies, std::uint32_t seed)
    : honest_(std::move(honest)), lies_(std::move(lies)), values_(seed) {}

const Lie* LyingBackend::Told(Operation operation, Part part) const {
    const auto found = std::find_if(lies_.begin(), lies_.end(), [=](const Lie& lie) {
        return lie.operation == operation && lie.part == part;
    });
    return found == lies_.end() ? nullptr : &*found;
}

template <class... Parameters, class... Arguments>
void LyingBackend::Do(Operation operation, void (DriverBackend::*call)(Parameters...),
                      Arguments... arguments) {
    ++calls_;
    if (Told(operation, Part::Deed) == nullptr) {
        (honest_.get()->*call)(arguments...);
    }
}

template <class Result, class... Parameters, class... Arguments>
Result LyingBackend::Ask(Operation operation, Result (DriverBackend::*call)(Parameters...),
                         Arguments... arguments) {
    ++calls_;
    Result result{};
    if (Told(operation, Part::Deed) == nullptr) {
        result = (honest_.get()->*call)(arguments...);
    }
    if constexpr (std::is_floating_point_v<Result>) {
        Put(operation, Part::Real, &result);
    } else {
        Put(operation, Part::Whole, &result);
    }
    return result;
}

void LyingBackend::Put(Operation operation, Part part, std::int32_t* out) {
    if (const Lie* lie = Told(operation, part)) {
        *out = part == Part::Length ? values_.Length(lie->way) : values_.Whole(lie->way);
    }
}

void LyingBackend::Put(Operation operation, Part part, float* out) {
    if (const Lie* lie = Told(operation, part)) {
        *out = values_.Real(lie->way);
    }
}

void LyingBackend::PutName(Operation operation, std::uint8_t* buffer, std::int32_t* length) {
    if (const Lie* lie = Told(operation, Part::Text)) {
        *length = values_.Text(lie->way, {reinterpret_cast<char*>(buffer), kNameBytes});
    }
    Put(operation, Part::Length, length);
}

template <class T> void LyingBackend::PutSamples(Operation operation, T* buffer, std::int32_t count) {
    if (const Lie* lie = Told(operation, Part::Samples)) {
        values_.Samples<T>(lie->way, {buffer, static_cast<std::size_t>(std::max(count, 0))});
    }
}

std::int32_t LyingBackend::OpenDrvr() {
    return Ask(Op::OpenDrvr, &B::OpenDrvr);
}
std::int32_t LyingBackend::GetSampleDepth() {
    return Ask(Op::GetSampleDepth, &B::GetSampleDepth);
}
void LyingBackend::DrvrIssue(char* text) {
    Do(Op::DrvrIssue, &B::DrvrIssue, text);
    if (const Lie* lie = Told(Op::DrvrIssue, Part::Text)) {
        values_.Text(lie->way, {text, kIssueBytes});
    }
}
std::int32_t LyingBackend::Enumerate(std::int32_t* port, std::int32_t* channel) {
    const std::int32_t found = Ask(Op::Enumerate, &B::Enumerate, port, channel);
    Put(Op::Enumerate, Part::SecondWhole, port);
    Put(Op::Enumerate, Part::Length, channel);
    return found;
}
void LyingBackend::GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    Do(Op::GetProductName, &B::GetProductName, ch, buffer, length);
    PutName(Op::GetProductName, buffer, length);
}
void LyingBackend::GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) {
    Do(Op::GetSerialNumber, &B::GetSerialNumber, ch, buffer, length);
    PutName(Op::GetSerialNumber, buffer, length);
}
void LyingBackend::GetHWRev(std::int32_t ch, std::int32_t* out) {
    Do(Op::GetHWRev, &B::GetHWRev, ch, out);
    Put(Op::GetHWRev, Part::Whole, out);
}
void LyingBackend::GetPortNumber(std::int32_t ch, std::int32_t* out) {
    Do(Op::GetPortNumber, &B::GetPortNumber, ch, out);
    Put(Op::GetPortNumber, Part::Whole, out);
}
void LyingBackend::GetControllerRev(std::int32_t ch, std::int32_t* out) {
    Do(Op::GetControllerRev, &B::GetControllerRev, ch, out);
    Put(Op::GetControllerRev, Part::Whole, out);
}
void LyingBackend::SetDemoMode(std::int32_t on) {
    Do(Op::SetDemoMode, &B::SetDemoMode, on);
}
std::int32_t LyingBackend::OpenAndReset(std::int32_t ch) {
    return Ask(Op::OpenAndReset, &B::OpenAndReset, ch);
}
void LyingBackend::SetTrigMaster(std::int32_t ch, std::int32_t on) {
    Do(Op::SetTrigMaster, &B::SetTrigMaster, ch, on);
}
void LyingBackend::SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) {
    Do(Op::SetDetectLine, &B::SetDetectLine, ch, drive, release);
}
std::int32_t LyingBackend::GetDetectLine(std::int32_t ch) {
    return Ask(Op::GetDetectLine, &B::GetDetectLine, ch);
}
void LyingBackend::Close(std::int32_t ch) {
    Do(Op::Close, &B::Close, ch);
}
void LyingBackend::InitScope(std::int32_t ch, std::int32_t is_master) {
    Do(Op::InitScope, &B::InitScope, ch, is_master);
}
void LyingBackend::GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) {
    Do(Op::GetRISBand, &B::GetRISBand, ch, first, second);
    Put(Op::GetRISBand, Part::Whole, first);
    Put(Op::GetRISBand, Part::SecondWhole, second);
}
void LyingBackend::GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) {
    Do(Op::GetTriggerDACOffset, &B::GetTriggerDACOffset, ch, offset);
    Put(Op::GetTriggerDACOffset, Part::Whole, offset);
}
void LyingBackend::GetRawChannelOffset(std::int32_t ch, float* out) {
    Do(Op::GetRawChannelOffset, &B::GetRawChannelOffset, ch, out);
    Put(Op::GetRawChannelOffset, Part::Real, out);
}
void LyingBackend::GetOffsetDACScale(std::int32_t ch, float* out) {
    Do(Op::GetOffsetDACScale, &B::GetOffsetDACScale, ch, out);
    Put(Op::GetOffsetDACScale, Part::Real, out);
}
void LyingBackend::SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                                 std::int32_t zero) {
    Do(Op::SetUpFrontEnd, &B::SetUpFrontEnd, ch, range, dc, gnd, zero);
}
void LyingBackend::SetOffset(std::int32_t ch, float percent) {
    Do(Op::SetOffset, &B::SetOffset, ch, percent);
}
void LyingBackend::SetCalSource(std::int32_t ch, std::int32_t value) {
    Do(Op::SetCalSource, &B::SetCalSource, ch, value);
}
void LyingBackend::SetLEDMode(std::int32_t ch, std::int32_t value) {
    Do(Op::SetLEDMode, &B::SetLEDMode, ch, value);
}
void LyingBackend::SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) {
    Do(Op::SetBaseAdcClk, &B::SetBaseAdcClk, ch, megahertz);
}
void LyingBackend::SetDecimationRatio(std::int32_t ch, std::int32_t ratio) {
    Do(Op::SetDecimationRatio, &B::SetDecimationRatio, ch, ratio);
}
void LyingBackend::SetRISMode(std::int32_t ch, std::int32_t on) {
    Do(Op::SetRISMode, &B::SetRISMode, ch, on);
}
void LyingBackend::SetTriggerDelay(std::int32_t ch, float seconds) {
    Do(Op::SetTriggerDelay, &B::SetTriggerDelay, ch, seconds);
}
void LyingBackend::SetTrigThresh(std::int32_t ch, float percent) {
    Do(Op::SetTrigThresh, &B::SetTrigThresh, ch, percent);
}
void LyingBackend::SetTrigType(std::int32_t ch, std::int32_t type) {
    Do(Op::SetTrigType, &B::SetTrigType, ch, type);
}
void LyingBackend::SetNormTrig(std::int32_t ch, std::int32_t on) {
    Do(Op::SetNormTrig, &B::SetNormTrig, ch, on);
}
void LyingBackend::SetPreTrigDepth(std::int32_t ch, float fraction) {
    Do(Op::SetPreTrigDepth, &B::SetPreTrigDepth, ch, fraction);
}
void LyingBackend::AcquisitionStart(std::int32_t ch) {
    Do(Op::AcquisitionStart, &B::AcquisitionStart, ch);
}
void LyingBackend::AcquisitionEnd(std::int32_t ch) {
    Do(Op::AcquisitionEnd, &B::AcquisitionEnd, ch);
}
std::int32_t LyingBackend::GetAcquistionState(std::int32_t ch) {
    return Ask(Op::GetAcquistionState, &B::GetAcquistionState, ch);
}
std::int32_t LyingBackend::GetTriggeredStatus(std::int32_t ch) {
    return Ask(Op::GetTriggeredStatus, &B::GetTriggeredStatus, ch);
}
std::int32_t LyingBackend::GetSamplesSinceTrigger(std::int32_t ch) {
    return Ask(Op::GetSamplesSinceTrigger, &B::GetSamplesSinceTrigger, ch);
}
void LyingBackend::GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                            std::int32_t count) {
    Do(Op::GetBufferBlocksMultiChan, &B::GetBufferBlocksMultiChan, first, last, blocks, count);
    for (std::int32_t ch = first; ch <= last; ++ch) {
        PutSamples(Op::GetBufferBlocksMultiChan, blocks + static_cast<std::ptrdiff_t>(ch - 1) * kSampleRow,
                   count * kBlock);
    }
}
void LyingBackend::GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                        std::int32_t start) {
    Do(Op::GetBufferIncremental, &B::GetBufferIncremental, ch, buffer, count, start);
    PutSamples(Op::GetBufferIncremental, buffer + start, count);
}
void LyingBackend::GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                float* second, std::int32_t* status) {
    Do(Op::GetBufferRIS, &B::GetBufferRIS, ch, buffer, count, position, second, status);
    PutSamples(Op::GetBufferRIS, buffer, count);
    Put(Op::GetBufferRIS, Part::Real, position);
    Put(Op::GetBufferRIS, Part::SecondReal, second);
    Put(Op::GetBufferRIS, Part::Whole, status);
}
float LyingBackend::GetSamplePeriod(std::int32_t running, float held_period) {
    return Ask(Op::GetSamplePeriod, &B::GetSamplePeriod, running, held_period);
}
void LyingBackend::ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                     float old_offset, float new_offset, float old_volts, float new_volts) {
    Do(Op::ReScaleSampleData, &B::ReScaleSampleData, source, destination, count, old_offset, new_offset,
       old_volts, new_volts);
    PutSamples(Op::ReScaleSampleData, destination, count);
}
void LyingBackend::MakeSampleData(double* buffer, std::int32_t count, double offset,
                                  std::int32_t channel_less_one, std::int32_t phase) {
    Do(Op::MakeSampleData, &B::MakeSampleData, buffer, count, offset, channel_less_one, phase);
    PutSamples(Op::MakeSampleData, buffer, count);
}
void LyingBackend::FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                       std::int32_t* reserved) {
    Do(Op::FFT, &B::FFT, buffer, length, scale_mode, window, reserved);
    PutSamples(Op::FFT, buffer, length);
    Put(Op::FFT, Part::Whole, reserved);
}
std::int32_t LyingBackend::PortOpen(std::int32_t ch) {
    return Ask(Op::PortOpen, &B::PortOpen, ch);
}
void LyingBackend::CloseDrvr(std::int32_t handle) {
    Do(Op::CloseDrvr, &B::CloseDrvr, handle);
}
