#include "controls/slider_painting.h"

#include "controls/colour.h"
#include "controls/keyboard_focus.h"
#include "controls/rounding.h"

#include <QPainter>

namespace {

constexpr Colour kEdgeDark = 0x404040;
constexpr Colour kEdgeLight = 0xC0C0C0;

/// Puts edges on whole device pixels, so that the groove is as sharp as the screen at every scale.
class Snap {
  public:
    explicit Snap(double ratio) : ratio_(ratio > 0 ? ratio : 1) {}
    double operator()(double edge) const { return RoundToEven(edge * ratio_) / ratio_; }
    QRectF operator()(const QRectF& rect) const {
        const QPointF topLeft((*this)(rect.left()), (*this)(rect.top()));
        return {topLeft, QPointF((*this)(rect.right()), (*this)(rect.bottom()))};
    }

  private:
    double ratio_;
};

void DrawGroove(QPainter& painter, const SliderLook& look, SliderLayout layout) {
    const Snap snap(painter.device()->devicePixelRatioF());
    layout.bar = snap(DrawnBar(layout, look.size));
    painter.fillRect(layout.bar, Qt::black);
    const auto lines = EdgingOfBar(layout);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const QRectF pixels(lines[i].p1(), lines[i].p2() + QPointF(1, 1));
        painter.fillRect(pixels & layout.bar, ToQColor(i < 2 ? kEdgeDark : kEdgeLight));
    }
}

void DrawThumb(QPainter& painter, const SliderLook& look, const QRectF& thumb) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.fill);
    painter.drawEllipse(thumb);
    if (look.depth > 0) {
        DrawBevel(painter, ThumbBevel(thumb, look.depth), kRaisedBevel);
    }
    if (look.focus) {
        DrawFocusRing(painter, {thumb.center(), (thumb.width() - 1) / 2, 1, 1});
    }
}

} // namespace

void DrawSlider(QPainter& painter, const SliderLook& look) {
    if (look.size.isEmpty()) {
        return;
    }
    const SliderLayout layout = LayOutSlider(look.size, look.value);
    DrawGroove(painter, look, layout);
    DrawThumb(painter, look, PlaceThumb(layout, look.value));
}
