#pragma once
// The two driver loops of the hit test over a segment list.

#include <vxbase/Geometry.h>

#include "graphics/hittest/PathSegment.h"

namespace vxhittest {

/// True when the first segment that the point hits is found; segments whose
/// kind or point count does not fit are skipped.
bool TestPointOnStroke(CCA_GPoint point, float tolerance, const PathSegmentList& segments);

/// True when the point hits a segment, or when, after every segment, the
/// path crosses the point's horizontal and vertical lines on all four sides
/// of it. Neither an even-odd nor a winding rule: figures and their
/// orientation play no part.
bool TestPointInFill(CCA_GPoint point, float tolerance, const PathSegmentList& segments);

}  // namespace vxhittest
