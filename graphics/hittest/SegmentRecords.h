#pragma once
// The records the hit test shares between its path walk and its segment
// tests: segment kinds, the four side counters of the area test, and the
// control box of a segment.

#include <cstdint>

#include <vxbase/Path.h>

namespace vxhittest {

enum SegmentKind : std::int32_t {
  Line = 1,       // start, end
  Quadratic = 2,  // start, control, end
  Cubic = 3,      // start, first control, second control, end
};

/// Crossings of the path with the point's horizontal and vertical lines,
/// counted by the side of the point on which they lie. The area test only
/// asks whether each is nonzero, so a counter stops at its maximum instead
/// of overflowing on paths of tens of millions of curves.
struct SideCounts {
  std::int32_t plusX = 0;   // at greater x than the point
  std::int32_t minusX = 0;  // at smaller x
  std::int32_t plusY = 0;   // at greater y
  std::int32_t minusY = 0;  // at smaller y

  bool AllSides() const { return plusX != 0 && minusX != 0 && plusY != 0 && minusY != 0; }
};

/// Adds 1 unless the counter is at its maximum.
inline void Raise(std::int32_t& counter) {
  if (counter != INT32_MAX) ++counter;
}

/// What a segment can affect in a query: a hit, and each side counter.
enum Reach : unsigned {
  ReachPlusX = 1,
  ReachMinusX = 2,
  ReachPlusY = 4,
  ReachMinusY = 8,
  ReachHit = 16,
  ReachAnything = 31,
};

struct ControlBox {
  float minX = 0;
  float minY = 0;
  float maxX = 0;
  float maxY = 0;
};

/// The box around `count` points, control points included: the first point,
/// then each further x (y) lowers the minimum when smaller and raises the
/// maximum when greater or equal, so a NaN after the first point changes
/// nothing. All zero for no point.
ControlBox GetControlBox(const CA_PathPoint* points, int count);

}  // namespace vxhittest
