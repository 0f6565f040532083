#include "controls/number_format.h"
#include "export/data_file.h"
#include "export/file_text.h"

#include <QDateTime>
#include <QLocale>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

std::string Fixed(float value, int decimals, char point = '.') {
    FileText text(point, 0);
    text.FixedLine(value, decimals);
    return std::string(text.Bytes());
}

} // namespace

TEST(FileText, WritesExactlyThatManyDecimals) {
    EXPECT_EQ(Fixed(0, 4), "0.0000\r\n");
    EXPECT_EQ(Fixed(30, 4), "30.0000\r\n");
    EXPECT_EQ(Fixed(-1.5F, 1, ','), "-1,5\r\n");
    EXPECT_EQ(Fixed(0.25F, 1), "0.3\r\n");
    EXPECT_EQ(Fixed(-0.25F, 1), "-0.3\r\n");
    EXPECT_EQ(Fixed(0.03125F, 4), "0.0313\r\n");
    EXPECT_EQ(Fixed(-54.01F, 1), "-54.0\r\n");
    EXPECT_EQ(Fixed(9.99996F, 4), "10.0000\r\n");
}

TEST(FileText, WhatRoundsToNothingHasNoMinus) {
    EXPECT_EQ(Fixed(-0.00004F, 4), "0.0000\r\n");
    EXPECT_EQ(Fixed(-0.0F, 4), "0.0000\r\n");
    EXPECT_EQ(Fixed(-0.00006F, 4), "-0.0001\r\n");
}

TEST(FileText, WritesEveryNumberAsTheControlsDo) {
    std::mt19937 random(11);
    for (int i = 0; i < 50000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const int decimals = i % 2 == 0 ? 4 : 1;
        const QString expected = FormatNumber(value, decimals == 4 ? "0.0000" : "0.0");
        ASSERT_EQ(Fixed(value, decimals), expected.toStdString() + "\r\n") << value;
    }
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Fixed(inf, 4), "inf\r\n");
    EXPECT_EQ(Fixed(-inf, 1), "-inf\r\n");
    EXPECT_EQ(Fixed(std::nanf(""), 4), "nan\r\n");
    EXPECT_EQ(Fixed(std::numeric_limits<float>::max(), 1, ',').substr(0, 6), "340282");
}

TEST(FileText, TheNumberOfALabelHasTheFilesPoint) {
    FileText text(',', 0);
    text.NumberLine(u"FULL.SCALE: ", QStringLiteral("0.3"));
    EXPECT_EQ(text.Bytes(), "FULL.SCALE: 0,3\r\n");
}

TEST(CodePage, HasOneByteACharacterAndAQuestionMarkForTheRest) {
    EXPECT_EQ(CodePageText(u"1 \u00f7 2"), "1 \xF7 2");
    EXPECT_EQ(CodePageText(u"\u20ac\u0152\u0178\u00a0\u00ff"), "\x80\x8C\x9F\xA0\xFF");
    EXPECT_EQ(CodePageText(u"\u0414a\u0081\U0001F600b"), "?a??b");
    for (char32_t character = 0; character < 0x80; ++character) {
        EXPECT_EQ(CodePageByte(character), static_cast<char>(character));
    }
    int known = 0;
    for (char32_t character = 0x80; character < 0x10000; ++character) {
        known += CodePageByte(character) == '?' ? 0 : 1;
    }
    EXPECT_EQ(known, 128 - 5); // five bytes stand for nothing
}

TEST(FileStamp, TakesPointAndDateFromTheLocale) {
    const QDateTime moment(QDate(2026, 3, 7), QTime(14, 5, 9));
    const FileStamp german = StampOf(QLocale(QLocale::German, QLocale::Germany), moment, {});
    EXPECT_EQ(german.decimalPoint, ',');
    EXPECT_EQ(german.date, QStringLiteral("07.03.26 14:05"));
    const FileStamp american = StampOf(QLocale(QLocale::English, QLocale::UnitedStates), moment,
                                       QStringLiteral("Corvantine Ver2.0.6"));
    EXPECT_EQ(american.decimalPoint, '.');
    EXPECT_EQ(american.date, QStringLiteral("3/7/26 2:05 PM"));
    EXPECT_EQ(american.software, QStringLiteral("Corvantine Ver2.0.6"));
}

TEST(FileStamp, APointThatTheCodePageLacksIsAFullStop) {
    int exotic = 0;
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString point = locale.decimalPoint();
        const char expected = point == QStringLiteral(",") ? ',' : '.';
        exotic += point == QStringLiteral(",") || point == QStringLiteral(".") ? 0 : 1;
        EXPECT_EQ(StampOf(locale, QDateTime::currentDateTime(), {}).decimalPoint, expected)
            << qPrintable(locale.name());
    }
    EXPECT_GT(exotic, 0);
}
