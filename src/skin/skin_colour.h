#pragma once

#include <QPoint>
#include <QRect>

/// Where a control of that place takes its colour: its centre, ties to even.
QPoint SamplePoint(const QRect& place);
