// The hit test of a point against a path, as one streaming walk over the
// path's records: nothing is allocated and nothing is kept between calls.

#include <vxutility/HitTest.h>

#include "graphics/hittest/PathWalk.h"
#include "graphics/hittest/PointQuery.h"

bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, float, bool fillArea,
                      CA_FillMode) {
  const int count = path.GetPointCount();
  if (count <= 0) return false;
  // The records lie in one block, so the walk reads them in place.
  vxhittest::PointQuery query(point, tolerance, fillArea);
  return vxhittest::WalkPathSegments(&path.GetPoint(0), count, query);
}
