#pragma once

#include "frame/record/colour.h"

#include <QString>
#include <QStringView>

enum class PenStyle { Solid, Dotted };

struct CanvasPoint {
    double x;
    double y;
};

/// The drawing surface of a plot. All coordinates are in the user scale of the last SetScale, where y may
/// grow upwards; nothing is retained but the finished picture. A coordinate that is no number draws
/// nothing, and one far outside is clipped.
class Canvas {
  public:
    virtual ~Canvas() = default;

    virtual void Clear() = 0;
    virtual void SetDrawModeCopy() = 0;
    /// In pixels of the face: a screen of twice the resolution draws them twice as wide.
    virtual void SetDrawWidth(int pixels) = 0;
    virtual void SetDrawStyle(PenStyle style) = 0;
    virtual void SetForeColor(Colour colour) = 0;

    /// User scale by the corner pair.
    virtual void SetScale(double left, double top, double right, double bottom) = 0;
    /// Back to pixels of the raster, origin at the top left.
    virtual void SetPixelScale() = 0;
    /// Size of the present user scale; in pixels after SetPixelScale. The height is negative when y grows
    /// upwards.
    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;
    /// Raster pixels to one pixel of the face: 1, or the screen's scale factor.
    virtual double PixelRatio() const = 0;

    // Each of these leaves the current position at its last point.
    virtual void Line(double x1, double y1, double x2, double y2) = 0;
    virtual void LineTo(double x, double y) = 0; ///< from the current position; both ends are painted
    virtual void FillBox(double x1, double y1, double x2, double y2) = 0; ///< both corners are painted
    virtual void PSet(double x, double y) = 0;
    /// count calls of LineTo in one. A canvas may join them as it likes: the picture is the same.
    virtual void LinesTo(const CanvasPoint* points, int count) {
        for (int i = 0; i < count; ++i) {
            LineTo(points[i].x, points[i].y);
        }
    }

    virtual double CurrentX() const = 0;
    virtual double CurrentY() const = 0;
    virtual void SetCurrent(double x, double y) = 0;
    /// The text's top left corner is the current position, which then goes to the next line.
    virtual void Print(const QString& text) = 0;
    virtual double TextWidth(const QString& text) const = 0;  ///< in user units, positive
    virtual double TextHeight(const QString& text) const = 0; ///< in user units, positive
    /// A width in user units as pixels of the raster; proportional to the width.
    virtual double WidthToPixels(double width) const = 0;
};

/// What hangs over a time canvas and is moved by the plotter: the ground labels and the trigger line.
/// Places are in the canvas's user scale of the moment.
class PlotCompanions {
  public:
    virtual ~PlotCompanions() = default;
    virtual void GroundLabelLeft(int channel, double x) = 0;
    virtual void GroundLabelVisible(int channel, bool visible) = 0;
    virtual void GroundLabelCaption(int channel, QStringView caption) = 0;
    virtual void GroundLabelTop(int channel, double y) = 0;
    virtual double GroundLabelHeight(int channel) const = 0; ///< in user units, positive
    virtual void GroundLabelColour(int channel, Colour colour) = 0;
    virtual void TriggerLine(double x1, double y1, double x2, double y2) = 0;
};
