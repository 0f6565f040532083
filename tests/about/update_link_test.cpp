#include "about/update_link.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

class UpdateLink : public testing::Test {
  protected:
    void Write(const QByteArray& bytes) const {
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QString Path() const { return folder.filePath(QStringLiteral("update.url")); }
    QTemporaryDir folder;
};

TEST_F(UpdateLink, StartsAtTheFirstHttpAndRunsToTheEnd) {
    Write("[InternetShortcut]\r\nURL=https://example.org/up?x=http\r\nIconIndex=0\r\n");
    EXPECT_EQ(about::UpdateLink(Path()), QStringLiteral("https://example.org/up?x=http\r\nIconIndex=0\r\n"));
}

TEST_F(UpdateLink, NeedsHttpInSmallLetters) {
    for (const char* text : {"", "URL=HTTP://example.org/", "URL=ftp://example.org/", "htt"}) {
        Write(text);
        EXPECT_EQ(about::UpdateLink(Path()), QString()) << text;
    }
}

TEST_F(UpdateLink, IsNoneWithoutAFileThatCanBeReadWhole) {
    EXPECT_EQ(about::UpdateLink(Path()), QString());
    EXPECT_EQ(about::UpdateLink(folder.path()), QString());
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(about::UpdateLink(pipe), QString());
    EXPECT_EQ(about::UpdateLink(QStringLiteral("/dev/zero")), QString());
}

TEST_F(UpdateLink, AnAbsurdlyLargeFileHasNone) {
    Write("http://example.org/" + QByteArray(60'000, 'a'));
    EXPECT_EQ(about::UpdateLink(Path()).size(), 60'019);
    Write("http://example.org/" + QByteArray(70'000, 'a'));
    EXPECT_EQ(about::UpdateLink(Path()), QString());
    QFile file(Path());
    ASSERT_TRUE(file.resize(qint64{1} << 40)); // a terabyte of holes
    EXPECT_EQ(about::UpdateLink(Path()), QString());
}
