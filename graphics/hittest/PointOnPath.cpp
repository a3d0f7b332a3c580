// The hit test of a point against a path: the path's records become a
// segment list on every call (nothing is cached), then every segment is
// tested in order until one is hit. The area test also gathers on which
// sides of the point the segments cross its lines.

#include <vxutility/HitTest.h>

#include "graphics/hittest/BuildPathSegments.h"
#include "graphics/hittest/CurveSegmentTest.h"
#include "graphics/hittest/LineSegmentTest.h"
#include "graphics/hittest/PointOnPath.h"

namespace vxhittest {
namespace {

bool TestSegment(CCA_GPoint point, float tolerance, const PathSegment& segment, SideCounts& counts) {
  switch (segment.kind) {
    case Line:
      return segment.points.GetSize() == 2 && TestLineSegment(point.x, point.y, tolerance, segment, counts);
    case Quadratic:
    case Cubic:
      return TestCurveSegment(point.x, point.y, tolerance, segment.kind, segment, counts);
    default:
      return false;
  }
}

bool AnySegmentHit(CCA_GPoint point, float tolerance, const PathSegmentList& segments, SideCounts& counts) {
  const int count = segments.GetSize();
  for (int i = 0; i < count; ++i) {
    if (TestSegment(point, tolerance, segments[i], counts)) return true;
  }
  return false;
}

}  // namespace

bool TestPointOnStroke(CCA_GPoint point, float tolerance, const PathSegmentList& segments) {
  SideCounts unused;
  return AnySegmentHit(point, tolerance, segments, unused);
}

bool TestPointInFill(CCA_GPoint point, float tolerance, const PathSegmentList& segments) {
  SideCounts counts;
  if (AnySegmentHit(point, tolerance, segments, counts)) return true;
  return counts.plusX >= 1 && counts.minusX >= 1 && counts.plusY >= 1 && counts.minusY >= 1;
}

}  // namespace vxhittest

bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, float, bool fillArea,
                      CA_FillMode) {
  using namespace vxhittest;
  // One allocation holds the usual list: a path of n records rarely makes
  // more than n segments.
  PathSegmentList segments(path.GetPointCount());
  BuildPathSegments(path, segments);
  if (fillArea && TestPointInFill(point, tolerance, segments)) return true;
  return TestPointOnStroke(point, tolerance, segments);
}
