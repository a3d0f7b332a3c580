#include <gtest/gtest.h>

#include <vector>

#include "graphics/hittest/BuildPathSegments.h"
#include "hittest/HitTestSupport.h"

namespace {

using namespace vxhittest;
using namespace hittest_test;

// Each segment as its kind followed by its points' x and y.
using Segments = std::vector<std::vector<float>>;

Segments SegmentsOf(const CCA_Path& path) {
  PathSegmentList list;
  BuildPathSegments(path, list);
  Segments segments(list.GetSize());
  for (int i = 0; i < list.GetSize(); ++i) {
    segments[i].push_back(static_cast<float>(list[i].kind));
    for (int j = 0; j < list[i].points.GetSize(); ++j) {
      segments[i].insert(segments[i].end(), {list[i].points[j].x, list[i].points[j].y});
    }
  }
  return segments;
}

// Each figure closes to its own start, an open one not at all; a close
// before any figure start goes to the origin, one on a point without
// segment bits or on a control point does nothing more. A curve missing its
// records makes no segment, nor does a degenerate arc, but its own point
// still closes.
struct WalkCase { const char* what; CCA_Path path; Segments expected; };

const WalkCase kWalkCases[] = {
    {"the first segment bit decides; segments chain",
     PathOf({{0, 0, M}, {1, 0, L | Q | A}, {2, 0, C | Q}, {3, 0, 0}, {4, 0, A | C}, {5, 0, 0}, {6, 0, 0}, {7, 1, L}}),
     {{Line, 0, 0, 1, 0}, {Quadratic, 1, 0, 2, 0, 3, 0}, {Cubic, 3, 0, 4, 0, 5, 0, 6, 0}, {Line, 6, 0, 7, 1}}},
    {"figure start wins; first point opens nothing", PathOf({{7, 7, L}, {1, 1, M | L | Z}, {2, 1, L}, {2, 2, L | Z}}),
     {{Line, 1, 1, 2, 1}, {Line, 2, 1, 2, 2}, {Line, 2, 2, 1, 1}}},
    {"close to the origin; bare points", PathOf({{3, 3, 0}, {5, 3, L | Z}, {9, 9, M}, {9, 4, L}, {8, 8, 0}, {7, 7, Z}}),
     {{Line, 3, 3, 5, 3}, {Line, 5, 3, 0, 0}, {Line, 9, 9, 9, 4}, {Line, 7, 7, 9, 9}}},
    {"each figure to its start", PathOf({{0, 0, M}, {4, 0, L}, {4, 4, L}, {10, 10, M}, {12, 14, Q}, {14, 10, Z}}),
     {{Line, 0, 0, 4, 0}, {Line, 4, 0, 4, 4}, {Quadratic, 10, 10, 12, 14, 14, 10}, {Line, 14, 10, 10, 10}}},
    {"a close on a control point", PathOf({{0, 0, M}, {1, 2, Q | Z}, {2, 0, 0}, {3, 2, C}, {4, 2, Z}, {5, 0, 0}}),
     {{Quadratic, 0, 0, 1, 2, 2, 0}, {Cubic, 2, 0, 3, 2, 4, 2, 5, 0}}},
    {"a degenerate arc", PathOf({{4, 4, M}, {5, 5, A}, {0, 0, 0}, {1, 0, 0}, {4, 4, Z}}), {{Line, 4, 4, 4, 4}}},
    {"quadratic on the last point", PathOf({{0, 0, M}, {5, 5, Q | Z}}), {{Line, 5, 5, 0, 0}}},
    {"cubic with one point after it", PathOf({{0, 0, M}, {5, 5, C | Z}, {6, 6, 0}}), {{Line, 5, 5, 0, 0}}},
    {"arc with two points after it", PathOf({{0, 0, M}, {5, 5, A | Z}, {6, 6, 0}, {7, 6, 0}}), {{Line, 5, 5, 0, 0}}},
};

TEST(BuildPathSegments, WalksTheRecords) {
  for (const WalkCase& c : kWalkCases) EXPECT_EQ(SegmentsOf(c.path), c.expected) << c.what;
}

}  // namespace
