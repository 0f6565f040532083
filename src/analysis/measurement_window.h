#pragma once

#include "analysis/measurement_layout.h"
#include "driver/driver.h"
#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"

#include <QObject>

class Form;
class QCheckBox;
class QLabel;
class QWidget;
struct Record;

/// The small window of figures: a row for each channel, four times a second, from the samples alone.
class MeasurementWindow : public QObject {
    Q_OBJECT
  public:
    using Scales = PerChannel<const ChannelScale*>; ///< null: the channel has no volts yet
    struct Controls {
        PerCursor<QCheckBox*> VertCursorEn;
        PerCursor<QCheckBox*> HorizCursorEn;

        static Controls Of(const Form& cursors);
    };

    MeasurementWindow(Form& form, Record& record, Driver& driver, const Scales& scales,
                      const Controls& controls);

    /// Makes the rows of the channels in use, once. A channel that goes out of use later loses its row.
    void Build();
    void SetVisible(int channel, bool visible);
    void UpdateStats();

  private:
    static constexpr int kFigures = static_cast<int>(kMeasurementColumns.size());
    static constexpr int kCursorFigures = 2 * kCursors;
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
