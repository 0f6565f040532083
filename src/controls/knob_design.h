#pragma once

#include "controls/colour.h"
#include "controls/design_keys.h"

#include <QFont>
#include <QString>
#include <QVariant>

inline constexpr double kKnobFontPoints = 8;

/// The stored properties of a knob, under the names of their design keys and with the defaults that reading
/// has for them.
struct KnobDesign {
    int KnobValue = 0;
    int KnobBand1Start = -1;
    int KnobBand1Stop = -1;
    QColor KnobBand1Color = ToQColor(0);
    QColor KnobTextColor = ToQColor(0);
    bool KnobAnticlock = false;
    bool KnobZeroButton = true;
    int KnobZeroButtonValue = 0; ///< KnobMin when the bag has none
    bool KnobApplyLimit = false;
    int KnobLowerLimit = 0;   ///< KnobMin when the bag has none
    int KnobUpperLimit = 100; ///< KnobMax when the bag has none
    int KnobMin = 0;
    int KnobMax = 100;
    int KnobStartAngle = -45;
    int KnobStopAngle = -135;
    int KnobTimeout = 0; ///< milliseconds
    QColor KnobFillColor = ToQColor(kButtonFace);
    QColor KnobBorderColor = ToQColor(kButtonFace);
    QColor KnobMarkerColor = ToQColor(kButtonFace);
    QString KnobValueFormat = QStringLiteral("0.0");
    QString KnobMarkers = QStringLiteral("2");
    bool KnobValueEditable = false;
    bool KnobValueQuantized = false;
    int KnobValueAlign = 0; ///< 0 below, 1 on the knob, 2 above, 3 to the right
    bool KnobVisible = true;
    QFont KnobFont = ReadFontKeys({}, QStringLiteral("KnobFont"), kKnobFontPoints);
};

/// Takes the keys that the bag holds, the defaults for the rest and for values of the wrong kind.
KnobDesign ReadKnobDesign(const QVariantMap& bag);

/// The keys whose value is not the default that writing has for them. The two sides differ: writing takes 0
/// for the ends of the band and 0 and 100 for the limits, and has the key "Knobment" besides, which nobody
/// reads. textAlignment: of the text box, 0 left, 1 right, 2 centre.
QVariantMap WriteKnobDesign(const KnobDesign& design, int textAlignment);
