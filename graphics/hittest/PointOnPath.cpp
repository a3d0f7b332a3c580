// The hit test of a point against a path, as one streaming walk over the
// path's records: nothing is allocated and nothing is kept between calls.

#include <vxutility/HitTest.h>

#include "graphics/hittest/PathWalk.h"
#include "graphics/hittest/PointQuery.h"

namespace vxhittest {
namespace {

// Most segments are skipped, so their bounds are checked here, inside the
// walk's loop, before the query is called.
struct SkippingVisitor {
  PointQuery& query;

  bool Line(const CA_PathPoint& start, const CA_PathPoint& end) {
    const unsigned reach = LineReach(query.Point(), start, end);
    if ((reach & query.Wanted()) == 0) return false;
    const ControlBox box{std::min(start.x, end.x), std::min(start.y, end.y), std::max(start.x, end.x),
                         std::max(start.y, end.y)};
    return query.ReachedLine(reach, start, end, box);
  }
  bool Curve(int kind, const CA_PathPoint* points) {
    const unsigned reach = CurveReach(query.Point(), kind, points);
    return (reach & query.Wanted()) != 0 && query.ReachedCurve(reach, kind, points);
  }
  bool Arc(const CA_PathPoint& start, const CA_PathPoint* records) { return query.Arc(start, records); }
};

}  // namespace
}  // namespace vxhittest

bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, float, bool fillArea,
                      CA_FillMode) {
  const int count = path.GetPointCount();
  if (count <= 0) return false;
  // The records lie in one block, so the walk reads them in place.
  vxhittest::PointQuery query(point, tolerance, fillArea);
  vxhittest::SkippingVisitor visitor{query};
  return vxhittest::WalkPathSegments(&path.GetPoint(0), count, visitor);
}
