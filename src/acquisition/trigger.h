#pragma once

#include "acquisition/acquisition_state.h"
#include "controls/form.h"
#include "driver/driver.h"
#include "frame/record/channels.h"

#include <QObject>
#include <functional>

class ButtonControl1;
class KnobControl1;
class QLabel;
class QTimer;
class QWidget;
struct Record;
class SliderControl1;

/// Mode, type, threshold, pre-trigger depth and source of the trigger, mirrored to every module in use.
class Trigger : public QObject {
    Q_OBJECT
  public:
    /// What shows the source of the trigger for one channel.
    struct SourceMarks {
        ButtonControl1* TrigChanButton;    ///< of the horizontal tab
        QLabel* UpdateRateMarkerLabel;     ///< of the horizontal tab
        ButtonControl1* TabTrigChanButton; ///< of the channel tab
        QWidget* TriggerChannelLine;       ///< of the channel tab
    };
    struct Controls {
        QTimer* AutoTriggerTimer;
        QTimer* TriggerLineTimer;
        ButtonControl1* TrigModeButton;
        ButtonControl1* TrigTypeButton;
        KnobControl1* TriggerKnob;
        SliderControl1* PretriggerSlider;
        QLabel* TriggerStatusLabel;
        QWidget* TriggerLine;      ///< over the main canvas
        QWidget* LargeTriggerLine; ///< over the large time window's
        PerScope<SourceMarks> Source;

        static Controls Of(const Form& main, const Form& horizontal, const Form& largeTime,
                           const ChannelForms& channels);
    };
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> SetDefaultLayering;
    };

    Trigger(Record& record, Driver& driver, AcquisitionState& state, const Controls& controls, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    void TrigModeButton_Click();
    void TrigTypeButton_Click();
    void TriggerKnob_Change();
    void TriggerKnob_Done();
    void TriggerLineTimer_Timer();
    void PretriggerSlider_Change();
    /// Makes a channel the source. One that is not in use becomes the master, in the caller's variable too.
    void TrigChanButton_Click(int& channel);

    /// Takes a saved mode and type (0..2, 0..3) through the clicks that step to them. The program never
    /// starts in norm: a saved norm comes back as auto. Free mode keeps its type for when it is left. Sends
    /// the slider's depth too, whatever the mode.
    void Restore(int mode, int type);

  private:
    void StepType();
    void SendDepth(float depth);
    void ShowTypeCaption();
    void ShowTriggerLines(bool visible);
    bool InUse(int channel) const;

    Record& record_;
    Driver& driver_;
    AcquisitionState& state_;
    Controls controls_;
    Calls calls_;
};
