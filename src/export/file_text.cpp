#include "export/file_text.h"

#include "controls/number_format.h"

#include <QList>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace {

constexpr char kUnknown = '?';
constexpr int kMostDecimals = 4;
constexpr std::array<double, kMostDecimals + 1> kPowers{1, 10, 100, 1000, 10000};
constexpr const char* kFormats[] = {"0", "0.0", "0.00", "0.000", "0.0000"};
// A 32-bit real times 10000 has at most 34 significant bits: below this, that and one half more are exact.
constexpr double kExact = 1e15;

/// Characters of the bytes 0x80 to 0x9F; 0 where there is none. Everywhere else byte and character agree.
constexpr char16_t kUpperRows[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                   0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
constexpr int kUpperRowsStart = 0x80;
constexpr int kUpperRowsEnd = 0xA0;
constexpr int kLastByte = 0xFF;

} // namespace

char CodePageByte(char32_t character) {
    if (character < kUpperRowsStart || (character >= kUpperRowsEnd && character <= kLastByte)) {
        return static_cast<char>(character);
    }
    const auto* found = std::find(std::begin(kUpperRows), std::end(kUpperRows), character);
    return character == 0 || found == std::end(kUpperRows)
               ? kUnknown
               : static_cast<char>(kUpperRowsStart + (found - std::begin(kUpperRows)));
}

std::string CodePageText(QStringView text) {
    std::string bytes;
    for (const uint character : text.toUcs4()) {
        bytes += CodePageByte(character);
    }
    return bytes;
}

FileText::FileText(char decimalPoint, std::size_t expected) : point_(decimalPoint) {
    bytes_.reserve(expected);
}

void FileText::FixedLine(float value, int decimals) {
    const double scaled = std::fabs(static_cast<double>(value)) * kPowers[static_cast<std::size_t>(decimals)];
    if (!(scaled < kExact)) {
        NumberLine({}, FormatNumber(value, kFormats[decimals]));
        return;
    }
    auto units = static_cast<std::uint64_t>(scaled + 0.5);
    const bool negative = value < 0 && units != 0;
    std::array<char, 24> digits{};
    char* const end = digits.data() + digits.size();
    char* at = end;
    for (int i = 0; i < decimals; ++i, units /= 10) {
        *--at = static_cast<char>('0' + units % 10);
    }
    *--at = point_;
    do {
        *--at = static_cast<char>('0' + units % 10);
        units /= 10;
    } while (units != 0);
    if (negative) {
        *--at = '-';
    }
    bytes_.append(at, end);
    EndLine();
}

void FileText::Line(QStringView text) {
    bytes_ += CodePageText(text);
    EndLine();
}

void FileText::NumberLine(QStringView label, QString number) {
    bytes_ += CodePageText(label);
    std::string text = CodePageText(number);
    std::replace(text.begin(), text.end(), '.', point_);
    bytes_ += text;
    EndLine();
}
