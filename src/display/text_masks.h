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
    double width = 0; ///< how far the text advances, raster pixels; whole ones for a text of ASCII
    std::vector<Dot> dots;
};

/// The texts that a canvas printed lately. A plot prints the same few again and again, so each is put
/// together once. Figures change with every move of a hand, and a toolkit takes longer to lay out one of them
/// than the rest of a plot takes: a text of ASCII is put together from its letters, each on a whole pixel, so
/// that no digit stirs when its neighbour changes.
class TextMasks {
  public:
    explicit TextMasks(double pixelRatio) : ratio_(pixelRatio) { SetFont(QFont()); }

    void SetFont(const QFont& font);
    double LineHeight() const { return lineHeight_; } ///< raster pixels
    const TextMask& For(const QString& text);

  private:
    static constexpr int kKept = 12;
    static constexpr char16_t kFirstLetter = 0x20;
    static constexpr char16_t kLastLetter = 0x7E;

    static bool IsPlain(const QString& text);
    const TextMask& Letter(QChar letter);
    void PutTogether(TextMask& mask);
    void LayOut(TextMask& mask) const;

    double ratio_;
    double lineHeight_ = 0;
    QFont font_;
    std::array<TextMask, kKept> kept_;
    std::array<TextMask, kLastLetter - kFirstLetter + 1> letters_; ///< without a text until it was painted
    std::size_t oldest_ = 0;
};
