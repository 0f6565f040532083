#pragma once

#include <QString>
#include <QStringView>
#include <string>
#include <string_view>

/// The lines of a saved file as bytes: Windows-1252, each line ended by carriage return and line feed.
class FileText {
  public:
    /// decimalPoint: the byte between the whole and the decimals of every number.
    /// expected: bytes to make room for at once.
    FileText(char decimalPoint, std::size_t expected);

    /// A line with a number of exactly that many decimals (1 to 4), rounded half away from zero. What rounds
    /// to nothing has no minus; what is not finite reads "inf", "-inf" or "nan".
    void FixedLine(float value, int decimals);
    void Line(QStringView text);
    /// A line of a label and a number made with a "." as its point: the point becomes the file's.
    void NumberLine(QStringView label, QString number);

    std::string_view Bytes() const { return bytes_; }

  private:
    void EndLine() { bytes_ += "\r\n"; }

    std::string bytes_;
    char point_;
};

/// The byte of a character in Windows-1252, "?" for what it lacks.
char CodePageByte(char32_t character);
/// A text in Windows-1252: one byte a character, "?" for each that it lacks.
std::string CodePageText(QStringView text);
