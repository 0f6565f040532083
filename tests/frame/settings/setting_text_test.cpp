#include "frame/settings/setting_text.h"

#include <QLocale>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

/// The default locale for the length of a test.
class Locale {
  public:
    explicit Locale(const char* name) : before_(QLocale()) {
        QLocale::setDefault(QLocale(QLatin1String(name)));
    }
    ~Locale() { QLocale::setDefault(before_); }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

  private:
    QLocale before_;
};

float Parsed(const char* text) {
    return ParseLocaleReal(QString::fromLatin1(text));
}

} // namespace

TEST(ParseLocaleReal, ReadsEitherSeparatorOnAMachineWithAPoint) {
    const Locale locale("en_GB");
    EXPECT_EQ(Parsed("1.5"), 1.5F);
    EXPECT_EQ(Parsed("1,5"), 1.5F);
    EXPECT_EQ(Parsed("-0,25"), -0.25F);
    EXPECT_EQ(Parsed("1,234.5"), 1234.5F);
}

TEST(ParseLocaleReal, ReadsEitherSeparatorOnAMachineWithAComma) {
    const Locale locale("de_DE");
    EXPECT_EQ(Parsed("1,5"), 1.5F);
    EXPECT_EQ(Parsed("1.5"), 1.5F);
    EXPECT_EQ(Parsed("1.234,5"), 1234.5F);
    EXPECT_EQ(Parsed("1,5e-06"), 1.5e-06F);
}

TEST(ParseLocaleReal, ReadsTheArabicSeparatorOnEveryMachine) {
    for (const char* name : {"en_GB", "de_DE", "ar_EG"}) {
        const Locale locale(name);
        EXPECT_EQ(ParseLocaleReal(QStringLiteral(u"-0\u066B25")), -0.25F) << name;
        EXPECT_EQ(ToReal(QStringLiteral(u"1\u066B5e-06"), 7), 1.5e-06) << name;
    }
}

TEST(ParseLocaleReal, IsZeroWithoutASeparator) {
    const Locale locale("en_GB");
    EXPECT_EQ(Parsed("5"), 0.0F);
    EXPECT_EQ(Parsed("1e3"), 0.0F);
    EXPECT_EQ(Parsed(""), 0.0F);
}

TEST(ParseLocaleReal, IsZeroForWhatIsNoNumber) {
    const Locale locale("en_GB");
    for (const char* text : {"a.b", ".", ",", "1.2.3", "1,2,3.", "nan.", "inf.0", "1.0e999", "--1.0"}) {
        EXPECT_EQ(Parsed(text), 0.0F) << text;
    }
    EXPECT_EQ(Parsed("1.0e300"), 0.0F);
}

TEST(ToBoolean, TakesTheTwoWordsAndNumbers) {
    EXPECT_TRUE(ToBoolean(QStringLiteral("True"), false));
    EXPECT_TRUE(ToBoolean(QStringLiteral(" true "), false));
    EXPECT_TRUE(ToBoolean(QStringLiteral("-1"), false));
    EXPECT_TRUE(ToBoolean(QStringLiteral("0.5"), false));
    EXPECT_FALSE(ToBoolean(QStringLiteral("False"), true));
    EXPECT_FALSE(ToBoolean(QStringLiteral("0"), true));
    for (const char* text : {"", "yes", "Tru", "nan", "True False"}) {
        EXPECT_TRUE(ToBoolean(QString::fromLatin1(text), true)) << text;
        EXPECT_FALSE(ToBoolean(QString::fromLatin1(text), false)) << text;
    }
}

TEST(ToInteger, RoundsAndFallsBack) {
    const Locale locale("en_GB");
    EXPECT_EQ(ToInteger(QStringLiteral("-32768"), 1), -32768);
    EXPECT_EQ(ToInteger(QStringLiteral("2147483647"), 1), 2147483647);
    EXPECT_EQ(ToInteger(QStringLiteral("-2147483648"), 1), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToInteger(QStringLiteral("2.5"), 1), 2);
    EXPECT_EQ(ToInteger(QStringLiteral("3.5"), 1), 4);
    EXPECT_EQ(ToInteger(QStringLiteral("7,4"), 1), 7);
    for (const char* text : {"", "x", "2147483648", "-2147483649", "1e99", "inf", "nan", "0x10", "1 2"}) {
        EXPECT_EQ(ToInteger(QString::fromLatin1(text), 42), 42) << text;
    }
}

TEST(ToReal, NeverTakesAForeignDecimalPointForThousands) {
    const Locale locale("de_DE");
    EXPECT_EQ(ToReal(QStringLiteral("1.500"), 0), 1.5);
    EXPECT_EQ(ToReal(QStringLiteral("1,500"), 0), 1.5);
    EXPECT_EQ(ToReal(QStringLiteral("12"), 0), 12.0);
    EXPECT_EQ(ToReal(QStringLiteral("inf"), 3), 3.0);
    EXPECT_EQ(ToReal(QStringLiteral("1e999"), 3), 3.0);
    EXPECT_EQ(ToReal(QStringLiteral("twelve"), 3), 3.0);
}

TEST(RealText, IsTheShortestTextOfItsWidth) {
    const Locale locale("en_GB");
    EXPECT_EQ(RealText(0.1F), QStringLiteral("0.1"));
    EXPECT_EQ(RealText(0.1), QStringLiteral("0.1"));
    EXPECT_EQ(RealText(357.0F), QStringLiteral("357"));
    EXPECT_EQ(RealText(std::nan("")), QStringLiteral("0"));
    EXPECT_EQ(SeparatedRealText(5.0), QStringLiteral("5.0"));
    EXPECT_EQ(SeparatedRealText(1e-06), QStringLiteral("1.0e-06"));
    EXPECT_EQ(SeparatedRealText(-2.5F), QStringLiteral("-2.5"));
}

TEST(RealText, ComesBackUnderEveryLocale) {
    for (const char* name : {"en_GB", "de_DE", "sv_SE", "fr_CH", "ar_EG", "fa_IR", "C"}) {
        const Locale locale(name);
        for (const float value : {0.0F, 0.5F, 0.99F, -127.0F, 1.0F / 3, 2e-8F, 6.5e4F}) {
            EXPECT_EQ(static_cast<float>(ToReal(RealText(value), 7)), value) << name;
            EXPECT_EQ(ParseLocaleReal(SeparatedRealText(value)), value) << name;
        }
        for (const double value : {1e-06, 3.0, -41.25, 1.23456789012345e-07, 120.0}) {
            EXPECT_EQ(ToReal(RealText(value), 7), value) << name;
            EXPECT_EQ(ParseLocaleDouble(SeparatedRealText(value)), value) << name;
        }
    }
}
