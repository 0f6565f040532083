#include "controls/pointer_place.h"

#include <QMouseEvent>
#include <QWidget>
#include <cmath>

namespace {

bool Whole(double figure) {
    constexpr double kRounding = 1e-6; // of a division by the scale
    return std::abs(figure - std::round(figure)) < kRounding;
}

} // namespace

QPointF PointerPlace(QPointF position, double scale) {
    const QPointF onScreen = position * scale;
    const bool countsPixels = Whole(onScreen.x()) && Whole(onScreen.y());
    return countsPixels ? position + QPointF(0.5, 0.5) / scale : position;
}

QPointF PointerPlace(const QMouseEvent& event, const QWidget& control) {
    return PointerPlace(event.position(), control.devicePixelRatioF());
}

QPoint PixelUnder(QPointF place) {
    return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}
