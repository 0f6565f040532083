#include "frame/settings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kProgram = QStringLiteral("Corvantine");

class Settings : public testing::Test {
  protected:
    QTemporaryDir folder_;
    SettingsStore store_{folder_.path()};

    SettingsStore again() const { return SettingsStore(folder_.path()); }
    void write(const QByteArray& bytes) const {
        QFile file(store_.FileOf(kProgram));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes() const {
        QFile file(store_.FileOf(kProgram));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(Settings, GivesTheDefaultWithoutAFile) {
    EXPECT_EQ(store_.Get(kProgram, "ScopeSettings", "TimeBase", "7"), "7");
    EXPECT_EQ(store_.GetInteger(kProgram, "ScopeSettings", "TimeBase", 7), 7);
    EXPECT_TRUE(store_.GetBoolean(kProgram, "Channel1Settings", "ChannelOn", true));
    EXPECT_EQ(store_.GetReal(kProgram, "ScopeSettings", "MainWindowLeft", 12.5), 12.5);
    EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

TEST_F(Settings, ComesBackWordForWord) {
    store_.Save(kProgram, "ScopeSettings_5:2", "TimeBase", "12");
    store_.Save(kProgram, "Channel1Settings", "ChannelOn", "False");
    store_.Save(kProgram, "CursTabSettings", "HorizCursor0", "1,5");
    EXPECT_EQ(store_.Flush(), QStringList());
    SettingsStore read = again();
    EXPECT_EQ(read.Get(kProgram, "ScopeSettings_5:2", "TimeBase", "7"), "12");
    EXPECT_FALSE(read.GetBoolean(kProgram, "Channel1Settings", "ChannelOn", true));
    EXPECT_EQ(read.Get(kProgram, "CursTabSettings", "HorizCursor0", ""), "1,5");
    EXPECT_EQ(bytes(), "[ScopeSettings_5:2]\nTimeBase=12\n\n[Channel1Settings]\nChannelOn=False\n\n"
                       "[CursTabSettings]\nHorizCursor0=\"1,5\"\n");
}
