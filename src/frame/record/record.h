#pragma once

#include "frame/record/channels.h"
#include "frame/record/colour.h"
#include "frame/record/samples.h"

#include <QString>
#include <cstdint>

/// Null values in ADC steps, one for each channel 1..4 and range 0..2.
class OffsetNullTable {
  public:
    static constexpr int kRanges = 3;
    float& operator()(int channel, int range) { return steps_[channel + kScopeChannels * range]; }
    float operator()(int channel, int range) const { return steps_[channel + kScopeChannels * range]; }

  private:
    Indexed<float, 1, kScopeChannels * kRanges> steps_;
};

/// What more than one part of the instrument needs to know. Plain data, read and written on the
/// user-interface thread only. main makes one and hands it on; a test may hold several.
struct Record {
    // Program and environment
    std::int32_t OSVersionWord = 0;
    bool IsWinXP = false;
    QString CrLf;
    bool DebugMode = false;
    bool DemoMode = false;
    std::int32_t ForcedPort = 0;
    std::int32_t ForcedChannel = 0;
    std::int32_t MasterChannel = 0;
    QString SettingsSuffix;
    std::int32_t DriverHandle = 0;
    std::int32_t NumIntsFound = 0;
    std::int32_t NumScopesFound = 0;
    std::int32_t SampleDepth = 0;
    std::int32_t Math1Chan = 0;
    std::int32_t Math2Chan = 0;

    // Panels
    PerTab<bool> TabOpen;
    Indexed<Colour, 15, kTabSlots> TabColour;

    // Modules, filled at start-up and read-only afterwards
    PerScope<QString> ScopeProductName;
    PerScope<QString> ScopeName;
    PerScope<QString> ScopeSerial;
    PerScope<std::int32_t> ScopePort;
    PerScope<std::int32_t> ScopeHWRev;
    PerScope<std::int32_t> ScopeControllerRev;
    PerScope<std::int32_t> ScopeRISBandA;
    PerScope<std::int32_t> ScopeRISBandB;
    PerScope<std::int32_t> ScopeTriggerDACOffset;
    PerScope<float> ScopeRawChannelOffset;
    PerScope<float> ScopeOffsetDACScale;
    PerChannel<bool> ScopeInUse;

    // Channels
    PerChannel<Colour> ChannelColour;
    PerChannel<bool> ChannelOn;
    PerChannel<bool> ChannelInvert;
    PerScope<bool> ChannelBWLimit;
    PerChannel<bool> ChannelFFT;
    PerScope<std::int32_t> ChannelCalSource; ///< 0 off, 1 on, -1 forces a change to off
    PerChannel<float> ChannelOffsetPercent;
    OffsetNullTable OffsetNull;
    PerChannel<float> OffsetNullMeasured; ///< the math channels are measured too, and nobody reads them
    bool OffsetNullActive = false;

    // Trigger and acquisition
    bool Running = false;
    std::int32_t TrigMode = 0; ///< 0 auto, 1 norm, 2 free
    std::int32_t TrigType = 0; ///< index of TrigTypeCaption
    std::int32_t TriggerChannel = 0;
    std::int32_t TriggerMark = 0; ///< 1: the trigger position is meaningful; -1: it is not
    double TriggerDelay = 0;      ///< seconds
    Indexed<QString, 0, 3> TrigTypeCaption;
    Indexed<QString, 0, 2> TrigModeCaption;
    Indexed<QString, 0, 1> RunCaption;
    Indexed<Colour, 0, 1> RunColour;
    bool RISMode = false;
    bool RollMode = false;
    double DisplayExpansion = 0;
    double HeldZoom = 0;
    bool PlotInhibit = false;
    bool TracesStale = false;
    bool DelayActive = false;
    bool IDActive = false;
    std::int32_t IDChannel = 0;
    bool SampleDots = false;

    // Sample data, in ADC steps
    ChannelTable SampleData{kSampleRow + 1};
    ChannelTable HeldSampleData{kSampleRow + 1};
    PerChannel<float> HeldVoltsPerDiv;
    PerChannel<float> HeldOffset;
    double HeldSamplePeriod = 0;              ///< seconds
    ChannelTable SpectrumData{kSpectrumBins}; ///< plot units -30..+30

    // Cursors and view
    PerCursor<bool> VertCursorEnabled;
    PerCursor<bool> HorizCursorEnabled;
    PerCursor<double> VertCursorTime;   ///< seconds
    PerCursor<double> HorizCursorVolts; ///< ADC steps, whatever the name says
    double ViewXMin = 0;
    double ViewXMax = 0;
    double ViewYMin = 0;
    double ViewYMax = 0;
};
