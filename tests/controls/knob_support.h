#pragma once

#include "controls/control_support.h"
#include "controls/knob_arithmetic.h"
#include "controls/knob_control.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

/// Sends one event and touches the widget no more, which the event may have deleted.
inline void SendMouse(QWidget* to, QEvent::Type type, QPointF where, Qt::MouseButton button,
                      Qt::MouseButtons held) {
    QMouseEvent event(type, where, to->mapToGlobal(where), button, held, {});
    QApplication::sendEvent(to, &event);
}

inline void SendKey(QWidget* to, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, {});
    QApplication::sendEvent(to, &event);
}

/// A knob of 0..100 from -45 to 225 degrees on a control of 85 x 96, shown, with its events written down.
class KnobTest : public testing::Test {
  protected:
    using Log = std::vector<std::string>;

    KnobTest() {
        knob->resize(85, 96);
        knob->ReadProperties({{"KnobStartAngle", -45}, {"KnobStopAngle", 225}, {"KnobZeroButton", false}});
        QObject::connect(knob, &KnobControl1::Change, &context, [this] { log.emplace_back("Change"); });
        QObject::connect(knob, &KnobControl1::Done, &context, [this] { log.emplace_back("Done"); });
        knob->show();
        Settle(*knob, "Timer1");
        log.clear();
    }
    ~KnobTest() override { delete knob.data(); }

    Log events() { return std::exchange(log, {}); }
    template <class Child> Child* child(const char* name) const {
        return knob->findChild<Child*>(QString::fromLatin1(name));
    }
    QTimer* timeout() const { return TimerOf(*knob, "Timeout"); }

    /// The pixel of the mouse that many degrees behind the start angle.
    QPointF at(double turned, double radius = 20) const {
        const KnobLayout place = LayOutKnob({knob->size(), knob->KnobValueAlign(), 0, 0, {7, 7}});
        return knob::PointAt(place.drawnCentre(), radius, knob->KnobStartAngle() + turned);
    }
    void mouse(QEvent::Type type, QPointF where, Qt::MouseButton button, Qt::MouseButtons held) {
        SendMouse(knob, type, where, button, held);
    }
    void press(double turned, Qt::MouseButton with = Qt::LeftButton) {
        mouse(QEvent::MouseButtonPress, at(turned), with, with);
    }
    void move(double turned, Qt::MouseButtons held = Qt::LeftButton) {
        mouse(QEvent::MouseMove, at(turned), Qt::NoButton, held);
    }
    void release(double turned, Qt::MouseButton with = Qt::LeftButton) {
        mouse(QEvent::MouseButtonRelease, at(turned), with, Qt::NoButton);
    }

    QPointer<KnobControl1> knob = new KnobControl1;
    QObject context;
    Log log;
};
