#include "controls/bevel.h"

#include "controls/colour.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

namespace {

// Neighbouring arcs are stroked this far over each other, or the background would show through the
// anti-aliased seam between them.
constexpr double kSeam = 1.0;

bool Drawable(const Ring& ring) {
    return ring.lineWidth > 0 && !RingSemiAxes(ring.radius, ring.aspect).isEmpty();
}

QRectF Bounds(const Ring& ring) {
    const QSizeF half = RingSemiAxes(ring.radius, ring.aspect);
    return {ring.centre.x() - half.width(), ring.centre.y() - half.height(), 2 * half.width(),
            2 * half.height()};
}

} // namespace

double ArcSweep(const BevelArc& arc) {
    const double sweep = std::fmod(arc.to - arc.from, 360.0);
    return sweep > 0 ? sweep : sweep + 360.0;
}

QSizeF RingSemiAxes(double radius, double aspect) {
    if (!(radius > 0) || !(aspect > 0) || !std::isfinite(radius) || !std::isfinite(aspect)) {
        return {0, 0};
    }
    return aspect > 1 ? QSizeF(radius / aspect, radius) : QSizeF(radius, radius * aspect);
}

void DrawBevel(QPainter& painter, const Ring& ring, std::span<const BevelArc> arcs) {
    if (!Drawable(ring)) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const QRectF bounds = Bounds(ring);
    const double seam = kSeam / ring.radius * 180.0 / std::numbers::pi;
    for (const BevelArc& arc : arcs) {
        QPainterPath path;
        path.arcMoveTo(bounds, arc.from);
        path.arcTo(bounds, arc.from, std::min(ArcSweep(arc) + seam, 360.0));
        painter.setPen(QPen(ToQColor(arc.colour), ring.lineWidth, Qt::SolidLine, Qt::FlatCap));
        painter.drawPath(path);
    }
    painter.restore();
}

void DrawRing(QPainter& painter, const Ring& ring, const QColor& colour) {
    if (!Drawable(ring)) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, ring.lineWidth));
    painter.drawEllipse(Bounds(ring));
    painter.restore();
}
