#include "controls/knob_arithmetic.h"

#include "controls/number_format.h"
#include "controls/rounding.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace knob {

namespace {

constexpr int kTurn = 360;

/// Into 0..360, for what is at most one turn outside.
template <class T> T ReducedOnce(T degrees) {
    if (degrees > kTurn) {
        return degrees - kTurn;
    }
    return degrees < 0 ? degrees + kTurn : degrees;
}

} // namespace

int Sweep(int startAngle, int stopAngle) {
    const auto span = ReducedOnce(std::int64_t{startAngle} - stopAngle);
    return RoundToEven<int>(static_cast<double>(kTurn - span));
}

QPointF PointAt(QPointF centre, double radius, double angle) {
    static const auto pi = static_cast<float>(4 * std::atan(1.0));
    const double radians = 2 * angle * pi / kTurn;
    return {centre.x() - radius * std::cos(radians), centre.y() - radius * std::sin(radians)};
}

float AngleOf(double dx, double dy) {
    double raw = 0;
    if (dy == 0) {
        raw = dx < 0 ? 180 : 0;
    } else if (dx == 0) {
        raw = dy < 0 ? 90 : -90;
    } else {
        const double t = std::atan(std::fabs(dy) / std::fabs(dx)) * 180 / std::numbers::pi;
        if (dx > 0) {
            raw = dy < 0 ? t : -t;
        } else {
            raw = dy > 0 ? t - 180 : 180 - t;
        }
    }
    return static_cast<float>(kTurn - (raw + 180));
}

float PositionOf(float angle, int startAngle, int sweep) {
    float d = ReducedOnce(angle - static_cast<float>(startAngle));
    if (d == 0) {
        d = kTurn; // the start angle itself counts as the end of the dead arc, whichever way it is written
    }
    return d / static_cast<float>(sweep);
}

bool DirectionIncreasing(float angle, float lastAngle) {
    if (lastAngle == 0) {
        return false;
    }
    return angle >= lastAngle && !(angle > 270 && lastAngle < 90);
}

float HoldAtStops(float p, bool directionIncreasing, bool firstCall, bool dragging, Stops& stops) {
    if (firstCall || (p <= 1 && (!dragging || !stops.any()))) {
        return p;
    }
    if (stops.StuckHigh && !directionIncreasing && p > 0.5F && p < 1) {
        stops.StuckHigh = false;
    }
    if (stops.StuckLow && directionIncreasing && p < 0.5F) {
        stops.StuckLow = false;
    }
    if (stops.StuckHigh) {
        p = 1;
    } else if (stops.StuckLow) {
        p = 0;
    }
    if (p > 1) {
        if (directionIncreasing && !stops.StuckLow) {
            stops.StuckHigh = true;
            p = 1;
        } else if (!directionIncreasing && !stops.StuckHigh) {
            stops.StuckLow = true;
            p = 0;
        }
    }
    return p;
}

float Quantised(float position, int min, int max, bool quantized) {
    const double range = static_cast<double>(max) - min;
    if (!quantized || range <= 0) {
        return position;
    }
    return static_cast<float>(std::nearbyint(position * range) / range);
}

std::int64_t Reflected(std::int64_t value, int min, int max) {
    return std::int64_t{min} + max - value;
}

float ValueAt(float position, int min, int max) {
    return static_cast<float>(position * (static_cast<double>(max) - min) + min);
}

int MarkerCount(const QString& markers) {
    return std::clamp(RoundToEven<int>(NumberOfText(markers).value_or(0)), 0, kMostMarkers);
}

double MarkerAngle(int i, int markers, int startAngle, int sweep) {
    return startAngle + static_cast<double>(sweep) * (i - 1) / (markers - 1);
}

bool InBand(int i, int bandStart, int bandStop) {
    return bandStart >= 1 && bandStop >= 1 && bandStart <= i && i <= bandStop;
}

} // namespace knob
