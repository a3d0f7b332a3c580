// Straight segments are tested without a perpendicular distance: the
// distances along the axes to the segment's line and the distances to its
// ends, chosen by the point's place around the segment's box. Everything is
// single precision and no division is guarded: an axis-parallel segment
// yields an infinity or NaN crossing, and the false comparisons that follow
// are what keep it from counting on that axis.

#include "graphics/hittest/LineSegmentTest.h"

#include <cmath>

namespace vxhittest {
namespace {

float Distance(float px, float py, const CA_PathPoint& p) {
  const float dx = px - p.x;
  const float dy = py - p.y;
  return std::sqrt(dx * dx + dy * dy);
}

void CountLineCrossings(float px, float py, float xc, float yc, float axisTolerance, const ControlBox& box,
                        SideCounts& counts) {
  if (box.minY <= yc && yc <= box.maxY) {
    if (py - yc > axisTolerance) {
      ++counts.minusY;
    } else if (yc - py > axisTolerance) {
      ++counts.plusY;
    }
  }
  if (box.minX <= xc && xc <= box.maxX) {
    if (xc - px > axisTolerance) {
      ++counts.plusX;
    } else if (px - xc > axisTolerance) {
      ++counts.minusX;
    }
  }
}

}  // namespace

bool TestLineSegment(float px, float py, float tolerance, const PathSegment& segment, SideCounts& counts) {
  const CA_PathPoint& p0 = segment.points[0];
  const CA_PathPoint& p1 = segment.points[1];
  const float d0 = Distance(px, py, p0);
  const float d1 = Distance(px, py, p1);
  const ControlBox box = GetControlBox(segment.points);
  const float axisTolerance = std::sqrt(2.0f) * tolerance;

  const float xc = ((py - p0.y) / (p1.y - p0.y)) * (p1.x - p0.x) + p0.x;
  const float yc = ((px - p0.x) / (p1.x - p0.x)) * (p1.y - p0.y) + p0.y;
  CountLineCrossings(px, py, xc, yc, axisTolerance, box, counts);

  const bool beyondX = px < box.minX || px > box.maxX;
  const bool beyondY = py < box.minY || py > box.maxY;
  const bool withinX = box.minX < px && px < box.maxX;
  const bool withinY = box.minY < py && py < box.maxY;
  const bool nearEnd = d0 <= tolerance || d1 <= tolerance;
  const bool nearInY = std::fabs(py - yc) <= axisTolerance;
  const bool nearInX = std::fabs(px - xc) <= axisTolerance;

  if (beyondX && beyondY) return nearEnd;             // a corner
  if (withinX && beyondY) return nearEnd || nearInY;  // above or below the box
  if (beyondX && withinY) return nearEnd || nearInX;  // left or right of the box
  // Inside the closed box or on one of its lines: the ends do not count.
  return nearInX || nearInY;
}

}  // namespace vxhittest
