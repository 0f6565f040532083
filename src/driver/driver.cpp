#include "driver/driver.h"

#include "corvantine_driver.h"
#include "driver/trust.h"
#include "frame/record/samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace {

static_assert(kSampleDepth == CORVANTINE_SAMPLE_DEPTH && kSampleRow == CORVANTINE_ROW &&
              kSpectrumSamples == CORVANTINE_FFT_LENGTH);

constexpr int kNameBytes = CORVANTINE_NAME_BYTES;
constexpr int kBlock = 512;
constexpr int kBlocksInRow = kSampleRow / kBlock;
constexpr int kChannelBuffer = CORVANTINE_BUFFER;
constexpr float kRISSpan = 20;
/// A transform that is no number shows as a bin with nothing in it.
constexpr double kNoDecibels = -300;

std::int32_t Flag(bool on) {
    return on ? -1 : 0;
}

template <class Read> QString Name(Read read) {
    std::array<std::uint8_t, kNameBytes> buffer{};
    std::int32_t length = 0;
    read(buffer.data(), &length);
    length = std::clamp(length, 0, kNameBytes);
    return QString::fromLatin1(reinterpret_cast<const char*>(buffer.data()), length);
}

template <class T, class Read> T Output(Read read) {
    T value{};
    read(&value);
    return value;
}

} // namespace

Driver::Driver(std::unique_ptr<DriverBackend> backend) : backend_(std::move(backend)) {}

// The library and what is on the bus

std::int32_t Driver::OpenDrvr() {
    return backend_->OpenDrvr();
}

std::int32_t Driver::GetSampleDepth() {
    backend_->GetSampleDepth();
    return kSampleDepth;
}

QString Driver::DrvrIssue() {
    std::array<char, CORVANTINE_ISSUE_BYTES> text{};
    backend_->DrvrIssue(text.data());
    const auto end = std::find(text.begin(), text.end(), '\0');
    return QString::fromLatin1(text.data(), end - text.begin()).trimmed();
}

std::int32_t Driver::Enumerate(std::int32_t& port, std::int32_t& channel) {
    return backend_->Enumerate(&port, &channel);
}

QString Driver::GetProductName(int ch) {
    return Name([&](auto* buffer, auto* length) { backend_->GetProductName(ch, buffer, length); });
}

QString Driver::GetSerialNumber(int ch) {
    return Name([&](auto* buffer, auto* length) { backend_->GetSerialNumber(ch, buffer, length); });
}

std::int32_t Driver::GetHWRev(int ch) {
    return Output<std::int32_t>([&](auto* out) { backend_->GetHWRev(ch, out); });
}

std::int32_t Driver::GetPortNumber(int ch) {
    return Output<std::int32_t>([&](auto* out) { backend_->GetPortNumber(ch, out); });
}

std::int32_t Driver::GetControllerRev(int ch) {
    return Output<std::int32_t>([&](auto* out) { backend_->GetControllerRev(ch, out); });
}

void Driver::SetDemoMode(int on) {
    backend_->SetDemoMode(on);
}

bool Driver::OpenAndReset(int ch) {
    return backend_->OpenAndReset(ch) != 0;
}

void Driver::SetTrigMaster(int ch, bool on) {
    backend_->SetTrigMaster(ch, Flag(on));
}

void Driver::SetDetectLine(int ch, std::int32_t drive, std::int32_t release) {
    backend_->SetDetectLine(ch, drive, release);
}

std::int32_t Driver::GetDetectLine(int ch) {
    return backend_->GetDetectLine(ch);
}

void Driver::Close(int ch) {
    backend_->Close(ch);
}

void Driver::InitScope(int ch, bool isMaster) {
    backend_->InitScope(ch, Flag(isMaster));
}

void Driver::GetRISBand(int ch, std::int32_t& first, std::int32_t& second) {
    first = 0;
    second = 0;
    backend_->GetRISBand(ch, &first, &second);
}

std::int32_t Driver::GetTriggerDACOffset(int ch) {
    return Output<std::int32_t>([&](auto* out) { backend_->GetTriggerDACOffset(ch, out); });
}

float Driver::GetRawChannelOffset(int ch) {
    return trust::FiniteOrZero(Output<float>([&](auto* out) { backend_->GetRawChannelOffset(ch, out); }));
}

float Driver::GetOffsetDACScale(int ch) {
    return trust::FiniteOrZero(Output<float>([&](auto* out) { backend_->GetOffsetDACScale(ch, out); }));
}

// Front end, clocks, trigger

void Driver::SetUpFrontEnd(int ch, int range, bool dc, bool gnd) {
    backend_->SetUpFrontEnd(ch, range, Flag(dc), Flag(gnd), 0);
}

void Driver::SetOffset(int ch, float percent) {
    backend_->SetOffset(ch, percent);
}

void Driver::SetCalSource(int ch, int value) {
    backend_->SetCalSource(ch, value);
}

