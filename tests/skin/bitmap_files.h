#pragma once

#include <QByteArray>
#include <QtEndian>
#include <initializer_list>

/// Bitmap files byte by byte, sound and broken ones.
namespace bitmap {

inline void Add16(QByteArray& bytes, quint16 value) {
    value = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}
inline void Add32(QByteArray& bytes, qint64 value) {
    const quint32 little = qToLittleEndian(static_cast<quint32>(value));
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

/// File and information header; the palette is grey.
inline QByteArray Header(qint64 width, qint64 height, int bits, int compression = 0) {
    const int colours = bits <= 8 ? 1 << bits : 0;
    QByteArray bytes("BM");
    Add32(bytes, 0); // nobody reads the size of the file from it
    Add32(bytes, 0);
    Add32(bytes, 14 + 40 + 4 * colours);
    Add32(bytes, 40);
    Add32(bytes, width);
    Add32(bytes, height);
    Add16(bytes, 1);
    Add16(bytes, static_cast<quint16>(bits));
    Add32(bytes, compression);
    for (int i = 0; i < 5; ++i) {
        Add32(bytes, 0);
    }
    for (int i = 0; i < colours; ++i) {
        Add32(bytes, i * 255 / (colours - 1) * 0x010101);
    }
    return bytes;
}

/// 24 bits, one colour given as blue, green, red.
inline QByteArray Plain(int width, int height, std::initializer_list<int> bgr = {30, 20, 10}) {
    QByteArray bytes = Header(width, height, 24);
    for (int y = 0; y < std::abs(height); ++y) {
        for (int x = 0; x < width; ++x) {
            for (const int byte : bgr) {
                bytes += static_cast<char>(byte);
            }
        }
        bytes.append((4 - 3 * width % 4) % 4, '\0');
    }
    return bytes;
}

/// 8 bits uncompressed: the left half black, the right half white.
inline QByteArray Palette(int width, int height) {
    QByteArray bytes = Header(width, height, 8);
    for (int y = 0; y < height; ++y) {
        bytes += QByteArray(width / 2, '\0') + QByteArray(width - width / 2, '\xFF');
        bytes.append((4 - width % 4) % 4, '\0');
    }
    return bytes;
}

/// 8 bits run-length: the same halves.
inline QByteArray RunLength(int width, int height) {
    QByteArray bytes = Header(width, height, 8, 1);
    for (int y = 0; y < height; ++y) {
        bytes += static_cast<char>(width / 2);
        bytes += '\0';
        bytes += static_cast<char>(width - width / 2);
        bytes += '\xFF';
        bytes.append(2, '\0'); // end of the row
    }
    bytes += '\0';
    bytes += '\1';
    return bytes;
}

} // namespace bitmap
