#pragma once
// The records the hit test shares between its path walk and its segment
// tests: a segment with its kind and points, the four side counters of the
// area test, and the control box of a segment.

#include <cstdint>

#include <vxbase/Array.h>
#include <vxbase/Path.h>

namespace vxhittest {

enum SegmentKind : std::int32_t {
  Line = 1,       // start, end
  Quadratic = 2,  // start, control, end
  Cubic = 3,      // start, first control, second control, end
};

/// One segment: copies of the path's records, flags included. The segment
/// owns its point array, so a list of segments must construct and destroy
/// its elements (CCA_ObjArrayTemplate).
struct PathSegment {
  SegmentKind kind = Line;
  CCA_ArrayTemplate<CA_PathPoint> points;
};

using PathSegmentList = CCA_ObjArrayTemplate<PathSegment>;

/// Crossings of the path with the point's horizontal and vertical lines,
/// counted by the side of the point on which they lie.
struct SideCounts {
  std::int32_t plusX = 0;   // at greater x than the point
  std::int32_t minusX = 0;  // at smaller x
  std::int32_t plusY = 0;   // at greater y
  std::int32_t minusY = 0;  // at smaller y
};

struct ControlBox {
  float minX = 0;
  float minY = 0;
  float maxX = 0;
  float maxY = 0;
};

/// The box around every point, control points included; all zero for an
/// empty array.
ControlBox GetControlBox(const CCA_ArrayTemplate<CA_PathPoint>& points);

/// Grows the segment's points by one and copies `point` into the new last
/// element; when the array cannot grow the point is dropped.
void AppendSegmentPoint(PathSegment& segment, const CA_PathPoint& point);

/// Grows the list by one segment of `kind` holding `points`; false (list
/// unchanged) when the list cannot grow.
bool AppendSegment(PathSegmentList& segments, SegmentKind kind, const CA_PathPoint* points, int count);

}  // namespace vxhittest
