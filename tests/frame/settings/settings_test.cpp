#include "frame/settings/settings_fixture.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

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

TEST_F(Settings, TheirFolderIsNotAnotherWithTheOneThatTheProgramIsStartedIn) {
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    QStandardPaths::setTestModeEnabled(false); // nothing is written
    for (const char* relative : {"config", "./config", "../config"}) {
        qputenv("XDG_CONFIG_HOME", relative);
        EXPECT_EQ(SettingsStore::DefaultFolder(), QDir::homePath() + "/.config/Corvantine") << relative;
    }
    qputenv("XDG_CONFIG_HOME", "/some/where");
    EXPECT_EQ(SettingsStore::DefaultFolder(), "/some/where/Corvantine");
    QStandardPaths::setTestModeEnabled(true);
    before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
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

TEST_F(Settings, APipeInPlaceOfTheLockDoesNotBlock) {
    ASSERT_EQ(mkfifo(qPrintable(path() + ".lock"), 0600), 0);
    store_.Save(kProgram, "a", "x", "1");
    EXPECT_EQ(store_.Flush(), QStringList("cannot lock " + path()));
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
