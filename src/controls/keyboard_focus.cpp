#include "controls/keyboard_focus.h"

#include "controls/bevel.h"

#include <QPainter>
#include <QWidget>

bool KeyboardFocus::In(Qt::FocusReason reason) {
    switch (reason) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        return Set(true);
    case Qt::MouseFocusReason:
        return Set(false);
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
        return Set(kept_);
    default:
        return false;
    }
}

bool KeyboardFocus::Out(Qt::FocusReason reason) {
    kept_ = shown_ && (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason);
    return Set(false);
}

bool KeyboardFocus::Set(bool shown) {
    const bool changed = shown_ != shown;
    shown_ = shown;
    return changed;
}

void KeyboardFocus::Follow(QWidget& control, bool visible) {
    if (visible == !stopped_) {
        return;
    }
    stopped_ = !visible;
    if (stopped_) {
        policy_ = control.focusPolicy();
    }
    control.setFocusPolicy(stopped_ ? Qt::NoFocus : policy_);
    if (stopped_) {
        control.clearFocus(); // keys must not turn what nobody sees
    }
}

void DrawFocusRing(QPainter& painter, const Ring& ring) {
    const QSizeF half = RingSemiAxes(ring.radius, ring.aspect);
    if (half.isEmpty()) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    QPen pen(QColor(0, 0, 0, 160), ring.lineWidth);
    painter.setPen(pen);
    painter.drawEllipse(ring.centre, half.width(), half.height());
    pen.setColor(QColor(255, 255, 255, 230));
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({2, 2});
    painter.setPen(pen);
    painter.drawEllipse(ring.centre, half.width(), half.height());
    painter.restore();
}
