#include "frame/instrument/closing.h"

#include <QApplication>
#include <QEvent>
#include <QThread>
#include <QWidget>
#include <utility>

namespace {

constexpr int kMostWaits = 20;
constexpr int kWait = 50; ///< ms; a handler that is still busy after a second is left behind

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
        return true;
    default:
        return false;
    }
}

} // namespace

void DismissBoxes() {
    constexpr int kMost = 16; // one that refuses to go must not keep us here
    for (int i = 0; i < kMost; ++i) {
        QWidget* box = QApplication::activePopupWidget();
        if (box == nullptr) {
            box = QApplication::activeModalWidget();
        }
        if (box == nullptr || !box->close()) {
            return;
        }
    }
}

Closing::Closing(Calls calls) : calls_(std::move(calls)) {
    connect(&waiting_, &QTimer::timeout, this, &Closing::Wait);
}

Closing::~Closing() = default;

void Closing::Request() {
    if (!wanted_) {
        wanted_ = true;
        // Whatever a hand still does meanwhile belongs to a program that is gone.
        QCoreApplication::instance()->installEventFilter(this);
        calls_.Begin();
    }
    DismissBoxes();
    Serve();
}

void Closing::Serve() {
    if (!wanted_ || served_) {
        return;
    }
    if (!Busy()) {
        End();
    } else if (!waiting_.isActive()) {
        waiting_.start(kWait);
    }
}

void Closing::Wait() {
    if (++waits_ < kMostWaits) {
        DismissBoxes(); // one that came since
        Serve();
    } else {
        End();
    }
}

void Closing::HandlerReturned() {
    --handlers_;
    if (wanted_ && handlers_ == 0) {
        // Who held it is still on its way back to the event loop.
        QMetaObject::invokeMethod(this, &Closing::Serve, Qt::QueuedConnection);
    }
}

bool Closing::Busy() const {
    // A loop inside the program's own is a box or a menu that some handler waits for.
    return handlers_ > 0 || QThread::currentThread()->loopLevel() > 1 || calls_.Busy();
}

void Closing::End() {
    waiting_.stop();
    if (!std::exchange(served_, true)) {
        QCoreApplication::instance()->removeEventFilter(this); // the shutdown may have to tell something
        calls_.End();
    }
}

bool Closing::eventFilter(QObject* watched, QEvent* event) {
    return IsInput(event->type()) || QObject::eventFilter(watched, event);
}
