#pragma once
// The walk over a path's records in segment order, without building a
// segment list. A figure start opens a figure and nothing else. Otherwise
// the first of line, quadratic, cubic and arc bits decides what the point
// ends; curves and arcs consume the records after their first point, so the
// next segment starts at their end, and one that lacks those records makes
// no segment. After that, a close flag on the last record of the segment
// adds a line back to the figure start ((0, 0) before the first one).

#include <vxbase/Path.h>

#include "graphics/hittest/SegmentRecords.h"

namespace vxhittest {

/// Calls, for each segment of the `count` records at `records`:
/// `visit.Line(start, end)`, `visit.Curve(kind, points)` with the curve's
/// three or four consecutive records, or `visit.Arc(start, records)` with
/// the arc's four records. Each returns true to stop the walk; the walk then
/// returns true.
template <typename Visitor>
bool WalkPathSegments(const CA_PathPoint* records, int count, Visitor& visit) {
  CA_PathPoint figureStart;
  for (int i = 0; i < count; ++i) {
    const CA_PathPoint& point = records[i];
    if (point.flags & PathFlagMoveTo) {
      figureStart = point;
      continue;
    }
    if (i == 0) continue;
    const CA_PathPoint& start = records[i - 1];
    bool stop = false;
    if (point.flags & PathFlagLineTo) {
      stop = visit.Line(start, point);
    } else if (point.flags & PathFlagQuadTo) {
      if (i < count - 1) {
        stop = visit.Curve(Quadratic, &start);
        i += 1;
      }
    } else if (point.flags & PathFlagCubicTo) {
      if (i < count - 2) {
        stop = visit.Curve(Cubic, &start);
        i += 2;
      }
    } else if (point.flags & PathFlagArcTo) {
      if (i < count - 3) {
        stop = visit.Arc(start, &point);
        i += 3;
      }
    }
    if (stop) return true;
    if ((records[i].flags & PathFlagClose) && visit.Line(records[i], figureStart)) return true;
  }
  return false;
}

}  // namespace vxhittest
