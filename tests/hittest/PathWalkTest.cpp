#include <gtest/gtest.h>

#include <vector>

#include "graphics/hittest/ArcToCubics.h"
#include "graphics/hittest/PathWalk.h"
#include "hittest/HitTestSupport.h"

namespace {

using namespace vxhittest;
using namespace hittest_test;

// Each segment as its kind followed by its points' x and y.
using Segments = std::vector<std::vector<float>>;

// Collects what the walk visits; arcs as their cubic pieces. Stops after
// `limit` segments.
struct Collector {
  Segments segments;
  size_t limit = 1000;

  bool Add(int kind, const CA_PathPoint* points, int count) {
    std::vector<float> segment{static_cast<float>(kind)};
    for (int i = 0; i < count; ++i) segment.insert(segment.end(), {points[i].x, points[i].y});
    segments.push_back(segment);
    return segments.size() >= limit;
  }
  bool Line(const CA_PathPoint& start, const CA_PathPoint& end) {
    const CA_PathPoint points[2] = {start, end};
    return Add(vxhittest::Line, points, 2);
  }
  bool Curve(int kind, const CA_PathPoint* points) { return Add(kind, points, kind == Cubic ? 4 : 3); }
  bool Arc(const CA_PathPoint& start, const CA_PathPoint* records) {
    CA_PathPoint points[kMaxArcPoints];
    const int pieces = ArcToCubicPoints(start, records, points);
    for (int i = 0; i < pieces; ++i) {
      if (Add(Cubic, &points[3 * i], 4)) return true;
    }
    return false;
  }
};

Segments SegmentsOf(const CCA_Path& path, size_t limit = 1000) {
  Collector collector;
  collector.limit = limit;
  const int count = path.GetPointCount();
  const bool stopped = count > 0 && WalkPathSegments(&path.GetPoint(0), count, collector);
  EXPECT_EQ(stopped, collector.segments.size() >= limit);
  return collector.segments;
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

TEST(WalkPathSegments, WalksTheRecords) {
  for (const WalkCase& c : kWalkCases) EXPECT_EQ(SegmentsOf(c.path), c.expected) << c.what;
}

// A visitor's true ends the walk at once, also on a closing line and
// inside an arc; the records are read in place, so they must lie in one
// block.
TEST(WalkPathSegments, StopsWhenAsked) {
  const CCA_Path path = PathOf({{0, 0, M}, {4, 0, L | Z}, {5, 5, A}, {0, 0, 0}, {1, 0, 0}, {14, 0, 0}, {15, 1, L}});
  const Segments all = SegmentsOf(path);
  ASSERT_EQ(all.size(), 5u);  // line, closing line, two arc pieces, line
  for (size_t limit = 1; limit <= all.size(); ++limit) {
    EXPECT_EQ(SegmentsOf(path, limit), Segments(all.begin(), all.begin() + limit)) << limit;
  }
  for (int i = 0; i < path.GetPointCount(); ++i) EXPECT_EQ(&path.GetPoint(i), &path.GetPoint(0) + i);
}

}  // namespace
