#include "frame/settings/settings.h"

#include "frame/settings/setting_names.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <chrono>
#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

const QString kProgram = SettingsApplication();

class Settings : public testing::Test {
  protected:
    QTemporaryDir folder_;
    SettingsStore store_{folder_.path()};

    QString path() const { return store_.FileOf(kProgram); }
    void write(const QByteArray& bytes) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList files() const {
        return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
};

/// Runs work in a process of its own, which ends with what it returns.
pid_t Fork(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(work());
    }
    return child;
}

int ExitCode(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

constexpr int kKeys = 3000; ///< enough that writing them takes a moment

void SaveGeneration(SettingsStore& store, int generation) {
    for (int i = 0; i < kKeys; ++i) {
        store.Save(kProgram, "Generation", QString::number(i), QString::number(generation).repeated(20));
    }
}

/// The one generation that all keys of the file have, or nothing usable.
QString Generation(const QByteArray& bytes) {
    const IniText ini = IniText::Parse(bytes);
    const QString* first = ini.Find("Generation", "0");
    for (int i = 0; first != nullptr && i < kKeys; ++i) {
        const QString* text = ini.Find("Generation", QString::number(i));
        if (text == nullptr || *text != *first) {
            return {};
        }
    }
    return first == nullptr ? QString() : *first;
}

} // namespace

