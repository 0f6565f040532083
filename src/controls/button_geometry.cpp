#include "controls/button_geometry.h"

#include "controls/rounding.h"

namespace {

constexpr double kBevelInset = 3;     // outer bevel, from the rim
constexpr double kPressedShift = 1.1; // the caption goes in with the cap

/// The ring `inset` pixels inside the rim, its ellipse cut by `trim` pixels on both axes.
Ring RingInside(const ButtonLook& look, double inset, double trim, double lineWidth) {
    // A tall button has its radii from the height, every other from the width.
    const bool tall = look.size.height() > look.size.width();
    const double half = (tall ? look.size.height() : look.size.width()) / 2.0;
    const double width = look.size.width() - trim;
    const double height = look.size.height() - trim;
    return {QPointF(ButtonCentre(look.size)), half - inset, width > 0 && height > 0 ? height / width : 0,
            lineWidth};
}

} // namespace

QPoint ButtonCentre(QSize size) {
    return {size.width() / 2 - 1, size.height() / 2 - 1};
}

ButtonRings RingsOfButton(const ButtonLook& look) {
    ButtonRings rings;
    const int depth = look.depth;
    if (depth < 1) {
        return rings;
    }
    const double inset = depth / 2.0 + 1;
    rings.fill = RingInside(look, inset, inset, depth);
    if (look.sunk) {
        rings.outer = RingInside(look, kBevelInset, inset, depth);
    }
    const int thinning = look.pressed ? 2 : 1;
    if (depth / thinning > 0) {
        const int line = RoundToEven(static_cast<double>(depth) / thinning);
        // The two insets differ on purpose.
        const bool tall = look.size.height() > look.size.width();
        const double innerInset = tall ? depth * line / 2.0 + 1 : depth + 1 + line / 2.0;
        rings.inner = RingInside(look, innerInset, depth + 1 + line, line);
    }
    return rings;
}

QPointF CaptionPlace(const ButtonLook& look, QSizeF text, QPoint nudge) {
    const QPoint centre = ButtonCentre(look.size);
    const double shift = look.pressed ? kPressedShift : 0;
    return {centre.x() - RoundToEven(text.width() / 2) + shift + nudge.x(),
            centre.y() - RoundToEven(text.height() / 2) + shift + nudge.y()};
}

bool HoldsButton(QSize size, QPointF pointer) {
    return pointer.x() >= 0 && pointer.x() <= size.width() && pointer.y() >= 0 &&
           pointer.y() <= size.height();
}
