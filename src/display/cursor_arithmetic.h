#pragma once

/// Where cursors stand in their bars, and back. Places and lengths are logical pixels along the bar, a
/// fraction is 0 at its left or upper end and 1 at the other; none leaves 0..1, whatever goes in.

inline constexpr double kBarInset = 3; ///< logical pixels at the end of a bar that no handle's middle passes
inline constexpr double kLevelSpan = 252; ///< ADC steps over the whole bar, 126 at its upper end

/// Of a drag: it jumps to the place of the mouse, or moves by a hundredth of the way from the press.
double DragFraction(bool jumps, double at, double anchor, double barLength);

/// The left or upper edge of a handle.
double HandlePlace(double fraction, double barLength, double handleLength);

/// seconds of a record of sampleDepth x period seconds; 0 where there is no such record.
double FractionOfTime(double seconds, int sampleDepth, double period);
double TimeOfFraction(double fraction, int sampleDepth, double period);
double FractionOfLevel(double steps);
double LevelOfFraction(double fraction);

/// The line that marks a sample position in the time cursors' bar.
double VertWorldLinePlace(double position, int sampleDepth, double barLength);
/// The line that marks a level in the level cursors' bar. Its span is 254, not that of the handles.
double HorizWorldLinePlace(double level, double barLength);
