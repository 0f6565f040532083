#include "display/plot_scene.h"
#include "frame/record/record.h"

#include <cmath>
#include <numbers>

PlotScene::PlotScene() {
    record.SampleDepth = kSampleDepth;
    record.DisplayExpansion = 1;
    record.HeldZoom = 1;
    constexpr PerChannel<Colour> kColours = [] {
        PerChannel<Colour> colours;
        constexpr Colour values[] = {0x00FFFF, 0xFFFF00, 0xFF00FF, 0x00FF00, 0x0080FF, 0xC0C0C0};
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            colours[channel] = values[channel - 1];
        }
        return colours;
    }();
    record.ChannelColour = kColours;
}

DrawPlotArguments PlotScene::Time() {
    return {
        .Data = record.SampleData,
        .Colours = record.ChannelColour,
        .Stale = record.TracesStale,
        .Shown = record.ChannelOn,
        .Inverted = record.ChannelInvert,
        .YMax = 126,
        .YMin = -126,
        .VertPan = VertPan,
        .GroundPercent = record.ChannelOffsetPercent,
        .VertZoom = VertZoom,
        .XMin = 0,
        .XMax = record.SampleDepth - 1,
        .HorizPan = HorizPan,
        .HorizZoom = HorizZoom,
        .XExpansion = XExpansion,
        .HalfVertDivs = 10,
        .HorizDivs = HorizDivs,
        .SamplePeriod = SamplePeriod,
        .VertCursorPos = record.VertCursorTime,
        .VertCursorEn = record.VertCursorEnabled,
        .HorizCursorPos = record.HorizCursorVolts,
        .HorizCursorEn = record.HorizCursorEnabled,
        .ViewXMin = record.ViewXMin,
        .ViewXMax = record.ViewXMax,
        .ViewYMin = record.ViewYMin,
        .ViewYMax = record.ViewYMax,
        .DotsRequested = DotsRequested,
        .DotsHorizZoom = 5,
        .DotsVertZoom = 5,
        .TriggerLevel = TriggerLevel,
        .TriggerPositionX = TriggerPositionX,
        .TriggerMarkOn = TriggerMarkOn,
        .DelayFlag = DelayFlag,
        .Thin = Thin,
        .IsSpectrum = false,
        .Readouts = readouts,
    };
}

DrawPlotArguments PlotScene::Spectrum() {
    return {
        .Data = record.SpectrumData,
        .Colours = record.ChannelColour,
        .Stale = record.TracesStale,
        .Shown = record.ChannelFFT,
        .Inverted = noInvert_,
        .YMax = 30,
        .YMin = -30,
        .GroundPercent = noGround_,
        .XMin = 1,
        .XMax = kSpectrumBins - 1,
        .HalfVertDivs = 10,
        .HorizDivs = 20,
        .VertCursorPos = record.VertCursorTime,
        .VertCursorEn = noCursors_,
        .HorizCursorPos = record.HorizCursorVolts,
        .HorizCursorEn = noCursors_,
        .ViewXMin = record.ViewXMin,
        .ViewXMax = record.ViewXMax,
        .ViewYMin = record.ViewYMin,
        .ViewYMax = record.ViewYMax,
        .IsSpectrum = true,
        .Readouts = readouts,
    };
}

void PlotScene::FillWithEverything() {
    Noise noise(7);
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        record.ChannelOn[channel] = true;
        for (int i = 0; i < record.SampleData.positions(); ++i) {
            const double phase = 2 * std::numbers::pi * (i * (1 + channel * 0.4) / kSampleDepth) + channel;
            record.SampleData(channel, i) = static_cast<float>(110 * std::sin(phase) + 12 * noise.Next());
        }
    }
    for (int i = 0; i < kCursors; ++i) {
        record.VertCursorEnabled[i] = true;
        record.HorizCursorEnabled[i] = true;
        record.VertCursorTime[i] = SamplePeriod * (400 + 1200 * i);
        record.HorizCursorVolts[i] = -60 + 50 * i;
    }
    TriggerLevel = 25;
    TriggerMarkOn = 1;
    DelayFlag = true;
}
