#pragma once

#include <QImage>
#include <QString>
#include <cstdint>

inline constexpr std::int64_t kMostSkinPixels = std::int64_t{4096} * 4096;
inline constexpr int kLeastSkinSide = 16; ///< below it a bitmap is no picture of a face

/// The bitmap of a file, or a null image when it is no sound one: unreadable, cut off, smaller or larger than
/// any face. The header is believed only as far as the file bears it out, before anything is decoded.
QImage LoadSkinBitmap(const QString& file);
/// The same for the bytes of a file.
QImage DecodeSkinBitmap(const QByteArray& bytes);
