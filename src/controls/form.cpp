#include "controls/form.h"

#include "controls/control_maker.h"
#include "controls/face_pictures.h"

#include <QMouseEvent>
#include <QPainter>

Form::Form(const FormDesign& design, QWidget* parent, const CanvasMaker& makeCanvas) : QWidget(parent) {
    setObjectName(design.name);
    setWindowTitle(design.caption);
    const QFont formFont = MakeFont(design.font, font());
    setFont(formFont);
    SetColours(this, design.back, kNoColour);
    for (const ControlDesign& row : design.controls) {
        QWidget* holder = row.parent == nullptr ? this : control<QWidget>(row.parent);
        const QFont rowFont = MakeFont(row.font, formFont);
        QWidget* widget = MakeControl(row, holder, rowFont, design, makeCanvas);
        widget->setObjectName(ControlName(row.name, row.index));
        widget->setGeometry(row.place);
        widget->setVisible(row.visible);
    }
    for (const TimerDesign& row : design.timers) {
        auto* timer = new QTimer(this);
        timer->setObjectName(QString::fromLatin1(row.name));
        timer->setTimerType(Qt::PreciseTimer);
        timer->setInterval(row.interval);
        timer->setSingleShot(row.singleShot);
    }
    if (design.ground != nullptr) {
        ground_ = FindDrawing(QString::fromLatin1(design.ground), design);
    }
    resize(design.size);
}

void Form::missing(const QString& name) const {
    qFatal("form %s holds no control %s of that kind", qPrintable(objectName()), qPrintable(name));
}

void Form::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    emit Shown();
}

void Form::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit Resized();
}

void Form::mousePressEvent(QMouseEvent* event) {
    emit Pressed(event->button(), event->position().toPoint());
}

void Form::paintEvent(QPaintEvent*) {
    if (!ground_) {
        return;
    }
    if (drawnGround_.size() != size() * devicePixelRatioF()) {
        drawnGround_ = RenderDrawing(ground_, size(), devicePixelRatioF());
    }
    QPainter(this).drawPixmap(0, 0, drawnGround_);
}
