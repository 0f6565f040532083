#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

/// Relative luminance of a colour in the sRGB space, 0 to 1, as the Web Content Accessibility Guidelines
/// define it.
inline double Luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// Contrast ratio of two colours, 1 (none) to 21 (black and white); 4.5 is asked of text.
inline double Contrast(const QColor& a, const QColor& b) {
    const double high = std::max(Luminance(a), Luminance(b));
    const double low = std::min(Luminance(a), Luminance(b));
    return (high + 0.05) / (low + 0.05);
}
