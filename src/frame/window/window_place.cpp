#include "frame/window/window_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace {

constexpr int kCorner = 48; ///< pixels of a corner that a hand still finds

bool HasCornerOn(const QRect& window, const QRect& screen) {
    const QSize size(std::min(kCorner, window.width()), std::min(kCorner, window.height()));
    QRect corner(window.topLeft(), size);
    const QPoint across(window.width() - size.width(), 0);
    const QPoint down(0, window.height() - size.height());
    for (const QPoint to : {QPoint(0, 0), across, down, across + down}) {
        if (screen.contains(corner.translated(to))) {
            return true;
        }
    }
    return false;
}

/// The edge nearest to the one asked for from which the window stays in the room, or the room's own.
int Inside(int edge, int size, int start, int room) {
    return std::clamp(edge, start, std::max(start, start + room - size));
}

} // namespace

ScreenPlaces PresentScreens() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    ScreenPlaces places{.all = {}, .primary = primary->geometry(), .available = primary->availableGeometry()};
    for (const QScreen* screen : QGuiApplication::screens()) {
        places.all.push_back(screen->geometry());
    }
    return places;
}

QPoint BroughtOnScreen(const QRect& window, QSize screen) {
    const auto edge = [](int at, int size, int room) { return at < 0 || at > room - size ? 0 : at; };
    return {edge(window.left(), window.width(), screen.width()),
            edge(window.top(), window.height(), screen.height())};
}

QPoint BroughtOnScreens(const QRect& window, const ScreenPlaces& screens) {
    if (screens.all.size() == 1) {
        return BroughtOnScreen(window, screens.primary.size());
    }
    const auto shows = [&](const QRect& screen) { return HasCornerOn(window, screen); };
    if (std::any_of(screens.all.begin(), screens.all.end(), shows)) {
        return window.topLeft();
    }
    const QRect& room = screens.available;
    return {Inside(window.left(), window.width(), room.left(), room.width()),
            Inside(window.top(), window.height(), room.top(), room.height())};
}
