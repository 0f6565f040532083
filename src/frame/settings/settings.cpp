#include "frame/settings/settings.h"

#include "frame/settings/setting_text.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <cstdio>
#include <optional>
#include <unistd.h>
#include <utility>

namespace {

constexpr qint64 kMostBytes = qint64{16} << 20; ///< a larger file is no settings file
constexpr int kLongestName = 160;               ///< with what a temporary adds it stays below 255 bytes
constexpr int kLockWait = 10000;                ///< milliseconds; another instance writes in a few
constexpr int kStaleLock = 5000;
constexpr auto kUnfinished = ".unfinished-write"; ///< behind the name of a file that is being written

/// A file name that belongs to this application name alone, made of characters that lead nowhere.
QString FileName(const QString& application) {
    QString name;
    for (const QChar c : application) {
        const auto u = c.unicode();
        const bool plain = (u >= '0' && u <= '9') || (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') ||
                           u == '_' || u == '-' || (u == '.' && !name.isEmpty()) ||
                           (u == ' ' && !name.isEmpty());
        name += plain ? QString(c)
                      : (u < 0x80 ? QStringLiteral("%%1").arg(u, 2, 16, QLatin1Char('0'))
                                  : QStringLiteral("%u%1").arg(u, 4, 16, QLatin1Char('0')));
    }
    if (name.isEmpty() || name.size() > kLongestName) {
        const QByteArray units(reinterpret_cast<const char*>(application.utf16()), application.size() * 2);
        name = name.left(kLongestName / 2) + QLatin1Char('~') +
               QString::fromLatin1(QCryptographicHash::hash(units, QCryptographicHash::Sha256).toHex());
    }
    return name + QStringLiteral(".ini");
}

/// Empty bytes for a file that does not exist, nothing for one that exists and cannot be read.
std::optional<QByteArray> ReadFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) {
        return QByteArray();
    }
    QFile file(path);
    // A pipe or a device in its place would block or never end.
    if (!info.isFile() || info.size() > kMostBytes || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray bytes = file.read(info.size()); // a buffer of that size is made, however short the file
    if (file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    return bytes;
}

/// What a user's link in place of the file points to, else the file itself: a link stays a link.
QString TargetOf(const QString& path) {
    const QFileInfo info(path);
    if (!info.isSymLink()) {
        return path;
    }
    const QString end = info.canonicalFilePath();
    return end.isEmpty() ? info.symLinkTarget() : end; // one that leads nowhere yet
}

/// Puts the bytes in place of the file at once; says why if it cannot, and then the file is as it was. Called
/// under the lock, when nobody else can own the file that is being made: its one name makes what a process
/// left that was killed in here the next one's, and no other file beside is touched.
QString ReplaceFile(const QString& path, const QByteArray& bytes) {
    const QString target = TargetOf(path);
    const QFileInfo former(target);
    if (former.exists() && !former.isWritable()) {
        return QStringLiteral("it is write-protected");
    }
    QFile file(target + kUnfinished);
    file.remove();
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        return file.errorString();
    }
    const bool safe = (!former.exists() || file.setPermissions(former.permissions())) &&
                      file.write(bytes) == bytes.size() && file.flush() && fsync(file.handle()) == 0;
    QString reason = file.error() == QFileDevice::NoError ? qt_error_string() : file.errorString();
    file.close();
    if (safe) {
        if (std::rename(QFile::encodeName(file.fileName()), QFile::encodeName(target)) == 0) {
            return {};
        }
        reason = qt_error_string();
    }
    file.remove();
    return reason;
}

} // namespace

SettingsStore::SettingsStore(QString folder) : folder_(std::move(folder)) {}

QString SettingsStore::DefaultFolder() {
    QString configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (QDir::isRelativePath(configuration)) {
        // It would be another in every folder that the program is started in.
        configuration = QDir::homePath() + QStringLiteral("/.config");
    }
    return configuration + QStringLiteral("/Corvantine");
}

QString SettingsStore::FileOf(const QString& application) const {
    return QDir(folder_).filePath(FileName(application));
}

SettingsStore::Application& SettingsStore::Loaded(const QString& application) {
    Application& entry = applications_[application];
    if (!entry.loaded) {
        entry.loaded = true;
        entry.stored = IniText::Parse(ReadFile(FileOf(application)).value_or(QByteArray()));
    }
    return entry;
}

QString SettingsStore::Get(const QString& application, const QString& section, const QString& key,
                           const QString& fallback) {
    const Application& entry = Loaded(application);
    if (const QString* text = entry.changes.Find(section, key)) {
        return *text;
    }
    const QString* text = entry.stored.Find(section, key);
    return text != nullptr ? *text : fallback;
}

void SettingsStore::Save(const QString& application, const QString& section, const QString& key,
                         const QString& text) {
    Application& entry = applications_[application];
    entry.changes.Put(section, key, text);
    entry.changed = true;
}

std::int32_t SettingsStore::GetInteger(const QString& application, const QString& section, const QString& key,
                                       std::int32_t fallback) {
    return ToInteger(Get(application, section, key, QString()), fallback);
}

double SettingsStore::GetReal(const QString& application, const QString& section, const QString& key,
                              double fallback) {
    return ToReal(Get(application, section, key, QString()), fallback);
}

bool SettingsStore::GetBoolean(const QString& application, const QString& section, const QString& key,
                               bool fallback) {
    return ToBoolean(Get(application, section, key, QString()), fallback);
}

QStringList SettingsStore::Flush() {
    QStringList messages;
    for (auto& [name, entry] : applications_) {
        if (entry.changed) {
            const QString message = Write(FileOf(name), entry);
            if (!message.isEmpty()) {
                messages += message;
            }
        }
    }
    return messages;
}

QString SettingsStore::Write(const QString& path, Application& application) const {
    if (!QDir().mkpath(folder_)) {
        return QStringLiteral("cannot write %1: its folder cannot be made").arg(path);
    }
    const QString lockFile = path + QStringLiteral(".lock");
    const bool isLock = !QFileInfo::exists(lockFile) || QFileInfo(lockFile).isFile(); // to read a pipe blocks
    QLockFile lock(lockFile);
    lock.setStaleLockTime(kStaleLock);
    if (!isLock || !lock.tryLock(kLockWait)) {
        return QStringLiteral("cannot lock %1").arg(path);
    }
    const auto bytes = ReadFile(path);
    if (!bytes) {
        return QStringLiteral("cannot read %1, so it is not replaced").arg(path);
    }
    // Another instance may have written since this one read: its keys stay, only our own are put.
    IniText merged = IniText::Parse(*bytes);
    merged.Merge(application.changes);
    const QString reason = ReplaceFile(path, merged.ToBytes());
    if (!reason.isEmpty()) {
        return QStringLiteral("cannot write %1: %2").arg(path, reason);
    }
    application.stored = std::move(merged);
    application.changes = IniText();
    application.loaded = true;
    application.changed = false;
    return {};
}
