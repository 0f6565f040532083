#include "display/plotter.h"

#include "controls/rounding.h"
#include "frame/helpers/helpers.h"
#include "frame/record/record.h"

#include <utility>

namespace {

constexpr int kTimeTop = 126; // ADC steps
constexpr int kSpectrumTop = 30;
constexpr int kHalfVertDivs = 10;
constexpr int kSpectrumHorizDivs = 20;
constexpr int kSamplesOfDivision = 100;
constexpr int kDotsZoom = 5;

bool Checked(const QCheckBox& box) {
    return box.checkState() > Qt::Unchecked;
}

void Call(const std::function<void()>& function) {
    if (function) {
        function();
    }
}

} // namespace

PlotControls PlotControls::Of(const Form& main, const ChannelForms& channels, const Form& horizontal,
                              const Form& cursors, const Form& math) {
    PlotControls controls;
    controls.VertPanSlider = main.control<SliderControl1>("VertPanSlider");
    controls.HorizPanSlider = main.control<SliderControl1>("HorizPanSlider");
    controls.PretriggerSlider = main.control<SliderControl1>("PretriggerSlider");
    controls.VertZoomKnob = main.control<KnobControl1>("VertZoomKnob");
    controls.HorizZoomKnob = main.control<KnobControl1>("HorizZoomKnob");
    controls.TriggerKnob = main.control<KnobControl1>("TriggerKnob");
    controls.DelayKnob = horizontal.control<KnobControl1>("DelayKnob");
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        controls.OffsetKnob[channel] = channels[channel]->control<KnobControl1>("OffsetKnob");
    }
    for (int cursor = 0; cursor < kCursors; ++cursor) {
        controls.VertCursorEn[cursor] = cursors.control<QCheckBox>("VertCursorEn", cursor);
        controls.HorizCursorEn[cursor] = cursors.control<QCheckBox>("HorizCursorEn", cursor);
    }
    controls.FFTWindowCombo = math.control<QComboBox>("FFTWindowCombo");
    controls.FFTPlotType0 = math.control<QRadioButton>("FFTPlotType", 0);
    return controls;
}

Plotter::Plotter(Record& record, Driver& driver, PlotControls controls, Canvas& main,
                 PlotCompanions* companions, PlotCalls calls)
    : record_(record), driver_(driver), controls_(controls), main_(main), companions_(companions),
      calls_(std::move(calls)) {}

void Plotter::PlotNow() {
    if (record_.PlotInhibit) {
        return;
    }
    if (showingSpectrum_) {
        plotAgain_ = true;
        return;
    }
    Plot();
}

void Plotter::Plot() {
    ReadControls();
    PlotTime();
    if (calls_.WorldLineUpdate) {
        calls_.WorldLineUpdate(record_.ViewXMin, record_.ViewXMax, record_.ViewYMax, record_.ViewYMin);
    }
    PlotSpectrum();
}

void Plotter::ReadControls() {
    for (int i = 0; i < kCursors; ++i) {
        record_.VertCursorEnabled[i] = Checked(*controls_.VertCursorEn[i]);
        record_.HorizCursorEnabled[i] = Checked(*controls_.HorizCursorEn[i]);
    }
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (controls_.OffsetKnob[channel] != nullptr) {
            record_.ChannelOffsetPercent[channel] = GroundPercent(*controls_.OffsetKnob[channel]);
        }
    }
    for (int channel = kScopeChannels + 1; channel <= kAllChannels; ++channel) {
        record_.ChannelInvert[channel] = false;
    }
    record_.DelayActive = controls_.DelayKnob->KnobValue() > controls_.DelayKnob->KnobMin();
}

