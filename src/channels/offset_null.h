#pragma once

#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"

#include <QObject>

class Form;
class QLabel;
class QLineEdit;
class QTimer;
struct Record;

/// The dialog that measures a range's residual offset and takes it off every later sample. It works on the
/// channel and range whose tab touched it last, and stands beside the running instrument.
class OffsetNullDialog : public QObject {
    Q_OBJECT
  public:
    using Scales = PerScope<const ChannelScale*>;

    OffsetNullDialog(Form& form, Record& record, const Scales& scales);

    /// Shows the dialog, in front of whatever lies over it.
    void Show();
    /// From now on the dialog works on this channel and range.
    void PointAt(int channel, int range);
    void OffsetNullFormatString();

    void ApplyNullButton_Click();
    void CancelNullButton_Click();
    void DoneNullButton_Click();
    void WaitForUpdateTimer1_Timer();
    void WaitForUpdateTimer2_Timer();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    float& Null();

    Form& form_;
    Record& record_;
    Scales scales_;
    QLabel* CurrentChanText;
    QLineEdit* CurrentNullText;
    QTimer* WaitForUpdateTimer1;
    QTimer* WaitForUpdateTimer2;
    int channel_ = 1;
    int range_ = 0;
};
