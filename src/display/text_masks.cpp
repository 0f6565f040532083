#include "display/text_masks.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kLongest = 4096; // pixels; no text of a plot comes near it

/// What is drawn for a text: the control character 26 stands for an arrow to the right.
QString Glyphs(const QString& text) {
    QString glyphs = text;
    glyphs.replace(QChar(26), QChar(0x2192));
    return glyphs;
}

/// The pixels that a picture covers, counted from the given one of them.
std::vector<TextMask::Dot> CoveredPixels(const QImage& picture, QPoint origin) {
    std::vector<TextMask::Dot> dots;
    const int width = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < width; ++x) {
            if (const int cover = qAlpha(row[x]); cover != 0) {
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
    letters_.fill({});
}

bool TextMasks::IsPlain(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar letter) {
        return letter.unicode() >= kFirstLetter && letter.unicode() <= kLastLetter;
    });
}

const TextMask& TextMasks::For(const QString& text) {
    const auto found =
        std::find_if(kept_.begin(), kept_.end(), [&](const TextMask& mask) { return mask.text == text; });
    if (found != kept_.end()) {
        return *found;
    }
    TextMask& mask = kept_[oldest_];
    oldest_ = (oldest_ + 1) % kKept;
    mask.text = text;
    mask.dots.clear();
    if (IsPlain(text)) {
        PutTogether(mask);
    } else {
        LayOut(mask);
    }
    return mask;
}

void TextMasks::PutTogether(TextMask& mask) {
    mask.width = 0;
    for (const QChar letter : mask.text) {
        const TextMask& part = Letter(letter);
        if (mask.width <= kLongest) {
            const int left = static_cast<int>(mask.width);
            for (const TextMask::Dot& dot : part.dots) {
                mask.dots.push_back({static_cast<std::int16_t>(left + dot.x), dot.y, dot.cover});
            }
        }
        mask.width += part.width;
    }
}

const TextMask& TextMasks::Letter(QChar letter) {
    TextMask& mask = letters_[letter.unicode() - kFirstLetter];
    if (mask.text.isEmpty()) {
        mask.text = letter;
        LayOut(mask);
        mask.width = std::round(mask.width);
    }
    return mask;
}

void TextMasks::LayOut(TextMask& mask) const {
    const QString glyphs = Glyphs(mask.text);
    const QFontMetricsF metrics(font_);
    mask.width = metrics.horizontalAdvance(glyphs) * ratio_;
    // Ink may reach beyond the advance and the line: a letter that is slanted, or that another font lends.
    // The metrics do not know how far a slant leans.
    const int lean = static_cast<int>(lineHeight_ / 2) + 2;
    const QRectF ink = metrics.boundingRect(glyphs).translated(0, metrics.ascent());
    const QRect covered = QRectF(ink.topLeft() * ratio_, ink.size() * ratio_)
                              .toAlignedRect()
                              .adjusted(-lean, -lean, lean, lean)
                              .intersected(QRect(-kLongest / 2, -kLongest / 2, 3 * kLongest / 2, kLongest));
    if (covered.isEmpty()) {
        return;
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
    mask.dots = CoveredPixels(picture, -covered.topLeft());
}
