#pragma once
// Hit and crossing test of one straight segment.

#include "graphics/hittest/SegmentRecords.h"

namespace vxhittest {

/// True when (px, py) lies within `tolerance` of the segment from `p0` to
/// `p1`, measured along the axes (against tolerance * sqrt 2) or to an end
/// point, depending on where the point lies relative to the segment's box.
/// Before deciding, adds to `counts` (when given) the sides on which the
/// segment's line crosses the point's horizontal and vertical lines.
bool TestLineSegment(float px, float py, float tolerance, const CA_PathPoint& p0, const CA_PathPoint& p1,
                     SideCounts* counts);

/// Only the counting part of TestLineSegment, for a point known to be out
/// of the segment's reach, given the segment's box and the axis tolerance
/// (tolerance * sqrt 2, the square root taken in single precision).
void CountLineSegmentCrossings(float px, float py, float axisTolerance, const CA_PathPoint& p0,
                               const CA_PathPoint& p1, const ControlBox& box, SideCounts& counts);

}  // namespace vxhittest
