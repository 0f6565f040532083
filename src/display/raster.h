#pragma once

#include <QImage>
#include <cstdint>
#include <memory>

/// A 32-bit picture whose rows start on cache lines and whose row length is an odd number of them, so that
/// the pixels of one column do not compete for a few places in the cache.
class Raster {
  public:
    static constexpr int kMaxSide = 16384;
    static constexpr int kLinePixels = 16; ///< pixels of a cache line

    /// Sides are held within 1..kMaxSide. The content is not set.
    Raster(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    int stride() const { return stride_; } ///< pixels from row to row
    std::uint32_t* row(int y) { return pixels_.get() + static_cast<std::ptrdiff_t>(y) * stride_; }

    void Fill(std::uint32_t pixel);
    /// The pixels as they stand, not copied: valid as long as the raster.
    const QImage& Image() const { return image_; }

  private:
    struct Free {
        void operator()(std::uint32_t* pixels) const;
    };
    int width_;
    int height_;
    int stride_;
    std::unique_ptr<std::uint32_t[], Free> pixels_;
    QImage image_;
};
