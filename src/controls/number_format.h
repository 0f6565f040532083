#pragma once

#include <QString>
#include <QStringView>
#include <optional>

/// The number formats of the instrument's texts: "0.0%", "0\% trig", "x0", "0.000us".
///
/// A `0` is a digit placeholder, `.` between placeholders the decimal point, `%` prints itself and multiplies
/// the number by 100, `\` makes the next character a literal, and every other character is a literal. The
/// first placeholder takes all digits that the integer part has more than placeholders; a minus stands before
/// the whole text. Rounds half away from zero, in decimal, by the first 15 significant digits of the number
/// (1.005 in "0.00" is "1.01"). A number that rounds to nothing has no minus. The point is "." in every
/// locale. Without placeholders the literals alone are the text; an empty format is ShortestText(value).
/// What is not finite reads "inf", "-inf" or "nan" in every format.
QString FormatNumber(double value, QStringView format);
inline QString FormatNumber(double value, const char* format) {
    return FormatNumber(value, QString::fromLatin1(format));
}

/// FormatNumber to the end of a text that its caller keeps: allocates only if the text has to grow.
void AppendNumber(QString& text, double value, QStringView format);

/// A text that is a number goes through the format; any other is shown as it stands ("1us/div").
QString FormatText(const QString& text, QStringView format);

/// The number that a text is in whole, blanks around it aside; the point is ".". Nothing for "", "1V", "inf".
std::optional<double> NumberOfText(QStringView text);

/// The default text of a 32-bit real: up to seven significant digits ("0.3", "30", "1E+07").
QString ShortestText(float value);
/// The default text of a 64-bit real: up to fifteen significant digits.
QString ShortestText(double value);
