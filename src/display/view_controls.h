#pragma once

#include <QObject>
#include <functional>

class ButtonControl1;
class Form;
class KnobControl1;
class PlotCanvas;
struct Record;
class SliderControl1;

/// What part of the record is seen, zoom and pan of both axes, and the click in the plot that sets the
/// trigger level.
class ViewControls : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        KnobControl1* HorizZoomKnob = nullptr;
        KnobControl1* VertZoomKnob = nullptr;
        SliderControl1* HorizPanSlider = nullptr;
        SliderControl1* VertPanSlider = nullptr;
        ButtonControl1* NormaliseButton = nullptr;
        PlotCanvas* MainPlotCanvas = nullptr;
        KnobControl1* TriggerKnob = nullptr;

        static Controls Of(const Form& main);
    };
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> SetDefaultLayering;
        std::function<void()> TriggerKnob_Done;
    };

    ViewControls(Record& record, const Controls& controls, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    void HorizPanSlider_Change();
    void VertPanSlider_Change();
    void NormaliseButton_Click();
    /// y: in the plot's user scale.
    void MainPlotCanvas_MouseDown(Qt::MouseButton button, double y);

  private:
    void ZoomKnob_Change();

    Record& record_;
    Controls controls_;
    Calls calls_;
};

/// Percent of the trigger's range at a level of the plot in ADC steps, within least..most.
int TriggerPercentAt(double steps, int least, int most);
