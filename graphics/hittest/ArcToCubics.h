#pragma once
// Elliptical arcs in endpoint form, replaced by runs of cubic Bezier curves.

#include <vxbase/Path.h>

namespace vxhittest {

/// A figure start and three points for each of at most four pieces.
constexpr int kMaxArcPoints = 13;

/// Writes to `points` the arc's start and, for each of the k pieces it
/// returns, the piece's two control points and end point. The arc runs from
/// `from` along the four records at `records` (radii, rotation in radians
/// and large-arc flag, sweep flag, end point). A degenerate arc (end on the
/// start, a zero radius, anything that is not a number) writes only the
/// start and returns 0.
int ArcToCubicPoints(const CA_PathPoint& from, const CA_PathPoint* records, CA_PathPoint (&points)[kMaxArcPoints]);

/// Appends to `out` a figure start at the arc's start and k cubic curves
/// that follow the arc, each at most a little over a quarter turn; returns
/// k. `arc` holds a figure start and the four records of one arc (radii,
/// rotation in radians and large-arc flag, sweep flag, end point). A
/// degenerate arc (end on the start, a zero radius, anything that is not a
/// number) appends only the figure start and returns 0; a path with fewer
/// than five records appends nothing and returns 0.
int ConvertArcToCubics(CCA_Path& out, CCA_Path arc);

}  // namespace vxhittest
