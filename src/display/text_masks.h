#pragma once

#include <QFont>
#include <QString>
#include <array>
#include <cstdint>
#include <vector>

/// The pixels of a raster that a text covers, without a colour.
struct TextMask {
    struct Dot {
        std::int16_t x; ///< raster pixels from the top left corner of the text
        std::int16_t y;
        std::uint8_t cover; ///< 255 fully covered
    };
    QString text;
    double width = 0; ///< how far the text advances, raster pixels
    std::vector<Dot> dots;
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
