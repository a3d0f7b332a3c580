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

// The end distances count only around the box, so they are computed there.
bool NearEnd(float px, float py, float tolerance, const CA_PathPoint& p0, const CA_PathPoint& p1) {
  return Distance(px, py, p0) <= tolerance || Distance(px, py, p1) <= tolerance;
}

void CountLineCrossings(float px, float py, float xc, float yc, float axisTolerance, const ControlBox& box,
                        SideCounts& counts) {
  if (box.minY <= yc && yc <= box.maxY) {
    if (py - yc > axisTolerance) {
      Raise(counts.minusY);
    } else if (yc - py > axisTolerance) {
      Raise(counts.plusY);
    }
  }
  if (box.minX <= xc && xc <= box.maxX) {
    if (xc - px > axisTolerance) {
      Raise(counts.plusX);
    } else if (px - xc > axisTolerance) {
      Raise(counts.minusX);
    }
  }
}

// Where the segment's line meets the point's horizontal line (x) and
// vertical line (y); an axis-parallel segment gives an infinity or NaN.
float CrossingX(float py, const CA_PathPoint& p0, const CA_PathPoint& p1) {
  return ((py - p0.y) / (p1.y - p0.y)) * (p1.x - p0.x) + p0.x;
}

float CrossingY(float px, const CA_PathPoint& p0, const CA_PathPoint& p1) {
  return ((px - p0.x) / (p1.x - p0.x)) * (p1.y - p0.y) + p0.y;
}

}  // namespace

void CountLineSegmentCrossings(float px, float py, float axisTolerance, const CA_PathPoint& p0,
                               const CA_PathPoint& p1, const ControlBox& box, SideCounts& counts) {
  CountLineCrossings(px, py, CrossingX(py, p0, p1), CrossingY(px, p0, p1), axisTolerance, box, counts);
}

bool TestLineSegment(float px, float py, float tolerance, const CA_PathPoint& p0, const CA_PathPoint& p1,
                     SideCounts* counts) {
  const CA_PathPoint ends[2] = {p0, p1};
  const ControlBox box = GetControlBox(ends, 2);
  const float axisTolerance = std::sqrt(2.0f) * tolerance;

  const float xc = CrossingX(py, p0, p1);
  const float yc = CrossingY(px, p0, p1);
  if (counts != nullptr) CountLineCrossings(px, py, xc, yc, axisTolerance, box, *counts);

  const bool beyondX = px < box.minX || px > box.maxX;
  const bool beyondY = py < box.minY || py > box.maxY;
  const bool withinX = box.minX < px && px < box.maxX;
  const bool withinY = box.minY < py && py < box.maxY;
  const bool nearInY = std::fabs(py - yc) <= axisTolerance;
  const bool nearInX = std::fabs(px - xc) <= axisTolerance;

  if (beyondX && beyondY) return NearEnd(px, py, tolerance, p0, p1);             // a corner
  if (withinX && beyondY) return NearEnd(px, py, tolerance, p0, p1) || nearInY;  // above or below the box
  if (beyondX && withinY) return NearEnd(px, py, tolerance, p0, p1) || nearInX;  // left or right of the box
  // Inside the closed box or on one of its lines: the ends do not count.
  return nearInX || nearInY;
}

}  // namespace vxhittest
