#include "controls/window_mover.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QStyleHints>
#include <QWidget>
#include <QWindow>
#include <utility>

namespace {

// A window manager of X takes a window over at some later moment. If the button is up by then, the window
// hangs on the pointer until the next click. Only where the window system looks at the button itself, as
// Wayland does, can the move be handed over.
bool HandOver(QWindow& window) {
    return QGuiApplication::platformName() != QLatin1String("xcb") && window.startSystemMove();
}

// Screens of different scale do not join in logical pixels: each keeps its origin and shrinks towards it.
QPoint ToDevice(QPoint logical, const QScreen& screen) {
    const QPoint origin = screen.geometry().topLeft();
    return origin + ((logical - origin) * screen.devicePixelRatio());
}

QPoint ToLogical(QPoint device, const QScreen& screen) {
    const QPoint origin = screen.geometry().topLeft();
    return origin + ((device - origin) / screen.devicePixelRatio());
}

const QScreen& ScreenAt(QPoint pointer, const QWidget& window) {
    const QScreen* screen = QGuiApplication::screenAt(pointer);
    return screen == nullptr ? *window.screen() : *screen;
}

} // namespace

WindowMover::WindowMover(QWidget& grip) : WindowMover(grip, HandOver) {}

WindowMover::WindowMover(QWidget& grip, SystemMove systemMove)
    : QObject(&grip), grip_(grip), systemMove_(std::move(systemMove)) {
    grip.installEventFilter(this);
}

bool WindowMover::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        Press(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        Move(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            state_ = State::Idle;
        }
        break;
    case QEvent::Hide:
        state_ = State::Idle;
        break;
    default:
        break;
    }
    return false;
}

void WindowMover::Press(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) {
        const QWidget& window = *grip_.window();
        state_ = State::Pressed;
        pressed_ = event.globalPosition().toPoint();
        hold_ = ToDevice(pressed_, ScreenAt(pressed_, window)) - ToDevice(window.pos(), *window.screen());
    }
}

void WindowMover::Move(const QMouseEvent& event) {
    if (!event.buttons().testFlag(Qt::LeftButton)) {
        state_ = State::Idle; // the release went elsewhere
        return;
    }
    const QPoint pointer = event.globalPosition().toPoint();
    if (state_ == State::Pressed &&
        (pointer - pressed_).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance()) {
        QWindow* window = grip_.window()->windowHandle();
        state_ = window != nullptr && systemMove_(*window) ? State::HandedOver : State::Following;
    }
    if (state_ == State::Following) {
        Follow(pointer);
    }
}

void WindowMover::Follow(QPoint pointer) {
    QWidget& window = *grip_.window();
    const QPoint place = ToDevice(pointer, ScreenAt(pointer, window)) - hold_;
    window.move(ToLogical(place, *window.screen()));
}
