#include "controls/number_format.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::string Number(double value, const char* format) {
    return FormatNumber(value, format).toStdString();
}

std::string Text(const char* text, const char* format) {
    return FormatText(QString::fromUtf8(text), QString::fromLatin1(format)).toStdString();
}

} // namespace

TEST(NumberFormat, FormatsOfTheInstrument) {
    EXPECT_EQ(Number(0.5, "0.0%"), "50.0%");
    EXPECT_EQ(Number(-1.0, "0.0%"), "-100.0%");
    EXPECT_EQ(Number(35, "0\\% trig"), "35% trig");
    EXPECT_EQ(Number(-100, "0\\% trig"), "-100% trig");
    EXPECT_EQ(Number(17, "x0"), "x17");
    EXPECT_EQ(Number(0.25, "0.000us"), "0.250us");
    EXPECT_EQ(Number(123456.789, "0.00KHz"), "123456.79KHz");
    EXPECT_EQ(Number(4, "0ns"), "4ns");
    EXPECT_EQ(Number(1.25, "0.0dB"), "1.3dB");
    EXPECT_EQ(Number(-1.25, "0.000"), "-1.250");
    EXPECT_EQ(Number(0, "0.0"), "0.0");
    EXPECT_EQ(Number(0.3, "0%"), "30%");
}

TEST(NumberFormat, UnitLettersArePlainLiterals) {
    EXPECT_EQ(Number(2, "0dsmhyV/div"), "2dsmhyV/div");
}

TEST(NumberFormat, RoundsHalfAwayFromZeroInDecimal) {
    EXPECT_EQ(Number(0.125, "0.00"), "0.13");
    EXPECT_EQ(Number(-0.125, "0.00"), "-0.13");
    EXPECT_EQ(Number(1.005, "0.00"), "1.01"); // its binary value lies below the tie
    EXPECT_EQ(Number(2.5, "0"), "3");
    EXPECT_EQ(Number(-2.5, "0"), "-3");
    EXPECT_EQ(Number(0.5, "0"), "1");
    EXPECT_EQ(Number(-0.5, "0"), "-1");
    EXPECT_EQ(Number(0.49, "0"), "0");
    EXPECT_EQ(Number(0.05, "0"), "0");
    EXPECT_EQ(Number(0.285, "0%"), "29%");
    EXPECT_EQ(Number(0.0005, "0.0%"), "0.1%");
}

TEST(NumberFormat, CarriesThroughNines) {
    EXPECT_EQ(Number(9.96, "0.0"), "10.0");
    EXPECT_EQ(Number(999.5, "0"), "1000");
    EXPECT_EQ(Number(0.9999, "0.000"), "1.000");
    EXPECT_EQ(Number(0.0999, "0.0"), "0.1");
    EXPECT_EQ(Number(0.05, "0.0"), "0.1");
}

TEST(NumberFormat, NothingLeftHasNoMinus) {
    EXPECT_EQ(Number(-0.0, "0"), "0");
    EXPECT_EQ(Number(-0.0, "0.0"), "0.0");
    EXPECT_EQ(Number(-0.04, "0.0"), "0.0");
    EXPECT_EQ(Number(-0.0004, "0.0%"), "0.0%");
    EXPECT_EQ(Number(-0.0005, "0.0%"), "-0.1%");
}

TEST(NumberFormat, PlaceholdersPadAndOverflow) {
    EXPECT_EQ(Number(7, "000"), "007");
    EXPECT_EQ(Number(12345, "00"), "12345");
    EXPECT_EQ(Number(0.5, ".00"), ".50");
    EXPECT_EQ(Number(12.5, ".00"), "12.50");
    EXPECT_EQ(Number(12.5, "0."), "13.");
    EXPECT_EQ(Number(1234, "0-0"), "123-4");
    EXPECT_EQ(Number(5, "0-0"), "0-5");
    EXPECT_EQ(Number(1.5, "0.0.0"), "1.5.0");
}

TEST(NumberFormat, BackslashMakesALiteral) {
    EXPECT_EQ(Number(5, "\\00"), "05");
    EXPECT_EQ(Number(5, "0\\\\"), "5\\");
    EXPECT_EQ(Number(5, "0\\"), "5\\"); // nothing to escape: it stands for itself
    EXPECT_EQ(Number(5, "\\.0"), ".5");
    EXPECT_EQ(Number(0.5, "0%\\%"), "50%%");
}

