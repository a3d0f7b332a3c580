#pragma once
// Elliptical arcs in endpoint form, replaced by runs of cubic Bezier curves.

#include <vxbase/Path.h>

namespace vxhittest {

/// Appends to `out` a figure start at the arc's start and k cubic curves
/// that follow the arc, each at most a little over a quarter turn; returns
/// k. `arc` holds a figure start and the four records of one arc (radii,
/// rotation in radians and large-arc flag, sweep flag, end point). A
/// degenerate arc (end on the start, a zero radius, anything that is not a
/// number) appends only the figure start and returns 0; a path with fewer
/// than five records appends nothing and returns 0.
int ConvertArcToCubics(CCA_Path& out, CCA_Path arc);

}  // namespace vxhittest
