#pragma once
// Which parts of a query a segment can still affect, decided from its
// records without testing it: whether it may hit, and which side counters it
// may raise. A segment that can affect nothing the query still needs is
// skipped. Every bound leaves a slack for rounding, and a point, tolerance
// or coordinate that is not finite makes a segment reach everything.

#include <algorithm>
#include <cmath>

#include "graphics/hittest/SegmentRecords.h"

namespace vxhittest {

/// The counters still at zero, as Reach bits.
inline unsigned ZeroCounters(const SideCounts& counts) {
  return (counts.plusX == 0 ? ReachPlusX : 0u) | (counts.minusX == 0 ? ReachMinusX : 0u) |
         (counts.plusY == 0 ? ReachPlusY : 0u) | (counts.minusY == 0 ? ReachMinusY : 0u);
}

struct QueryPoint {
  float px = 0;
  float py = 0;
  float reach = 0;      // how far from a segment's box a hit can lie: the axis tolerance
  float magnitude = 0;  // the larger of |px| and |py|
  bool bounded = false;  // the point and tolerance are finite and the tolerance is not negative
};

QueryPoint MakeQueryPoint(float px, float py, float tolerance);

/// 0 when every value is finite, otherwise NaN.
inline float NonFinite(float a, float b, float c, float d) { return (a - a) + (b - b) + (c - c) + (d - d); }

/// Rounding slack around a box of coordinates up to `magnitude`: relative
/// for large values; absolute below, so that a point called far is far
/// enough for squared distances to stay clear of underflow.
inline float Slack(const QueryPoint& q, float magnitude) {
  return 1e-5f * std::max(magnitude, q.magnitude) + 1e-15f;
}

inline float Magnitude(float minX, float minY, float maxX, float maxY) {
  return std::max(std::max(std::fabs(minX), std::fabs(maxX)), std::max(std::fabs(minY), std::fabs(maxY)));
}

/// A shape that lies within the box: a point farther than the reach beyond
/// it cannot hit, and sees the shape on one side only (or, beyond two
/// sides, on none that counts).
inline unsigned BoxReach(const QueryPoint& q, float minX, float minY, float maxX, float maxY, float magnitude) {
  const float m = q.reach + Slack(q, magnitude);
  unsigned reach = ReachAnything;
  if (q.py < minY - m) reach &= ReachPlusY;
  if (q.py > maxY + m) reach &= ReachMinusY;
  if (q.px < minX - m) reach &= ReachPlusX;
  if (q.px > maxX + m) reach &= ReachMinusX;
  return reach;
}

/// How far beyond a straight segment's box, along x (along y), rounding can
/// still bring the point where its line meets the point's vertical
/// (horizontal) line back into the box, so that it counts on the y (x)
/// sides: without limit for a segment (nearly) parallel to that axis.
struct LineFuzz {
  float x;
  float y;
};

constexpr float kUnlimited = HUGE_VALF;

LineFuzz MakeLineFuzz(const CA_PathPoint& p0, const CA_PathPoint& p1);

/// A straight segment with finite ends counts on the y sides only where the
/// point lies over its box along x (widened by `fuzz`), and on the x sides
/// only beside it along y; on each axis only toward the side where the box
/// lies. It hits only near its box, or anywhere on the box's own lines
/// (axis-parallel segments hit along their whole line there).
inline unsigned LineBoxReach(const QueryPoint& q, const ControlBox& b, float magnitude, LineFuzz fuzz) {
  if (q.px == b.minX || q.px == b.maxX || q.py == b.minY || q.py == b.maxY) return ReachAnything;
  unsigned reach = BoxReach(q, b.minX, b.minY, b.maxX, b.maxY, magnitude) & ReachHit;
  const float slack = Slack(q, magnitude);
  if (q.px >= b.minX - (fuzz.x + slack) && q.px <= b.maxX + (fuzz.x + slack)) {
    if (q.py > b.minY) reach |= ReachMinusY;
    if (q.py < b.maxY) reach |= ReachPlusY;
  }
  if (q.py >= b.minY - (fuzz.y + slack) && q.py <= b.maxY + (fuzz.y + slack)) {
    if (q.px > b.minX) reach |= ReachMinusX;
    if (q.px < b.maxX) reach |= ReachPlusX;
  }
  return reach;
}

/// Without the fuzz, which costs divisions, for segments seen once.
inline unsigned LineReach(const QueryPoint& q, const CA_PathPoint& p0, const CA_PathPoint& p1) {
  if (!q.bounded || NonFinite(p0.x, p0.y, p1.x, p1.y) != 0) return ReachAnything;
  const ControlBox box{std::min(p0.x, p1.x), std::min(p0.y, p1.y), std::max(p0.x, p1.x), std::max(p0.y, p1.y)};
  return LineBoxReach(q, box, Magnitude(box.minX, box.minY, box.maxX, box.maxY), {kUnlimited, kUnlimited});
}

/// A curve lies within the box of its three or four points.
inline unsigned CurveReach(const QueryPoint& q, int kind, const CA_PathPoint* p) {
  if (!q.bounded) return ReachAnything;
  float minX = std::min(p[0].x, std::min(p[1].x, p[2].x)), maxX = std::max(p[0].x, std::max(p[1].x, p[2].x));
  float minY = std::min(p[0].y, std::min(p[1].y, p[2].y)), maxY = std::max(p[0].y, std::max(p[1].y, p[2].y));
  float nonFinite = NonFinite(p[0].x, p[0].y, p[1].x, p[1].y) + NonFinite(p[2].x, p[2].y, 0, 0);
  if (kind == Cubic) {
    minX = std::min(minX, p[3].x), maxX = std::max(maxX, p[3].x);
    minY = std::min(minY, p[3].y), maxY = std::max(maxY, p[3].y);
    nonFinite += NonFinite(p[3].x, p[3].y, 0, 0);
  }
  if (nonFinite != 0) return ReachAnything;
  return BoxReach(q, minX, minY, maxX, maxY, Magnitude(minX, minY, maxX, maxY));
}

/// An arc from `start` along its four records, bounded without converting
/// it: its pieces stay within 2.15 radii of each end (the centre lies one
/// radius from the ends, the control points 1.15 radii from the centre),
/// where the radius is the larger one, grown as the conversion grows radii
/// too small to reach the end.
unsigned ArcReach(const QueryPoint& q, const CA_PathPoint& start, const CA_PathPoint* records);

}  // namespace vxhittest
