#pragma once

#include "acquisition/acquisition_state.h"
#include "acquisition/timebase_table.h"
#include "driver/driver.h"
#include "frame/record/colour.h"

#include <QObject>
#include <functional>
#include <optional>

class Form;
class KnobControl1;
class QLabel;
class QTimer;
class QWidget;
struct Record;
class SliderControl1;

/// The timebase knob with its sampling modes, the trigger delay and the update rate.
class Timebase : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        KnobControl1* TimeBaseKnob;
        KnobControl1* DelayKnob;
        SliderControl1* UpdateRateSlider;
        QLabel* DelayLabel;
        QLabel* AcqModeLabel;
        QTimer* RunTimer;

        static Controls Of(const Form& main, const Form& horizontal);
    };
    struct Calls {
        std::function<void()> TrigModeButton_Click;
        std::function<void(int cursor, double seconds)> MoveVertCursorHandle;
        std::function<void()> PlotNow;
        std::function<void()> RedrawSettings; ///< of the large time window
        /// The skin's colour under a control's centre.
        std::function<Colour(const QWidget* control)> SkinColourAt;
    };

    Timebase(Record& record, Driver& driver, AcquisitionState& state, const Controls& controls, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    /// The whole change of timebase; text becomes the label of the setting.
    void TimeBaseKnob_KnobXlateValue(float value, QString& text);
    void DelayKnob_Change();
    void DelayKnob_KnobXlateValue(float value, QString& text);
    void UpdateRateSlider_Change();
    /// The end of the start-up's restore: the change of timebase once more, after the trigger has its saved
    /// mode. A RIS setting so forces norm over that mode, and remembers it.
    void Restore();

  private:
    /// What is in force. Empty before the first change, so that the first change reaches the instrument.
    struct TimeBaseState {
        std::optional<std::int32_t> clock;
        std::optional<std::int32_t> decimation;
        bool wasRIS = false;
        bool leavesToAuto = true; ///< the trigger mode that RIS took over was auto
    };

    void TakeSetting(const TimebaseSetting& setting);
    void AbandonAcquisition();
    void SendClocks(const TimebaseSetting& setting);
    void SwitchMode();
    void LeaveRIS();
    void EnterRIS();
    void SetRISModeInUse(bool on);
    void ShowMode();
    void KeepCursorsInRecord();
    void FitHeldRecord();
    float Period();

    Record& record_;
    Driver& driver_;
    AcquisitionState& state_;
    Controls controls_;
    Calls calls_;
    TimeBaseState timeBaseState_;
    QString AcqModeText;
};
