#pragma once

#include "driver/driver_backend.h"

#include <QString>
#include <memory>

/// One RIS pass as a module reports it.
struct RISPass {
    float position = 0; ///< 0 up to 20: where in the 20-position gap the pass fell
    float second = 0;
    std::int32_t status = -1; ///< -1: discard the pass
};

/// The time between two samples, in seconds.
struct SamplePeriod {
    float reported = 0; ///< as the driver said it: perhaps zero, negative or no number
    float usable = 0;   ///< the same, or the last one that was of use
};

/// The instrument as the program sees it: each operation of the driver under its own name, with the
/// program's types, and with whatever a driver writes brought into the bounds of the program's buffers
/// before anyone reads it.
class Driver {
  public:
    explicit Driver(std::unique_ptr<DriverBackend> backend);

    std::int32_t OpenDrvr();
    /// Always 3000: every buffer of the interface has room for that and for no other depth.
    std::int32_t GetSampleDepth();
    QString DrvrIssue();
    std::int32_t Enumerate(std::int32_t& port, std::int32_t& channel);
    QString GetProductName(int ch);
    QString GetSerialNumber(int ch);
    std::int32_t GetHWRev(int ch);
    std::int32_t GetPortNumber(int ch);
    std::int32_t GetControllerRev(int ch);
    void SetDemoMode(int on);
    bool OpenAndReset(int ch);
    void SetTrigMaster(int ch, bool on);
    void SetDetectLine(int ch, std::int32_t drive, std::int32_t release);
    std::int32_t GetDetectLine(int ch);
    void Close(int ch);
    void InitScope(int ch, bool isMaster);
    void GetRISBand(int ch, std::int32_t& first, std::int32_t& second);
    std::int32_t GetTriggerDACOffset(int ch);
    float GetRawChannelOffset(int ch);
    float GetOffsetDACScale(int ch);

    void SetUpFrontEnd(int ch, int range, bool dc, bool gnd);
    void SetOffset(int ch, float percent);
    void SetCalSource(int ch, int value);
    void SetLEDMode(int ch, int value);
    void SetBaseAdcClk(int ch, int megahertz);
    void SetDecimationRatio(int ch, int ratio);
    void SetRISMode(int ch, bool on);
    void SetTriggerDelay(int ch, float seconds);
    void SetTrigThresh(int ch, float percent);
    void SetTrigType(int ch, int type);
    void SetNormTrig(int ch, bool on);
    void SetPreTrigDepth(int ch, float fraction);

    void AcquisitionStart(int ch);
    void AcquisitionEnd(int ch);
    std::int32_t GetAcquistionState(int ch);
    std::int32_t GetTriggeredStatus(int ch);
    /// Never beyond 0..3073, so that differences of two counts cannot overflow.
    std::int32_t GetSamplesSinceTrigger(int ch);
    /// blocks: 4 rows of 3072, count blocks of 512 positions a row.
    void GetBufferBlocksMultiChan(int first, int last, float* blocks, int count);
    /// buffer: 3073 positions; count is cut so that start + count stays inside. Returns how many it filled.
    int GetBufferIncremental(int ch, float* buffer, int count, int start);
    /// buffer: 3073 positions, count of them filled.
    RISPass GetBufferRIS(int ch, float* buffer, int count);
    /// Seconds; see SamplePeriod.
    SamplePeriod ReadSamplePeriod(bool running, double heldPeriod);
    /// Seconds; a driver's zero, negative or non-number is replaced by the last period that was usable,
    /// which is heldPeriod itself while nothing runs.
    float GetSamplePeriod(bool running, double heldPeriod);

    /// Percent and volts per division; source and destination hold at least count values.
    void ReScaleSampleData(const float* source, float* destination, int count, float oldOffset,
                           float newOffset, float oldVolts, float newVolts);
    void MakeSampleData(double* buffer, int count, double offset, int channelLessOne, int phase);
    void FFT(double* buffer, int length, double scaleMode, int window);
    bool PortOpen(int ch);
    void CloseDrvr(std::int32_t handle);

  private:
    std::unique_ptr<DriverBackend> backend_;
    float lastPeriod_ = 2e-8F;
};
