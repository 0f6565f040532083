#pragma once

#include "analysis/fitted_label.h"
#include "analysis/spectrum_read_out.h"
#include "display/plotter.h"
#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"

#include <QObject>
#include <array>
#include <functional>
#include <span>

class Driver;
class Form;
class PlotCanvas;
class QLabel;
class QRadioButton;
struct Record;

/// The window of the spectra, with a cross-hair that reads frequency and magnitudes. The plotter fills its
/// canvas, opens it with the first spectrum and closes it with the last.
class SpectrumWindow : public QObject {
    Q_OBJECT
  public:
    using Scales = PerChannel<const ChannelScale*>; ///< null: the channel has no volts
    struct Calls {
        std::function<void()> PlotNow;
        std::function<QString()> MakeDataStamp;
        /// While the panel is minimised the window is away with it, and neither shown nor hidden.
        std::function<bool()> MainMinimised;
    };

    /// FFTPlotType0: the math tab's option of the plot in decibels.
    SpectrumWindow(Form& form, Record& record, Driver& driver, const QRadioButton& FFTPlotType0,
                   const Scales& scales, Calls calls);

    /// What the plotter needs of the window.
    SpectrumPlot Plot();

    void RefreshAppInfo();
    void Canvas_UpdateStats();
    void Form_Resize();
    /// The two lines from end to end of the window.
    void StretchCursorLines();

    bool CursorLocked = false;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Canvas_MouseDown(Qt::MouseButton button, CrossHair at);
    void Canvas_MouseMove(CrossHair at);
    void PlaceLines();
    void BeginLabels();
    std::span<const SpectrumReading> Read();

    Form& form_;
    Record& record_;
    Driver& driver_;
    const QRadioButton& decibels_;
    Scales scales_;
    Calls calls_;

    PlotCanvas* canvas_;
    QWidget* FFTCursorLineVert;
    QWidget* FFTCursorLineHoriz;
    QLabel* TitleLabel;
    FittedLabel OtherInfoLabel;
    FittedLabel FFTStatsFreq;
    FittedLabel FFTStatsMag;

    CrossHair cross_;
    std::array<SpectrumReading, kAllChannels> readings_;
    std::size_t shown_ = 0; ///< spectra at the last read-out
    QString text_;
};
