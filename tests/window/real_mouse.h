#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QWidget>
#include <QtTest/qtestsystem.h>
#include <gtest/gtest.h>

/// A pointer that goes the whole way: through the X server and the window manager to the program.
namespace real_mouse {

inline void Do(const QStringList& words) {
    QProcess hand;
    hand.start(QStringLiteral("xdotool"), words);
    ASSERT_TRUE(QTest::qWaitFor([&] { return hand.state() == QProcess::NotRunning; }, 30000));
    ASSERT_EQ(hand.exitCode(), 0) << qPrintable(words.join(' ')) << hand.readAllStandardError().toStdString();
}

inline QStringList To(const QWidget& widget, QPointF at) {
    const QPoint place = widget.mapToGlobal(at).toPoint();
    // A breath after each move, as a hand takes it, lets the program see them one by one.
    return {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
            QStringLiteral("sleep"), QStringLiteral("0.03")};
}

/// Goes to a place and waits until the widget has seen the pointer: a window manager may still move a window
/// that just appeared, and a press beside it would be the desktop's, whose menu then takes every further one.
inline void Reach(const QWidget& widget, QPointF at) {
    constexpr int kPatience = 10000; ///< ms; a widget under another is never told
    QElapsedTimer clock;
    clock.start();
    do {
        Do(To(widget, at));
        QTest::qWait(1);
    } while (!widget.underMouse() && clock.elapsed() < kPatience);
}

inline void Click(const QWidget& widget, QPointF at, int button = 1) {
    Reach(widget, at);
    Do(To(widget, at) + QStringList{QStringLiteral("click"), QString::number(button)});
}

inline void Click(const QWidget& widget, int button = 1) {
    Click(widget, QPointF(widget.width() / 2.0, widget.height() / 2.0), button);
}

/// Presses at the first place, passes the others with the button held and lets go at the last.
inline void Drag(const QWidget& widget, const QList<QPointF>& way, int button = 1) {
    const QString number = QString::number(button);
    Reach(widget, way.first());
    QStringList words = To(widget, way.first()) + QStringList{QStringLiteral("mousedown"), number};
    for (const QPointF& place : way.mid(1)) {
        words += To(widget, place);
    }
    Do(words + QStringList{QStringLiteral("mouseup"), number});
}

} // namespace real_mouse
