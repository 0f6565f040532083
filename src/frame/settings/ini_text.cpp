#include "frame/settings/ini_text.h"

#include <QStringDecoder>
#include <algorithm>

namespace {

bool IsPlainNameByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c == '-' || c == '.' || c == ':';
}

/// Names of groups and keys: a percent sign and two hexadecimal digits for every byte that is not plain.
QByteArray NameBytes(const QString& name) {
    static const char digits[] = "0123456789ABCDEF";
    QByteArray bytes;
    for (const char c : name.toUtf8()) {
        if (IsPlainNameByte(c)) {
            bytes += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            bytes += '%';
            bytes += digits[byte >> 4];
            bytes += digits[byte & 15];
        }
    }
    return bytes;
}

QString NameFrom(const QByteArray& bytes) {
    // Stateless, so that a character that is cut off at the end becomes a mark as well.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    return decoder(QByteArray::fromPercentEncoding(bytes));
}

int HexDigit(QChar c) {
    const auto u = c.unicode();
    if (u >= '0' && u <= '9') {
        return u - '0';
    }
    if (u >= 'a' && u <= 'f') {
        return u - 'a' + 10;
    }
    return u >= 'A' && u <= 'F' ? u - 'A' + 10 : -1;
}

bool NeedsEscape(QChar c) {
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0) || c.isSurrogate() ||
           c.unicode() >= 0xFFFE || c.unicode() == 0xFEFF;
}

QByteArray TextBytes(const QString& text) {
    const bool edges = !text.isEmpty() && (text.front().isSpace() || text.back().isSpace());
    const bool marks = std::any_of(text.begin(), text.end(), [](QChar c) {
        return NeedsEscape(c) || QStringLiteral("\"\\,;=").contains(c);
    });
    if (!edges && !marks && !text.startsWith(QLatin1Char('@'))) {
        return text.toUtf8();
    }
    QString quoted = QStringLiteral("\"");
    if (text.startsWith(QLatin1Char('@'))) {
        quoted += QLatin1Char('@'); // a single one would announce a value that is no text
    }
    bool afterHex = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\')) {
            quoted += QLatin1Char('\\');
            quoted += c;
            afterHex = false;
        } else if (NeedsEscape(c) || (afterHex && HexDigit(c) >= 0)) {
            quoted += QStringLiteral("\\x") + QString::number(c.unicode(), 16);
            afterHex = true;
        } else {
            quoted += c;
            afterHex = false;
        }
    }
    return (quoted + QLatin1Char('"')).toUtf8();
}

/// One escape; i stands behind the backslash and is left behind the escape.
QChar Unescape(const QString& raw, qsizetype& i) {
    const QChar c = raw[i++];
    switch (c.unicode()) {
    case 'n':
        return QLatin1Char('\n');
    case 'r':
        return QLatin1Char('\r');
    case 't':
        return QLatin1Char('\t');
    case '0':
        return QChar(0);
    case 'x': {
        int value = 0;
        while (i < raw.size() && HexDigit(raw[i]) >= 0) {
            value = ((value << 4) | HexDigit(raw[i++])) & 0xFFFF;
        }
        return QChar(value);
    }
    default:
        return c;
    }
}

QString TextFrom(const QByteArray& bytes) {
    const QString raw = QString::fromUtf8(bytes.trimmed());
    QString text;
    for (qsizetype i = 0; i < raw.size();) {
        const QChar c = raw[i++];
        if (c == QLatin1Char('\\') && i < raw.size()) {
            text += Unescape(raw, i);
        } else if (c != QLatin1Char('"')) {
            text += c;
        }
    }
    if (text.startsWith(QLatin1String("@@"))) {
        text.remove(0, 1);
    }
    return text;
}

} // namespace

IniText IniText::Parse(const QByteArray& bytes) {
    IniText ini;
    QString group;
    bool known = true;
    const QByteArray body = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
    for (const QByteArray& rawLine : body.split('\n')) {
        const QByteArray line = rawLine.trimmed();
        if (line.startsWith(';')) {
            continue;
        }
        if (line.startsWith('[')) {
            const auto end = line.lastIndexOf(']');
            known = end > 0;
            if (known) {
                group = NameFrom(line.mid(1, end - 1).trimmed());
            }
            continue;
        }
        const auto equals = line.indexOf('=');
        if (known && equals > 0) {
            const QString key = NameFrom(line.left(equals).trimmed());
            if (!key.isEmpty()) { // as it could not be written
                ini.Put(group, key, TextFrom(line.mid(equals + 1)));
            }
        }
    }
    return ini;
}

QByteArray IniText::ToBytes() const {
    QByteArray bytes;
    for (const Group& group : groups_) {
        if (!bytes.isEmpty()) {
            bytes += '\n';
        }
        bytes += '[' + NameBytes(group.name) + "]\n";
        for (const auto& [key, text] : group.entries) {
            bytes += NameBytes(key) + '=' + TextBytes(text) + '\n';
        }
    }
    return bytes;
}

const QString* IniText::Find(const QString& group, const QString& key) const {
    const auto g = index_.constFind(group);
    if (g == index_.constEnd()) {
        return nullptr;
    }
    const Group& found = groups_[*g];
    const auto entry = found.index.constFind(key);
    return entry == found.index.constEnd() ? nullptr : &found.entries[*entry].second;
}

void IniText::Put(const QString& group, const QString& key, const QString& text) {
    if (!index_.contains(group)) {
        index_.insert(group, groups_.size());
        groups_.push_back({group, {}, {}});
    }
    Group& g = groups_[index_.value(group)];
    const auto entry = g.index.constFind(key);
    if (entry != g.index.constEnd()) {
        g.entries[*entry].second = text;
    } else {
        g.index.insert(key, g.entries.size());
        g.entries.emplace_back(key, text);
    }
}

void IniText::Merge(const IniText& other) {
    for (const Group& group : other.groups_) {
        for (const auto& [key, text] : group.entries) {
            Put(group.name, key, text);
        }
    }
}
