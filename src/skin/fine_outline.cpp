#include "skin/fine_outline.h"

#include "skin/region_bands.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array kBlur{1, 4, 6, 4, 1}; ///< sixteenths: about a pixel wide
constexpr int kReach = 2;
constexpr int kWhole = 256; ///< a pixel with nothing but outline around it
// A little less than half: a pixel through whose middle a diagonal runs belongs to it on both sides of a
// step, so that the steps of the screen become even.
constexpr int kInside = 115;

/// How much of its surroundings belongs to the outline, for each pixel and for two more on every side.
class Cover {
  public:
    Cover(const QRegion& outline, QSize size)
        : width_(size.width() + 2 * kMargin), height_(size.height() + 2 * kMargin),
          cover_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {
        for (const QRect& whole : outline) {
            const QRect rect = whole & QRect(QPoint(0, 0), size);
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                std::fill_n(&At(rect.left(), y), rect.width(), kWhole);
            }
        }
        // The picture's own edge is no step: what is on it goes on beyond it.
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 1; x <= kMargin; ++x) {
                At(-x, y) = At(0, y);
                At(size.width() - 1 + x, y) = At(size.width() - 1, y);
            }
        }
        for (int y = 1; y <= kMargin; ++y) {
            std::copy_n(&At(-kMargin, 0), width_, &At(-kMargin, -y));
            std::copy_n(&At(-kMargin, size.height() - 1), width_, &At(-kMargin, size.height() - 1 + y));
        }
        Blur(1, width_, height_, width_);
        Blur(width_, height_, width_, 1);
    }
    /// Between the middles of the pixels, of which that of pixel (x, y) lies at x + 0.5, y + 0.5.
    double Between(double x, double y) const {
        const double left = std::floor(x - 0.5);
        const double top = std::floor(y - 0.5);
        const double right = x - 0.5 - left;
        const double down = y - 0.5 - top;
        const int i = static_cast<int>(left);
        const int j = static_cast<int>(top);
        return (At(i, j) * (1 - right) + At(i + 1, j) * right) * (1 - down) +
               (At(i, j + 1) * (1 - right) + At(i + 1, j + 1) * right) * down;
    }

  private:
    static constexpr int kMargin = kReach + 1;

    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y + kMargin) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x + kMargin);
    }
    int& At(int x, int y) { return cover_[Index(x, y)]; }
    int At(int x, int y) const { return cover_[Index(x, y)]; }

    /// Along lines of that length, whose pixels lie step apart and whose starts lie next apart.
    void Blur(int step, int length, int lines, int next) {
        std::vector<int> line(static_cast<std::size_t>(length));
        for (int k = 0; k < lines; ++k) {
            int* pixels = cover_.data() + static_cast<std::ptrdiff_t>(k) * next;
            for (int i = 0; i < length; ++i) {
                line[static_cast<std::size_t>(i)] = pixels[static_cast<std::ptrdiff_t>(i) * step];
            }
            for (int i = kReach; i < length - kReach; ++i) {
                int sum = 0;
                for (int j = -kReach; j <= kReach; ++j) {
                    sum +=
                        kBlur[static_cast<std::size_t>(j + kReach)] * line[static_cast<std::size_t>(i + j)];
                }
                pixels[static_cast<std::ptrdiff_t>(i) * step] = sum / 16;
            }
        }
    }

    int width_, height_;
    std::vector<int> cover_;
};

} // namespace

QRegion FineOutline(const QRegion& outline, QSize size, double ratio) {
    const QRegion inside = outline & QRect(QPoint(0, 0), size);
    if (inside.isEmpty()) {
        return {};
    }
    const Cover cover(inside, size);
    const QSize device = (QSizeF(size) * ratio).toSize();
    RegionBands bands;
    std::vector<Span> spans;
    for (int y = 0; y < device.height(); ++y) {
        spans.clear();
        int start = -1;
        for (int x = 0; x <= device.width(); ++x) {
            const bool in =
                x < device.width() && cover.Between((x + 0.5) / ratio, (y + 0.5) / ratio) >= kInside;
            if (in && start < 0) {
                start = x;
            } else if (!in && start >= 0) {
                spans.push_back({start, x});
                start = -1;
            }
        }
        bands.Add(y, y + 1, spans);
    }
    return bands.Region();
}

QRegion Covering(const QRegion& device, double ratio) {
    QRegion covering;
    for (const QRect& rect : device) {
        const QPoint from(static_cast<int>(std::floor(rect.left() / ratio)),
                          static_cast<int>(std::floor(rect.top() / ratio)));
        const QPoint to(static_cast<int>(std::ceil((rect.right() + 1) / ratio)) - 1,
                        static_cast<int>(std::ceil((rect.bottom() + 1) / ratio)) - 1);
        covering |= QRect(from, to);
    }
    return covering;
}
