#include "controls/window_mover.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QStyleHints>
#include <QWidget>
#include <QWindow>
#include <algorithm>
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
        hold_ = ToLogical(ToDevice(pressed_, ScreenAt(pressed_, window)), *window.screen()) - window.pos();
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
    const QPoint device = ToDevice(pointer, ScreenAt(pointer, window));
    const auto placeOn = [&](const QScreen& screen) { return ToLogical(device, screen) - hold_; };
    const auto belongsTo = [&](const QScreen& screen) {
        return screen.geometry().contains(QRect(placeOn(screen), window.size()).center());
    };
    // A window belongs to the screen that has its middle, and its place is told in the pixels of that one.
    // The present screen is asked first, so that the window changes it once on its way and not to and fro.
    const QScreen* home = window.screen();
    if (!belongsTo(*home)) {
        const auto screens = QGuiApplication::screens();
        const auto other = std::find_if(screens.begin(), screens.end(),
                                        [&](const QScreen* screen) { return belongsTo(*screen); });
        home = other == screens.end() ? home : *other;
    }
    window.move(placeOn(*home));
}
