#pragma once
// Hit and crossing test of one straight segment.

#include "graphics/hittest/PathSegment.h"

namespace vxhittest {

/// True when (px, py) lies within `tolerance` of the segment, measured along
/// the axes (against tolerance * sqrt 2) or to an end point, depending on
/// where the point lies relative to the segment's box. Before deciding, adds
/// to `counts` the sides on which the segment's line crosses the point's
/// horizontal and vertical lines. The segment must hold two points.
bool TestLineSegment(float px, float py, float tolerance, const PathSegment& segment, SideCounts& counts);

}  // namespace vxhittest
