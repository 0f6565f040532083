#include "display/cursor_arithmetic.h"

#include "frame/record/steps.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFine = 0.01;

double Fraction(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

} // namespace

double DragFraction(bool jumps, double at, double anchor, double barLength) {
    if (!(barLength > 0)) {
        return 0;
    }
    return Fraction(jumps ? at / barLength : anchor / barLength + (at - anchor) * kFine / barLength);
}

double HandlePlace(double fraction, double barLength, double handleLength) {
    return fraction * (barLength - kBarInset) - handleLength / 2;
}

double FractionOfTime(double seconds, int sampleDepth, double period) {
    const double whole = sampleDepth * period;
    return whole > 0 ? Fraction(seconds / whole) : 0;
}

double TimeOfFraction(double fraction, int sampleDepth, double period) {
    return sampleDepth * period * fraction;
}

double FractionOfLevel(double steps) {
    return Fraction(0.5 - steps / kLevelSpan);
}

double LevelOfFraction(double fraction) {
    return (0.5 - fraction) * kLevelSpan;
}

double VertWorldLinePlace(double position, int sampleDepth, double barLength) {
    return sampleDepth > 1 ? position / (sampleDepth - 1) * (barLength - kBarInset) : 0;
}

double HorizWorldLinePlace(double level, double barLength) {
    return (barLength - kBarInset) * (1 - (level + kStepsOfHalfScreen) / (2 * kStepsOfHalfScreen));
}
