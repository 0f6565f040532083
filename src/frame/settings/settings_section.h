#pragma once

#include "frame/settings/setting_names.h"
#include "frame/settings/settings.h"

/// One section of the settings: what a part keeps, by key alone.
class SettingsSection {
  public:
    SettingsSection(SettingsStore& store, QString section, QString application = SettingsApplication());

    QString Text(const QString& key, const QString& fallback) const;
    /// Typed reading: a text that is no such value gives the fallback.
    std::int32_t Integer(const QString& key, std::int32_t fallback) const;
    double Real(const QString& key, double fallback) const;
    bool Boolean(const QString& key, bool fallback) const;

    void Save(const QString& key, const QString& text) const;
    void SaveInteger(const QString& key, std::int32_t value) const;
    void SaveBoolean(const QString& key, bool value) const;

  private:
    SettingsStore& store_;
    QString application_;
    QString section_;
};
