#include "graphics/hittest/PointQuery.h"

#include "graphics/hittest/ArcToCubics.h"
#include "graphics/hittest/LineSegmentTest.h"

namespace vxhittest {

PointQuery::PointQuery(const CCA_GPoint& point, float tolerance, bool area)
    : m_point(MakeQueryPoint(point.x, point.y, tolerance)),
      m_tolerance(tolerance),
      m_counts(area ? &m_sides : nullptr),
      m_wanted(area ? ReachAnything : ReachHit) {}

bool PointQuery::ReachedLine(unsigned reach, const CA_PathPoint& start, const CA_PathPoint& end,
                             const ControlBox& box) {
  reach &= m_wanted;
  if (reach == 0) return false;
  // A segment that can hit is tested in full; only a finite one can be out
  // of reach, and that one only counts.
  if (reach & ReachHit) {
    return TestLineSegment(m_point.px, m_point.py, m_tolerance, start, end, m_counts) || AllSidesCounted();
  }
  CountLineSegmentCrossings(m_point.px, m_point.py, m_point.reach, start, end, box, m_sides);
  return AllSidesCounted();
}

bool PointQuery::Curve(int kind, const CA_PathPoint* points) {
  return ReachedCurve(CurveReach(m_point, kind, points), kind, points);
}

bool PointQuery::ReachedCurve(unsigned reach, int kind, const CA_PathPoint* points) {
  reach &= m_wanted;
  if (reach == 0) return false;
  const ControlBox box = GetControlBox(points, kind == Cubic ? 4 : 3);
  if (BeyondBothAxes(box)) return false;
  const BezierCurve curve = MakeCurve(kind, points);
  CurveSamples samples;
  SampleCurve(curve, samples);
  return SampledCurve(reach, box, curve, samples);
}

bool PointQuery::SampledCurve(unsigned reach, const ControlBox& box, const BezierCurve& curve,
                              const CurveSamples& samples) {
  reach &= m_wanted;
  if (reach == 0) return false;
  if (BeyondBothAxes(box)) return false;
  return TestSampledCurve(m_point.px, m_point.py, m_tolerance, curve, samples, m_counts, reach) ||
         AllSidesCounted();
}

bool PointQuery::Arc(const CA_PathPoint& start, const CA_PathPoint* records) {
  if ((ArcReach(m_point, start, records) & m_wanted) == 0) return false;
  CA_PathPoint points[kMaxArcPoints];
  const int pieces = ArcToCubicPoints(start, records, points);
  for (int i = 0; i < pieces; ++i) {
    if (Curve(Cubic, &points[3 * i])) return true;
  }
  return false;
}

// Beyond a curve's control box in both axes: nothing to hit or count.
bool PointQuery::BeyondBothAxes(const ControlBox& box) const {
  return (m_point.px < box.minX || m_point.px > box.maxX) && (m_point.py < box.minY || m_point.py > box.maxY);
}

bool PointQuery::AllSidesCounted() {
  if (m_counts == nullptr) return false;
  m_wanted = ReachHit | ZeroCounters(m_sides);
  return m_wanted == ReachHit;
}

}  // namespace vxhittest
