// A save of the settings is broken off at every point where it can be: the file is the old one or the new
// one, whole, and the next save works.

#include "endurance/interruption.h"
#include "frame/settings/settings.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString kProgram = QStringLiteral("Corvantine");
constexpr int kKeys = 200;

class InterruptedSettings : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        Save(1);
        before = Bytes();
        const QByteArray old = before;
        Save(2);
        after = Bytes();
        ASSERT_NE(before, after);
        PutBack(old);
    }
    /// The messages of the files that could not be written.
    int Save(int generation) const {
        SettingsStore store(folder.path());
        for (int i = 0; i < kKeys; ++i) {
            store.Save(kProgram, QStringLiteral("Section"), QString::number(i),
                       QString::number(generation).repeated(20));
        }
        return static_cast<int>(store.Flush().size());
    }
    QByteArray Bytes() const {
        QFile file(folder.filePath(QStringLiteral("Corvantine.ini")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void PutBack(const QByteArray& bytes) const {
        QFile file(folder.filePath(QStringLiteral("Corvantine.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QTemporaryDir folder{FolderInMemory()};
    QByteArray before;
    QByteArray after;
};

TEST_F(InterruptedSettings, AKillAtEachSystemCallLeavesTheOldOrTheNewFile) {
    int killed = 0;
    int changed = 0;
    for (int call = 1;; ++call) {
        PutBack(before);
        const Ending ending = KilledAtCall(call, [this] { Save(2); });
        ASSERT_NE(ending, Ending::Failed) << "call " << call;
        const QByteArray found = Bytes();
        ASSERT_TRUE(found == before || found == after) << "call " << call;
        changed += found == after ? 1 : 0;
        if (ending == Ending::Done) {
            EXPECT_EQ(found, after);
            break;
        }
        ++killed;
        ASSERT_EQ(Save(2), 0) << "what was left at call " << call << " stands in the way";
        ASSERT_EQ(Bytes(), after);
    }
    EXPECT_GT(killed, 10);
    EXPECT_GT(changed, 1) << "some kills come after the new file is in its place";
    EXPECT_LT(changed, killed);
}

TEST_F(InterruptedSettings, ADiskThatIsFullAfterEachByteCountLeavesTheOldFileAndSaysSo) {
    constexpr int kStep = 97;
    for (int bytes = 0; bytes < after.size(); bytes += kStep) {
        EXPECT_EQ(OnAFullDisk(bytes, [this] { return Save(2); }), 1) << bytes;
        ASSERT_EQ(Bytes(), before) << bytes;
    }
    EXPECT_EQ(OnAFullDisk(after.size(), [this] { return Save(2); }), 0);
    EXPECT_EQ(Bytes(), after);
}

TEST_F(InterruptedSettings, TwoThatCloseAtOnceLoseNothing) {
    for (int round = 0; round < 40; ++round) {
        std::vector<pid_t> instances;
        for (int instance = 0; instance < 2; ++instance) {
            const pid_t child = fork();
            if (child == 0) {
                SettingsStore store(folder.path());
                store.Get(kProgram, QStringLiteral("Shared"), QStringLiteral("x"), {});
                store.Save(kProgram, QStringLiteral("Instance%1").arg(instance), QStringLiteral("round"),
                           QString::number(round));
                _exit(store.Flush().isEmpty() ? 0 : 1);
            }
            instances.push_back(child);
        }
        for (const pid_t instance : instances) {
            int status = 0;
            waitpid(instance, &status, 0);
            ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "round " << round;
        }
        SettingsStore store(folder.path());
        for (int instance = 0; instance < 2; ++instance) {
            ASSERT_EQ(store.GetInteger(kProgram, QStringLiteral("Instance%1").arg(instance),
                                       QStringLiteral("round"), -1),
                      round);
        }
    }
}

} // namespace
