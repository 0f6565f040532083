#include "endurance/readers/readers.h"

#include "about/update_link.h"
#include "endurance/interruption.h"
#include "frame/settings/ini_text.h"
#include "skin/fine_skin.h"
#include "skin/region_data.h"
#include "skin/skin_bitmap.h"
#include "stack_file.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QTemporaryDir>
#include <memory>
#include <sstream>

namespace {

QByteArray FileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size()) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

void Demand(bool holds, const char* what) {
    if (!holds) {
        qFatal("%s", what);
    }
}

QImage Picture(QImage::Format format) {
    QImage picture(32, 24, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixel(x, y, qRgb(8 * x, 10 * y, 128));
        }
    }
    return picture.convertToFormat(format);
}

QByteArray Encoded(const QImage& picture, const char* format, const QString& skin) {
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QImageWriter writer(&bytes, format);
    if (!skin.isEmpty()) {
        writer.setText(QStringLiteral("Skin"), skin);
    }
    writer.write(picture);
    return bytes.data();
}

/// A folder of its own, as long as the program runs.
std::shared_ptr<QTemporaryDir> Folder() {
    return std::make_shared<QTemporaryDir>(FolderInMemory());
}

Reader Skins() {
    QByteArrayList sound;
    for (const auto format :
         {QImage::Format_RGB32, QImage::Format_RGB888, QImage::Format_Indexed8, QImage::Format_Mono}) {
        sound.append(Encoded(Picture(format), "BMP", {}));
    }
    return {"skin", sound, [](const QByteArray& bytes) { DecodeSkinBitmap(bytes); }};
}

/// Of a sound bitmap: the fine picture alone is damaged.
Reader FineSkins() {
    const auto folder = Folder();
    const QString bitmap = folder->filePath(QStringLiteral("face.bmp"));
    const QByteArray coarse = Encoded(Picture(QImage::Format_RGB32), "BMP", {});
    Write(bitmap, coarse);
    QDir(folder->path()).mkdir(QStringLiteral("fine"));
    const QImage fine = Picture(QImage::Format_RGB32).scaled(64, 48);
    const auto stamp = QCryptographicHash::hash(coarse, QCryptographicHash::Sha1).toHex();
    return {"fine_skin",
            {Encoded(fine, "JPG", QString::fromLatin1(stamp))},
            [folder, bitmap](const QByteArray& bytes) {
                Write(FineSkinFile(bitmap), bytes);
                LoadFineSkin(bitmap);
            }};
}

Reader Regions() {
    const QRegion round(QRect(0, 0, 90, 60), QRegion::Ellipse);
    return {"region",
            {RegionToData(round), RegionToData(round - QRegion(20, 20, 9, 9)), RegionToData({})},
            [](const QByteArray& bytes) {
                if (const auto region = RegionFromData(bytes)) {
                    Demand(RegionFromData(RegionToData(*region)) == region, "a region does not come back");
                }
            }};
}

Reader StackFiles() {
    QByteArrayList sound;
    const QDir examples(QStringLiteral(CORVANTINE_STACK_EXAMPLES));
    for (const QString& name : examples.entryList(QDir::Files, QDir::Name)) {
        sound.append(FileBytes(examples.filePath(name)));
    }
    return {"stack", sound, [](const QByteArray& bytes) {
                std::istringstream text(bytes.toStdString());
                sim::ParseStack(text, "damaged.stack", "/nowhere/");
            }};
}

Reader Links() {
    const auto folder = Folder();
    const QString file = folder->filePath(QStringLiteral("update.url"));
    return {"link", {FileBytes(QStringLiteral(CORVANTINE_LINK))}, [file, folder](const QByteArray& bytes) {
                Write(file, bytes);
                about::UpdateLink(file);
            }};
}

Reader Settings() {
    return {"settings",
            {"[Main]\r\nTimeBase=12\nLevel=-3.25e-4\n; a remark\n[Tab]\nName=\"a;b\"\n"},
            [](const QByteArray& bytes) {
                const QByteArray kept = IniText::Parse(bytes).ToBytes();
                Demand(IniText::Parse(kept).ToBytes() == kept, "settings that were read do not come back");
            }};
}

} // namespace

std::vector<Reader> AllReaders() {
    return {Skins(), FineSkins(), Regions(), StackFiles(), Links(), Settings()};
}
