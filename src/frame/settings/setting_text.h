#pragma once

#include <QString>
#include <cstdint>

/// The texts that the settings hold, to values and back. Nothing here throws or leaves the range of its
/// result: a text that says nothing usable gives the fallback.

/// True or False in any case, or a number, of which 0 is False.
bool ToBoolean(const QString& text, bool fallback);
QString BooleanText(bool value);

/// A whole number, or a real one rounded with ties to even; beyond 32 bits is no number.
std::int32_t ToInteger(const QString& text, std::int32_t fallback);

/// By the machine's decimal separator, else with a point, else with a comma. Always finite.
double ToReal(const QString& text, double fallback);

/// A real as a setting that was perhaps written on a machine with another decimal separator.
/// 0 for a text that holds no separator at all, whatever its digits say, and for one that is no number.
float ParseLocaleReal(const QString& text);
/// The same with all the digits that a 64-bit value keeps.
double ParseLocaleDouble(const QString& text);

/// The shortest text that reads back as the same value, with the machine's decimal separator.
QString RealText(float value);
QString RealText(double value);
/// For values that ParseLocaleReal reads back: it never goes without a separator.
QString SeparatedRealText(float value);
QString SeparatedRealText(double value);
