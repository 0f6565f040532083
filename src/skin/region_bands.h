#pragma once

#include <QRect>
#include <QRegion>
#include <vector>

/// A run of columns, right excluded.
struct Span {
    int left;
    int right;
    bool operator==(const Span&) const = default;
};

/// Collects a region from the top down, band by band. A band that continues the one above with the same
/// runs grows it, so the rectangles come out in the one form that the toolkit compares and stores.
class RegionBands {
  public:
    /// top is not above the bottom of the last band; spans run from left to right and do not touch.
    void Add(int top, int bottom, const std::vector<Span>& spans) {
        const bool continues = bottom_ == top && spans == spans_;
        if (continues) {
            for (std::size_t i = rects_.size() - spans_.size(); i < rects_.size(); ++i) {
                rects_[i].setBottom(bottom - 1);
            }
        } else {
            for (const Span& span : spans) {
                rects_.emplace_back(span.left, top, span.right - span.left, bottom - top);
            }
            spans_ = spans;
        }
        bottom_ = bottom;
    }
    std::size_t Count() const { return rects_.size(); }
    QRegion Region() const {
        QRegion region;
        region.setRects(rects_.data(), static_cast<int>(rects_.size()));
        return region;
    }

  private:
    std::vector<QRect> rects_;
    std::vector<Span> spans_;
    int bottom_ = 0;
};
