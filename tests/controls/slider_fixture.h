#pragma once

#include "controls/control_support.h"
#include "controls/slider_control.h"

#include <QMouseEvent>
#include <QWheelEvent>
#include <gtest/gtest.h>

using ChangeCounter = Counter<SliderControl1, void (SliderControl1::*)()>;

class SliderControl : public testing::Test {
  protected:
    SliderControl() {
        slider.resize(357, 17);
        slider.show();
        Settle(slider, "Timer1");
        changes.take();
    }

    void Send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, button, held, {});
        QApplication::sendEvent(&slider, &event);
    }
    void Press(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        Send(QEvent::MouseButtonPress, at, button, button);
    }
    void Move(QPoint at, Qt::MouseButtons held = Qt::LeftButton) {
        Send(QEvent::MouseMove, at, Qt::NoButton, held);
    }
    void Release(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        Send(QEvent::MouseButtonRelease, at, button, {});
    }
    void Turn(int eighths, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButtons held = {}) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, {0, eighths}, held, modifiers, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&slider, &event);
    }

    SliderControl1 slider;
    ChangeCounter changes{slider, &SliderControl1::Change};
};