void Driver::SetLEDMode(int ch, int value) {
    backend_->SetLEDMode(ch, value);
}

void Driver::SetBaseAdcClk(int ch, int megahertz) {
    backend_->SetBaseAdcClk(ch, megahertz);
}

void Driver::SetDecimationRatio(int ch, int ratio) {
    backend_->SetDecimationRatio(ch, ratio);
}

void Driver::SetRISMode(int ch, bool on) {
    backend_->SetRISMode(ch, on ? 1 : 0);
}

void Driver::SetTriggerDelay(int ch, float seconds) {
    backend_->SetTriggerDelay(ch, seconds);
}

void Driver::SetTrigThresh(int ch, float percent) {
    backend_->SetTrigThresh(ch, percent);
}

void Driver::SetTrigType(int ch, int type) {
    backend_->SetTrigType(ch, type);
}

void Driver::SetNormTrig(int ch, bool on) {
    backend_->SetNormTrig(ch, Flag(on));
}

void Driver::SetPreTrigDepth(int ch, float fraction) {
    backend_->SetPreTrigDepth(ch, fraction);
}

// Acquisition

void Driver::AcquisitionStart(int ch) {
    backend_->AcquisitionStart(ch);
}

void Driver::AcquisitionEnd(int ch) {
    backend_->AcquisitionEnd(ch);
}

std::int32_t Driver::GetAcquistionState(int ch) {
    return backend_->GetAcquistionState(ch);
}

std::int32_t Driver::GetTriggeredStatus(int ch) {
    return backend_->GetTriggeredStatus(ch);
}

std::int32_t Driver::GetSamplesSinceTrigger(int ch) {
    return std::clamp(backend_->GetSamplesSinceTrigger(ch), 0, kChannelBuffer);
}

void Driver::GetBufferBlocksMultiChan(int first, int last, float* blocks, int count) {
    first = std::max(first, 1);
    last = std::min(last, kScopeChannels);
    count = std::clamp(count, 0, kBlocksInRow);
    backend_->GetBufferBlocksMultiChan(first, last, blocks, count);
    for (int ch = first; ch <= last; ++ch) {
        trust::KeepSamples(blocks + static_cast<std::ptrdiff_t>(ch - 1) * kSampleRow, count * kBlock);
    }
}

int Driver::GetBufferIncremental(int ch, float* buffer, int count, int start) {
    if (start < 0 || start >= kChannelBuffer || count <= 0) {
        return 0;
    }
    count = std::min(count, kChannelBuffer - start);
    backend_->GetBufferIncremental(ch, buffer, count, start);
    trust::KeepSamples(buffer + start, count);
    return count;
}

RISPass Driver::GetBufferRIS(int ch, float* buffer, int count) {
    RISPass pass;
    count = std::clamp(count, 0, kChannelBuffer);
    backend_->GetBufferRIS(ch, buffer, count, &pass.position, &pass.second, &pass.status);
    trust::KeepSamples(buffer, count);
    // Written so that a position that is no number fails it too.
    if (!(pass.position >= 0 && pass.position <= kRISSpan)) {
        pass.position = 0;
        pass.status = -1;
    }
    return pass;
}

float Driver::GetSamplePeriod(bool running, double heldPeriod) {
    return ReadSamplePeriod(running, heldPeriod).usable;
}

SamplePeriod Driver::ReadSamplePeriod(bool running, double heldPeriod) {
    const float held = static_cast<float>(heldPeriod);
    const float period = backend_->GetSamplePeriod(Flag(running), held);
    if (trust::UsablePeriod(period)) {
        if (running) {
            lastPeriod_ = period;
        }
        return {period, period};
    }
    return {period, !running && trust::UsablePeriod(held) ? held : lastPeriod_};
}

// Arithmetic

void Driver::ReScaleSampleData(const float* source, float* destination, int count, float oldOffset,
                               float newOffset, float oldVolts, float newVolts) {
    count = std::max(count, 0);
    backend_->ReScaleSampleData(source, destination, count, oldOffset, newOffset, oldVolts, newVolts);
    trust::KeepSamples(destination, count, 0.0F, trust::kMostRescaledSteps);
}

void Driver::MakeSampleData(double* buffer, int count, double offset, int channelLessOne, int phase) {
    count = std::max(count, 0);
    backend_->MakeSampleData(buffer, count, offset, channelLessOne, phase);
    trust::KeepSamples(buffer, count);
}

void Driver::FFT(double* buffer, int length, double scaleMode, int window) {
    length = std::clamp(length, 0, kSpectrumSamples);
    std::int32_t reserved = 0;
    backend_->FFT(buffer, length, scaleMode, window, &reserved);
    trust::KeepSamples(buffer, std::min(length / 2 + 1, length), scaleMode == 0 ? 0 : kNoDecibels);
}

bool Driver::PortOpen(int ch) {
    return backend_->PortOpen(ch) != 0;
}

void Driver::CloseDrvr(std::int32_t handle) {
    backend_->CloseDrvr(handle);
}
