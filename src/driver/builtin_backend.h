#pragma once

#include "driver/driver_backend.h"

#include "arithmetic/demo_waveforms.h"
#include "arithmetic/spectrum.h"

/// The driver without an instrument: it finds no module, so that the program runs in demonstration mode,
/// and does the arithmetic that a driver owes.
class BuiltinBackend : public DriverBackend {
  public:
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
    void SetTrigMaster(std::int32_t, std::int32_t) override {}
    void SetDetectLine(std::int32_t, std::int32_t, std::int32_t) override {}
    std::int32_t GetDetectLine(std::int32_t ch) override;
    void Close(std::int32_t) override {}
    void InitScope(std::int32_t, std::int32_t) override {}
    void GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) override;
    void GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) override;
    void GetRawChannelOffset(std::int32_t ch, float* out) override;
    void GetOffsetDACScale(std::int32_t ch, float* out) override;

    void SetUpFrontEnd(std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t) override {}
    void SetOffset(std::int32_t, float) override {}
    void SetCalSource(std::int32_t, std::int32_t) override {}
    void SetLEDMode(std::int32_t, std::int32_t) override {}
    void SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) override;
    void SetDecimationRatio(std::int32_t ch, std::int32_t ratio) override;
    void SetRISMode(std::int32_t ch, std::int32_t on) override;
    void SetTriggerDelay(std::int32_t, float) override {}
    void SetTrigThresh(std::int32_t, float) override {}
    void SetTrigType(std::int32_t, std::int32_t) override {}
    void SetNormTrig(std::int32_t, std::int32_t) override {}
    void SetPreTrigDepth(std::int32_t, float) override {}

    void AcquisitionStart(std::int32_t) override {}
    void AcquisitionEnd(std::int32_t) override {}
    std::int32_t GetAcquistionState(std::int32_t ch) override;
    std::int32_t GetTriggeredStatus(std::int32_t ch) override;
    std::int32_t GetSamplesSinceTrigger(std::int32_t ch) override;
    void GetBufferBlocksMultiChan(std::int32_t, std::int32_t, float*, std::int32_t) override {}
    void GetBufferIncremental(std::int32_t, float*, std::int32_t, std::int32_t) override {}
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
    void CloseDrvr(std::int32_t) override {}

  private:
    bool demoMode_ = false;
    // All channels are told the same, so one timebase serves them.
    std::int32_t megahertz_ = 50;
    std::int32_t decimation_ = 1;
    bool ris_ = false;
    instrument::DemoWaveforms waveforms_;
    instrument::Spectrum spectrum_;
};
