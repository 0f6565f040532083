#include "acquisition/mode_text.h"

#include <cmath>

namespace {

QString Whole(double value, const char* unit) {
    return QString::number(std::round(value), 'f', 0) + QLatin1String(unit);
}

/// The limits are compared in the width of the period: the 32-bit 1e-06 is "1us", although as a 64-bit
/// real it lies just below.
QString Interval(float period) {
    const auto p = static_cast<double>(period);
    if (period < 1e-06F) {
        return Whole(p * 1e9, "ns");
    }
    if (period < 0.001F) {
        return Whole(p * 1e6, "us");
    }
    if (period < 1.0F) {
        return Whole(p * 1000, "ms");
    }
    return Whole(p, "s");
}

} // namespace

QString ModeText(float samplePeriod, bool risMode, bool rollMode) {
    const QString begin = QStringLiteral("Acquistion mode: ");
    if (risMode) {
        return begin +
               QStringLiteral("RIS (repetitive inputs, norm trig only, effective sample interval: 1ns)");
    }
    return begin + QStringLiteral("Single-shot (sample interval: ") + Interval(samplePeriod) +
           (rollMode ? QStringLiteral(", roll mode)") : QStringLiteral(", refresh mode)"));
}
