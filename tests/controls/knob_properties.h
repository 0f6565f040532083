#pragma once

#include "controls/colour.h"

#include <QColor>
#include <QVariant>
#include <vector>

/// A stored property of a knob, as every test of them needs it.
struct KnobProperty {
    const char* name;
    QVariant read;       ///< the default of reading, which a new knob has
    QVariant written;    ///< the value that writing leaves out
    QVariant other;      ///< neither of the two
    bool laysOut = true; ///< what a put does, beside storing
};

/// All but the font, whose design keys are five.
inline const std::vector<KnobProperty>& KnobPropertyTable() {
    const QColor face = ToQColor(kButtonFace);
    const QColor black = ToQColor(0);
    static const std::vector<KnobProperty> all = {
        {"KnobValue", 0, 0, 7},
        {"KnobBand1Start", -1, 0, 24},
        {"KnobBand1Stop", -1, 0, 28},
        {"KnobBand1Color", black, black, QColor(255, 0, 0)},
        {"KnobTextColor", black, black, QColor(255, 255, 255)},
        {"KnobAnticlock", false, false, true},
        {"KnobZeroButton", true, true, false},
        {"KnobZeroButtonValue", 0, 0, 3, false},
        {"KnobApplyLimit", false, false, true, false},
        {"KnobLowerLimit", 0, 0, 1, false},
        {"KnobUpperLimit", 100, 100, 26, false},
        {"KnobMin", 0, 0, 2},
        {"KnobMax", 100, 100, 27},
        {"KnobStartAngle", -45, -45, -90},
        {"KnobStopAngle", -135, -135, 90},
        {"KnobTimeout", 0, 0, 20},
        {"KnobFillColor", face, face, QColor(1, 2, 3)},
        {"KnobBorderColor", face, face, QColor(4, 5, 6)},
        {"KnobMarkerColor", face, face, QColor(7, 8, 9)},
        {"KnobValueFormat", "0.0", "0.0", "x0"},
        {"KnobMarkers", "2", "2", "28"},
        {"KnobValueEditable", false, false, true},
        {"KnobValueQuantized", false, false, true, false},
        {"KnobValueAlign", 0, 0, 2},
        {"KnobVisible", true, true, false, false},
    };
    return all;
}
