#include "skin/skin_bitmap.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cstdlib>
#include <optional>

namespace {

constexpr int kFileHeader = 14;
constexpr std::uint32_t kCoreHeader = 12;
constexpr std::uint32_t kInfoHeader = 40;
constexpr qint64 kMostFileBytes = kMostSkinPixels * 4 + 4096;
enum Compression : std::uint32_t { kRgb = 0, kRunLength8 = 1, kRunLength4 = 2, kBitFields = 3 };

struct Header {
    std::int64_t offset; ///< of the pixels in the file
    std::int64_t width;
    std::int64_t height;
    int bits;
    std::uint32_t compression;
};

template <class T> T HeaderField(const QByteArray& bytes, int offset) {
    return qFromLittleEndian<T>(bytes.constData() + offset);
}

/// Bytes that the colour masks and the palette take behind the information header.
std::int64_t ColourBytes(const QByteArray& bytes, std::uint32_t headerSize, const Header& header) {
    constexpr std::int64_t kMasks = 12;
    const std::int64_t all = header.bits <= 8 ? std::int64_t{1} << header.bits : 0;
    if (headerSize == kCoreHeader) {
        return 3 * all;
    }
    const auto used = HeaderField<std::uint32_t>(bytes, kFileHeader + 32);
    const bool masks = headerSize == kInfoHeader && header.compression == kBitFields;
    return 4 * (used == 0 ? all : std::int64_t{used}) + (masks ? kMasks : 0);
}

std::optional<Header> ReadHeader(const QByteArray& bytes) {
    if (bytes.size() < kFileHeader + static_cast<int>(kInfoHeader) || !bytes.startsWith("BM")) {
        return std::nullopt;
    }
    Header header{HeaderField<std::uint32_t>(bytes, 10), 0, 0, 0, kRgb};
    const auto headerSize = HeaderField<std::uint32_t>(bytes, kFileHeader);
    if (headerSize == kCoreHeader) {
        header.width = HeaderField<std::uint16_t>(bytes, kFileHeader + 4);
        header.height = HeaderField<std::uint16_t>(bytes, kFileHeader + 6);
        header.bits = HeaderField<std::uint16_t>(bytes, kFileHeader + 10);
    } else if (headerSize >= kInfoHeader) {
        header.width = HeaderField<std::int32_t>(bytes, kFileHeader + 4);
        header.height =
            std::llabs(HeaderField<std::int32_t>(bytes, kFileHeader + 8)); // negative: top row first
        header.bits = HeaderField<std::uint16_t>(bytes, kFileHeader + 14);
        header.compression = HeaderField<std::uint32_t>(bytes, kFileHeader + 16);
    } else {
        return std::nullopt;
    }
    const bool sized = header.width >= kLeastSkinSide && header.height >= kLeastSkinSide &&
                       header.width <= kMostSkinPixels && header.height <= kMostSkinPixels &&
                       header.width * header.height <= kMostSkinPixels;
    if (!sized || header.bits > 32) {
        return std::nullopt;
    }
    const std::int64_t pixelsFrom =
        std::int64_t{kFileHeader} + headerSize + ColourBytes(bytes, headerSize, header);
    return header.offset >= pixelsFrom && header.offset <= bytes.size() ? std::optional(header)
                                                                        : std::nullopt;
}

/// True when a run-length stream paints every pixel, leaves the picture nowhere and ends by its own mark.
/// What it skipped would show whatever the memory held.
bool RunsAreSound(const QByteArray& bytes, const Header& header) {
    const int pixelsPerByte = header.compression == kRunLength4 ? 2 : 1;
    std::int64_t x = 0;
    std::int64_t rows = 0;
    qsizetype at = header.offset;
    auto next = [&] { return static_cast<std::uint8_t>(bytes[at++]); };
    while (at + 2 <= bytes.size()) {
        const int count = next();
        const int value = next();
        const bool ends = count == 0 && value <= 1; // of the row, of the picture
        if (count > 0) {
            x += count;
        } else if (value > 2) {
            x += value;
            const int literal = (value + pixelsPerByte - 1) / pixelsPerByte;
            at += literal + literal % 2; // padded to a word
        } else if (!ends) {
            return false; // a jump
        }
        if (x > header.width || (x > 0 && rows == header.height)) {
            return false;
        }
        if (ends) {
            const bool full = x == header.width;
            rows += full ? 1 : 0;
            if (value == 1) {
                return (full || x == 0) && rows == header.height;
            }
            if (!full) {
                return false;
            }
            x = 0;
        }
    }
    return false;
}

bool PixelsAreThere(const QByteArray& bytes, const Header& header) {
    switch (header.compression) {
    case kRgb:
    case kBitFields: {
        const std::int64_t row = (header.width * header.bits + 31) / 32 * 4;
        return bytes.size() - header.offset >= row * header.height;
    }
    case kRunLength8:
    case kRunLength4:
        return RunsAreSound(bytes, header);
    default:
        return false;
    }
}

} // namespace

QImage DecodeSkinBitmap(const QByteArray& bytes) {
    const std::optional<Header> header = ReadHeader(bytes);
    if (!header || !PixelsAreThere(bytes, *header)) {
        return {};
    }
    const QImage image = QImage::fromData(bytes, "BMP");
    const bool asTold = image.width() == header->width && image.height() == header->height;
    return asTold ? image.convertToFormat(QImage::Format_RGB32) : QImage();
}

QImage LoadSkinBitmap(const QString& file) {
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly) || source.size() > kMostFileBytes) {
        return {};
    }
    return DecodeSkinBitmap(source.read(source.size())); // a buffer of that size is made
}
