#include "about/update_link.h"

#include <QFile>
#include <QFileInfo>

namespace about {

QString UpdateLink(const QString& path) {
    constexpr qint64 kMostBytes = 64 * 1024; // an address of any length that a browser takes
    // A pipe or a device in the file's place would block the panel or never end.
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray bytes = file.read(kMostBytes + 1);
    if (bytes.size() > kMostBytes || file.error() != QFileDevice::NoError) {
        return {};
    }
    const QString text = QString::fromUtf8(bytes);
    const auto at = text.indexOf(QStringLiteral("http"));
    return at < 0 ? QString() : text.mid(at);
}

} // namespace about
