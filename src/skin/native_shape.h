#pragma once

#include <QRegion>
#include <QWidget>

/// Gives a window that is there its outline in device pixels, which the toolkit, whose masks are made of
/// logical ones, cannot. False where the window system knows no such outlines.
bool ShapeInDevicePixels(const QWidget& window, const QRegion& outline);
