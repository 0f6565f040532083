#pragma once

#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "display/draw_plot.h"
#include "display/spectrum_preparation.h"
#include "driver/driver.h"
#include "frame/record/channels.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <functional>

struct Record;

/// The controls that a plot reads.
struct PlotControls {
    SliderControl1* VertPanSlider = nullptr;
    SliderControl1* HorizPanSlider = nullptr;
    SliderControl1* PretriggerSlider = nullptr;
    KnobControl1* VertZoomKnob = nullptr;
    KnobControl1* HorizZoomKnob = nullptr;
    KnobControl1* TriggerKnob = nullptr;
    KnobControl1* DelayKnob = nullptr;
    PerScope<KnobControl1*> OffsetKnob; ///< null where a channel has no tab
    PerCursor<QCheckBox*> VertCursorEn;
    PerCursor<QCheckBox*> HorizCursorEn;
    QComboBox* FFTWindowCombo = nullptr;
    QRadioButton* FFTPlotType0 = nullptr; ///< FFTPlotType(0): decibels

    static PlotControls Of(const Form& main, const ChannelForms& channels, const Form& horizontal,
                           const Form& cursors, const Form& math);
};

/// The large time window; without Open there is none.
struct LargeTimePlot {
    std::function<bool()> Open;
    std::function<Canvas&()> Surface;
    std::function<PlotCompanions*()> Companions;
    std::function<void()> RefreshAppInfo;
};

/// The spectrum window; without Surface there is none. Surface may make the window.
struct SpectrumPlot {
    std::function<Canvas&()> Surface;
    std::function<void()> RefreshAppInfo;
    std::function<void()> Canvas_UpdateStats;
    std::function<bool()> Visible;
    std::function<void()> Show;
    std::function<void()> Hide;
};

struct PlotCalls {
    std::function<void(double ViewXMin, double ViewXMax, double ViewYMax, double ViewYMin)> WorldLineUpdate;
};

/// Turns the shared sample store into pictures: the single place where the screen is refreshed.
class Plotter {
  public:
    /// main and companions: the main canvas.
    Plotter(Record& record, Driver& driver, PlotControls controls, Canvas& main, PlotCompanions* companions,
            PlotCalls calls);

    void SetLargeTimePlot(LargeTimePlot window) { large_ = std::move(window); }
    void SetSpectrumPlot(SpectrumPlot window) { spectrum_ = std::move(window); }

    /// Callable at any time; does nothing while PlotInhibit is set.
    void PlotNow();

  private:
    void Plot();
    void ReadControls();
    void PlotTime();
    void PlotSpectrum();
    void ShowSpectrum();
    bool PrepareSpectra();
    DrawPlotArguments TimeArguments(double samplePeriod);
    DrawPlotArguments SpectrumArguments();

    Record& record_;
    Driver& driver_;
    PlotControls controls_;
    Canvas& main_;
    PlotCompanions* companions_;
    PlotCalls calls_;
    LargeTimePlot large_;
    SpectrumPlot spectrum_;
    bool showingSpectrum_ = false; ///< its window is being shown
    bool plotAgain_ = false;       ///< somebody asked for a plot meanwhile
    CursorReadouts readouts_;

    SpectrumSamples SpectrumBuffer{};
    PerChannel<bool> spectrumShown_;
    PerChannel<bool> spectrumInverted_;
    PerChannel<float> spectrumGround_;
    CursorSwitches noCursors_;
};
