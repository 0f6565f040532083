#include "export/output_files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class OutputFilesTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }
    QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    QByteArray Name(const char* name) const { return QFile::encodeName(Path(name)); }
    static QByteArray Content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    static bool Save(OutputFiles& files, const QString& path, std::string_view bytes) {
        return files.Open(path) && files.Write(bytes) && files.Close();
    }

    QTemporaryDir folder;
    OutputFiles files;
};

/// No file of this process may grow beyond that, as on a disk that is full there.
class SizeLimit {
  public:
    explicit SizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

  private:
    rlimit before_{};
};

} // namespace

TEST_F(OutputFilesTest, WritesAndOverwrites) {
    EXPECT_TRUE(Save(files, Path("a"), "the first and longer text"));
    EXPECT_TRUE(Save(files, Path("b"), ""));
    EXPECT_TRUE(Save(files, Path("a"), "another"));
    EXPECT_EQ(Content(Path("a")), "another");
    EXPECT_EQ(Content(Path("b")), "");
}

TEST_F(OutputFilesTest, APlaceWhereNoFileCanBeFailsAndMayBeTriedAgain) {
    EXPECT_FALSE(files.Open(Path("missing/a")));
    EXPECT_TRUE(Save(files, Path("file"), "x"));
    EXPECT_FALSE(files.Open(Path("file/a"))); // its folder is a file
    EXPECT_FALSE(files.Open(folder.path()));  // it is a folder itself
    EXPECT_FALSE(files.Open(Path(std::string(256, 'n').c_str())));
    EXPECT_FALSE(files.Open(QString()));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("missing")));
    EXPECT_TRUE(Save(files, Path("missing/a"), "now it is there"));
    EXPECT_TRUE(Save(files, Path(std::string(255, 'n').c_str()), "the longest name"));
}

TEST_F(OutputFilesTest, AFileWithoutPermissionFails) {
    OutputFiles::System system = OutputFiles::RealSystem(); // whoever runs the tests may be allowed anything
    system.open = [](const char*) {
        errno = EACCES;
        return -1;
    };
    OutputFiles denied(system);
    EXPECT_FALSE(denied.Open(Path("a")));
}

TEST_F(OutputFilesTest, AFullDeviceFailsAndStaysOpen) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/full"), Path("full")));
    ASSERT_TRUE(files.Open(Path("full")));
    EXPECT_FALSE(files.Write("x"));
    EXPECT_FALSE(files.Open(Path("full")));
}

TEST_F(OutputFilesTest, WhatFitsOnADiskThatFillsUpStays) {
    {
        const SizeLimit limit(5000);
        ASSERT_TRUE(files.Open(Path("big")));
        EXPECT_FALSE(files.Write(std::string(8000, 'x')));
        EXPECT_FALSE(files.Open(Path("big")));
    }
    EXPECT_EQ(Content(Path("big")), QByteArray(5000, 'x'));
    // There is room again, but nobody has closed the file.
    EXPECT_FALSE(files.Open(Path("big")));
    EXPECT_EQ(Content(Path("big")), QByteArray(5000, 'x'));
    EXPECT_TRUE(Save(files, Path("other"), "fits"));
}

TEST_F(OutputFilesTest, AFileLeftOpenIsKnownUnderEveryNameUntilTheEnd) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("in")));
    {
        OutputFiles run;
        ASSERT_TRUE(run.Open(Path("in/a"))); // and its writer gives up
        EXPECT_TRUE(Save(run, Path("in/b"), "b"));
        EXPECT_FALSE(run.Open(Path("in/a")));
        EXPECT_FALSE(run.Open(Path("in/../in/./a")));
        ASSERT_TRUE(QFile::link(Path("in/a"), Path("link")));
        EXPECT_FALSE(run.Open(Path("link")));
        ASSERT_TRUE(QFile::link(Path("in"), Path("folder")));
        EXPECT_FALSE(run.Open(Path("folder/a")));
        ASSERT_TRUE(QFile::remove(Path("in/a")));
        EXPECT_FALSE(run.Open(Path("in/a")));
        EXPECT_TRUE(Save(run, Path("in/b"), "b again"));
        EXPECT_TRUE(files.Open(Path("in/a"))); // another program would not notice
        EXPECT_TRUE(files.Close());
    }
    EXPECT_TRUE(Save(files, Path("in/a"), "a new run"));
}

TEST_F(OutputFilesTest, AFailedCloseCountsAsOpen) {
    OutputFiles::System system = OutputFiles::RealSystem();
    bool fails = true;
    system.close = [&fails](int handle) {
        ::close(handle);
        errno = EIO;
        return fails ? -1 : 0;
    };
    OutputFiles run(system);
    EXPECT_FALSE(Save(run, Path("a"), "x"));
    fails = false;
    EXPECT_FALSE(run.Open(Path("a")));
    EXPECT_TRUE(Save(run, Path("b"), "y"));
}

TEST_F(OutputFilesTest, GoesOnWhereTheSystemTookAPartOrWasInterrupted) {
    OutputFiles::System system = OutputFiles::RealSystem();
    int calls = 0;
    system.open = [&calls, open = system.open](const char* path) {
        if (++calls == 1) {
            errno = EINTR;
            return -1;
        }
        return open(path);
    };
    system.write = [&calls, write = system.write](int file, const char* bytes, std::size_t count) -> long {
        if (++calls % 2 == 0) {
            errno = EINTR;
            return -1;
        }
        return write(file, bytes, std::min<std::size_t>(count, 3));
    };
    OutputFiles run(system);
    EXPECT_TRUE(Save(run, Path("a"), "in several goes"));
    EXPECT_EQ(Content(Path("a")), "in several goes");
    system.write = [](int, const char*, std::size_t) -> long { return 0; };
    OutputFiles stuck(system);
    EXPECT_FALSE(Save(stuck, Path("b"), "never"));
}

TEST_F(OutputFilesTest, APipeThatNobodyReadsFailsAtOnce) {
    ASSERT_EQ(mkfifo(Name("pipe").constData(), 0600), 0);
    EXPECT_FALSE(files.Open(Path("pipe")));
}

TEST_F(OutputFilesTest, APipeWithAReaderTakesTheFile) {
    ASSERT_EQ(mkfifo(Name("pipe").constData(), 0600), 0);
    const int reader = open(Name("pipe").constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_TRUE(Save(files, Path("pipe"), "through the pipe"));
    char bytes[64];
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 16);
    close(reader);
}

TEST_F(OutputFilesTest, APipeWhoseReaderSleepsOrLeavesFailsAndEndsNothing) {
    ASSERT_EQ(mkfifo(Name("pipe").constData(), 0600), 0);
    int reader = open(Name("pipe").constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    ASSERT_TRUE(files.Open(Path("pipe")));
    EXPECT_FALSE(files.Write(std::string(1 << 20, 'x'))); // more than a pipe holds
    close(reader);
    EXPECT_FALSE(files.Write("x"));

    ASSERT_EQ(mkfifo(Name("left").constData(), 0600), 0);
    reader = open(Name("left").constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_TRUE(files.Open(Path("left")));
    close(reader);
    EXPECT_FALSE(files.Write("x"));
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
}
