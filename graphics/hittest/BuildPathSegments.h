#pragma once
// The walk from a path's point records to the hit test's segment list.

#include <vxbase/Path.h>

#include "graphics/hittest/PathSegment.h"

namespace vxhittest {

/// Appends the segments of `path` to `segments`: lines, quadratic and cubic
/// curves, arcs as runs of cubic curves, and a closing line after every
/// segment whose last point carries PathFlagClose. Records that cannot be
/// stored are left out and the walk goes on.
void BuildPathSegments(CCA_Path path, PathSegmentList& segments);

}  // namespace vxhittest
