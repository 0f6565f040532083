#pragma once

#include "frame/record/colour.h"
#include "frame/settings/setting_text.h" // ParseLocaleReal is one of the helpers

#include <QDateTime>
#include <QString>

class ButtonControl1;
class KnobControl1;
class QLabel;

/// Percent of the half screen at which an offset knob puts the ground: its ends give about +-100.
float GroundPercent(const KnobControl1& knob);

/// Seconds as a person reads them: "12.0ns", "1.500us", "20.000ms", "2.000s".
QString FormatSeconds(double seconds);

void SetButtonFill(ButtonControl1* button, bool condition, Colour ifTrue, Colour ifFalse);
void SetButtonText(ButtonControl1* button, bool condition, const QString& ifTrue, const QString& ifFalse);
/// Leaves a label that has its colours already alone, so that a timer may call it at every tick.
void SetOnOffColours(QLabel* label, bool on, Colour foreOn, Colour backOn, Colour foreOff, Colour backOff);

/// The line that a window shows beside its data: program, version and the moment.
QString MakeDataStamp(const QString& versionText, const QDateTime& now);
