#pragma once

#include <QFont>
#include <QString>

/// The family of the program's own symbols; the captions "0" to "8" select its pictures.
inline constexpr auto kSymbolFamily = "Corvantine";

/// Loads the symbols from the program file; once a process, further calls change nothing. Needs the
/// application object. False if the font cannot be used.
bool LoadSymbolFont();

/// A caption as it is to be printed in a font: itself, or signs of the ordinary fonts that come nearest to
/// the pictures when the font is the symbol font and that is not there.
QString PrintedCaption(const QString& caption, const QFont& font, bool symbolsLoaded);
