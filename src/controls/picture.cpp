#include "controls/picture.h"

#include "controls/accessibility.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

namespace {

/// The mark of the focus on a picture: a thin dashed frame, dark over light so that it is seen on every
/// colour.
void DrawFocusFrame(QPainter& painter, const QRectF& place) {
    const QRectF frame = place.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRect(frame);
    QPen dashes(Qt::white, 1);
    dashes.setCapStyle(Qt::FlatCap);
    dashes.setDashPattern({2, 2});
    painter.setPen(dashes);
    painter.drawRect(frame);
}

} // namespace

QPixmap RenderDrawing(const FaceDrawing& drawing, QSize size, double ratio) {
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing(painter, QRectF(QPointF(0, 0), size));
    return pixmap;
}

Picture::Picture(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
}

Picture::~Picture() = default;

void Picture::SetValueAccess(ValueAccess access) {
    value_ = std::make_unique<ValueAccess>(std::move(access));
    // What was known of the picture so far knew of no value.
    if (QAccessibleInterface* known = QAccessible::queryAccessibleInterface(this)) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
    }
}

void Picture::SetBackColor(const QColor& colour) {
    back_ = colour;
    update();
}

void Picture::SetPicture(const QPixmap& picture) {
    picture_ = picture;
    update();
}

void Picture::SetDrawing(FaceDrawing drawing) {
    drawing_ = std::move(drawing);
    drawn_ = {};
    update();
}

void Picture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (back_.isValid()) {
        painter.fillRect(rect(), back_);
    }
    if (drawing_ && (picture_.isNull() || devicePixelRatioF() > 1.0)) {
        if (drawn_.size() != size() * devicePixelRatioF()) {
            drawn_ = RenderDrawing(drawing_, size(), devicePixelRatioF());
        }
        painter.drawPixmap(0, 0, drawn_);
    } else if (!picture_.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform, devicePixelRatioF() > 1.0);
        painter.drawPixmap(rect(), picture_);
    }
    if (focus_.Shown()) {
        DrawFocusFrame(painter, rect());
    }
}

void Picture::mousePressEvent(QMouseEvent* event) {
    emit MouseDown(event->button(), event->position().toPoint());
}

void Picture::mouseMoveEvent(QMouseEvent* event) {
    emit MouseMove(event->buttons(), event->position().toPoint());
}

void Picture::mouseReleaseEvent(QMouseEvent* event) {
    emit MouseUp(event->button(), event->position().toPoint());
}

void Picture::mouseDoubleClickEvent(QMouseEvent* event) {
    emit DblClick(event->button(), event->position().toPoint());
}

void Picture::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (!hasFocus()) {
        return; // it came on from a picture that this one holds
    }
    emit KeyDown(event);
    if (event->isAccepted() && focus_.Key()) {
        update();
    }
}

void Picture::focusInEvent(QFocusEvent* event) {
    if (focus_.In(event->reason())) {
        update();
    }
}

void Picture::focusOutEvent(QFocusEvent* event) {
    if (focus_.Out(event->reason())) {
        update();
    }
}
