#include "controls/deferred_repaint.h"

#include <QTimer>
#include <QWidget>

DeferredRepaint::DeferredRepaint(QWidget& control, int interval) : Timer1_(new QTimer(&control)) {
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setTimerType(Qt::PreciseTimer);
    Timer1_->setInterval(interval);
    Timer1_->setSingleShot(true);
    QObject::connect(Timer1_, &QTimer::timeout, &control, [&control] { control.update(); });
}

void DeferredRepaint::Request() {
    if (!InPaint_ && !Timer1_->isActive()) {
        Timer1_->start();
    }
}
