#include "skin/fine_skin.h"

#include "skin/skin_bitmap.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

namespace {

const QString kStamp = QStringLiteral("Skin"); ///< key of the text that names the bitmap

QString Sha1OfFile(const QString& file) {
    QFile source(file);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    if (!source.open(QIODevice::ReadOnly) || !hash.addData(&source)) {
        return {};
    }
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace

QString FineSkinFile(const QString& skinFile) {
    const QFileInfo info(skinFile);
    return info.dir().filePath(QStringLiteral("fine/%1.jpg").arg(info.completeBaseName()));
}

QImage LoadFineSkin(const QString& skinFile) {
    // A pipe or a device in the place of either, which may come after the start, would block the panel.
    if (!QFileInfo(FineSkinFile(skinFile)).isFile() || !QFileInfo(skinFile).isFile()) {
        return {};
    }
    QImageReader fine(FineSkinFile(skinFile), "JPG");
    const QSize size = fine.size();
    const QSize coarse = QImageReader(skinFile, "BMP").size();
    if (!size.isValid() || coarse.isEmpty() || qint64(size.width()) * size.height() > kMostSkinPixels ||
        size.width() % coarse.width() != 0 || size != coarse * (size.width() / coarse.width()) ||
        fine.text(kStamp) != Sha1OfFile(skinFile)) {
        return {};
    }
    return fine.read();
}

FaceDrawing FineSkinDrawing(const QString& skinFile, const QPixmap& bitmap) {
    if (!QFileInfo(FineSkinFile(skinFile)).isFile()) {
        return {};
    }
    return [skinFile, bitmap](QPainter& painter, const QRectF& place) {
        const QImage fine = LoadFineSkin(skinFile);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (fine.isNull()) {
            painter.drawPixmap(place, bitmap, QRectF(bitmap.rect()));
        } else {
            painter.drawImage(place, fine);
        }
    };
}
