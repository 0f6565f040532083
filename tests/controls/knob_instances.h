#pragma once

#include <QSize>
#include <QVariantMap>
#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// A knob of the forms, as designed.
struct KnobInstance {
    const char* name;
    QSize size;
    int start;
    int stop;
    int min;
    int max;
    int value;
    int markers;
    int timeout;
    const char* format;
    int align;
    bool anticlock = false;
    int sweep = 270;

    QVariantMap bag() const {
        return {{"KnobStartAngle", start},
                {"KnobStopAngle", stop},
                {"KnobMin", min},
                {"KnobMax", max},
                {"KnobValue", value},
                {"KnobMarkers", QString::number(markers)},
                {"KnobTimeout", timeout},
                {"KnobValueFormat", format},
                {"KnobValueAlign", align},
                {"KnobAnticlock", anticlock},
                {"KnobValueQuantized", true}};
    }
};

inline std::ostream& operator<<(std::ostream& out, const KnobInstance& knob) {
    return out << knob.name;
}

inline const std::vector<KnobInstance>& KnobInstances() {
    static const std::vector<KnobInstance> all = {
        {"HorizZoomKnob", {59, 45}, -45, 225, 1, 100, 1, 11, 10, "x0", 2},
        {"VertZoomKnob", {59, 45}, -45, 225, 1, 20, 1, 11, 10, "x0", 2},
        {"TimeBaseKnob", {85, 96}, -45, 225, 0, 27, 7, 28, 20, "0", 2, true},
        {"TriggerKnob", {85, 89}, -90, 90, -100, 100, 0, 11, 20, "0\\% trig", 2, false, 180},
        {"VoltsKnob", {75, 89}, 0, 180, 0, 2, 2, 3, 50, "V/div", 0, true, 180},
        {"OffsetKnob", {75, 89}, -90, 90, -127, 127, 0, 11, 20, "0.0%", 0, false, 180},
        {"Math1VoltsKnob", {59, 73}, 0, 180, 0, 3, 0, 4, 50, "V/d", 0, true, 180},
        {"Math1OffsetKnob", {59, 73}, -90, 90, -127, 127, 0, 11, 50, "0.0%", 0, false, 180},
        {"DelayKnob", {93, 97}, -90, 180, -32768, 32767, -32768, 16, 20, "0.0%", 2},
    };
    return all;
}

/// Gives any knob the limits of the designed one of that name.
template <class Knob> void TakeLimits(Knob& knob, std::string_view name) {
    const auto& all = KnobInstances();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& k) { return k.name == name; });
    if (found == all.end()) {
        throw std::invalid_argument(std::string(name));
    }
    knob.SetKnobMin(found->min);
    knob.SetKnobMax(found->max);
}
