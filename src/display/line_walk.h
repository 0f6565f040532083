#pragma once

#include "display/pixel_map.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

/// The pixels of a line by their number along its longer axis: at each, the nearer pixel of the other axis,
/// halves away from the start.
class LineWalk {
  public:
    explicit LineWalk(const PixelLine& line)
        : from_(line.from), wayX_(std::int64_t{line.to.x} - line.from.x),
          wayY_(std::int64_t{line.to.y} - line.from.y) {}

    bool wide() const { return std::abs(wayX_) >= std::abs(wayY_); } ///< the longer axis is x
    bool straight() const { return wayX_ == 0 || wayY_ == 0; }
    std::int64_t length() const { return std::max(std::abs(wayX_), std::abs(wayY_)); }

    PixelPoint At(std::int64_t t) const {
        return {from_.x + static_cast<int>(Part(wayX_, t)), from_.y + static_cast<int>(Part(wayY_, t))};
    }

    struct Steps {
        std::int64_t first;
        std::int64_t last;
    };
    /// Where the longer axis lies within low..high, before and beyond the line's ends, too.
    Steps StepsInside(int low, int high) const {
        const std::int64_t start = wide() ? from_.x : from_.y;
        const bool up = (wide() ? wayX_ : wayY_) >= 0;
        return up ? Steps{low - start, high - start} : Steps{start - high, start - low};
    }

  private:
    std::int64_t Part(std::int64_t way, std::int64_t t) const {
        const std::int64_t whole = std::max<std::int64_t>(1, length());
        const std::int64_t part = (2 * t * std::abs(way) + whole) / (2 * whole);
        return way < 0 ? -part : part;
    }

    PixelPoint from_;
    std::int64_t wayX_;
    std::int64_t wayY_;
};
