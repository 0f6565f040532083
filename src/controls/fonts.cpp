#include "controls/fonts.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;

struct Substitute {
    const char* family;
    const char* stand_in;
};

// Packages: fonts-liberation holds the Liberation families, fonts-comic-neue Comic Neue.
constexpr std::array kSubstitutes = {
    Substitute{"Arial", "Liberation Sans"},
    Substitute{"Aerial", "Liberation Sans"}, // the name that the controls have by default
    Substitute{"MS Sans Serif", "Liberation Sans"},
    Substitute{"Microsoft Sans Serif", "Liberation Sans"},
    Substitute{"Arial Narrow", "Liberation Sans Narrow"},
    Substitute{"Small Fonts", "Liberation Sans Narrow"}, // narrow, to stay legible at nine pixels
    Substitute{"Comic Sans MS", "Comic Neue"},
};

} // namespace

QString SubstituteFamily(QStringView family) {
    const auto* found = std::find_if(kSubstitutes.begin(), kSubstitutes.end(), [&](const Substitute& s) {
        return family.compare(QLatin1String(s.family), Qt::CaseInsensitive) == 0;
    });
    return found == kSubstitutes.end() ? family.toString() : QString::fromLatin1(found->stand_in);
}

QFont InstrumentFont(const QString& family, double points, bool bold) {
    // The designed name stays the first: it is what the font is asked for, and what is stored.
    QFont font(QStringList{family, SubstituteFamily(family)});
    const double size = points > 0 && points < 1000 ? points : 8.0;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size * kPixelsPerPoint))));
    font.setBold(bold);
    return font;
}

double FontPoints(const QFont& font) {
    return font.pixelSize() > 0 ? font.pixelSize() / kPixelsPerPoint : font.pointSizeF();
}
