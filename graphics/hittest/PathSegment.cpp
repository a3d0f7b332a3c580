#include "graphics/hittest/PathSegment.h"

namespace vxhittest {

ControlBox GetControlBox(const CCA_ArrayTemplate<CA_PathPoint>& points) {
  ControlBox box;
  const int count = points.GetSize();
  if (count == 0) return box;
  box.minX = box.maxX = points[0].x;
  box.minY = box.maxY = points[0].y;
  for (int i = 1; i < count; ++i) {
    const CA_PathPoint& p = points[i];
    if (p.x < box.minX) box.minX = p.x;
    if (p.x >= box.maxX) box.maxX = p.x;
    if (p.y < box.minY) box.minY = p.y;
    if (p.y >= box.maxY) box.maxY = p.y;
  }
  return box;
}

void AppendSegmentPoint(PathSegment& segment, const CA_PathPoint& point) {
  const int count = segment.points.GetSize();
  if (!segment.points.SetSize(count + 1, -1)) return;
  segment.points[count] = point;
}

bool AppendSegment(PathSegmentList& segments, SegmentKind kind, const CA_PathPoint* points, int count) {
  const int index = segments.GetSize();
  if (!segments.SetSize(index + 1, -1)) return false;
  PathSegment& segment = segments[index];
  segment.kind = kind;
  for (int i = 0; i < count; ++i) AppendSegmentPoint(segment, points[i]);
  return true;
}

}  // namespace vxhittest
