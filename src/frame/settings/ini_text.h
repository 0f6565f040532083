#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <utility>
#include <vector>

/// The keys and texts of an INI file, in the order in which they stand there.
class IniText {
  public:
    /// Reads what can be read: a line that is neither a group nor a key is left out, and so are the keys
    /// behind a damaged group line, for nobody knows whose they are. Of two equal keys the later counts.
    static IniText Parse(const QByteArray& bytes);
    /// A file that Parse reads back to the same keys and texts, whatever characters they hold.
    QByteArray ToBytes() const;

    /// Null if there is none.
    const QString* Find(const QString& group, const QString& key) const;
    void Put(const QString& group, const QString& key, const QString& text);
    /// Puts every key of other.
    void Merge(const IniText& other);

  private:
    struct Group {
        QString name;
        std::vector<std::pair<QString, QString>> entries;
        QHash<QString, std::size_t> index;
    };
    std::vector<Group> groups_;
    QHash<QString, std::size_t> index_;
};
