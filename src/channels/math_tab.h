#pragma once

#include "channels/math_channel.h"
#include "frame/record/channels.h"

#include <QObject>
#include <array>
#include <functional>

class ButtonControl1;
class Form;
class QComboBox;
class QRadioButton;
struct Record;
class SettingsStore;

/// The panel of the two math channels, which also holds the two settings of the spectrum.
class MathTab : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void(int channel, bool visible)> SetStatsVisible;
        std::function<void(int channel, bool visible)> SetGroundLabelVisible; ///< on the main canvas
    };

    /// operands: where the volts of the instrument channels come from.
    MathTab(const Form& form, Record& record, SettingsStore& settings,
            const PerScope<const ChannelScale*>& operands, Calls calls);

    /// Connects the handlers to the signals of their controls. Lists speak up only when a person chooses:
    /// filling one is no choice.
    void Connect();

    /// Volts of math channel 1 or 2.
    const ChannelScale& Scale(int number) const { return channels_[static_cast<std::size_t>(number - 1)]; }

    /// Fills the rows of both channels from the samples of their operands, in the scales of the moment.
    void DoMaths();

    void RestoreTabSettings();
    void Form_Unload();

    void MathChannelEn_Click(int index); ///< 1 or 2
    void FFTButton_Click(int index);     ///< 0 or 1

  private:
    static constexpr int kMathChannels = 2;

    void ConnectChannel(int index);
    void Recompute();
    template <class Visit> void ForLists(Visit visit);
    template <class Visit> void ForKnobs(Visit visit);

    Record& record_;
    SettingsStore& settings_;
    Calls calls_;
    std::array<MathChannel, kMathChannels> channels_;
    std::array<ButtonControl1*, kMathChannels> FFTButton;
    QComboBox* FFTWindowCombo;
    std::array<QRadioButton*, 2> FFTPlotType;
};
