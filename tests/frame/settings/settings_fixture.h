#pragma once

#include "frame/settings/setting_names.h"
#include "frame/settings/settings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

// A store in a folder of its own, and other processes that use it.

inline const QString kProgram = SettingsApplication();

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
inline pid_t Fork(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(work());
    }
    return child;
}

inline int ExitCode(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

inline constexpr int kKeys = 3000; ///< enough that writing them takes a moment

inline void SaveGeneration(SettingsStore& store, int generation) {
    for (int i = 0; i < kKeys; ++i) {
        store.Save(kProgram, "Generation", QString::number(i), QString::number(generation).repeated(20));
    }
}

/// The one generation that all keys of the file have, or nothing usable.
inline QString Generation(const QByteArray& bytes) {
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
