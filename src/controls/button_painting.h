#pragma once

#include "controls/button_geometry.h"

#include <QColor>
#include <QFont>
#include <QString>

class QPainter;

/// The colours and the caption of a button.
struct ButtonInk {
    QColor fill; ///< the ring
    QColor back; ///< the surface and the cap
    QColor fore; ///< the caption
    QString caption;
    QFont font;
    QPoint nudge;
    bool focus = false; ///< show that the keyboard is here
};

/// How far a caption is condensed to stay inside a button, 1 for not at all; never beyond legibility.
/// natural, room: widths in pixels.
double CaptionSqueeze(double natural, double room);

void DrawButton(QPainter& painter, const ButtonLook& look, const ButtonInk& ink);
