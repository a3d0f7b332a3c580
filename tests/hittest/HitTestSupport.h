#pragma once
// Shared helpers of the hit-test suites: records and paths laid down from
// coordinates and raw records, side counts as arrays.

#include <array>
#include <initializer_list>

#include <vector>

#include "graphics/hittest/SegmentRecords.h"

namespace hittest_test {

using Counts = std::array<int, 4>;  // +x, -x, +y, -y

inline Counts ToCounts(const vxhittest::SideCounts& s) { return {s.plusX, s.minusX, s.plusY, s.minusY}; }

inline std::vector<CA_PathPoint> RecordsOf(std::initializer_list<CCA_GPoint> points) {
  std::vector<CA_PathPoint> records;
  for (const CCA_GPoint& p : points) records.push_back({p.x, p.y, 0});
  return records;
}

// Raw records, so that any combination of flags can be laid down.
inline CCA_Path PathOf(std::initializer_list<CA_PathPoint> records) {
  CCA_Path path;
  for (const CA_PathPoint& r : records) path.AddPoint(r.x, r.y, r.flags);
  return path;
}

constexpr int M = PathFlagMoveTo, L = PathFlagLineTo, Q = PathFlagQuadTo, C = PathFlagCubicTo, A = PathFlagArcTo,
              Z = PathFlagClose;

}  // namespace hittest_test
