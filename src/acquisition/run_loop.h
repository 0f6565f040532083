#pragma once

#include "acquisition/acquisition_state.h"
#include "acquisition/read_out.h"
#include "acquisition/trigger_status.h"
#include "acquisition/waiting.h"
#include "controls/form.h"
#include "driver/driver.h"
#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"
#include "frame/record/colour.h"

#include <QObject>
#include <QTimer>
#include <array>
#include <functional>
#include <vector>

class ButtonControl1;
class KnobControl1;
struct Record;

/// The polled acquisition: each tick of RunTimer asks the master module whether it is busy; if not, starts
/// the next acquisition, reads what has finished, conditions the samples and has them plotted.
class RunLoop : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        QTimer* RunTimer;
        QTimer* AutoTriggerTimer;
        QTimer* CursTimer; ///< runs while a plot is owed to a hand that drags a cursor
        ButtonControl1* RunButton;
        ButtonControl1* OnceButton;
        QLabel* TriggerStatusLabel;
        QLabel* UpdateRateLabel;
        PerScope<KnobControl1*> OffsetKnob;

        static Controls Of(const Form& main, const Form& about, const ChannelForms& channels);
    };
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> DoMaths;
        std::function<void()> PretriggerSlider_Change;
        std::function<void()> UpdateStats;
        std::function<void()> SetDefaultLayering;
        std::function<void()> DelayKnob_Change;
    };
    /// Where a channel's volts come from; a channel without a panel is null and counts as 0 volts.
    using Scales = PerChannel<const ChannelScale*>;

    RunLoop(Record& record, Driver& driver, AcquisitionState& state, const Controls& controls,
            const Scales& scales, Calls calls, Waiting waiting);

    /// The values of the moment at which the main form has loaded.
    void Load();
    /// Connects the handlers to the signals of their controls.
    void Connect();

    void RunTimer_Timer();
    void AutoTriggerTimer_Timer();
    void RunButton_Click();
    void OnceButton_Click();

  private:
    bool StoppedWhileYielding();
    void FillDemoData();
    void PrepareIdle();
    void PollMaster();
    void Pass();
    void Start();
    bool ProbeDue() const;
    void Probe();
    void CompleteRecord();
    void ReadBlocks();
    void ReadRIS();
    void Plot();
    void ShowWaiting();
    void RefreshStats();
    void ReadRoll();
    void BecomeStopped();
    void BecomeRunning();
    void FlattenTraces();
    void Status(Colour colour);
    void SetNormTrigInUse(bool on);
    Conditioning ConditioningOf(int channel) const;
    RecordRow Row(int channel);

    Record& record_;
    Driver& driver_;
    AcquisitionState& state_;
    Controls controls_;
    Scales scales_;
    Calls calls_;
    Waiting waiting_;
    TriggerStatus status_;
    bool statsWait_ = false; ///< the figures are due and let a dragged cursor's plot go first
    QTimer statsSoon_;
    int stops_ = 0; ///< stops so far; a tick that sees the count change in its yield ends

    std::vector<float> BlockBuffer;
    std::vector<float> ChannelBuffer;
    std::vector<double> DemoBuffer;
};
