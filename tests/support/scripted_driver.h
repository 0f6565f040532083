#pragma once

#include "driver/driver.h"
#include "driver/driver_backend.h"
#include "frame/record/indexed.h"
#include "frame/record/samples.h"

#include <deque>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What an operation answers: the queued values one after the other, then a fixed value or a function.
template <class Result, class... Args> class Script {
  public:
    explicit Script(Result always = {}) { Always(always); }

    void Always(Result value) {
        answer_ = [value](Args...) { return value; };
    }
    void By(std::function<Result(Args...)> answer) { answer_ = std::move(answer); }
    /// Answered once each, before anything else.
    void Then(std::initializer_list<Result> values) { queue_.insert(queue_.end(), values); }
    std::size_t Queued() const { return queue_.size(); }

    Result operator()(Args... args) {
        if (queue_.empty()) {
            return answer_(args...);
        }
        const Result value = queue_.front();
        queue_.pop_front();
        return value;
    }

  private:
    std::deque<Result> queue_;
    std::function<Result(Args...)> answer_;
};

/// A driver that does what a test tells it, records every call with its arguments in order, and is as
/// strict as the interface: whatever a driver need not accept is noted in violations, and what is left of
/// those at its end fails the test.
class ScriptedDriver : public DriverBackend {
  public:
    struct Module {
        std::string product; ///< empty: the slot holds no module
        std::string serial;
        std::int32_t port = 0;
        std::int32_t hwRev = 0;
        std::int32_t controllerRev = 0;
        std::int32_t risBandFirst = 0;
        std::int32_t risBandSecond = 0;
        std::int32_t triggerDACOffset = 0;
        float rawChannelOffset = 0;
        float offsetDACScale = 0;
        std::int32_t opens = -1;    ///< what OpenAndReset answers
        bool hearsLine = true;      ///< joined to the stack's detect line
        bool lineHeldLow = false;   ///< something without power pulls the line down
        std::int32_t portOpen = -1; ///< what PortOpen answers while the module is open
    };

    /// modules: how many of the slots 1..4 hold a Corvantine, with serial "SN000c", port 3 + c.
    explicit ScriptedDriver(int modules = kScopeChannels);
    ~ScriptedDriver() override;
    ScriptedDriver(const ScriptedDriver&) = delete;
    ScriptedDriver& operator=(const ScriptedDriver&) = delete;

    /// The state after a start-up, reached without a recorded call: the library is open, so are all modules
    /// (all four channels if there are none, in demonstration mode).
    void SkipStartUp();

    // The record of calls
    std::vector<std::string> calls; ///< such as "AcquisitionStart(1)", "SetTrigThresh(2, 12.5)"
    std::vector<std::string> violations;
    /// An event of the program's own among the calls, for tests of order.
    void Note(std::string text) { calls.push_back(std::move(text)); }
    void Clear() { calls.clear(); }
    /// The calls so far, which are then forgotten.
    std::vector<std::string> TakeCalls();
    /// The violations so far, for the test that provokes them.
    std::vector<std::string> TakeViolations();
    /// Only the calls of these operations (names without arguments), or all but them.
    std::vector<std::string> CallsOf(std::initializer_list<std::string_view> operations) const;
    std::vector<std::string> CallsBut(std::initializer_list<std::string_view> operations) const;
    /// Without the questions that a loop repeats: states, counts, the sample period.
    std::vector<std::string> CallsButPolls() const;
    int Count(std::string_view operation) const;

    // What it answers
    Indexed<Module, 1, kScopeChannels> modules;
    std::int32_t interfaces = 0; ///< what Enumerate finds; the modules, unless a test says otherwise
    std::int32_t handle = 77;
    std::int32_t sampleDepth = kSampleDepth;
    std::string issue = "scripted";
    Script<std::int32_t, int> acquistionState{0};
    Script<std::int32_t, int> triggeredStatus{0};
    Script<std::int32_t, int> samplesSinceTrigger{0};
    /// (running, held period); without a script decimation over clock, 1e-09 in RIS, or the held period.
    Script<float, bool, float> samplePeriod;
    /// Where a RIS pass fell and its status; the samples come from sample.
    Script<RISPass, int> risPass{RISPass{10.5F, 0, 0}};
    /// The value at a position of a channel's record, for all read-outs (RIS: entry 0..149).
    std::function<float(int ch, int position)> sample = [](int, int) { return 0.0F; };
    /// These write a buffer themselves, if set.
    std::function<void(std::span<float> blocks)> fillBlocks;
    std::function<void(int ch, float* buffer, int count, int start)> fillIncrement;
    std::function<void(int ch, std::span<float> entries)> fillRIS;
    /// Demonstration value; (channel less one, phase, position) and the offset is added to it.
    std::function<double(int, int, int)> demoSample = [](int, int, int) { return 0.0; };
    /// Turns samples into a spectrum in place; without it every bin is 0 (linear) or -300 dB.
    std::function<void(std::span<double> buffer, double scaleMode, int window)> transform;
    /// Called in each AcquisitionStart and AcquisitionEnd, after the record of the call.
    std::function<void(int ch)> onStart;
    std::function<void(int ch)> onEnd;

    // What it was told, by channel
    struct Settings {
        bool open = false;
        std::int32_t range = -1, dc = 0, gnd = 0;
        float offsetPercent = 0;
        std::int32_t calSource = 0, ledMode = 0;
        std::int32_t clock = 50, decimation = 1, ris = 0;
        float delay = 0, threshold = 0, preTrigger = 0;
        std::int32_t trigType = 0, normTrig = 0, trigMaster = 0;
        bool drivesLine = false;
        bool armed = false;
    };
    Indexed<Settings, 1, kScopeChannels> settings;
    bool demoMode = false;
    bool opened = false;
    bool closed = false;

    // DriverBackend
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
    enum class Needs { Library, Enumerated, OpenChannel };
    /// Records the call; false if the channel is none, so that the operation does nothing.
    template <class... Args> void Call(std::string_view operation, Args... args);
    template <class... Args> bool ChannelCall(Needs needs, std::string_view operation, int ch, Args... args);
    void Expect(bool holds, std::string_view rule);

    bool enumerated_ = false;
    std::string lastCall_;
};

/// A scripted driver behind the wrapper that the program uses, with the script still in reach.
struct ScriptedInstrument {
    enum class State { BeforeStartUp, Started };
    explicit ScriptedInstrument(int modules = kScopeChannels, State state = State::Started)
        : ScriptedInstrument(std::make_unique<ScriptedDriver>(modules)) {
        if (state == State::Started) {
            script.SkipStartUp();
        }
    }

    ScriptedDriver& script; ///< lives as long as driver
    Driver driver;

  private:
    explicit ScriptedInstrument(std::unique_ptr<ScriptedDriver> backend)
        : script(*backend), driver(std::move(backend)) {}
};
