#include "display/plain_canvas.h"

#include "controls/colour.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <cstdlib>

namespace {

QString Glyphs(QString text) {
    return text.replace(QChar(26), QChar(0x2192));
}

} // namespace

PlainCanvas::PlainCanvas(int width, int height, double ratio)
    : image_(width, height, QImage::Format_RGB32), bits_(image_.bits()), ratio_(ratio) {
    SetFont(QFont());
    SetPixelScale();
    Clear();
    SetDrawWidth(1);
}

void PlainCanvas::SetFont(const QFont& font) {
    font_ = font;
    font_.setStyleStrategy(QFont::NoSubpixelAntialias);
}

void PlainCanvas::Clear() {
    image_.fill(Qt::black);
}

void PlainCanvas::SetDrawWidth(int pixels) {
    pen_ = std::max(1, static_cast<int>(std::round(pixels * ratio_)));
}

void PlainCanvas::SetForeColor(Colour colour) {
    colour_ = ToQColor(colour).rgb();
}

void PlainCanvas::SetScale(double left, double top, double right, double bottom) {
    map_.SetScale(left, top, right, bottom, image_.width(), image_.height());
}

void PlainCanvas::SetPixelScale() {
    SetScale(0, 0, image_.width(), image_.height());
}

void PlainCanvas::Stamp(int x, int y) {
    for (int row = y - pen_ / 2; row < y - pen_ / 2 + pen_; ++row) {
        if (row < 0 || row >= image_.height()) {
            continue;
        }
        auto* pixels =
            reinterpret_cast<QRgb*>(bits_ + static_cast<std::ptrdiff_t>(row) * image_.bytesPerLine());
        for (int column = x - pen_ / 2; column < x - pen_ / 2 + pen_; ++column) {
            if (column >= 0 && column < image_.width()) {
                pixels[column] = colour_;
            }
        }
    }
}

void PlainCanvas::Walk(PixelPoint from, PixelPoint to) {
    const int wayX = std::abs(to.x - from.x);
    const int wayY = std::abs(to.y - from.y);
    const int stepX = to.x < from.x ? -1 : 1;
    const int stepY = to.y < from.y ? -1 : 1;
    const int length = std::max(wayX, wayY);
    const int lesser = std::min(wayX, wayY);
    int error = length;
    PixelPoint at = from;
    for (int i = 0; i <= length; ++i) {
        if (style_ == PenStyle::Solid || i % (2 * pen_) == 0) {
            Stamp(at.x, at.y);
        }
        error += 2 * lesser;
        const bool aside = error >= 2 * length;
        error -= aside ? 2 * length : 0;
        if (wayX >= wayY) {
            at.x += stepX;
            at.y += aside ? stepY : 0;
        } else {
            at.y += stepY;
            at.x += aside ? stepX : 0;
        }
    }
}

void PlainCanvas::Line(double x1, double y1, double x2, double y2) {
    SetCurrent(x1, y1);
    LineTo(x2, y2);
}

void PlainCanvas::LineTo(double x, double y) {
    if (const auto line = map_.Line(current_.x, current_.y, x, y)) {
        Walk(line->from, line->to);
    }
    SetCurrent(x, y);
}

void PlainCanvas::FillBox(double x1, double y1, double x2, double y2) {
    const auto a = map_.Point(x1, y1);
    const auto b = map_.Point(x2, y2);
    for (int y = std::min(a->y, b->y); y <= std::max(a->y, b->y); ++y) {
        for (int x = std::min(a->x, b->x); x <= std::max(a->x, b->x); ++x) {
            Stamp(x, y);
        }
    }
    SetCurrent(x2, y2);
}

void PlainCanvas::PSet(double x, double y) {
    const auto point = map_.Point(x, y);
    Stamp(point->x, point->y);
    SetCurrent(x, y);
}

/// A text of ASCII letter by letter, each on a whole pixel; any other in one piece.
std::vector<PlainCanvas::Piece> PlainCanvas::Pieces(const QString& text) const {
    const QFontMetricsF metrics(font_);
    const bool plain =
        std::none_of(text.begin(), text.end(), [](QChar c) { return c < QChar(' ') || c > QChar('~'); });
    if (!plain) {
        return {{Glyphs(text), 0, metrics.horizontalAdvance(Glyphs(text)) * ratio_}};
    }
    std::vector<Piece> pieces;
    double left = 0;
    for (const QChar c : text) {
        const double width = std::round(metrics.horizontalAdvance(QString(c)) * ratio_);
        pieces.push_back({QString(c), left, width});
        left += width;
    }
    return pieces;
}

void PlainCanvas::Print(const QString& text) {
    if (const auto corner = map_.Point(current_.x, current_.y)) {
        for (const Piece& piece : Pieces(text)) {
            PrintPiece(piece, *corner);
        }
    }
    current_.y += TextHeight(text) * (ScaleHeight() < 0 ? -1 : 1);
}

/// Painted on a sheet of its own, since the toolkit may correct the contrast of what it paints on an opaque
/// picture, and whether it does differs from font to font.
void PlainCanvas::PrintPiece(const Piece& piece, PixelPoint corner) {
    const int room = 2 * static_cast<int>(std::ceil(QFontMetricsF(font_).height() * ratio_));
    const QPoint start(corner.x + static_cast<int>(piece.left), corner.y);
    const QRect place = QRect(start.x() - room, start.y() - room,
                              static_cast<int>(std::ceil(piece.width)) + 2 * room, 3 * room) &
                        image_.rect();
    if (place.isEmpty()) {
        return;
    }
    QImage sheet(place.size(), QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::transparent);
    QPainter painter(&sheet);
    painter.setPen(Qt::white);
    painter.translate(start - place.topLeft());
    painter.scale(ratio_, ratio_);
    painter.setFont(font_);
    painter.drawText(QPointF(0, QFontMetricsF(font_).ascent()), piece.text);
    painter.end();
    for (int y = 0; y < sheet.height(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(bits_ + static_cast<std::ptrdiff_t>(y + place.top()) *
                                                           image_.bytesPerLine());
        for (int x = 0; x < sheet.width(); ++x) {
            const int cover = qAlpha(sheet.pixel(x, y));
            const auto mixed = [cover](int above, int below) {
                return (above * cover + below * (255 - cover) + 127) / 255;
            };
            QRgb& pixel = pixels[x + place.left()];
            pixel = qRgb(mixed(qRed(colour_), qRed(pixel)), mixed(qGreen(colour_), qGreen(pixel)),
                         mixed(qBlue(colour_), qBlue(pixel)));
        }
    }
}

double PlainCanvas::TextWidth(const QString& text) const {
    double width = 0;
    for (const Piece& piece : Pieces(text)) {
        width += piece.width;
    }
    return width / std::abs(map_.PixelsPerUnitX());
}

double PlainCanvas::TextHeight(const QString&) const {
    return std::ceil(QFontMetricsF(font_).height() * ratio_) / std::abs(map_.PixelsPerUnitY());
}

double PlainCanvas::WidthToPixels(double width) const {
    return width * std::abs(map_.PixelsPerUnitX());
}
