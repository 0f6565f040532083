#pragma once

#include <QTest>
#include <QTimer>
#include <QWidget>
#include <utility>

/// The named timer of a control.
inline QTimer* TimerOf(const QWidget& control, const char* name) {
    return control.findChild<QTimer*>(QString::fromLatin1(name), Qt::FindDirectChildrenOnly);
}

inline bool Pending(const QWidget& control, const char* name) {
    return TimerOf(control, name)->isActive();
}

inline void Settle(const QWidget& control, const char* name) {
    if (!QTest::qWaitFor([&] { return !Pending(control, name); })) {
        qFatal("%s never fires", name);
    }
}

/// Counts a signal from now on.
template <class Control, class Signal> class Counter {
  public:
    Counter(Control& control, Signal signal) {
        QObject::connect(&control, signal, &context_, [this] { ++count_; });
    }
    int count() const { return count_; }
    int take() { return std::exchange(count_, 0); }

  private:
    QObject context_;
    int count_ = 0;
};
