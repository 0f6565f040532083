#include "controls/button_painting.h"

#include "controls/contrast.h"
#include "controls/keyboard_focus.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kCaptionMargin = 1;
constexpr double kShadedBelow = 3;  // contrast of a caption with its ground
constexpr double kNarrowest = 0.65; // below it the letters of a small font run into one another

void DrawRings(QPainter& painter, const ButtonLook& look, const ButtonInk& ink) {
    const ButtonRings rings = RingsOfButton(look);
    painter.save();
    painter.translate(ToMiddle(ButtonCentre(look.size), look.size));
    if (rings.fill) {
        DrawRing(painter, *rings.fill, ink.fill);
    }
    if (rings.outer) {
        DrawBevel(painter, *rings.outer, kSunkBevel);
    }
    if (rings.inner) {
        DrawBevel(painter, *rings.inner, kRaisedBevel);
    }
    painter.restore();
}

/// By whole pixels of the screen: letters stay as sharp as they are designed.
QPointF ToMiddleOnPixels(QSize size, double ratio) {
    const QPointF way = ToMiddle(ButtonCentre(size), size) * ratio;
    return QPointF(std::floor(way.x()), std::floor(way.y())) / ratio;
}

/// White on a light panel is legible only with a shade under it.
void DrawCaptionShade(QPainter& painter, const ButtonInk& ink) {
    const bool lightInk = Luminance(ink.fore) >= Luminance(ink.back);
    painter.setPen(lightInk ? QColor(0, 0, 0, 170) : QColor(255, 255, 255, 170));
    painter.drawText(QPointF(0.8, 0.8), ink.caption);
}

void DrawCaption(QPainter& painter, const ButtonLook& look, const ButtonInk& ink) {
    if (ink.caption.isEmpty()) {
        return;
    }
    const QFontMetricsF metrics(ink.font, painter.device());
    const double natural = metrics.horizontalAdvance(ink.caption);
    const double squeeze = CaptionSqueeze(natural, look.size.width() - 2 * kCaptionMargin);
    const QPointF corner = CaptionPlace(look, {natural * squeeze, metrics.height()}, ink.nudge) +
                           ToMiddleOnPixels(look.size, painter.device()->devicePixelRatioF());
    painter.save();
    painter.setFont(ink.font);
    painter.translate(corner.x(), corner.y() + metrics.ascent());
    if (squeeze < 1) {
        // Not QFont::setStretch, which takes another font of the family where there is a narrow one.
        painter.scale(squeeze, 1);
    }
    if (Contrast(ink.fore, ink.back) < kShadedBelow) {
        DrawCaptionShade(painter, ink);
    }
    painter.setPen(ink.fore);
    painter.drawText(QPointF(0, 0), ink.caption);
    painter.restore();
}

void DrawFocus(QPainter& painter, const ButtonLook& look) {
    // In the pixel that the rings leave free at the rim: the caption of a small button needs all the rest.
    const double width = look.size.width() - 1;
    const double height = look.size.height() - 1;
    DrawFocusRing(painter, {QPointF(look.size.width(), look.size.height()) / 2, std::max(width, height) / 2,
                            width > 0 ? height / width : 0, 1});
}

} // namespace

double CaptionSqueeze(double natural, double room) {
    return natural > room ? std::max(room / natural, kNarrowest) : 1;
}

void DrawButton(QPainter& painter, const ButtonLook& look, const ButtonInk& ink) {
    painter.fillRect(QRect(QPoint(0, 0), look.size), ink.back);
    DrawRings(painter, look, ink);
    DrawCaption(painter, look, ink);
    if (ink.focus) {
        DrawFocus(painter, look);
    }
}
