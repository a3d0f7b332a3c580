// The hit test of a point against a path, as one streaming walk over the
// path's records: nothing is allocated and nothing is kept between calls.
// Segments are tested as the walk meets them; the order does not matter,
// since a hit is an OR and the area test only asks whether each side
// counter is nonzero. The area test therefore needs one pass: without a
// hit, the outline test would find none either. A segment is skipped when
// it can neither hit nor raise a counter that is still zero, and the area
// walk stops once all four counters are nonzero.

#include <vxutility/HitTest.h>

#include "graphics/hittest/ArcToCubics.h"
#include "graphics/hittest/CurveSegmentTest.h"
#include "graphics/hittest/LineSegmentTest.h"
#include "graphics/hittest/PathWalk.h"
#include "graphics/hittest/SegmentReach.h"

namespace vxhittest {
namespace {

class PointQuery {
 public:
  PointQuery(const CCA_GPoint& point, float tolerance, bool area)
      : m_point(MakeQueryPoint(point.x, point.y, tolerance)),
        m_tolerance(tolerance),
        m_counts(area ? &m_sides : nullptr),
        m_wanted(area ? ReachAnything : ReachHit) {}

  // Each returns true once the answer is known to be true.
  bool Line(const CA_PathPoint& start, const CA_PathPoint& end) {
    const unsigned reach = LineReach(m_point, start, end) & m_wanted;
    if (reach == 0) return false;
    if (reach & ReachHit) {
      return TestLineSegment(m_point.px, m_point.py, m_tolerance, start, end, m_counts) || AllSidesCounted();
    }
    CountLineSegmentCrossings(m_point.px, m_point.py, m_tolerance, start, end, m_sides);
    return AllSidesCounted();
  }

  bool Curve(int kind, const CA_PathPoint* points) {
    const unsigned reach = CurveReach(m_point, kind, points) & m_wanted;
    if (reach == 0) return false;
    // Beyond the control box in both axes: nothing to hit or count.
    const ControlBox box = GetControlBox(points, kind == Cubic ? 4 : 3);
    if ((m_point.px < box.minX || m_point.px > box.maxX) && (m_point.py < box.minY || m_point.py > box.maxY)) {
      return false;
    }
    const BezierCurve curve = MakeCurve(kind, points);
    CurveSamples samples;
    SampleCurve(curve, samples);
    return TestSampledCurve(m_point.px, m_point.py, m_tolerance, curve, samples, m_counts, reach) ||
           AllSidesCounted();
  }

  bool Arc(const CA_PathPoint& start, const CA_PathPoint* records) {
    if ((ArcReach(m_point, start, records) & m_wanted) == 0) return false;
    CA_PathPoint points[kMaxArcPoints];
    const int pieces = ArcToCubicPoints(start, records, points);
    for (int i = 0; i < pieces; ++i) {
      if (Curve(Cubic, &points[3 * i])) return true;
    }
    return false;
  }

 private:
  bool AllSidesCounted() {
    if (m_counts == nullptr) return false;
    m_wanted = ReachHit | ZeroCounters(m_sides);
    return m_wanted == ReachHit;
  }

  const QueryPoint m_point;
  const float m_tolerance;
  SideCounts m_sides;
  SideCounts* const m_counts;  // null in the outline test, which counts nothing
  unsigned m_wanted;           // what a segment must be able to affect to be tested
};

}  // namespace
}  // namespace vxhittest

bool JudgePointOnPath(const CCA_GPoint& point, float tolerance, const CCA_Path& path, float, bool fillArea,
                      CA_FillMode) {
  const int count = path.GetPointCount();
  if (count <= 0) return false;
  // The records lie in one block, so the walk reads them in place.
  vxhittest::PointQuery query(point, tolerance, fillArea);
  return vxhittest::WalkPathSegments(&path.GetPoint(0), count, query);
}
