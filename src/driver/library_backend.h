#pragma once

#include "driver/driver_backend.h"

#include "corvantine_driver.h"
#include "corvantine_driver_operations.h"

#include <QString>
#include <memory>

/// The exports of a driver library, with the signatures that the header declares.
struct DriverExports {
#define CORVANTINE_EXPORT_POINTER(operation) decltype(&CorvantineDrvr_##operation) operation = nullptr;
    CORVANTINE_OPERATIONS(CORVANTINE_EXPORT_POINTER)
#undef CORVANTINE_EXPORT_POINTER
};

/// A driver in a shared library. The library stays loaded to the end of the process: it may have threads.
class LibraryBackend : public DriverBackend {
  public:
    struct Loaded {
        std::unique_ptr<LibraryBackend> backend; ///< null if the library cannot be used
        QString reason;                          ///< then: why, with the names of missing exports
    };
    /// path: relative ones count from the current folder; nothing else is searched.
    static Loaded Load(const QString& path);

    explicit LibraryBackend(const DriverExports& exports) : exports_(exports) {}

    std::int32_t OpenDrvr() override { return exports_.OpenDrvr(); }
    std::int32_t GetSampleDepth() override { return exports_.GetSampleDepth(); }
    void DrvrIssue(char* text) override { exports_.DrvrIssue(text); }
    std::int32_t Enumerate(std::int32_t* port, std::int32_t* channel) override {
        return exports_.Enumerate(port, channel);
    }
    void GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override {
        exports_.GetProductName(ch, buffer, length);
    }
    void GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override {
        exports_.GetSerialNumber(ch, buffer, length);
    }
    void GetHWRev(std::int32_t ch, std::int32_t* out) override { exports_.GetHWRev(ch, out); }
    void GetPortNumber(std::int32_t ch, std::int32_t* out) override { exports_.GetPortNumber(ch, out); }
    void GetControllerRev(std::int32_t ch, std::int32_t* out) override { exports_.GetControllerRev(ch, out); }
    void SetDemoMode(std::int32_t on) override { exports_.SetDemoMode(on); }
    std::int32_t OpenAndReset(std::int32_t ch) override { return exports_.OpenAndReset(ch); }
    void SetTrigMaster(std::int32_t ch, std::int32_t on) override { exports_.SetTrigMaster(ch, on); }
    void SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) override {
        exports_.SetDetectLine(ch, drive, release);
    }
    std::int32_t GetDetectLine(std::int32_t ch) override { return exports_.GetDetectLine(ch); }
    void Close(std::int32_t ch) override { exports_.Close(ch); }
    void InitScope(std::int32_t ch, std::int32_t is_master) override { exports_.InitScope(ch, is_master); }
    void GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) override {
        exports_.GetRISBand(ch, first, second);
    }
    void GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) override {
        exports_.GetTriggerDACOffset(ch, offset);
    }
    void GetRawChannelOffset(std::int32_t ch, float* out) override { exports_.GetRawChannelOffset(ch, out); }
    void GetOffsetDACScale(std::int32_t ch, float* out) override { exports_.GetOffsetDACScale(ch, out); }

    void SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                       std::int32_t zero) override {
        exports_.SetUpFrontEnd(ch, range, dc, gnd, zero);
    }
    void SetOffset(std::int32_t ch, float percent) override { exports_.SetOffset(ch, percent); }
    void SetCalSource(std::int32_t ch, std::int32_t value) override { exports_.SetCalSource(ch, value); }
    void SetLEDMode(std::int32_t ch, std::int32_t value) override { exports_.SetLEDMode(ch, value); }
    void SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) override {
        exports_.SetBaseAdcClk(ch, megahertz);
    }
    void SetDecimationRatio(std::int32_t ch, std::int32_t ratio) override {
        exports_.SetDecimationRatio(ch, ratio);
    }
    void SetRISMode(std::int32_t ch, std::int32_t on) override { exports_.SetRISMode(ch, on); }
    void SetTriggerDelay(std::int32_t ch, float seconds) override { exports_.SetTriggerDelay(ch, seconds); }
    void SetTrigThresh(std::int32_t ch, float percent) override { exports_.SetTrigThresh(ch, percent); }
    void SetTrigType(std::int32_t ch, std::int32_t type) override { exports_.SetTrigType(ch, type); }
    void SetNormTrig(std::int32_t ch, std::int32_t on) override { exports_.SetNormTrig(ch, on); }
    void SetPreTrigDepth(std::int32_t ch, float fraction) override { exports_.SetPreTrigDepth(ch, fraction); }

    void AcquisitionStart(std::int32_t ch) override { exports_.AcquisitionStart(ch); }
    void AcquisitionEnd(std::int32_t ch) override { exports_.AcquisitionEnd(ch); }
    std::int32_t GetAcquistionState(std::int32_t ch) override { return exports_.GetAcquistionState(ch); }
    std::int32_t GetTriggeredStatus(std::int32_t ch) override { return exports_.GetTriggeredStatus(ch); }
    std::int32_t GetSamplesSinceTrigger(std::int32_t ch) override {
        return exports_.GetSamplesSinceTrigger(ch);
    }
    void GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                  std::int32_t count) override {
        exports_.GetBufferBlocksMultiChan(first, last, blocks, count);
    }
    void GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                              std::int32_t start) override {
        exports_.GetBufferIncremental(ch, buffer, count, start);
    }
    void GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position, float* second,
                      std::int32_t* status) override {
        exports_.GetBufferRIS(ch, buffer, count, position, second, status);
    }
    float GetSamplePeriod(std::int32_t running, float held_period) override {
        return exports_.GetSamplePeriod(running, held_period);
    }

    void ReScaleSampleData(const float* source, float* destination, std::int32_t count, float old_offset,
                           float new_offset, float old_volts, float new_volts) override {
        exports_.ReScaleSampleData(source, destination, count, old_offset, new_offset, old_volts, new_volts);
    }
    void MakeSampleData(double* buffer, std::int32_t count, double offset, std::int32_t channel_less_one,
                        std::int32_t phase) override {
        exports_.MakeSampleData(buffer, count, offset, channel_less_one, phase);
    }
    void FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
             std::int32_t* reserved) override {
        exports_.FFT(buffer, length, scale_mode, window, reserved);
    }
    std::int32_t PortOpen(std::int32_t ch) override { return exports_.PortOpen(ch); }
    void CloseDrvr(std::int32_t handle) override { exports_.CloseDrvr(handle); }

  private:
    DriverExports exports_;
};
