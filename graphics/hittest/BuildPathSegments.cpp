// One pass over the records. A point's first segment bit decides (line,
// quadratic, cubic, arc); a figure start opens a figure and nothing else.
// Curves and arcs consume the records after their first point, so the next
// segment starts at their end; one that lacks those records makes no
// segment, but its own point is still checked for a close.

#include "graphics/hittest/BuildPathSegments.h"

#include <utility>

#include "graphics/hittest/ArcToCubics.h"

namespace vxhittest {
namespace {

// The segment bit that decides what a point ends; 0 for none.
int SegmentBit(int flags) {
  for (int bit : {PathFlagLineTo, PathFlagQuadTo, PathFlagCubicTo, PathFlagArcTo}) {
    if (flags & bit) return bit;
  }
  return 0;
}

// The arc from `from` whose four records start at `first`, as cubic curves.
void AppendArc(const CCA_Path& path, int first, const CA_PathPoint& from, PathSegmentList& segments) {
  const CA_PathPoint& radii = path.GetPoint(first);
  const CA_PathPoint& rotation = path.GetPoint(first + 1);
  const CA_PathPoint& sweep = path.GetPoint(first + 2);
  const CA_PathPoint& end = path.GetPoint(first + 3);
  CCA_Path arc;
  arc.MoveTo(from.x, from.y);
  arc.ArcTo(radii.x, radii.y, rotation.x, rotation.y, sweep.x, end.x, end.y);
  CCA_Path cubics;
  // The arc path is not used again: hand it over instead of copying it.
  const int pieces = ConvertArcToCubics(cubics, std::move(arc));
  // A piece whose records could not all be stored is left out.
  for (int j = 0; j < pieces && 3 * j + 3 < cubics.GetPointCount(); ++j) {
    AppendSegment(segments, Cubic, &cubics.GetPoint(3 * j), 4);
  }
}

// Appends the segment that point `i` ends; returns the index of its last
// record (i itself when the point ends no curve or arc).
int AppendSegmentEndingAt(const CCA_Path& path, int i, PathSegmentList& segments) {
  const int n = path.GetPointCount();
  const CA_PathPoint& start = path.GetPoint(i - 1);
  const CA_PathPoint& point = path.GetPoint(i);
  switch (SegmentBit(point.flags)) {
    case PathFlagLineTo: {
      const CA_PathPoint line[2] = {start, point};
      AppendSegment(segments, Line, line, 2);
      return i;
    }
    case PathFlagQuadTo: {
      if (i >= n - 1) return i;
      const CA_PathPoint quad[3] = {start, point, path.GetPoint(i + 1)};
      AppendSegment(segments, Quadratic, quad, 3);
      return i + 1;
    }
    case PathFlagCubicTo: {
      if (i >= n - 2) return i;
      const CA_PathPoint cubic[4] = {start, point, path.GetPoint(i + 1), path.GetPoint(i + 2)};
      AppendSegment(segments, Cubic, cubic, 4);
      return i + 2;
    }
    case PathFlagArcTo: {
      if (i >= n - 3) return i;
      AppendArc(path, i, start, segments);
      return i + 3;
    }
    default:
      return i;
  }
}

}  // namespace

void BuildPathSegments(CCA_Path path, PathSegmentList& segments) {
  CA_PathPoint figureStart;  // (0, 0) until the first figure start
  const int n = path.GetPointCount();
  for (int i = 0; i < n; ++i) {
    const CA_PathPoint& point = path.GetPoint(i);
    if (point.flags & PathFlagMoveTo) {
      figureStart = point;
      continue;
    }
    if (i == 0) continue;
    i = AppendSegmentEndingAt(path, i, segments);
    const CA_PathPoint& last = path.GetPoint(i);
    if (last.flags & PathFlagClose) {
      const CA_PathPoint closing[2] = {last, figureStart};
      AppendSegment(segments, Line, closing, 2);
    }
  }
}

}  // namespace vxhittest
