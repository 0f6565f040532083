#pragma once

#include "controls/slider_geometry.h"

#include <QColor>

class QPainter;

/// How a slider looks at its value.
struct SliderLook {
    QSize size;
    double value = 0;
    QColor fill; ///< the thumb
    int depth = 1;
    bool focus = false; ///< show that the keyboard is here
};

void DrawSlider(QPainter& painter, const SliderLook& look);
