#include "display/view_controls.h"

#include "controls/button_control.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/number_format.h"
#include "controls/rounding.h"
#include "controls/slider_control.h"
#include "display/plot_canvas.h"
#include "frame/record/record.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double kTopSteps = 126; // of the plot, where the trigger stands at 100 percent

} // namespace

int TriggerPercentAt(double steps, int least, int most) {
    return std::clamp(RoundToEven(steps * 100 / kTopSteps), least, most);
}

ViewControls::Controls ViewControls::Controls::Of(const Form& main) {
    return {.HorizZoomKnob = main.control<KnobControl1>("HorizZoomKnob"),
            .VertZoomKnob = main.control<KnobControl1>("VertZoomKnob"),
            .HorizPanSlider = main.control<SliderControl1>("HorizPanSlider"),
            .VertPanSlider = main.control<SliderControl1>("VertPanSlider"),
            .NormaliseButton = main.control<ButtonControl1>("NormaliseButton"),
            .MainPlotCanvas = main.control<PlotCanvas>("MainPlotCanvas"),
            .TriggerKnob = main.control<KnobControl1>("TriggerKnob")};
}

ViewControls::ViewControls(Record& record, const Controls& controls, Calls calls)
    : record_(record), controls_(controls), calls_(std::move(calls)) {}

void ViewControls::Connect() {
    connect(controls_.HorizZoomKnob, &KnobControl1::Change, this, &ViewControls::ZoomKnob_Change);
    connect(controls_.VertZoomKnob, &KnobControl1::Change, this, &ViewControls::ZoomKnob_Change);
    connect(controls_.HorizPanSlider, &SliderControl1::Change, this, &ViewControls::HorizPanSlider_Change);
    connect(controls_.VertPanSlider, &SliderControl1::Change, this, &ViewControls::VertPanSlider_Change);
    connect(controls_.NormaliseButton, &ButtonControl1::Click, this, &ViewControls::NormaliseButton_Click);
    connect(controls_.MainPlotCanvas, &PlotCanvas::Pressed, this,
            [this](Qt::MouseButton button, double, double y) { MainPlotCanvas_MouseDown(button, y); });
}

void ViewControls::ZoomKnob_Change() {
    calls_.PlotNow();
    calls_.SetDefaultLayering();
}

void ViewControls::HorizPanSlider_Change() {
    const auto pan = static_cast<double>(controls_.HorizPanSlider->SliderValue());
    controls_.HorizPanSlider->setToolTip(QStringLiteral("Current horizontal pan: ") +
                                         FormatNumber(pan, "0%"));
    calls_.PlotNow();
    calls_.SetDefaultLayering();
}

void ViewControls::VertPanSlider_Change() {
    const auto pan = 0.5 - static_cast<double>(controls_.VertPanSlider->SliderValue());
    controls_.VertPanSlider->setToolTip(QStringLiteral("Current vertical pan: ") + FormatNumber(pan, "0%"));
    calls_.PlotNow();
    calls_.SetDefaultLayering();
}

void ViewControls::NormaliseButton_Click() {
    record_.PlotInhibit = true; // one picture for the four
    controls_.VertPanSlider->SetSliderValue(0.5F);
    controls_.VertZoomKnob->SetKnobValue(1);
    controls_.HorizPanSlider->SetSliderValue(0);
    controls_.HorizZoomKnob->SetKnobValue(1);
    calls_.SetDefaultLayering();
    record_.PlotInhibit = false;
    calls_.PlotNow();
}

void ViewControls::MainPlotCanvas_MouseDown(Qt::MouseButton button, double y) {
    // A picture of words only, where the zoom is too much, has no levels to click on.
    if (button != Qt::LeftButton || !(controls_.MainPlotCanvas->Surface().ScaleHeight() < 0)) {
        return;
    }
    KnobControl1& knob = *controls_.TriggerKnob;
    knob.SetKnobValue(TriggerPercentAt(y, knob.KnobMin(), knob.KnobMax()));
    calls_.TriggerKnob_Done();
}
