#pragma once
// One hit test of a point against the segments it is shown, in any order:
// a hit is an OR, and the area test only asks whether each side counter is
// nonzero. Without a hit the outline test would find none either, so the
// area test needs a single pass. A segment is tested only when it can hit
// or raise a counter that is still zero.

#include <vxbase/Geometry.h>

#include "graphics/hittest/CurveSegmentTest.h"
#include "graphics/hittest/SegmentReach.h"

namespace vxhittest {

class PointQuery {
 public:
  PointQuery(const CCA_GPoint& point, float tolerance, bool area);

  const QueryPoint& Point() const { return m_point; }
  /// What a segment must be able to affect to be worth testing (Reach bits).
  unsigned Wanted() const { return m_wanted; }

  // Each test returns true once the answer is known to be true: a hit, or,
  // in the area test, crossings on all four sides.
  /// A straight segment whose reach from this point is known; `box` holds
  /// its ends (it is read only when the ends are finite).
  bool ReachedLine(unsigned reach, const CA_PathPoint& start, const CA_PathPoint& end, const ControlBox& box);
  bool Curve(int kind, const CA_PathPoint* points);
  /// A curve whose reach from this point is known.
  bool ReachedCurve(unsigned reach, int kind, const CA_PathPoint* points);
  bool Arc(const CA_PathPoint& start, const CA_PathPoint* records);
  /// A curve sampled beforehand, with its control box and what it can
  /// reach from this point.
  bool SampledCurve(unsigned reach, const ControlBox& box, const BezierCurve& curve, const CurveSamples& samples);

 private:
  bool AllSidesCounted();
  bool BeyondBothAxes(const ControlBox& box) const;

  const QueryPoint m_point;
  const float m_tolerance;
  SideCounts m_sides;
  SideCounts* const m_counts;  // null in the outline test, which counts nothing
  unsigned m_wanted;
};

}  // namespace vxhittest
