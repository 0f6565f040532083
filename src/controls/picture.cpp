#include "controls/picture.h"

#include <QMouseEvent>
#include <QPainter>

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

void Picture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (back_.isValid()) {
        painter.fillRect(rect(), back_);
    }
    if (!picture_.isNull()) {
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
