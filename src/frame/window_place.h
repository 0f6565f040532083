#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <functional>

/// Where a window stands, in logical pixels, and how it is put there. Tests put their own in its place.
struct WindowPlace {
    std::function<QRect()> place;
    std::function<void(const QRect& place)> put;
};

/// A saved place may be one of another screen: a left or a top edge from which the window would leave this
/// one becomes 0.
QPoint BroughtOnScreen(const QRect& window, QSize screen);
