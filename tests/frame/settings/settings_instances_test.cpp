#include "frame/settings/settings_fixture.h"

#include <QLockFile>
#include <QRegularExpression>
#include <QSet>
#include <chrono>
#include <csignal>
#include <random>
#include <sys/resource.h>
#include <thread>
#include <vector>

// Several instances on one file, some of which are killed or stand still.

namespace {

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

} // namespace

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
