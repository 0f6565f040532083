#pragma once

#include <QRegion>
#include <QSize>

/// The outline of a picture of that size, in logical pixels, on a screen with ratio device pixels to one: its
/// steps are smoothed to the screen's own, straight edges stay where they are. A corner loses, and a notch
/// gains, up to the area of a logical pixel.
QRegion FineOutline(const QRegion& outline, QSize size, double ratio);

/// The logical pixels that a region of device pixels touches.
QRegion Covering(const QRegion& device, double ratio);
