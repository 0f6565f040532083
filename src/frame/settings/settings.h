#pragma once

#include "frame/settings/ini_text.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <map>

/// What survives a restart: texts by application, section and key, one INI file an application name.
/// A file is read once, at the first Get of its application. Save only remembers; Flush writes everything
/// that was saved since, so that a run which ends by other means leaves the files as they were.
class SettingsStore {
  public:
    /// folder: where the files lie; by default "Corvantine" in the user's configuration folder.
    explicit SettingsStore(QString folder = DefaultFolder());
    virtual ~SettingsStore() = default;
    static QString DefaultFolder();

    virtual QString Get(const QString& application, const QString& section, const QString& key,
                        const QString& fallback);
    virtual void Save(const QString& application, const QString& section, const QString& key,
                      const QString& text);

    /// Typed reading: a text that is no such value gives the fallback.
    std::int32_t GetInteger(const QString& application, const QString& section, const QString& key,
                            std::int32_t fallback);
    double GetReal(const QString& application, const QString& section, const QString& key, double fallback);
    bool GetBoolean(const QString& application, const QString& section, const QString& key, bool fallback);

    /// The messages of the files that could not be written, empty if all went well. Each file is replaced
    /// as a whole or stays as it was; keys that another process wrote meanwhile stay. What could not be
    /// written is kept for the next Flush.
    QStringList Flush();

    /// The file of an application name. The name may hold any characters: it never leads out of the folder.
    QString FileOf(const QString& application) const;

    // One store has the changes of one program: a copy would write them twice.
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    SettingsStore(SettingsStore&&) = default;
    SettingsStore& operator=(SettingsStore&&) = default;

  private:
    struct Application {
        IniText stored;
        IniText changes;
        bool loaded = false;
        bool changed = false;
    };
    Application& Loaded(const QString& application);
    QString Write(const QString& path, Application& application) const;

    QString folder_;
    std::map<QString, Application> applications_;
};
