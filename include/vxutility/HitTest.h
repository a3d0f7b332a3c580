#pragma once
/// Hit testing of a point against a vector path, on its outline or, when
/// asked, inside the area it encloses.

#include <vxbase/Geometry.h>
#include <vxbase/Path.h>
#include <vxbase/Types.h>

#include <vxutility/vxutility_export.h>

/// True when `point` lies within `tolerance` of the outline of `path`, or,
/// with `fillArea`, when the path's segments also cross the point's
/// horizontal and vertical lines on all four sides of it. Arcs are tested
/// as runs of cubic curves. The fourth argument and `fillMode` have no
/// effect. False for an empty path, a path without segments, and a miss.
VXUTILITY_EXPORT bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, float,
                                       bool fillArea, CA_FillMode fillMode);

/// Extension for callers that test many points against one path: the path
/// prepared once (arcs converted, boxes, curve samples), so that each query
/// only scans boxes and tests the segments that can still matter. Answers
/// exactly as JudgePointOnPath on the path given to the constructor; later
/// changes to that path are not seen. Queries keep no state and may run on
/// any number of threads at once. Memory that runs out while preparing
/// passes through as std::bad_alloc.
class VXUTILITY_EXPORT VXHitTestPath {
 public:
  explicit VXHitTestPath(const CCA_Path& path);
  ~VXHitTestPath();
  VXHitTestPath(const VXHitTestPath&) = delete;
  VXHitTestPath& operator=(const VXHitTestPath&) = delete;

  /// JudgePointOnPath(point, tolerance, path, any, fillArea, any mode).
  bool JudgePoint(const CCA_GPoint& point, float tolerance, bool fillArea) const;

 private:
  struct Data;
  Data* m_pData;
};
