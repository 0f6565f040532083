#include "skin/region_data.h"

#include "skin/region_bands.h"

#include <QtEndian>
#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr int kHeaderBytes = 32;
constexpr int kRectBytes = 16;
constexpr std::uint32_t kRectType = 1;
constexpr std::int32_t kFarthest = 1 << 27; ///< the published bound of a region's coordinates
constexpr std::size_t kMostTangled = 2048;  ///< rectangles that may overlap or lie out of order

struct Box {
    std::int32_t left, top, right, bottom;
};

void Append(QByteArray& data, std::int32_t value) {
    char bytes[sizeof value];
    qToLittleEndian(value, bytes);
    data.append(bytes, sizeof bytes);
}

void Append(QByteArray& data, const QRect& rect) {
    Append(data, rect.left());
    Append(data, rect.top());
    Append(data, rect.left() + rect.width());
    Append(data, rect.top() + rect.height());
}

template <class T> T At(const QByteArray& data, qsizetype offset) {
    return qFromLittleEndian<T>(data.constData() + offset);
}

bool Sound(const Box& box) {
    const auto [low, high] = std::minmax({box.left, box.top, box.right, box.bottom});
    return low >= -kFarthest && high <= kFarthest && box.left <= box.right && box.top <= box.bottom;
}

/// True when the boxes stand as a region stores them: in bands from the top, in each from the left.
bool InBands(const std::vector<Box>& boxes) {
    for (std::size_t i = 1; i < boxes.size(); ++i) {
        const Box& a = boxes[i - 1];
        const Box& b = boxes[i];
        const bool sameBand = a.top == b.top && a.bottom == b.bottom && a.right < b.left;
        if (!sameBand && b.top < a.bottom) {
            return false;
        }
    }
    return true;
}

QRegion FromBands(const std::vector<Box>& boxes) {
    RegionBands bands;
    std::vector<Span> spans;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        spans.push_back({boxes[i].left, boxes[i].right});
        if (i + 1 == boxes.size() || boxes[i + 1].top != boxes[i].top) {
            bands.Add(boxes[i].top, boxes[i].bottom, spans);
            spans.clear();
        }
    }
    return bands.Region();
}

/// The union of boxes in any order, by a sweep over their top and bottom edges.
QRegion FromTangle(std::vector<Box> boxes) {
    std::sort(boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.left < b.left; });
    std::vector<std::int32_t> edges;
    for (const Box& box : boxes) {
        edges.insert(edges.end(), {box.top, box.bottom});
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    RegionBands bands;
    std::vector<Span> spans;
    for (std::size_t i = 1; i < edges.size(); ++i) {
        spans.clear();
        for (const Box& box : boxes) {
            if (box.top > edges[i - 1] || box.bottom < edges[i]) {
                continue;
            }
            if (spans.empty() || spans.back().right < box.left) {
                spans.push_back({box.left, box.right});
            } else {
                spans.back().right = std::max(spans.back().right, box.right);
            }
        }
        bands.Add(edges[i - 1], edges[i], spans);
    }
    return bands.Region();
}

} // namespace

QByteArray RegionToData(const QRegion& region) {
    QByteArray data;
    data.reserve(kHeaderBytes + kRectBytes * region.rectCount());
    Append(data, kHeaderBytes);
    Append(data, kRectType);
    Append(data, region.rectCount());
    Append(data, kRectBytes * region.rectCount());
    Append(data, region.boundingRect());
    for (const QRect& rect : region) {
        Append(data, rect);
    }
    return data;
}

std::optional<QRegion> RegionFromData(const QByteArray& data) {
    if (data.size() < kHeaderBytes || At<std::uint32_t>(data, 0) != kHeaderBytes ||
        At<std::uint32_t>(data, 4) != kRectType) {
        return std::nullopt;
    }
    const std::int64_t count = At<std::uint32_t>(data, 8);
    const std::int64_t bytes = At<std::uint32_t>(data, 12);
    if (bytes != count * kRectBytes || data.size() != kHeaderBytes + bytes) {
        return std::nullopt;
    }
    std::vector<Box> boxes;
    boxes.reserve(static_cast<std::size_t>(count));
    for (qsizetype at = kHeaderBytes; at < data.size(); at += kRectBytes) {
        const Box box{At<std::int32_t>(data, at), At<std::int32_t>(data, at + 4),
                      At<std::int32_t>(data, at + 8), At<std::int32_t>(data, at + 12)};
        if (!Sound(box)) {
            return std::nullopt;
        }
        if (box.left < box.right && box.top < box.bottom) {
            boxes.push_back(box);
        }
    }
    if (InBands(boxes)) {
        return FromBands(boxes);
    }
    if (boxes.size() > kMostTangled) {
        return std::nullopt;
    }
    return FromTangle(std::move(boxes));
}