TEST(NumberFormat, OnlyLiteralsAreTheText) {
    EXPECT_EQ(Number(0.3, "V/div"), "V/div");
    EXPECT_EQ(Number(-3, "V/d"), "V/d");
    EXPECT_EQ(Number(7, "a.b"), "a.b");
    EXPECT_EQ(Number(7, "%"), "%");
}

TEST(NumberFormat, EmptyFormatIsTheShortestText) {
    EXPECT_EQ(Number(0.3, ""), "0.3");
    EXPECT_EQ(Number(-12, ""), "-12");
}

TEST(NumberFormat, HugeAndTinyNumbers) {
    EXPECT_EQ(Number(1e20, "0"), "1" + std::string(20, '0'));
    EXPECT_EQ(Number(1e300, "0.0"), "1" + std::string(300, '0') + ".0");
    EXPECT_EQ(Number(std::numeric_limits<double>::max(), "0").size(), 309U);
    EXPECT_EQ(Number(std::numeric_limits<double>::denorm_min(), "0.0"), "0.0");
    EXPECT_EQ(Number(-1e-300, "0.000"), "0.000");
    EXPECT_EQ(Number(123456789012345678.0, "0"), "123456789012346000");
    EXPECT_EQ(FormatNumber(0.5, QString(500, u'0')).size(), 500);
    EXPECT_EQ(Number(0.1, ("0." + std::string(40, '0')).c_str()), "0.1" + std::string(39, '0'));
}

TEST(NumberFormat, WhatIsNotFiniteIsNamed) {
    EXPECT_EQ(Number(kInf, "0.0%"), "inf");
    EXPECT_EQ(Number(-kInf, "x0"), "-inf");
    EXPECT_EQ(Number(kNaN, "0"), "nan");
    EXPECT_EQ(Number(kNaN, ""), "nan");
}

TEST(NumberFormat, AppendsToWhatIsThere) {
    QString text = QStringLiteral("FREQ: ");
    AppendNumber(text, 12.345, u"0.00Hz");
    EXPECT_EQ(text.toStdString(), "FREQ: 12.35Hz");
}

TEST(FormatText, NumbersGoThroughTheFormat) {
    EXPECT_EQ(Text("0.393700787401575", "0.0%"), "39.4%");
    EXPECT_EQ(Text("35", "0\\% trig"), "35% trig");
    EXPECT_EQ(Text(" -2.5 ", "0"), "-3");
    EXPECT_EQ(Text("1E+02", "0.0"), "100.0");
    EXPECT_EQ(Text("0.3", "V/div"), "V/div");
}

TEST(FormatText, OtherTextsStandAsTheyAre) {
    EXPECT_EQ(Text("1us/div", "0"), "1us/div");
    EXPECT_EQ(Text("0.3V/div", "V/div"), "0.3V/div");
    EXPECT_EQ(Text("", "0.0"), "");
    EXPECT_EQ(Text("  ", "0.0"), "  ");
    EXPECT_EQ(Text("inf", "0.0"), "inf");
    EXPECT_EQ(Text("nan", "0.0"), "nan");
    EXPECT_EQ(Text("e", "0"), "e");
    EXPECT_EQ(Text("-", "0"), "-");
    EXPECT_EQ(Text("1e999", "0"), "1e999");
    EXPECT_EQ(Text("1 2", "0"), "1 2");
    EXPECT_EQ(Text("0x10", "0"), "0x10");
    EXPECT_EQ(Text("٣", "0"), "٣");
}

TEST(ShortestText, SingleRealsHaveSevenDigits) {
    EXPECT_EQ(ShortestText(0.3F).toStdString(), "0.3");
    EXPECT_EQ(ShortestText(0.03F).toStdString(), "0.03");
    EXPECT_EQ(ShortestText(30.0F).toStdString(), "30");
    EXPECT_EQ(ShortestText(-127.0F).toStdString(), "-127");
    EXPECT_EQ(ShortestText(1.0F / 3.0F).toStdString(), "0.3333333");
    EXPECT_EQ(ShortestText(1234567.0F).toStdString(), "1234567");
    EXPECT_EQ(ShortestText(1e7F).toStdString(), "1E+07");
    EXPECT_EQ(ShortestText(-0.0F).toStdString(), "0");
    EXPECT_EQ(ShortestText(std::numeric_limits<float>::quiet_NaN()).toStdString(), "nan");
}

TEST(ShortestText, DoubleRealsHaveFifteenDigits) {
    EXPECT_EQ(ShortestText(100.0 / 254.0).toStdString(), "0.393700787401575");
    EXPECT_EQ(ShortestText(0.1).toStdString(), "0.1");
    EXPECT_EQ(ShortestText(-kInf).toStdString(), "-inf");
}
