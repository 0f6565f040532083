#pragma once

#include "controls/bevel.h"

#include <QPoint>
#include <QSize>
#include <optional>

/// What the look of a push button follows from. Pixels of its surface, x to the right, y down.
struct ButtonLook {
    QSize size;
    int depth = 2; ///< ButtonDepth
    bool sunk = true;
    bool pressed = false;
};

/// The rings of a button from the rim inward; none where nothing is drawn. Their centre is ButtonCentre, from
/// which ToMiddle leads to where they are drawn.
struct ButtonRings {
    std::optional<Ring> fill;  ///< in the button's colour
    std::optional<Ring> outer; ///< the bevel that sinks the button into the panel
    std::optional<Ring> inner; ///< the bevel of the cap, thinner while it is pressed
};

/// The pixel around which the rings are drawn and the caption is centred.
QPoint ButtonCentre(QSize size);

ButtonRings RingsOfButton(const ButtonLook& look);

/// Upper left corner of the caption, centred on ButtonCentre.
/// text: its width and height; nudge: ButtonCaptionNudgeX, Y.
QPointF CaptionPlace(const ButtonLook& look, QSizeF text, QPoint nudge);

/// Whether a pointer that holds the button down is still on it; all four edges count as inside.
bool HoldsButton(QSize size, QPointF pointer);
