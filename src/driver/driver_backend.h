#pragma once

#include <cstdint>

/// The operations of an instrument driver with the raw types of include/corvantine_driver.h.
/// A loaded library, the built-in demonstration driver and the tests' scripted driver stand behind it.
class DriverBackend {
  public:
    virtual ~DriverBackend() = default;

    virtual std::int32_t OpenDrvr() = 0;
    virtual std::int32_t GetSampleDepth() = 0;
    virtual void DrvrIssue(char* text) = 0;
    virtual std::int32_t Enumerate(std::int32_t* port, std::int32_t* channel) = 0;
    virtual void GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) = 0;
    virtual void GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) = 0;
    virtual void GetHWRev(std::int32_t ch, std::int32_t* out) = 0;
    virtual void GetPortNumber(std::int32_t ch, std::int32_t* out) = 0;
    virtual void GetControllerRev(std::int32_t ch, std::int32_t* out) = 0;
    virtual void SetDemoMode(std::int32_t on) = 0;
    virtual std::int32_t OpenAndReset(std::int32_t ch) = 0;
    virtual void SetTrigMaster(std::int32_t ch, std::int32_t on) = 0;
    virtual void SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) = 0;
    virtual std::int32_t GetDetectLine(std::int32_t ch) = 0;
    virtual void Close(std::int32_t ch) = 0;
    virtual void InitScope(std::int32_t ch, std::int32_t is_master) = 0;
    virtual void GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) = 0;
    virtual void GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) = 0;
    virtual void GetRawChannelOffset(std::int32_t ch, float* out) = 0;
    virtual void GetOffsetDACScale(std::int32_t ch, float* out) = 0;

    virtual void SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                               std::int32_t zero) = 0;
    virtual void SetOffset(std::int32_t ch, float percent) = 0;
    virtual void SetCalSource(std::int32_t ch, std::int32_t value) = 0;
    virtual void SetLEDMode(std::int32_t ch, std::int32_t value) = 0;
    virtual void SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) = 0;
    virtual void SetDecimationRatio(std::int32_t ch, std::int32_t ratio) = 0;
    virtual void SetRISMode(std::int32_t ch, std::int32_t on) = 0;
    virtual void SetTriggerDelay(std::int32_t ch, float seconds) = 0;
    virtual void SetTrigThresh(std::int32_t ch, float percent) = 0;
    virtual void SetTrigType(std::int32_t ch, std::int32_t type) = 0;
    virtual void SetNormTrig(std::int32_t ch, std::int32_t on) = 0;
    virtual void SetPreTrigDepth(std::int32_t ch, float fraction) = 0;

    virtual void AcquisitionStart(std::int32_t ch) = 0;
    virtual void AcquisitionEnd(std::int32_t ch) = 0;
    virtual std::int32_t GetAcquistionState(std::int32_t ch) = 0;
    virtual std::int32_t GetTriggeredStatus(std::int32_t ch) = 0;
    virtual std::int32_t GetSamplesSinceTrigger(std::int32_t ch) = 0;
    virtual void GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                          std::int32_t count) = 0;
    virtual void GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                      std::int32_t start) = 0;
    virtual void GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                              float* second, std::int32_t* status) = 0;
    virtual float GetSamplePeriod(std::int32_t running, float held_period) = 0;

    virtual void ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                   float old_offset, float new_offset, float old_volts, float new_volts) = 0;
    virtual void MakeSampleData(double* buffer, std::int32_t count, double offset,
                                std::int32_t channel_less_one, std::int32_t phase) = 0;
    virtual void FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                     std::int32_t* reserved) = 0;
    virtual std::int32_t PortOpen(std::int32_t ch) = 0;
    virtual void CloseDrvr(std::int32_t handle) = 0;
};
