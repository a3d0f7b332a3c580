#include "graphics/hittest/SegmentReach.h"

namespace vxhittest {

QueryPoint MakeQueryPoint(float px, float py, float tolerance) {
  QueryPoint q;
  q.px = px;
  q.py = py;
  q.reach = std::sqrt(2.0f) * tolerance;
  q.magnitude = std::max(std::fabs(px), std::fabs(py));
  q.bounded = NonFinite(px, py, tolerance, q.reach) == 0 && tolerance >= 0;
  return q;
}

namespace {

// The crossing y = ((px - x0) / dx) * dy + y0 takes about six roundings,
// each relative to |px - x0| (dy / dx) or to |y0|; beyond the box by more
// than 1e-5 (|px| + |x0| + |x1| + |y| |dx| / |dy|) it stays outside. A tiny
// dy, where products fall below the normal range, counts as parallel.
float Fuzz(double a0, double a1, double b0, double b1) {
  const double da = std::fabs(a1 - a0), db = std::fabs(b1 - b0);
  if (!(db >= 1e-30)) return kUnlimited;
  const double fuzz = 1e-5 * (std::fabs(a0) + std::fabs(a1) + std::max(std::fabs(b0), std::fabs(b1)) * da / db);
  return fuzz < 1e37 ? static_cast<float>(fuzz) : kUnlimited;
}

}  // namespace

LineFuzz MakeLineFuzz(const CA_PathPoint& p0, const CA_PathPoint& p1) {
  return {Fuzz(p0.x, p1.x, p0.y, p1.y), Fuzz(p0.y, p1.y, p0.x, p1.x)};
}

unsigned ArcReach(const QueryPoint& q, const CA_PathPoint& start, const CA_PathPoint* records) {
  const CA_PathPoint& end = records[3];
  const float rx = std::fabs(records[0].x), ry = std::fabs(records[0].y);
  if (!q.bounded || NonFinite(start.x, start.y, end.x, end.y) != 0 || NonFinite(rx, ry, 0, 0) != 0) {
    return ReachAnything;
  }
  const double rMin = std::min(rx, ry), rMax = std::max(rx, ry);
  if (!(rMin > 0)) return ReachAnything;
  // The radii grow by at most half the chord over the smaller radius.
  const double dx = static_cast<double>(end.x) - start.x, dy = static_cast<double>(end.y) - start.y;
  const double halfChord2 = 0.25 * (dx * dx + dy * dy), rMin2 = rMin * rMin;
  const double radius = halfChord2 <= rMin2 ? rMax : rMax * std::sqrt(halfChord2 / rMin2);
  const double extent = 2.25 * radius;
  if (!(extent < 1e38)) return ReachAnything;
  const float e = static_cast<float>(extent);
  const float minX = std::max(start.x, end.x) - e, minY = std::max(start.y, end.y) - e;
  const float maxX = std::min(start.x, end.x) + e, maxY = std::min(start.y, end.y) + e;
  return BoxReach(q, minX, minY, maxX, maxY, Magnitude(minX, minY, maxX, maxY));
}

}  // namespace vxhittest
