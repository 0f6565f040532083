#include "display/raster.h"

#include "display/quad.h"

#include <algorithm>
#include <new>

namespace {

constexpr std::align_val_t kAlignment{64};

int StrideFor(int width) {
    const int lines = (width + Raster::kLinePixels - 1) / Raster::kLinePixels;
    return (lines | 1) * Raster::kLinePixels;
}

std::uint32_t* Allocate(int stride, int height) {
    const std::size_t count = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
    return static_cast<std::uint32_t*>(operator new[](count * sizeof(std::uint32_t), kAlignment));
}

} // namespace

void Raster::Free::operator()(std::uint32_t* pixels) const {
    operator delete[](pixels, kAlignment);
}

Raster::Raster(int width, int height)
    : width_(std::clamp(width, 1, kMaxSide)), height_(std::clamp(height, 1, kMaxSide)),
      stride_(StrideFor(width_)), pixels_(Allocate(stride_, height_)),
      image_(reinterpret_cast<const uchar*>(pixels_.get()), width_, height_,
             static_cast<qsizetype>(stride_) * 4, QImage::Format_RGB32) {}

void Raster::Fill(std::uint32_t pixel) {
    // Rows are whole cache lines; a compiler that optimises for size of code leaves std::fill a pixel a step.
    const Quad four{pixel, pixel, pixel, pixel};
    auto* at = reinterpret_cast<Quad*>(pixels_.get());
    auto* const end = at + static_cast<std::ptrdiff_t>(stride_) * height_ / 4;
    for (; at != end; at += 4) {
        at[0] = four;
        at[1] = four;
        at[2] = four;
        at[3] = four;
    }
}
