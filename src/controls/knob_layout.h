#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

/// Where the pieces of a knob stand, in pixels of the control.
struct KnobLayout {
    QRectF control;
    QRectF boundary; ///< KnobBoundary, a circle
    double Radius = 0;
    double CentreX = 0;
    double CentreY = 0;
    QRectF textBox;
    QRectF scroller;
    QRectF label;
    bool labelOnFace = false; ///< the label lies on the knob and takes its colour
    bool labelLeft = false;   ///< the label's text starts at its left edge, else it ends at the right
    QPointF zeroButton;       ///< its top left corner

    /// The middle of the circle, around which all is drawn and from which the mouse is measured. CentreX and
    /// CentreY name the pixel above and left of it, from which the text beside it is placed.
    QPointF drawnCentre() const { return {CentreX + 1, CentreY + 1}; }
};

/// What a layout depends on.
struct KnobMeasures {
    QSizeF control;
    int KnobValueAlign = 0;
    double textHeight = 0;   ///< of KnobValueFormat
    double maxTextWidth = 0; ///< of the number KnobMax
    QSizeF zeroButton = {7, 7};
};

/// A control too small for its margins gets a circle of no size.
KnobLayout LayOutKnob(const KnobMeasures& measures);

/// A text justified to the right of a label that reaches beyond the control is kept inside by this margin.
double HiddenRight(const KnobLayout& layout);
