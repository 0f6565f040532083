#include "channels/offset_null.h"

#include "controls/button_control.h"
#include "controls/form.h"
#include "controls/number_format.h"
#include "controls/window_mover.h"
#include "frame/record/record.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>

OffsetNullDialog::OffsetNullDialog(Form& form, Record& record, const Scales& scales)
    : form_(form), record_(record), scales_(scales), CurrentChanText(form.control<QLabel>("CurrentChanText")),
      CurrentNullText(form.control<QLineEdit>("CurrentNullText")),
      WaitForUpdateTimer1(form.timer("WaitForUpdateTimer1")),
      WaitForUpdateTimer2(form.timer("WaitForUpdateTimer2")) {
    auto button = [&](const char* name, void (OffsetNullDialog::*handler)()) {
        connect(form.control<ButtonControl1>(name), &ButtonControl1::Click, this, handler);
    };
    button("ApplyNullButton", &OffsetNullDialog::ApplyNullButton_Click);
    button("CancelNullButton", &OffsetNullDialog::CancelNullButton_Click);
    button("DoneNullButton", &OffsetNullDialog::DoneNullButton_Click);
    connect(WaitForUpdateTimer1, &QTimer::timeout, this, &OffsetNullDialog::WaitForUpdateTimer1_Timer);
    connect(WaitForUpdateTimer2, &QTimer::timeout, this, &OffsetNullDialog::WaitForUpdateTimer2_Timer);
    new WindowMover(form);
    CurrentNullText->installEventFilter(this);
    CurrentNullText->setCursor(Qt::ArrowCursor);
}

// The value is there to be read: the mouse passes through it to the dialog, which it moves.
bool OffsetNullDialog::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        event->ignore();
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void OffsetNullDialog::Show() {
    form_.show();
    form_.raise();
}

void OffsetNullDialog::PointAt(int channel, int range) {
    channel_ = channel;
    range_ = std::clamp(range, 0, OffsetNullTable::kRanges - 1);
    CurrentChanText->setText(QStringLiteral("Offset for channel %1").arg(channel_));
    OffsetNullFormatString();
}

float& OffsetNullDialog::Null() {
    return record_.OffsetNull(channel_, range_);
}

void OffsetNullDialog::OffsetNullFormatString() {
    const ChannelScale* scale = scales_[channel_];
    CurrentNullText->setText(ShortestText(scale == nullptr ? 0.0F : scale->GetVoltsPerDiv()) +
                             QStringLiteral(" Volts/Div offset = ") +
                             FormatNumber(static_cast<double>(Null()), "0.000") +
                             QStringLiteral(" ADC steps"));
}

// The null goes first, then the flag, then the timer starts, so that the reading that counts was taken
// without the old null.
void OffsetNullDialog::ApplyNullButton_Click() {
    Null() = 0;
    record_.OffsetNullActive = false;
    WaitForUpdateTimer1->start();
}

// The first reading may have been on its way when the button was pressed.
void OffsetNullDialog::WaitForUpdateTimer1_Timer() {
    if (record_.OffsetNullActive) {
        record_.OffsetNullActive = false;
        WaitForUpdateTimer1->stop();
        WaitForUpdateTimer2->start();
    }
}

void OffsetNullDialog::WaitForUpdateTimer2_Timer() {
    if (record_.OffsetNullActive) {
        WaitForUpdateTimer2->stop();
        Null() = record_.OffsetNullMeasured[channel_];
        OffsetNullFormatString();
    }
}

void OffsetNullDialog::CancelNullButton_Click() {
    Null() = 0;
    OffsetNullFormatString();
}

void OffsetNullDialog::DoneNullButton_Click() {
    form_.hide();
}
