#pragma once

#include <QFont>
#include <QImage>
#include <QString>
#include <array>

/// A text as it covers the pixels of a raster, without a colour.
struct TextMask {
    QString text;
    double width = 0; ///< how far the text advances, raster pixels
    QImage cover;     ///< 8 bits a pixel, 255 fully covered; its rows are LineHeight() pixels high
};

/// The texts that a canvas printed lately. A plot prints the same few again and again, so each is laid out
/// and painted once.
class TextMasks {
  public:
    explicit TextMasks(double pixelRatio) : ratio_(pixelRatio) { SetFont(QFont()); }

    void SetFont(const QFont& font);
    double LineHeight() const { return lineHeight_; } ///< raster pixels
    const TextMask& For(const QString& text);

  private:
    static constexpr int kKept = 12;

    TextMask Make(const QString& text) const;

    double ratio_;
    double lineHeight_ = 0;
    QFont font_;
    std::array<TextMask, kKept> kept_;
    std::size_t oldest_ = 0;
};
