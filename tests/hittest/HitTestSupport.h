#pragma once
// Shared helpers of the hit-test suites: segments from coordinates and
// readable side counts.

#include <initializer_list>
#include <ostream>

#include "graphics/hittest/PathSegment.h"

namespace hittest_test {

struct Counts {
  int plusX, minusX, plusY, minusY;
  bool operator==(const Counts& o) const {
    return plusX == o.plusX && minusX == o.minusX && plusY == o.plusY && minusY == o.minusY;
  }
};

inline std::ostream& operator<<(std::ostream& out, const Counts& c) {
  return out << "{+x " << c.plusX << ", -x " << c.minusX << ", +y " << c.plusY << ", -y " << c.minusY << "}";
}

inline Counts ToCounts(const vxhittest::SideCounts& s) { return {s.plusX, s.minusX, s.plusY, s.minusY}; }

struct XY {
  float x, y;
};

inline vxhittest::PathSegment MakeSegment(vxhittest::SegmentKind kind, std::initializer_list<XY> points) {
  vxhittest::PathSegment segment;
  segment.kind = kind;
  for (const XY& p : points) vxhittest::AppendSegmentPoint(segment, CA_PathPoint{p.x, p.y, 0});
  return segment;
}

}  // namespace hittest_test
