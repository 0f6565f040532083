#pragma once

#include "driver/builtin_backend.h"
#include "frame/record/indexed.h"
#include "frame/record/samples.h"

#include <cstdint>

/// A stack of modules that keeps every rule of the interface and takes no time: a record is there after a few
/// questions. It counts what is open.
class SoundBackend : public BuiltinBackend {
  public:
    explicit SoundBackend(int modules) : modules_(modules) {}

    /// What every backend in this process holds open: libraries, and modules of them.
    struct Open {
        int libraries = 0;
        int modules = 0;
    };
    static Open NowOpen();
    /// From now on OpenAndReset of this channel fails.
    void FailToOpen(int ch) { fails_[ch] = true; }

    std::int32_t OpenDrvr() override;
    std::int32_t Enumerate(std::int32_t* port, std::int32_t* channel) override;
    void GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override;
    void GetSerialNumber(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override;
    void GetPortNumber(std::int32_t ch, std::int32_t* out) override;
    std::int32_t OpenAndReset(std::int32_t ch) override;
    void SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) override;
    std::int32_t GetDetectLine(std::int32_t ch) override;
    void Close(std::int32_t ch) override;
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
    std::int32_t PortOpen(std::int32_t ch) override;
    void CloseDrvr(std::int32_t handle) override;

  private:
    bool IsModule(std::int32_t ch) const { return ch >= 1 && ch <= modules_; }
    float Sample(std::int32_t ch, int position) const;

    int modules_;
    int armed_ = 0;  ///< questions until the present record is there
    int passes_ = 0; ///< records so far
    Indexed<bool, 1, kScopeChannels> open_;
    Indexed<bool, 1, kScopeChannels> fails_;
    Indexed<bool, 1, kScopeChannels> drives_;
};
