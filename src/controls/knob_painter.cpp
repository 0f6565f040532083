#include "controls/knob_painter.h"

#include "controls/bevel.h"
#include "controls/keyboard_focus.h"
#include "controls/knob_arithmetic.h"
#include "controls/knob_design.h"

#include <QPainter>
#include <algorithm>
#include <numbers>

namespace {

// The two rings lie in opposite light, which makes the gap between them a groove.
constexpr std::array<BevelArc, 2> kOuterRim{{{45, 225, 0x000000}, {225, 45, 0xFFFFFF}}};
constexpr std::array<BevelArc, 2> kInnerRim{{{45, 225, 0xFFFFFF}, {225, 45, 0x000000}}};
constexpr double kRimWidth = 4;  // from the circle to the inside of the inner ring
constexpr double kTickReach = 2; // to either side of the circle
constexpr double kPointerGap = 5;
constexpr double kPointerOuter = 0.95;
constexpr double kPointerInner = 0.5;
constexpr double kPointerWidth = 3;
constexpr double kDarkFace = 0.45; // of 1; on a darker one the black pointer gets a light edge
constexpr int kPointerEdge = 80;   // of 255
constexpr double kFocusReach = 4;
constexpr int kLight =
    26; // of 255, what the light adds to the face at the upper left and takes at the lower right
constexpr double kZeroButtonRadius = 5;
constexpr int kZeroButtonEdge = 90; // of 255
constexpr double kWindowPad = 2;
constexpr int kWindowEdge = 70; // of 255

void DrawBoundary(QPainter& painter, const KnobDesign& design, const KnobLayout& layout) {
    if (layout.Radius <= 0) {
        return;
    }
    painter.setPen(QPen(design.KnobBorderColor, 1));
    painter.setBrush(design.KnobFillColor);
    painter.drawEllipse(layout.boundary.adjusted(0.5, 0.5, -0.5, -0.5));

    const double face = std::max(0.0, layout.Radius - kRimWidth);
    const QPointF corner(face * std::numbers::sqrt2 / 2, face * std::numbers::sqrt2 / 2);
    QLinearGradient light(layout.drawnCentre() - corner, layout.drawnCentre() + corner);
    light.setColorAt(0, QColor(255, 255, 255, kLight));
    light.setColorAt(0.45, QColor(255, 255, 255, 0));
    light.setColorAt(0.55, QColor(0, 0, 0, 0));
    light.setColorAt(1, QColor(0, 0, 0, kLight));
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    painter.drawEllipse(layout.drawnCentre(), face, face);
}

/// The label's back: a window let into the panel. On the face itself it is plain.
void DrawLabelBack(QPainter& painter, const KnobDesign& design, const KnobLayout& layout) {
    const QRectF label = layout.label.toAlignedRect();
    if (layout.labelOnFace) {
        painter.fillRect(label, KnobLabelBack(design, layout));
        return;
    }
    const QRectF window = label.adjusted(-kWindowPad, 0, kWindowPad, 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(KnobLabelBack(design, layout));
    painter.drawRoundedRect(window, kWindowPad, kWindowPad);
    const QRectF edge = window.adjusted(kWindowPad, 0.5, -kWindowPad, -0.5);
    painter.setPen(QPen(QColor(0, 0, 0, kWindowEdge), 1));
    painter.drawLine(edge.topLeft(), edge.topRight());
    painter.setPen(QPen(QColor(255, 255, 255, kWindowEdge), 1));
    painter.drawLine(edge.bottomLeft(), edge.bottomRight());
}

void DrawMarkers(QPainter& painter, const KnobDesign& design, const KnobLayout& layout) {
    const int markers = knob::MarkerCount(design.KnobMarkers);
    if (markers <= 1) {
        return;
    }
    const int sweep = knob::Sweep(design.KnobStartAngle, design.KnobStopAngle);
    for (int i = 1; i <= markers; ++i) {
        const double angle = knob::MarkerAngle(i, markers, design.KnobStartAngle, sweep);
        const bool band = knob::InBand(i, design.KnobBand1Start, design.KnobBand1Stop);
        painter.setPen(
            QPen(band ? design.KnobBand1Color : design.KnobMarkerColor, 1, Qt::SolidLine, Qt::FlatCap));
        const QPointF centre = layout.drawnCentre();
        painter.drawLine(knob::PointAt(centre, layout.Radius + kTickReach, angle),
                         knob::PointAt(centre, layout.Radius - kTickReach, angle));
    }
}

/// The edge of `ZeroButton`, which is a plain disc of the face's colour.
void DrawZeroButtonEdge(QPainter& painter, const KnobDesign& design, const KnobLayout& layout) {
    if (design.KnobZeroButton) {
        QColor edge = design.KnobTextColor;
        edge.setAlpha(kZeroButtonEdge);
        DrawRing(painter, {layout.drawnCentre(), kZeroButtonRadius, 1, 1}, edge);
    }
}

void DrawRims(QPainter& painter, const KnobLayout& layout) {
    DrawBevel(painter, {layout.drawnCentre(), layout.Radius - 1, 1, 1}, kOuterRim);
    DrawBevel(painter, {layout.drawnCentre(), layout.Radius - 3, 1, 1}, kInnerRim);
}

} // namespace

void DrawKnobFace(QPainter& painter, const KnobDesign& design, const KnobLayout& layout) {
    painter.fillRect(layout.control, KnobBack(design, layout));
    painter.setRenderHint(QPainter::Antialiasing);
    DrawBoundary(painter, design, layout);
    if (!design.KnobValueEditable && !design.KnobValueFormat.isEmpty()) {
        DrawLabelBack(painter, design, layout);
    }
    DrawMarkers(painter, design, layout);
    DrawRims(painter, layout);
    DrawZeroButtonEdge(painter, design, layout);
}

void DrawKnobPointer(QPainter& painter, const KnobLayout& layout, double angle, const QColor& fill) {
    const double reach = layout.Radius - kPointerGap;
    if (reach <= 0) {
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QLineF line(knob::PointAt(layout.drawnCentre(), kPointerOuter * reach, angle),
                      knob::PointAt(layout.drawnCentre(), kPointerInner * reach, angle));
    if (fill.lightnessF() < kDarkFace) {
        painter.setPen(
            QPen(QColor(255, 255, 255, kPointerEdge), kPointerWidth + 1.5, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(line);
    }
    painter.setPen(QPen(Qt::black, kPointerWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(line);
}

QRectF PointerBounds(const KnobLayout& layout) {
    const double reach = std::max(0.0, layout.Radius - kPointerGap) + kPointerWidth;
    const QPointF centre = layout.drawnCentre();
    return {centre.x() - reach, centre.y() - reach, 2 * reach, 2 * reach};
}

void DrawKnobFocus(QPainter& painter, const KnobLayout& layout) {
    DrawFocusRing(painter, {layout.drawnCentre(), layout.Radius + kFocusReach, 1, 1});
}

QColor KnobBack(const KnobDesign& design, const KnobLayout& layout) {
    return layout.labelOnFace ? design.KnobBorderColor : design.KnobFillColor;
}

QColor KnobLabelBack(const KnobDesign& design, const KnobLayout& layout) {
    return layout.labelOnFace ? design.KnobFillColor : design.KnobBorderColor;
}
