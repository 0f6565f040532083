#pragma once

#include <QByteArray>
#include <QRegion>
#include <optional>

/// The published region structure, byte for byte: a header of 32 bytes (its size, type 1, the count of
/// rectangles, their bytes, the bounding rectangle) and the rectangles, all in 32-bit little-endian
/// integers, each rectangle as left, top, right, bottom with right and bottom excluded.
QByteArray RegionToData(const QRegion& region);

/// The region of such bytes, or nothing when they lie: a count or size that does not fit the rest, a
/// rectangle that ends before it begins or lies beyond any screen, or a tangle of rectangles that would grow
/// without bound. The bounding rectangle is not believed but taken from the rectangles.
std::optional<QRegion> RegionFromData(const QByteArray& data);