TEST_F(Settings, GivesTheDefaultWithoutAFile) {
    EXPECT_EQ(store_.Get(kProgram, "ScopeSettings", "TimeBase", "7"), "7");
    EXPECT_EQ(store_.GetInteger(kProgram, "ScopeSettings", "TimeBase", 7), 7);
    EXPECT_TRUE(store_.GetBoolean(kProgram, "Channel1Settings", "ChannelOn", true));
    EXPECT_EQ(store_.GetReal(kProgram, "ScopeSettings", "MainWindowLeft", 12.5), 12.5);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(Settings, ComesBackWordForWord) {
    store_.Save(kProgram, "ScopeSettings_5:2", "TimeBase", "12");
    store_.Save(kProgram, "Channel1Settings", "ChannelOn", "False");
    store_.Save(kProgram, "CursTabSettings", "HorizCursor0", "1,5");
    EXPECT_EQ(store_.Flush(), QStringList());
    SettingsStore read(folder_.path());
    EXPECT_EQ(read.Get(kProgram, "ScopeSettings_5:2", "TimeBase", "7"), "12");
    EXPECT_FALSE(read.GetBoolean(kProgram, "Channel1Settings", "ChannelOn", true));
    EXPECT_EQ(read.Get(kProgram, "CursTabSettings", "HorizCursor0", ""), "1,5");
    EXPECT_EQ(bytes(), "[ScopeSettings_5:2]\nTimeBase=12\n\n[Channel1Settings]\nChannelOn=False\n\n"
                       "[CursTabSettings]\nHorizCursor0=\"1,5\"\n");
}

TEST_F(Settings, LiesUnderTheUsersConfigurationFolder) {
    EXPECT_TRUE(SettingsStore::DefaultFolder().endsWith("/Corvantine"));
    EXPECT_EQ(QFileInfo(SettingsStore().FileOf("Corvantine")).fileName(), "Corvantine.ini");
    EXPECT_EQ(QFileInfo(SettingsStore().FileOf(CalibrationApplication("A1042"))).fileName(),
              "Corvantine_CalData_A1042.ini");
}

TEST_F(Settings, WritesNothingBeforeTheFlush) {
    write("[a]\nx=1\n");
    store_.Save(kProgram, "a", "x", "2");
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
    EXPECT_EQ(store_.Get(kProgram, "a", "x", ""), "2");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(bytes(), "[a]\nx=2\n");
}

TEST_F(Settings, FlushesOnlyWhatWasSaved) {
    store_.Get(kProgram, "a", "x", "");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(Settings, KeepsWhatOthersWroteMeanwhile) {
    write("[a]\nmine=1\ntheirs=1\n");
    store_.Get(kProgram, "a", "mine", "");
    write("[a]\nmine=1\ntheirs=2\n[b]\nnew=3\n");
    store_.Save(kProgram, "a", "mine", "9");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(bytes(), "[a]\nmine=9\ntheirs=2\n\n[b]\nnew=3\n");
    EXPECT_EQ(store_.Get(kProgram, "a", "theirs", ""), "2");
}

TEST_F(Settings, ADamagedFileGivesDefaultsAndKeepsItsReadableRest) {
    static constexpr char kDamaged[] =
        "[ScopeSettings]\nTimeBase=x\n\0\xff\x80garbage\nTriggerThreshold=12\n[Chan";
    write(QByteArray(kDamaged, sizeof kDamaged - 1));
    EXPECT_EQ(store_.GetInteger(kProgram, "ScopeSettings", "TimeBase", 7), 7);
    EXPECT_EQ(store_.GetInteger(kProgram, "ScopeSettings", "TriggerThreshold", 0), 12);
    store_.Save(kProgram, "ScopeSettings", "TimeBase", "3");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(bytes(), "[ScopeSettings]\nTimeBase=3\nTriggerThreshold=12\n");
}

TEST_F(Settings, ASerialNamesAFileAndNeverAPath) {
    const QStringList serials = {"A1042",
                                 "a1042",
                                 "..",
                                 "../../x",
                                 "/etc/passwd",
                                 "a/b",
                                 "a%2fb",
                                 "",
                                 ".",
                                 "%",
                                 " ",
                                 QString(QChar(0)),
                                 QString(300, 'x'),
                                 QString(300, 'x') + 'y',
                                 QString(300, '/'),
                                 QString::fromLatin1("\xff\xfe\x80"),
                                 "con\nnul",
                                 QString::fromLatin1("\xff\xfe\x81"),
                                 QString(QChar(0xD800)),
                                 "A1042.ini"};
    for (const QString& serial : serials) {
        store_.Save(CalibrationApplication(serial), "OffsetNull", "Range0", serial + "!");
    }
    store_.Save("", "s", "k", "nameless");
    store_.Save("../up", "s", "k", "up");
    EXPECT_EQ(store_.Flush(), QStringList());

    SettingsStore read(folder_.path());
    for (const QString& serial : serials) {
        const QString name = CalibrationApplication(serial);
        EXPECT_EQ(read.Get(name, "OffsetNull", "Range0", ""), serial + "!");
        EXPECT_EQ(QFileInfo(read.FileOf(name)).canonicalPath(),
                  QFileInfo(folder_.path()).canonicalFilePath());
    }
    QStringList settings = files().filter(QRegularExpression("\\.ini$"));
    EXPECT_EQ(settings.size(), serials.size() + 2);
    for (const QString& file : settings) {
        EXPECT_LE(file.toUtf8().size() + 8, 255)
            << "no room for the name of a temporary: " << file.toStdString();
    }
}

TEST_F(Settings, AFullDiskLeavesTheOldFileAndSaysSo) {
    SaveGeneration(store_, 1);
    ASSERT_EQ(store_.Flush(), QStringList());
    const QByteArray before = bytes();
    const pid_t child = Fork([&] {
        const rlimit limit{4096, 4096};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        SettingsStore full(folder_.path());
        SaveGeneration(full, 2);
        const QStringList messages = full.Flush();
        return messages.size() == 1 && messages.front().contains(path()) ? 7 : 1;
    });
    EXPECT_EQ(ExitCode(child), 7);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(files(), QStringList({"Corvantine.ini"}));
}

TEST_F(Settings, WhatCouldNotBeWrittenIsKeptForTheNextFlush) {
    ASSERT_TRUE(QDir().mkpath(path())); // a folder where the file should be
    store_.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(store_.Flush().size(), 1);
    EXPECT_EQ(store_.Get(kProgram, "a", "x", ""), "1");
    QDir().rmdir(path());
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(Settings, AFailureOfOneFileDoesNotHoldUpTheOthers) {
    ASSERT_TRUE(QDir().mkpath(store_.FileOf(CalibrationApplication("1"))));
    store_.Save(CalibrationApplication("0"), "OffsetNull", "Range0", "1");
    store_.Save(CalibrationApplication("1"), "OffsetNull", "Range0", "2");
    store_.Save(CalibrationApplication("2"), "OffsetNull", "Range0", "3");
    EXPECT_EQ(store_.Flush().size(), 1);
    SettingsStore read(folder_.path());
    EXPECT_EQ(read.Get(CalibrationApplication("0"), "OffsetNull", "Range0", ""), "1");
    EXPECT_EQ(read.Get(CalibrationApplication("2"), "OffsetNull", "Range0", ""), "3");
}

TEST_F(Settings, AFolderThatCannotBeMadeIsNoCrash) {
    write("x");
    SettingsStore below(path() + "/Corvantine");
    EXPECT_EQ(below.Get(kProgram, "a", "x", "default"), "default");
    below.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(below.Flush().size(), 1);
    EXPECT_EQ(bytes(), "x");
}

TEST_F(Settings, AFolderWithoutRightsGivesDefaultsAndAMessage) {
    write("[a]\nx=1\n");
    chmod(qPrintable(folder_.path()), 0);
    const pid_t child = Fork([&] {
        if (geteuid() == 0 && setuid(65534) != 0) {
            return 2;
        }
        SettingsStore barred(folder_.path());
        if (barred.Get(kProgram, "a", "x", "default") != "default") {
            return 3;
        }
        barred.Save(kProgram, "a", "x", "2");
        return barred.Flush().size() == 1 ? 7 : 4;
    });
    EXPECT_EQ(ExitCode(child), 7);
    chmod(qPrintable(folder_.path()), 0700);
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(Settings, AFileWithoutRightsIsNotReplaced) {
    write("[a]\nx=1\n");
    chmod(qPrintable(folder_.path()), 0777);
    struct Case {
        mode_t mode;
        const char* told;
    };
    for (const Case& barring : {Case{0, "cannot read"}, Case{0444, "it is write-protected"}}) {
        chmod(qPrintable(path()), barring.mode);
        const pid_t child = Fork([&] {
            if (geteuid() == 0 && setuid(65534) != 0) {
                return 2;
            }
            SettingsStore barred(folder_.path());
            barred.Save(kProgram, "a", "x", "2");
            const QStringList told = barred.Flush();
            return told.size() == 1 && told[0].contains(barring.told) ? 7 : 4;
        });
        EXPECT_EQ(ExitCode(child), 7) << barring.told;
        chmod(qPrintable(path()), 0600);
        EXPECT_EQ(bytes(), "[a]\nx=1\n") << barring.told;
    }
}

TEST_F(Settings, APipeInPlaceOfTheFileDoesNotBlock) {
    ASSERT_EQ(mkfifo(qPrintable(path()), 0600), 0);
    EXPECT_EQ(store_.Get(kProgram, "a", "x", "default"), "default");
    store_.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(store_.Flush().size(), 1);
}

TEST_F(Settings, AKillAtAnyMomentLeavesAWholeFile) {
    SaveGeneration(store_, 0);
    ASSERT_EQ(store_.Flush(), QStringList());
    std::mt19937 random(7);
    QSet<QString> seen;
    for (int round = 1; round <= 40; ++round) {
        const QByteArray before = bytes();
        const pid_t child = Fork([&] {
            SettingsStore writer(folder_.path());
            for (int generation = round * 1000;; ++generation) {
                SaveGeneration(writer, generation);
                if (!writer.Flush().isEmpty()) {
                    return 1;
                }
            }
        });
        while (bytes() == before && waitpid(child, nullptr, WNOHANG) == 0) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        kill(child, SIGKILL);
        EXPECT_EQ(ExitCode(child), -1) << "the writer failed";
        const QString generation = Generation(bytes());
        ASSERT_FALSE(generation.isEmpty()) << "after round " << round;
        seen += generation;
    }
    EXPECT_EQ(seen.size(), 40);

    // Nor do locks and temporaries of the dead stand in the way of the next one.
    SaveGeneration(store_, 5);
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(Generation(bytes()), QString("5").repeated(20));
    EXPECT_EQ(files(), QStringList({"Corvantine.ini"}));
}

TEST_F(Settings, RemovesWhatAWriterThatWasKilledLeftAndNothingElse) {
    const QStringList users{"Corvantine.ini.Ab12Cd", "Corvantine.ini.backup", "Corvantine.ini.old",
                            "Corvantine.ini~"};
    QStringList beside = users;
    beside << "Corvantine.ini.unfinished-write";
    for (const QString& name : beside) {
        QFile file(folder_.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("mine");
    }
    store_.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(files(), QStringList("Corvantine.ini") + users);
    EXPECT_EQ(bytes(), "[a]\nx=1\n");
}

TEST_F(Settings, AWriterThatIsKilledWhileItWritesLeavesThatOneFile) {
    SaveGeneration(store_, 1);
    ASSERT_EQ(store_.Flush(), QStringList());
    const QByteArray before = bytes();
    const pid_t child = Fork([&] {
        const rlimit limit{4096, 4096};
        std::signal(SIGXFSZ, SIG_DFL); // the write that goes beyond it kills
        setrlimit(RLIMIT_FSIZE, &limit);
        SettingsStore killed(folder_.path());
        SaveGeneration(killed, 2);
        killed.Flush();
        return 0;
    });
    EXPECT_EQ(ExitCode(child), -1);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(files().filter(QRegularExpression("^(?!.*\\.lock$)")),
              QStringList({"Corvantine.ini", "Corvantine.ini.unfinished-write"}));
    SaveGeneration(store_, 3);
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(files(), QStringList({"Corvantine.ini"}));
}

TEST_F(Settings, AUsersLinkAndRightsStay) {
    const QString elsewhere = folder_.filePath("elsewhere.ini");
    ASSERT_TRUE(QFile::link(elsewhere, path()));
    for (const char* value : {"1", "2"}) { // where there is no file yet, and where there is
        store_.Save(kProgram, "a", "x", value);
        EXPECT_EQ(store_.Flush(), QStringList());
        EXPECT_TRUE(QFileInfo(path()).isSymLink());
        EXPECT_EQ(bytes(), QByteArray("[a]\nx=") + value + "\n");
        chmod(qPrintable(elsewhere), 0640);
    }
    EXPECT_TRUE(QFileInfo::exists(elsewhere));
    struct stat is {};
    ASSERT_EQ(stat(qPrintable(elsewhere), &is), 0);
    EXPECT_EQ(is.st_mode & 0777, 0640U);
}

/// A process that holds the lock of a settings file, and then does something more and ends. Returns once it
/// holds it.
pid_t HoldLock(const QString& file, const std::function<void(QLockFile&)>& more) {
    int held[2];
    EXPECT_EQ(pipe(held), 0);
    const pid_t child = Fork([&] {
        QLockFile lock(file + ".lock");
        const bool locked = lock.lock();
        const ssize_t told = write(held[1], "x", 1);
        more(lock);
        return locked && told == 1 ? 0 : 1;
    });
    char sign = 0;
    EXPECT_EQ(read(held[0], &sign, 1), 1);
    close(held[0]);
    close(held[1]);
    return child;
}

TEST_F(Settings, ALockOfALiveInstanceIsWaitedFor) {
    const pid_t other = HoldLock(path(), [this](QLockFile& lock) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        write("[a]\ny=2\n");
        lock.unlock();
    });
    store_.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(ExitCode(other), 0);
    EXPECT_EQ(bytes(), "[a]\ny=2\nx=1\n") << "what the other wrote under its lock stays";
}

TEST_F(Settings, ALockOfAnInstanceThatStandsStillIsToldOfAndNothingIsLost) {
    write("[a]\ny=2\n");
    const pid_t other = HoldLock(path(), [](QLockFile&) { pause(); });
    kill(other, SIGSTOP);
    store_.Save(kProgram, "a", "x", "1");
    const QStringList told = store_.Flush();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0], "cannot lock " + path());
    EXPECT_EQ(bytes(), "[a]\ny=2\n");
    kill(other, SIGKILL);
    EXPECT_EQ(ExitCode(other), -1);
    EXPECT_EQ(store_.Flush(), QStringList()) << "what could not be written is kept";
    EXPECT_EQ(bytes(), "[a]\ny=2\nx=1\n");
}

TEST_F(Settings, ALockOfTheDeadIsNoneAtAll) {
    write("[a]\ny=2\n");
    EXPECT_EQ(ExitCode(HoldLock(path(), [](QLockFile&) { kill(getpid(), SIGKILL); })), -1);
    ASSERT_EQ(files(), QStringList({"Corvantine.ini", "Corvantine.ini.lock"}));
    store_.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(store_.Flush(), QStringList());
    EXPECT_EQ(bytes(), "[a]\ny=2\nx=1\n");
    EXPECT_EQ(files(), QStringList({"Corvantine.ini"}));
}

TEST_F(Settings, InstancesThatCloseAtOnceLoseNothing) {
    constexpr int kInstances = 4;
    constexpr int kWritten = 25;
    std::vector<pid_t> children;
    children.reserve(kInstances);
    for (int instance = 0; instance < kInstances; ++instance) {
        children.push_back(Fork([&] {
            SettingsStore own(folder_.path());
            own.Get(kProgram, "shared", "x", "");
            for (int i = 0; i < kWritten; ++i) {
                own.Save(kProgram, QString("ScopeSettings_%1:1").arg(instance), QString::number(i), "1");
                if (!own.Flush().isEmpty()) {
                    return 1;
                }
            }
            return 0;
        }));
    }
    for (const pid_t child : children) {
        EXPECT_EQ(ExitCode(child), 0);
    }
    int found = 0;
    for (int instance = 0; instance < kInstances; ++instance) {
        for (int i = 0; i < kWritten; ++i) {
            found += store_.GetInteger(kProgram, QString("ScopeSettings_%1:1").arg(instance),
                                       QString::number(i), 0);
        }
    }
    EXPECT_EQ(found, kInstances * kWritten);
}
