#include "controls/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr int kDigits = 15; // what a 64-bit real holds of any decimal number

QLatin1String NotFinite(double value) {
    return QLatin1String(std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf");
}

/// |value| as decimal digits: digit i counts 10^(exponent - i).
class Decimal {
  public:
    explicit Decimal(double value) {
        std::array<char, 32> text{};
        std::to_chars(text.data(), text.data() + text.size(), std::fabs(value), std::chars_format::scientific,
                      kDigits - 1);
        digits_[0] = static_cast<char>(text[0] - '0');
        for (int i = 1; i < kDigits; ++i) {
            digits_[i] = static_cast<char>(text[i + 1] - '0');
        }
        const char* sign = text.data() + kDigits + 2; // behind "d.dddde"
        std::from_chars(sign + 1, text.data() + text.size(), exponent_);
        exponent_ = *sign == '-' ? -exponent_ : exponent_;
    }

    void shift(int places) { exponent_ += places; }

    /// Rounds half away from zero to that many decimals.
    void round(int decimals) {
        const int kept = exponent_ + 1 + decimals;
        if (kept >= kDigits) {
            return;
        }
        const bool up = kept >= 0 && digits_[kept] >= 5;
        for (int i = std::max(kept, 0); i < kDigits; ++i) {
            digits_[i] = 0;
        }
        if (up) {
            carry(kept - 1);
        }
    }

    int digit(int power) const {
        const int i = exponent_ - power;
        return i >= 0 && i < kDigits ? digits_[i] : 0;
    }
    int highestPower() const { return zero() ? 0 : exponent_; }
    bool zero() const {
        return std::all_of(digits_.begin(), digits_.end(), [](char d) { return d == 0; });
    }

  private:
    void carry(int i) {
        for (; i >= 0; --i) {
            if (++digits_[i] < 10) {
                return;
            }
            digits_[i] = 0;
        }
        // Every kept digit was a nine, or none was kept: a one in front of zeros.
        digits_[0] = 1;
        ++exponent_;
    }

    std::array<char, kDigits> digits_{};
    int exponent_ = 0;
};

/// What a character of a format is to be taken as, the backslash being passed over.
enum class Token { Digit, Point, Percent, Literal };

/// Calls use(token, character) along the format.
template <class Use> void Scan(QStringView format, Use use) {
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format[i];
        if (c == u'\\' && i + 1 < format.size()) {
            use(Token::Literal, format[++i]);
        } else if (c == u'0') {
            use(Token::Digit, c);
        } else if (c == u'.') {
            use(Token::Point, c);
        } else if (c == u'%') {
            use(Token::Percent, c);
        } else {
            use(Token::Literal, c);
        }
    }
}

struct Places {
    int integers = 0;
    int decimals = 0;
    int percents = 0;
    bool point = false;
    bool any() const { return integers + decimals > 0; }
};

Places CountPlaces(QStringView format) {
    Places places;
    Scan(format, [&](Token token, QChar) {
        if (token == Token::Digit) {
            ++(places.point ? places.decimals : places.integers);
        } else if (token == Token::Point) {
            places.point = true;
        } else if (token == Token::Percent) {
            ++places.percents;
        }
    });
    return places;
}

template <class Real> QString Shortest(Real value, int digits) {
    if (!std::isfinite(value)) {
        return NotFinite(static_cast<double>(value));
    }
    if (value == 0) {
        return QStringLiteral("0");
    }
    std::array<char, 48> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits);
    return QString::fromLatin1(text.data(), end.ptr - text.data()).toUpper();
}

} // namespace

void AppendNumber(QString& text, double value, QStringView format) {
    if (!std::isfinite(value)) {
        text += NotFinite(value);
        return;
    }
    if (format.isEmpty()) {
        text += ShortestText(value);
        return;
    }
    const Places places = CountPlaces(format);
    Decimal number(value);
    number.shift(2 * places.percents);
    number.round(places.decimals);
    if (value < 0 && places.any() && !number.zero()) {
        text += u'-';
    }
    int power = places.integers - 1; // of the next placeholder
    bool started = false;
    auto overflowing = [&](int from) { // the digits that have no placeholder of their own
        for (int p = number.highestPower(); !started && p > from; --p) {
            text += QChar(u'0' + number.digit(p));
        }
        started = true;
    };
    bool pointSeen = false;
    Scan(format, [&](Token token, QChar c) {
        if (token == Token::Digit) {
            overflowing(power);
            text += QChar(u'0' + number.digit(power));
            --power;
        } else if (token == Token::Point && places.any() && !pointSeen) {
            pointSeen = true;
            if (number.highestPower() > 0 || number.digit(0) != 0) {
                overflowing(-1);
            }
            started = true;
            text += c;
        } else {
            text += c;
        }
    });
}

QString FormatNumber(double value, QStringView format) {
    QString text;
    text.reserve(format.size() + 24);
    AppendNumber(text, value, format);
    return text;
}

QString FormatText(const QString& text, QStringView format) {
    const std::optional<double> number = NumberOfText(text);
    return number ? FormatNumber(*number, format) : text;
}

std::optional<double> NumberOfText(QStringView text) {
    text = text.trimmed();
    bool digits = false;
    for (const QChar c : text) {
        // Keeps out what the conversion would take besides: "inf", "nan", other scripts.
        if (c >= u'0' && c <= u'9') {
            digits = true;
        } else if (c != u'.' && c != u'-' && c != u'+' && c != u'e' && c != u'E') {
            return std::nullopt;
        }
    }
    bool valid = false;
    const double number = text.toDouble(&valid);
    return digits && valid && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

QString ShortestText(float value) {
    return Shortest(value, 7);
}

QString ShortestText(double value) {
    return Shortest(value, kDigits);
}
