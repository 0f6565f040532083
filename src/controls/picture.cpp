#include "controls/picture.h"

#include <QMouseEvent>
#include <QPainter>

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

void Picture::mouseDoubleClickEvent(QMouseEvent*) {
    emit DblClick();
}
