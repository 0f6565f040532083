#include "display/text_masks.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

/// What is drawn for a text: the control character 26 stands for an arrow to the right.
QString Glyphs(const QString& text) {
    QString glyphs = text;
    glyphs.replace(QChar(26), QChar(0x2192));
    return glyphs;
}

/// The pixels that a picture covers, counted from the given one of them.
std::vector<TextMask::Dot> CoveredPixels(const QImage& picture, QPoint origin) {
    std::vector<TextMask::Dot> dots;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (const int cover = qAlpha(picture.pixel(x, y)); cover != 0) {
                dots.push_back({static_cast<std::int16_t>(x - origin.x()),
                                static_cast<std::int16_t>(y - origin.y()), static_cast<std::uint8_t>(cover)});
            }
        }
    }
    return dots;
}

} // namespace

void TextMasks::SetFont(const QFont& font) {
    font_ = font;
    // Coverage has no colour, so it cannot tell the parts of a pixel.
    font_.setStyleStrategy(QFont::NoSubpixelAntialias);
    lineHeight_ = std::ceil(QFontMetricsF(font_).height() * ratio_);
    kept_.fill({});
}

const TextMask& TextMasks::For(const QString& text) {
    const auto found =
        std::find_if(kept_.begin(), kept_.end(), [&](const TextMask& mask) { return mask.text == text; });
    if (found != kept_.end()) {
        return *found;
    }
    TextMask& place = kept_[oldest_];
    oldest_ = (oldest_ + 1) % kKept;
    place = Make(text);
    return place;
}

TextMask TextMasks::Make(const QString& text) const {
    constexpr int kLongest = 4096; // pixels; no text of a plot comes near it
    const QString glyphs = Glyphs(text);
    const QFontMetricsF metrics(font_);
    const double width = metrics.horizontalAdvance(glyphs) * ratio_;
    // Ink may reach beyond the advance and the line: a letter that is slanted, or that another font lends.
    // The metrics do not know how far a slant leans.
    const int lean = static_cast<int>(lineHeight_ / 2) + 2;
    const QRectF ink = metrics.boundingRect(glyphs).translated(0, metrics.ascent());
    const QRect covered = QRectF(ink.topLeft() * ratio_, ink.size() * ratio_)
                              .toAlignedRect()
                              .adjusted(-lean, -lean, lean, lean)
                              .intersected(QRect(-kLongest / 2, -kLongest / 2, 3 * kLongest / 2, kLongest));
    if (covered.isEmpty()) {
        return {text, width, {}};
    }
    QImage picture(covered.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font_);
    painter.setPen(Qt::white);
    painter.translate(-covered.topLeft());
    painter.scale(ratio_, ratio_);
    painter.drawText(QPointF(0, metrics.ascent()), glyphs);
    painter.end();
    return {text, width, CoveredPixels(picture, -covered.topLeft())};
}
