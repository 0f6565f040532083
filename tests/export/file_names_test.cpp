#include "export/file_names.h"

#include <gtest/gtest.h>

TEST(FileNames, TheBaseEndsAtTheFirstDotOfTheName) {
    EXPECT_EQ(SaveBase(QStringLiteral("/data.old/run.1.txt")), QStringLiteral("/data.old/run"));
    EXPECT_EQ(SaveBase(QStringLiteral("/data.old/run")), QStringLiteral("/data.old/run"));
    EXPECT_EQ(SaveBase(QStringLiteral("run.txt")), QStringLiteral("run"));
    EXPECT_EQ(SaveBase(QStringLiteral("run")), QStringLiteral("run"));
    EXPECT_EQ(SaveBase(QStringLiteral("/data/.hidden.txt")), QStringLiteral("/data/"));
    EXPECT_EQ(SaveBase(QStringLiteral(".txt")), QString());
    EXPECT_EQ(SaveBase(QStringLiteral("/a.b/c/d.e")), QStringLiteral("/a.b/c/d"));
    EXPECT_EQ(SaveBase(QString()), QString());
}

TEST(FileNames, ABackslashIsACharacterOfAName) {
    EXPECT_EQ(SaveBase(QStringLiteral("/data/a\\b.c\\d.txt")), QStringLiteral("/data/a\\b"));
}

TEST(FileNames, BlanksAroundTheNameAreDroppedAndThoseWithinStay) {
    EXPECT_EQ(SaveBase(QStringLiteral("  /my data/run 1  ") + QString(220, u' ')),
              QStringLiteral("/my data/run 1"));
    EXPECT_EQ(SaveBase(QStringLiteral("run") + QString(3, QChar(u'\0'))), QStringLiteral("run"));
    EXPECT_EQ(SaveBase(QStringLiteral("a\tb\t")), QStringLiteral("a\tb\t"));
    EXPECT_EQ(SaveBase(QStringLiteral("   ")), QString());
    EXPECT_EQ(SaveBase(QStringLiteral("run .txt")), QStringLiteral("run "));
}

TEST(FileNames, MathDataGoesByMathNumberAndItsSpectrumByChannelNumber) {
    const QString base = QStringLiteral("/x/CorvantineData");
    EXPECT_EQ(DataFileName(base, 1), QStringLiteral("/x/CorvantineData.ch1data.txt"));
    EXPECT_EQ(DataFileName(base, 4), QStringLiteral("/x/CorvantineData.ch4data.txt"));
    EXPECT_EQ(DataFileName(base, 5), QStringLiteral("/x/CorvantineData.math1data.txt"));
    EXPECT_EQ(DataFileName(base, 6), QStringLiteral("/x/CorvantineData.math2data.txt"));
    EXPECT_EQ(SpectrumFileName(base, 4), QStringLiteral("/x/CorvantineData.ch4fft.txt"));
    EXPECT_EQ(SpectrumFileName(base, 5), QStringLiteral("/x/CorvantineData.ch5fft.txt"));
    EXPECT_EQ(SpectrumFileName(base, 6), QStringLiteral("/x/CorvantineData.ch6fft.txt"));
}
