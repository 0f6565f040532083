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

std::vector<TextMask::Dot> CoveredPixels(const QImage& picture) {
    std::vector<TextMask::Dot> dots;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (const int cover = qAlpha(picture.pixel(x, y)); cover != 0) {
                dots.push_back({static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                                static_cast<std::uint8_t>(cover)});
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
    const QSize size(std::clamp(static_cast<int>(std::ceil(width)) + 2, 1, kLongest),
                     std::max(1, static_cast<int>(lineHeight_)));
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio_);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font_);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(0, metrics.ascent()), glyphs);
    painter.end();
    return {text, width, CoveredPixels(picture)};
}
