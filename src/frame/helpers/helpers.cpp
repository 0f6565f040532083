#include "frame/helpers/helpers.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/knob_control.h"
#include "controls/number_format.h"

#include <QLabel>
#include <QLocale>
#include <cmath>

float GroundPercent(const KnobControl1& knob) {
    const int range = knob.KnobMax() - knob.KnobMin();
    return range == 0 ? 0 : static_cast<float>(knob.KnobValue() * 200.0 / range);
}

QString FormatSeconds(double seconds) {
    const double size = std::abs(seconds);
    // A figure that rounds to a thousand of its unit is one of the next: a 32-bit microsecond lies just
    // below.
    if (size * 1e9 < 999.95) {
        return FormatNumber(seconds * 1e9, "0.0ns");
    }
    if (size * 1e6 < 999.9995) {
        return FormatNumber(seconds * 1e6, "0.000us");
    }
    if (size * 1000 < 999.9995) {
        return FormatNumber(seconds * 1000, "0.000ms");
    }
    return FormatNumber(seconds, "0.000s");
}

void SetButtonFill(ButtonControl1* button, bool condition, Colour ifTrue, Colour ifFalse) {
    button->SetButtonFillColor(ToQColor(condition ? ifTrue : ifFalse));
}

void SetButtonText(ButtonControl1* button, bool condition, const QString& ifTrue, const QString& ifFalse) {
    button->SetButtonCaption(condition ? ifTrue : ifFalse);
}

void SetOnOffColours(QLabel* label, bool on, Colour foreOn, Colour backOn, Colour foreOff, Colour backOff) {
    const QColor fore = ToQColor(on ? foreOn : foreOff);
    const QColor back = ToQColor(on ? backOn : backOff);
    QPalette palette = label->palette();
    if (label->autoFillBackground() && palette.color(QPalette::WindowText) == fore &&
        palette.color(QPalette::Window) == back) {
        return;
    }
    palette.setColor(QPalette::WindowText, fore);
    palette.setColor(QPalette::Window, back);
    label->setPalette(palette);
    label->setAutoFillBackground(true);
}

QString MakeDataStamp(const QString& versionText, const QDateTime& now) {
    return QStringLiteral("Corvantine ") + versionText + QStringLiteral(".  DATA ACQUIRED AT: ") +
           QLocale().toString(now, QLocale::ShortFormat);
}