DrawPlotArguments Plotter::TimeArguments(double samplePeriod) {
    const int last = record_.SampleDepth - 1;
    return {
        .Data = record_.SampleData,
        .Colours = record_.ChannelColour,
        .Stale = record_.TracesStale,
        .Shown = record_.ChannelOn,
        .Inverted = record_.ChannelInvert,
        .YMax = kTimeTop,
        .YMin = -kTimeTop,
        .VertPan = 0.5 - static_cast<double>(controls_.VertPanSlider->SliderValue()),
        .GroundPercent = record_.ChannelOffsetPercent,
        .VertZoom = static_cast<double>(controls_.VertZoomKnob->KnobValue()),
        .XMin = 0,
        .XMax = last,
        .HorizPan = controls_.HorizPanSlider->SliderValue(),
        .HorizZoom = static_cast<double>(controls_.HorizZoomKnob->KnobValue()),
        .XExpansion = record_.DisplayExpansion * record_.HeldZoom,
        .HalfVertDivs = kHalfVertDivs,
        .HorizDivs = RoundToEven(record_.SampleDepth / double{kSamplesOfDivision}),
        .SamplePeriod = samplePeriod,
        .VertCursorPos = record_.VertCursorTime,
        .VertCursorEn = record_.VertCursorEnabled,
        .HorizCursorPos = record_.HorizCursorVolts,
        .HorizCursorEn = record_.HorizCursorEnabled,
        .ViewXMin = record_.ViewXMin,
        .ViewXMax = record_.ViewXMax,
        .ViewYMin = record_.ViewYMin,
        .ViewYMax = record_.ViewYMax,
        .DotsRequested = record_.SampleDots,
        .DotsHorizZoom = kDotsZoom,
        .DotsVertZoom = kDotsZoom,
        .TriggerLevel = controls_.TriggerKnob->KnobValue(),
        .TriggerPositionX =
            RoundToEven(static_cast<double>(controls_.PretriggerSlider->SliderValue()) * last),
        .TriggerMarkOn = record_.TriggerMark,
        .DelayFlag = record_.DelayActive,
        .Thin = false,
        .IsSpectrum = false,
        .Readouts = readouts_,
    };
}

void Plotter::PlotTime() {
    const double period = driver_.GetSamplePeriod(record_.Running, record_.HeldSamplePeriod);
    const DrawPlotArguments time = TimeArguments(period);
    DrawPlot(time, main_, companions_);
    if (large_.Open && large_.Open()) {
        DrawPlot(time, large_.Surface(), large_.Companions ? large_.Companions() : nullptr);
        Call(large_.RefreshAppInfo);
    }
}

bool Plotter::PrepareSpectra() {
    const SpectrumScale scale =
        controls_.FFTPlotType0->isChecked() ? SpectrumScale::Decibels() : SpectrumScale::Linear();
    bool any = false;
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        const bool shown = record_.ChannelFFT[channel] && record_.ChannelOn[channel];
        spectrumShown_[channel] = shown;
        if (shown) {
            PrepareSpectrum(driver_, record_.SampleData, channel, scale,
                            controls_.FFTWindowCombo->currentIndex(), SpectrumBuffer, record_.SpectrumData);
            any = true;
        }
    }
    return any;
}

DrawPlotArguments Plotter::SpectrumArguments() {
    return {
        .Data = record_.SpectrumData,
        .Colours = record_.ChannelColour,
        .Stale = record_.TracesStale,
        .Shown = spectrumShown_,
        .Inverted = spectrumInverted_,
        .YMax = kSpectrumTop,
        .YMin = -kSpectrumTop,
        .VertPan = 0,
        .GroundPercent = spectrumGround_,
        .VertZoom = 1,
        .XMin = 1,
        .XMax = kSpectrumBins - 1,
        .HorizPan = 0,
        .HorizZoom = 1,
        .XExpansion = 1,
        .HalfVertDivs = kHalfVertDivs,
        .HorizDivs = kSpectrumHorizDivs,
        .SamplePeriod = 0,
        .VertCursorPos = record_.VertCursorTime,
        .VertCursorEn = noCursors_,
        .HorizCursorPos = record_.HorizCursorVolts,
        .HorizCursorEn = noCursors_,
        .ViewXMin = record_.ViewXMin,
        .ViewXMax = record_.ViewXMax,
        .ViewYMin = record_.ViewYMin,
        .ViewYMax = record_.ViewYMax,
        .DotsRequested = false,
        .DotsHorizZoom = -1,
        .DotsVertZoom = -1,
        .TriggerLevel = kNoTriggerLevel,
        .TriggerPositionX = -1,
        .TriggerMarkOn = -1,
        .DelayFlag = false,
        .Thin = false,
        .IsSpectrum = true,
        .Readouts = readouts_,
    };
}

void Plotter::PlotSpectrum() {
    const bool any = PrepareSpectra();
    const bool visible = spectrum_.Visible && spectrum_.Visible();
    if (!any) {
        if (visible) {
            Call(spectrum_.Hide);
        }
        return;
    }
    if (!spectrum_.Surface) {
        return;
    }
    DrawPlot(SpectrumArguments(), spectrum_.Surface(), nullptr);
    Call(spectrum_.RefreshAppInfo);
    Call(spectrum_.Canvas_UpdateStats);
    if (!visible && !showingSpectrum_) {
        ShowSpectrum();
    }
}

/// A window that appears takes its size, and its canvas, which then is empty, asks for a plot: one more for
/// however many asked.
void Plotter::ShowSpectrum() {
    plotAgain_ = false;
    showingSpectrum_ = true;
    Call(spectrum_.Show);
    if (plotAgain_) {
        Plot();
    }
    showingSpectrum_ = false;
}
