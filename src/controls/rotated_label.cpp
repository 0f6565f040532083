#include "controls/rotated_label.h"

#include <QPainter>

RotatedLabel::RotatedLabel(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void RotatedLabel::setText(const QString& text) {
    text_ = text;
    update();
}

void RotatedLabel::setAngle(int degrees) {
    angle_ = degrees;
    update();
}

void RotatedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.translate(width() / 2.0, height() / 2.0);
    painter.rotate(-angle_);
    const double reach = width() + height();
    painter.drawText(QRectF(-reach / 2, -reach / 2, reach, reach), Qt::AlignCenter, text_);
}
