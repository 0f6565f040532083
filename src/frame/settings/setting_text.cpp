#include "frame/settings/setting_text.h"

#include <QLocale>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace {

std::optional<double> Finite(double value, bool ok) {
    if (!ok || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> Plain(const QString& text) {
    bool ok = false;
    QLocale c = QLocale::c();
    c.setNumberOptions(QLocale::RejectGroupSeparator);
    const double value = c.toDouble(text.trimmed(), &ok);
    return Finite(value, ok);
}

std::optional<double> ByLocale(const QString& text, bool groups) {
    QLocale locale;
    // A point that groups thousands here was a decimal point where the text was written.
    locale.setNumberOptions(groups ? QLocale::DefaultNumberOptions : QLocale::RejectGroupSeparator);
    bool ok = false;
    const double value = locale.toDouble(text.trimmed(), &ok);
    if (ok) {
        return Finite(value, ok);
    }
    // Exponents are not written alike everywhere.
    return Plain(QString(text).replace(locale.decimalPoint(), QLatin1String(".")));
}

constexpr QChar kArabicSeparator(0x066B);

std::optional<double> WithForeignSeparator(QString text) {
    return Plain(
        text.replace(QLatin1Char(','), QLatin1Char('.')).replace(kArabicSeparator, QLatin1Char('.')));
}

float Narrow(double value) {
    return std::abs(value) <= double{std::numeric_limits<float>::max()} ? static_cast<float>(value) : 0.0F;
}

QString Localised(QString text, bool separated) {
    if (separated && !text.contains(QLatin1Char('.'))) {
        const auto exponent = text.indexOf(QLatin1Char('e'));
        text.insert(exponent < 0 ? text.size() : exponent, QStringLiteral(".0"));
    }
    return text.replace(QLatin1Char('.'), QLocale().decimalPoint());
}

/// The fewest digits that read back as the same value of that width.
template <class Real> QString Shortest(Real value) {
    std::array<char, 40> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), std::isfinite(value) ? value : Real{0});
    return QString::fromLatin1(text.data(), end.ptr - text.data());
}

} // namespace

bool ToBoolean(const QString& text, bool fallback) {
    const QString word = text.trimmed();
    if (word.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (word.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) {
        return false;
    }
    const auto number = Plain(word);
    return number ? *number != 0.0 : fallback;
}

QString BooleanText(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

std::int32_t ToInteger(const QString& text, std::int32_t fallback) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double value = std::nearbyint(ToReal(text, std::numeric_limits<double>::max()));
    return value >= double{Limits::min()} && value <= double{Limits::max()} ? static_cast<std::int32_t>(value)
                                                                            : fallback;
}

double ToReal(const QString& text, double fallback) {
    if (const auto value = ByLocale(text, false)) {
        return *value;
    }
    if (const auto value = Plain(text)) {
        return *value;
    }
    return WithForeignSeparator(text).value_or(fallback);
}

double ParseLocaleDouble(const QString& text) {
    if (text.contains(QLocale().decimalPoint())) {
        return ByLocale(text, true).value_or(0.0);
    }
    if (text.contains(QLatin1Char('.'))) {
        return Plain(text).value_or(0.0);
    }
    if (text.contains(QLatin1Char(',')) || text.contains(kArabicSeparator)) {
        return WithForeignSeparator(text).value_or(0.0);
    }
    return 0.0;
}

float ParseLocaleReal(const QString& text) {
    return Narrow(ParseLocaleDouble(text));
}

QString RealText(float value) {
    return Localised(Shortest(value), false);
}

QString RealText(double value) {
    return Localised(Shortest(value), false);
}

QString SeparatedRealText(float value) {
    return Localised(Shortest(value), true);
}

QString SeparatedRealText(double value) {
    return Localised(Shortest(value), true);
}
