#include "frame/settings/settings_section.h"

#include "frame/settings/setting_text.h"

#include <utility>

SettingsSection::SettingsSection(SettingsStore& store, QString section, QString application)
    : store_(store), application_(std::move(application)), section_(std::move(section)) {}

QString SettingsSection::Text(const QString& key, const QString& fallback) const {
    return store_.Get(application_, section_, key, fallback);
}

std::int32_t SettingsSection::Integer(const QString& key, std::int32_t fallback) const {
    return store_.GetInteger(application_, section_, key, fallback);
}

double SettingsSection::Real(const QString& key, double fallback) const {
    return store_.GetReal(application_, section_, key, fallback);
}

bool SettingsSection::Boolean(const QString& key, bool fallback) const {
    return store_.GetBoolean(application_, section_, key, fallback);
}

void SettingsSection::Save(const QString& key, const QString& text) const {
    store_.Save(application_, section_, key, text);
}

void SettingsSection::SaveInteger(const QString& key, std::int32_t value) const {
    Save(key, QString::number(value));
}

void SettingsSection::SaveBoolean(const QString& key, bool value) const {
    Save(key, BooleanText(value));
}
