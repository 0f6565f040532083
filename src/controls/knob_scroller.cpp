#include "controls/knob_scroller.h"

#include "controls/pointer_place.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <algorithm>

namespace {

constexpr int kLeastThumb = 5;
constexpr int kTopGap = 1;
constexpr int kLeastHeight = 4; // of which less is in view shows nothing
constexpr int kLeastWidth = 12;

void DrawArrow(QPainter& painter, QRectF box, bool left, const QColor& colour) {
    const double h = std::min(box.width(), box.height()) / 2 - 1;
    const double tip = left ? -h / 2 : h / 2;
    QPainterPath arrow(box.center() + QPointF(tip, 0));
    arrow.lineTo(box.center() + QPointF(-tip, -h));
    arrow.lineTo(box.center() + QPointF(-tip, h));
    arrow.closeSubpath();
    painter.fillPath(arrow, colour);
}

} // namespace

KnobScroller::KnobScroller(QWidget* parent) : QAbstractSlider(parent) {
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::NoFocus);
}

int KnobScroller::bodyHeight() const {
    const int inView = parentWidget() == nullptr ? height() : parentWidget()->height() - y();
    return std::min(height(), inView) - kTopGap;
}

KnobScroller::Track KnobScroller::track() const {
    const int arrow = std::max(0, std::min(bodyHeight() + kTopGap, width() / 4));
    const int length = std::max(0, width() - 2 * arrow);
    return {arrow, arrow + length, std::min(length, std::max(kLeastThumb, length / 4))};
}

QRect KnobScroller::thumb() const {
    const Track t = track();
    const int at = QStyle::sliderPositionFromValue(minimum(), maximum(), value(), t.travel());
    return {t.left + at, kTopGap, t.thumbWidth, bodyHeight()};
}

void KnobScroller::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor face = palette().color(QPalette::Button);
    const QColor ink = palette().color(QPalette::WindowText);
    const Track t = track();
    const QRectF body(0, kTopGap, width(), bodyHeight());
    if (body.height() < kLeastHeight || width() < kLeastWidth) {
        return;
    }
    DrawArrow(painter, {0, body.top(), static_cast<double>(t.left), body.height()}, true, ink);
    DrawArrow(
        painter,
        {static_cast<double>(t.right), body.top(), static_cast<double>(width() - t.right), body.height()},
        false, ink);
    const double slot = std::max(2.0, std::floor(body.height() / 3));
    const QRectF groove(t.left, body.center().y() - slot / 2, t.right - t.left, slot);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Window).darker(170));
    painter.drawRoundedRect(groove, slot / 2, slot / 2);
    const QRectF knob = QRectF(thumb()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(face);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRoundedRect(knob, 1.5, 1.5);
    painter.setPen(QPen(face.lighter(140), 1));
    painter.drawLine(knob.topLeft() + QPointF(1, 1), knob.topRight() + QPointF(-1, 1));
}

void KnobScroller::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const int x = PixelUnder(PointerPlace(*event, *this)).x();
    const Track t = track();
    const QRect held = thumb();
    if (x < t.left) {
        setRepeatAction(SliderSingleStepSub);
        triggerAction(SliderSingleStepSub);
    } else if (x >= t.right) {
        setRepeatAction(SliderSingleStepAdd);
        triggerAction(SliderSingleStepAdd);
    } else if (x < held.left()) {
        triggerAction(SliderPageStepSub);
    } else if (x > held.right()) {
        triggerAction(SliderPageStepAdd);
    } else {
        grabbed_ = x - held.left();
        setSliderDown(true);
    }
}

void KnobScroller::mouseMoveEvent(QMouseEvent* event) {
    if (!isSliderDown()) {
        return;
    }
    const Track t = track();
    const int at = PixelUnder(PointerPlace(*event, *this)).x() - grabbed_ - t.left;
    setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), at, t.travel()));
}

void KnobScroller::mouseReleaseEvent(QMouseEvent*) {
    setRepeatAction(SliderNoAction);
    setSliderDown(false);
}

void KnobScroller::wheelEvent(QWheelEvent* event) {
    event->ignore();
}
