#pragma once

#include "controls/knob_instances.h"
#include "display/plotter.h"

/// The controls that a plotter reads, as a start-up leaves them.
struct PlotControlSet {
    PlotControlSet() {
        VertPanSlider.SetSliderValueQuantized(0.01F);
        VertPanSlider.SetSliderValue(0.5F);
        HorizPanSlider.SetSliderValueQuantized(0.0001F);
        HorizPanSlider.SetSliderValue(0);
        PretriggerSlider.SetSliderValueQuantized(0.01F);
        PretriggerSlider.SetSliderValue(0.5F);
        VertZoomKnob.SetKnobValue(1);
        HorizZoomKnob.SetKnobValue(1);
        TakeLimits(TriggerKnob, "TriggerKnob");
        for (KnobControl1& knob : offsetKnobs) {
            TakeLimits(knob, "OffsetKnob");
            knob.SetKnobValue(0);
        }
        FFTWindowCombo.addItems({"Rectangular", "Hanning", "Hamming", "Triangular", "Welch!"});
        FFTPlotType0.setAutoExclusive(false);
        FFTPlotType0.setChecked(true);
    }

    KnobControl1& OffsetKnob(int channel) { return offsetKnobs[channel - 1]; }

    PlotControls Pointers() {
        PlotControls controls{.VertPanSlider = &VertPanSlider,
                              .HorizPanSlider = &HorizPanSlider,
                              .PretriggerSlider = &PretriggerSlider,
                              .VertZoomKnob = &VertZoomKnob,
                              .HorizZoomKnob = &HorizZoomKnob,
                              .TriggerKnob = &TriggerKnob,
                              .DelayKnob = &DelayKnob,
                              .OffsetKnob = {},
                              .VertCursorEn = {},
                              .HorizCursorEn = {},
                              .FFTWindowCombo = &FFTWindowCombo,
                              .FFTPlotType0 = &FFTPlotType0};
        for (int channel = 1; channel <= kScopeChannels; ++channel) {
            controls.OffsetKnob[channel] = &OffsetKnob(channel);
        }
        for (int i = 0; i < kCursors; ++i) {
            controls.VertCursorEn[i] = &VertCursorEn[i];
            controls.HorizCursorEn[i] = &HorizCursorEn[i];
        }
        return controls;
    }

    SliderControl1 VertPanSlider, HorizPanSlider, PretriggerSlider;
    KnobControl1 VertZoomKnob, HorizZoomKnob, TriggerKnob, DelayKnob;
    KnobControl1 offsetKnobs[kScopeChannels];
    QCheckBox VertCursorEn[kCursors];
    QCheckBox HorizCursorEn[kCursors];
    QComboBox FFTWindowCombo;
    QRadioButton FFTPlotType0;
};
