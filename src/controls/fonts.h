#pragma once

#include <QFont>
#include <QString>
#include <QStringView>

/// The family among Debian's packages that stands for one of the instrument's families; the family itself
/// when it needs no substitute.
QString SubstituteFamily(QStringView family);

/// A font of the instrument. Forms are laid out in pixels at 96 dots an inch, so the size is fixed in pixels:
/// a desktop with another resolution scales the window as a whole and never the text alone.
/// points: size as designed; what is not above 0 is taken as 8.
QFont InstrumentFont(const QString& family, double points, bool bold = false);

/// The size of a font in points at 96 dots an inch, whichever way it was set.
double FontPoints(const QFont& font);
