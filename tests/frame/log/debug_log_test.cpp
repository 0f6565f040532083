#include "frame/log/debug_log.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kName = QStringLiteral("Corvantinelog.txt");
const QString kStart =
    QStringLiteral("*********************************START****************************************");
const QString kStop =
    QStringLiteral("*********************************STOP*****************************************");

class Log : public testing::Test {
  protected:
    QTemporaryDir folder_;
    QStringList warnings_;
    DebugLog log_{folder_.path(), [this](const QString& text) { warnings_ += text; }};

    bool exists() const { return QFile::exists(folder_.filePath(kName)); }
    QStringList lines() const {
        QFile file(folder_.filePath(kName));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        EXPECT_EQ(lines.takeLast(), "") << "the last line has no end";
        return lines;
    }
    /// The lines without their moments.
    QStringList texts() const {
        QStringList texts = lines();
        return texts.replaceInStrings(QRegularExpression(QStringLiteral("   \\(@ [^()]*[0-9][^()]*\\)$")),
                                      QStringLiteral(" @"));
    }
};

} // namespace

TEST_F(Log, WritesLinesBetweenBanners) {
    log_.OpenLog(kName, true);
    log_.PrintLog(QStringLiteral("Opening driver"));
    log_.CloseLog();
    EXPECT_EQ(texts(), QStringList({kStart, "Opening driver @", kStop}));
    EXPECT_TRUE(warnings_.isEmpty());
}

TEST_F(Log, IsSilentUntilEnabled) {
    log_.PrintLog(QStringLiteral("early"));
    log_.IncIndent();
    EXPECT_EQ(log_.Indent(), 0);
    log_.OpenLog(kName, false);
    log_.PrintLog(QStringLiteral("late"));
    log_.IncIndent();
    log_.DecIndent();
    log_.CloseLog();
    EXPECT_EQ(log_.Indent(), 0);
    EXPECT_FALSE(exists());
    EXPECT_FALSE(log_.Enabled());
}

TEST_F(Log, OnlyGrowsAndHasABannerForEachOpen) {
    log_.OpenLog(kName, true);
    log_.PrintLog(QStringLiteral("first"));
    log_.CloseLog();
    log_.OpenLog(kName, true);
    log_.PrintLog(QStringLiteral("second"));
    log_.CloseLog();
    EXPECT_EQ(texts(), QStringList({kStart, "first @", kStop, kStart, "second @", kStop}));
}

TEST_F(Log, ADisabledRunLeavesTheFileOfAnEarlierOneAlone) {
    log_.OpenLog(kName, true);
    log_.CloseLog();
    const QStringList before = lines();
    log_.OpenLog(kName, false);
    log_.PrintLog(QStringLiteral("nothing"));
    log_.CloseLog();
    EXPECT_EQ(lines(), before);
}

TEST_F(Log, ASecondOpenEndsTheFirst) {
    log_.OpenLog(kName, true);
    log_.OpenLog(QStringLiteral("other.txt"), true);
    log_.PrintLog(QStringLiteral("elsewhere"));
    EXPECT_EQ(texts(), QStringList({kStart, kStop}));
    EXPECT_TRUE(warnings_.isEmpty());
}

TEST_F(Log, IndentsByFour) {
    log_.OpenLog(kName, true);
    log_.PrintLog(QStringLiteral(">>> outer()"));
    log_.IncIndent();
    log_.PrintLog(QStringLiteral(">>> inner()"));
    log_.IncIndent();
    log_.PrintLog(QStringLiteral("deep"));
    log_.DecIndent();
    log_.PrintLog(QStringLiteral("(< inner"));
    log_.DecIndent();
    log_.DecIndent();
    log_.PrintLog(QStringLiteral("(< outer"));
    EXPECT_EQ(log_.Indent(), 0);
    EXPECT_EQ(texts(), QStringList({kStart, ">>> outer() @", "    >>> inner() @", "        deep @",
                                    "    (< inner @", "(< outer @"}));
}

TEST_F(Log, TheIndentStaysWithinSixteenBits) {
    log_.OpenLog(kName, true);
    for (int i = 0; i < 9000; ++i) {
        log_.IncIndent();
    }
    EXPECT_EQ(log_.Indent(), 32764);
}

TEST_F(Log, ALineIsInTheFileAtOnce) {
    log_.OpenLog(kName, true);
    log_.PrintLog(QStringLiteral("now"));
    EXPECT_EQ(texts().last(), "now @");
}

TEST_F(Log, TheEndOfTheObjectClosesTheFile) {
    {
        DebugLog log(folder_.path(), {});
        log.OpenLog(kName, true);
    }
    EXPECT_EQ(texts(), QStringList({kStart, kStop}));
}

TEST_F(Log, AFileThatCannotBeOpenedIsToldOnceAndTheRunGoesOn) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("taken.txt")));
    log_.OpenLog(QStringLiteral("taken.txt"), true);
    ASSERT_EQ(warnings_.size(), 1);
    EXPECT_EQ(warnings_.front(),
              "Warning:  failed to open Corvantinelog.txt for writing/append\n"
              "DEBUG output will be discarded\n"
              "Make sure the disk is not full, the disk is writable or the log file is not read only");
    log_.PrintLog(QStringLiteral("discarded"));
    log_.IncIndent();
    EXPECT_EQ(log_.Indent(), 4);
    log_.CloseLog();
    EXPECT_EQ(warnings_.size(), 1);
}

TEST_F(Log, AFolderThatIsNoneIsToldToo) {
    QStringList warnings;
    DebugLog log(folder_.filePath(QStringLiteral("nowhere")), [&](const QString& text) { warnings += text; });
    log.OpenLog(kName, true);
    EXPECT_EQ(warnings.size(), 1);
}

TEST_F(Log, AFullDiskIsSwallowed) {
    DebugLog log(QStringLiteral("/dev"), [this](const QString& text) { warnings_ += text; });
    log.OpenLog(QStringLiteral("full"), true);
    log.PrintLog(QStringLiteral("lost"));
    log.CloseLog();
    EXPECT_TRUE(warnings_.isEmpty());
}

TEST_F(Log, APipeThatNobodyReadsIsToldAndDoesNotBlock) {
    ASSERT_EQ(mkfifo(qPrintable(folder_.filePath(kName)), 0600), 0);
    log_.OpenLog(kName, true);
    EXPECT_EQ(warnings_.size(), 1);
    log_.PrintLog(QStringLiteral("discarded"));
}

TEST_F(Log, APipeThatIsNotEmptiedDoesNotBlock) {
    const QByteArray pipe = QFile::encodeName(folder_.filePath(kName));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    const int reader = open(pipe.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    log_.OpenLog(kName, true);
    EXPECT_TRUE(warnings_.isEmpty());
    for (int line = 0; line < 3000; ++line) { // more than a pipe holds
        log_.PrintLog(QStringLiteral("a line of what the program did and when it did it"));
    }
    char first = 0;
    EXPECT_EQ(read(reader, &first, 1), 1);
    EXPECT_EQ(first, '*');
    log_.CloseLog();
    close(reader);
}
