#pragma once

#include <QPointF>
#include <QString>
#include <cstdint>

/// The arithmetic of a knob. Angles are in degrees: 0 points left, 90 up, 180 right, 270 down. A position is
/// the pointer's place, 0 at the start angle and 1 at the stop angle, clockwise on the screen.
namespace knob {

/// Degrees from the start angle clockwise to the stop angle; 360 when both are the same.
int Sweep(int startAngle, int stopAngle);

/// The point at that radius and angle around a centre, y downward.
QPointF PointAt(QPointF centre, double radius, double angle);

/// The angle of a point that lies (dx, dy) from the centre, in 0..360. The centre itself counts as right.
float AngleOf(double dx, double dy);

/// Above 1 in the dead arc between stop and start, to which the exact start angle belongs. Infinite when
/// the sweep is 0.
float PositionOf(float angle, int startAngle, int sweep);

/// Whether the mouse turns the knob up. lastAngle 0: no drag is under way, which counts as down. The step
/// over 0 is seen when it goes down; a step up over it reads as down, which keeps the stops closed.
bool DirectionIncreasing(float angle, float lastAngle);

/// The ends that a drag has run into.
struct Stops {
    bool StuckLow = false;
    bool StuckHigh = false;
    bool any() const { return StuckLow || StuckHigh; }
    bool operator==(const Stops&) const = default;
};

/// Keeps a drag from jumping over the dead arc from one end to the other: the position that the pointer may
/// take for p. firstCall: the caller only asks whether the drag may begin.
float HoldAtStops(float p, bool directionIncreasing, bool firstCall, bool dragging, Stops& stops);

/// The nearest step of 1 / (max - min), ties to even. Unchanged without quantising or without a range.
float Quantised(float position, int min, int max, bool quantized);

/// What a value of an anticlockwise knob is in the scroller's sense, and back.
std::int64_t Reflected(std::int64_t value, int min, int max);

/// Position times range, as a 32-bit real.
float ValueAt(float position, int min, int max);

/// How many markers a text counts; 0 for a text that is no number. At most kMostMarkers.
int MarkerCount(const QString& markers);
inline constexpr int kMostMarkers = 720; // two a degree: more could not be told apart

/// The angle of marker i of 1..markers; markers above 1.
double MarkerAngle(int i, int markers, int startAngle, int sweep);

/// Whether marker i lies in the coloured band.
bool InBand(int i, int bandStart, int bandStop);

} // namespace knob
