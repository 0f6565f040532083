#pragma once

#include "driver/driver.h"
#include "frame/record/channel_scale.h"

#include <QObject>
#include <array>
#include <functional>
#include <span>
#include <vector>

class ButtonControl1;
class Canvas;
class Form;
class KnobControl1;
class Picture;
class QLabel;
class QRadioButton;
class QTimer;
class QWidget;
struct Record;
class SettingsSection;
class SettingsStore;

/// The panel of one instrument channel, and the only place that turns a knob position into volts. Which
/// channel it is stands in its form's Tag.
class ChannelTab : public QObject, public ChannelScale {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> RedrawSettings; ///< of the large time window
        std::function<void(int channel, bool visible)> SetStatsVisible;
        /// Points the offset null dialog at a channel and its range, and has it write its text.
        std::function<void(int channel, int range)> PointNullDialog;
        std::function<void()> ShowNullDialog;
        std::function<void()> HideNullDialog;
        std::function<void()> RaiseMainAndStats; ///< the main window, then the measurement window
        std::function<void(int& channel)> TrigChanButton_Click; ///< of the horizontal tab
    };
    /// IDTimer is the main window's; MainPlotCanvas takes the warning of a zoomed voltage axis.
    ChannelTab(Form& form, Record& record, Driver& driver, SettingsStore& settings, QTimer& IDTimer,
               Canvas& MainPlotCanvas, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    float GetVoltsPerDiv() const override;
    float GetVoltsPerADCStep() const override;
    float GetOffset() const override;
    int GetRange() const override;

    void Form_Load();
    void RestoreTabSettings();
    /// Saves the settings of a channel that is in use.
    void Form_Unload();

    void VoltsKnob_Change();
    void VoltsKnob_KnobXlateValue(float value, QString& text);
    void OffsetKnob_Change();
    void OffsetKnob_KnobXlateValue(float value, QString& text);
    void Coupling_Click(int index);
    void ProbeType_Click(int index);
    void ChannelOnButton_Click();
    void InvertButton_Click();
    void BWLimitButton_Click();
    void FFTButton_Click();
    void TrigChanButton_Click();
    void OffsetNullButton_Click();
    void CalSourceButton_Click();
    void IDButton_Click();
    void Image1_MouseDown(Qt::MouseButton button);
    void Image1_DblClick();

  private:
    static constexpr int kCouplings = 3; ///< AC, DC, GND
    static constexpr int kProbes = 2;    ///< x1, x10

    int Channel() const;
    void SetUpFrontEnd();
    void ApplyOffset();
    void RescaleHeldTrace(float offset);
    void WarnOfResolution();
    void PaintTabName();
    void UpdateNullDialog();
    void CalSourceOff();
    void SetLEDModes(int mode);
    void RestoreToggle(const QString& key, bool fallback, bool& state, void (ChannelTab::*click)());
    void RestoreOptions(std::span<QRadioButton* const> options, const QString& key, int fallback);
    SettingsSection Section() const;
    SettingsSection NullSection() const;
    void RestoreNullTable();
    void SaveNullTable();

    Form& form_;
    Record& record_;
    Driver& driver_;
    SettingsStore& settings_;
    QTimer& IDTimer_;
    Canvas& canvas_;
    Calls calls_;

    KnobControl1* VoltsKnob;
    KnobControl1* OffsetKnob;
    std::array<QRadioButton*, kCouplings> Coupling;
    std::array<QRadioButton*, kProbes> ProbeType;
    ButtonControl1* ChannelOnButton;
    ButtonControl1* InvertButton;
    ButtonControl1* BWLimitButton;
    ButtonControl1* FFTButton;
    ButtonControl1* TrigChanButton;
    ButtonControl1* OffsetNullButton;
    ButtonControl1* CalSourceButton;
    ButtonControl1* IDButton;
    Picture* Image1;
    QLabel* TabName;
    QWidget* TriggerChannelLine;

    std::vector<float> heldTrace_;
    std::vector<float> rescaledTrace_;
};
