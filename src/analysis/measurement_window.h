#pragma once

#include "driver/driver.h"
#include "frame/record/channel_scale.h"
#include "frame/record/record.h"

#include <QObject>

class Form;
class QCheckBox;
class QLabel;
class QWidget;

/// The small window of figures: a row for each channel, four times a second, from the samples alone.
class MeasurementWindow : public QObject {
    Q_OBJECT
  public:
    using Scales = PerChannel<const ChannelScale*>; ///< null: the channel has no volts yet
    struct Controls {
        Indexed<QCheckBox*, 0, Record::kCursors - 1> VertCursorEn;
        Indexed<QCheckBox*, 0, Record::kCursors - 1> HorizCursorEn;
    };

    MeasurementWindow(Form& form, Record& record, Driver& driver, const Scales& scales,
                      const Controls& controls);

    /// Makes the rows of the channels in use, once. A channel that goes out of use later loses its row.
    void Build();
    void SetVisible(int channel, bool visible);
    void UpdateStats();

  private:
    static constexpr int kFigures = 5;
    static constexpr int kCursorFigures = 2 * Record::kCursors;
    struct Row {
        QWidget* ChStats = nullptr;
        QWidget* CursStats = nullptr;
        Indexed<QLabel*, 1, kFigures> figures;
        Indexed<QLabel*, 1, kCursorFigures> cursors;
    };

    void BuildRow(int channel, int place);
    void DropRows();
    void UpdateRow(int channel, const SamplePeriod& period);
    void UpdateCursors(int channel, float scale, double ground, double period);

    Form& form_;
    Record& record_;
    Driver& driver_;
    Scales scales_;
    Controls controls_;
    PerChannel<Row> rows_;
};
