#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <functional>
#include <vector>

/// Where a window stands, in logical pixels, and how it is put there. Tests put their own in its place.
struct WindowPlace {
    std::function<QRect()> place;
    std::function<void(const QRect& place)> put;
};

/// The screens that are there, in logical pixels.
struct ScreenPlaces {
    std::vector<QRect> all;
    QRect primary;   ///< one of them
    QRect available; ///< the part of the primary that panels of the desktop leave
};

ScreenPlaces PresentScreens();

/// A saved place may be one of another screen: a left or a top edge from which the window would leave this
/// one becomes 0.
QPoint BroughtOnScreen(const QRect& window, QSize screen);

/// The same with several screens: a place counts if a corner of the window, large enough to take it by, lies
/// on any of them. Otherwise the window comes to the primary screen's available area.
QPoint BroughtOnScreens(const QRect& window, const ScreenPlaces& screens);
