#pragma once

#include "driver/driver_backend.h"
#include "endurance/lies.h"
#include "endurance/lying_values.h"

#include <memory>
#include <vector>

/// Hands every call on to an honest driver and tells the program something else, as the lies have it. It
/// writes where it may write and nowhere else: what it writes is the lie.
class LyingBackend : public DriverBackend {
  public:
    LyingBackend(std::unique_ptr<DriverBackend> honest, std::vector<Lie> lies, std::uint32_t seed);

    /// From now on these.
    void Tell(std::vector<Lie> lies) { lies_ = std::move(lies); }
    /// Calls so far.
    int Calls() const { return calls_; }

    std::int32_t OpenDrvr() override;
    std::int32_t GetSampleDepth() override;
    void DrvrIssue(char* text) override;
    std::int32_t Enumerate(std::int32_t* port, std::int32_t* channel) override;
    void GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override;
    void GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override;
    void GetHWRev(std::int32_t ch, std::int32_t* out) override;
    void GetPortNumber(std::int32_t ch, std::int32_t* out) override;
    void GetControllerRev(std::int32_t ch, std::int32_t* out) override;
    void SetDemoMode(std::int32_t on) override;
    std::int32_t OpenAndReset(std::int32_t ch) override;
    void SetTrigMaster(std::int32_t ch, std::int32_t on) override;
    void SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) override;
    std::int32_t GetDetectLine(std::int32_t ch) override;
    void Close(std::int32_t ch) override;
    void InitScope(std::int32_t ch, std::int32_t is_master) override;
    void GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) override;
    void GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) override;
    void GetRawChannelOffset(std::int32_t ch, float* out) override;
    void GetOffsetDACScale(std::int32_t ch, float* out) override;
    void SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                       std::int32_t zero) override;
    void SetOffset(std::int32_t ch, float percent) override;
    void SetCalSource(std::int32_t ch, std::int32_t value) override;
    void SetLEDMode(std::int32_t ch, std::int32_t value) override;
    void SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) override;
    void SetDecimationRatio(std::int32_t ch, std::int32_t ratio) override;
    void SetRISMode(std::int32_t ch, std::int32_t on) override;
    void SetTriggerDelay(std::int32_t ch, float seconds) override;
    void SetTrigThresh(std::int32_t ch, float percent) override;
    void SetTrigType(std::int32_t ch, std::int32_t type) override;
    void SetNormTrig(std::int32_t ch, std::int32_t on) override;
    void SetPreTrigDepth(std::int32_t ch, float fraction) override;
    void AcquisitionStart(std::int32_t ch) override;
    void AcquisitionEnd(std::int32_t ch) override;
    std::int32_t GetAcquistionState(std::int32_t ch) override;
    std::int32_t GetTriggeredStatus(std::int32_t ch) override;
    std::int32_t GetSamplesSinceTrigger(std::int32_t ch) override;
    void GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                  std::int32_t count) override;
    void GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                              std::int32_t start) override;
    void GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position, float* second,
                      std::int32_t* status) override;
    float GetSamplePeriod(std::int32_t running, float held_period) override;
    void ReScaleSampleData(const float* source, float* destination, std::int32_t count, float old_offset,
                           float new_offset, float old_volts, float new_volts) override;
    void MakeSampleData(double* buffer, std::int32_t count, double offset, std::int32_t channel_less_one,
                        std::int32_t phase) override;
    void FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
             std::int32_t* reserved) override;
    std::int32_t PortOpen(std::int32_t ch) override;
    void CloseDrvr(std::int32_t handle) override;

  private:
    /// The lie that is told about this, or null.
    const Lie* Told(Operation operation, Part part) const;
    template <class... Parameters, class... Arguments>
    void Do(Operation operation, void (DriverBackend::*call)(Parameters...), Arguments... arguments);
    template <class Result, class... Parameters, class... Arguments>
    Result Ask(Operation operation, Result (DriverBackend::*call)(Parameters...), Arguments... arguments);
    void Put(Operation operation, Part part, std::int32_t* out);
    void Put(Operation operation, Part part, float* out);
    void PutName(Operation operation, std::uint8_t* buffer, std::int32_t* length);
    template <class T> void PutSamples(Operation operation, T* buffer, std::int32_t count);

    std::unique_ptr<DriverBackend> honest_;
    std::vector<Lie> lies_;
    LyingValues values_;
    int calls_ = 0;
};
