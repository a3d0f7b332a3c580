#include <gtest/gtest.h>

#include "graphics/hittest/CurveSegmentTest.h"
#include "hittest/HitTestSupport.h"

namespace {

using namespace hittest_test;
using vxhittest::Cubic;
using vxhittest::Quadratic;

struct CurveCase {
  const char* what;
  vxhittest::SegmentKind kind;
  std::initializer_list<XY> points;
  XY point;
  float tolerance;
  bool hit;
};

const CurveCase kCurveCases[] = {
    {"arch top at distance exactly 1", Quadratic, {{0, 0}, {5, 10}, {10, 0}}, {5, 6}, 1, true},
    {"arch, under the top", Quadratic, {{0, 0}, {5, 10}, {10, 0}}, {5, 4.6f}, 1, true},
    {"arch, under the top, too far", Quadratic, {{0, 0}, {5, 10}, {10, 0}}, {5, 3.9f}, 1, false},
    {"near the start but beyond the box in both axes", Quadratic, {{0, 0}, {5, 10}, {10, 0}}, {-0.5f, -0.5f},
     1, false},
    {"tolerance 0 hits the start", Quadratic, {{0, 0}, {5, 10}, {10, 0}}, {0, 0}, 0, true},
    {"tolerance 0 hits the end", Cubic, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, {10, 0}, 0, true},
    {"cubic, above its middle (5, 7.5)", Cubic, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, {5, 8.4f}, 1, true},
    {"cubic, too far above its middle", Cubic, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, {5, 8.6f}, 1, false},
    // B(0.51) lies between the samples t = 0.50 and 0.52 (1.0002 away).
    // Only the first halving probe, t = 0.515 (0.5006 away), can find it;
    // the probe at 0.51 itself is never compared with the tolerance.
    {"found by the search toward larger t", Quadratic, {{0, 0}, {50, 100}, {100, 0}}, {51, 49.98f}, 0.6f,
     true},
    {"the search stops once it stops gaining", Quadratic, {{0, 0}, {50, 100}, {100, 0}}, {51, 49.98f}, 0.5f,
     false},
    {"found by the search toward smaller t", Quadratic, {{0, 0}, {50, 100}, {100, 0}}, {49, 49.98f}, 0.6f,
     true},
    {"the search toward smaller t stops too", Quadratic, {{0, 0}, {50, 100}, {100, 0}}, {49, 49.98f}, 0.5f,
     false},
    // Nearest sample t = 0: the search interval is clamped to the curve, so
    // the curve's extension (B(-0.015) lies 1.01 away) is never probed.
    {"the search stays on the curve", Quadratic, {{0, 0}, {0, 100}, {100, 100}}, {0.01f, -2.01f}, 1.1f, false},
    {"a quadratic with two points", Quadratic, {{0, 0}, {5, 10}}, {0, 0}, 5, false},
    {"a cubic with three points", Cubic, {{0, 0}, {0, 10}, {10, 10}}, {0, 0}, 5, false},
};

TEST(TestCurveSegment, HitsAndMisses) {
  for (const CurveCase& c : kCurveCases) {
    const vxhittest::PathSegment segment = MakeSegment(c.kind, c.points);
    vxhittest::SideCounts counts;
    const bool hit = vxhittest::TestCurveSegment(c.point.x, c.point.y, c.tolerance, c.kind, segment, counts);
    EXPECT_EQ(hit, c.hit) << c.what;
    if (hit) {
      EXPECT_EQ(ToCounts(counts), (Counts{1, 1, 1, 1})) << c.what;
    }
  }
}

TEST(TestCurveSegment, RejectedSegmentsCountNothing) {
  const vxhittest::PathSegment arch = MakeSegment(Quadratic, {{0, 0}, {5, 10}, {10, 0}});
  const vxhittest::PathSegment shortCubic = MakeSegment(Cubic, {{0, 0}, {5, 10}, {10, 0}});
  vxhittest::SideCounts counts;
  EXPECT_FALSE(vxhittest::TestCurveSegment(-0.5f, -0.5f, 1, Quadratic, arch, counts));
  EXPECT_FALSE(vxhittest::TestCurveSegment(5, 2, 1, Cubic, shortCubic, counts));
  EXPECT_EQ(ToCounts(counts), (Counts{0, 0, 0, 0}));
}

// Side counts on an arch: crossings are read from samples on both sides of
// the point's lines, close enough together to be one crossing.
struct ArchCase {
  const char* what;
  XY point;
  bool plusX, minusX, plusY, minusY;  // counted at least once
};

const ArchCase kArchCases[] = {
    // The sample at x = 5 counts on neither side; its neighbours at 4.8 and
    // 5.2 lie farther apart than one step.
    {"under the top", {5, 2}, true, true, false, false},
    {"under the top, off the sample", {5.1f, 2}, true, true, true, false},
    {"above the arch", {5.1f, 8}, false, false, false, true},
    {"beside the arch", {12, 3}, false, true, false, false},
};

TEST(TestCurveSegment, SideCountsOnAnArch) {
  const vxhittest::PathSegment arch = MakeSegment(Quadratic, {{0, 0}, {5, 10}, {10, 0}});
  for (const ArchCase& c : kArchCases) {
    vxhittest::SideCounts counts;
    EXPECT_FALSE(vxhittest::TestCurveSegment(c.point.x, c.point.y, 1, Quadratic, arch, counts)) << c.what;
    EXPECT_EQ(counts.plusX >= 1, c.plusX) << c.what << " " << ToCounts(counts);
    EXPECT_EQ(counts.minusX >= 1, c.minusX) << c.what << " " << ToCounts(counts);
    EXPECT_EQ(counts.plusY >= 1, c.plusY) << c.what << " " << ToCounts(counts);
    EXPECT_EQ(counts.minusY >= 1, c.minusY) << c.what << " " << ToCounts(counts);
  }
}

CCA_ArrayTemplate<CCA_GPoint> Samples(std::initializer_list<XY> points) {
  CCA_ArrayTemplate<CCA_GPoint> samples;
  for (const XY& p : points) samples.Add(CCA_GPoint{p.x, p.y});
  return samples;
}

struct CrossingCase {
  const char* what;
  std::initializer_list<XY> samples;
  XY point;
  float maxDX, maxDY;
  int side;
  int expected;
};

const CrossingCase kCrossingCases[] = {
    {"one pair across y, closer than the step", {{0, 1}, {0, 3}}, {0, 2}, 0, 3, vxhittest::SideLeft, 1},
    {"a pair exactly one step apart does not count", {{0, 1}, {0, 3}}, {0, 2}, 0, 2, vxhittest::SideRight, 0},
    {"every sample after the first pair counts", {{0, 1}, {0, 3}, {0, 4}, {0, 5}}, {0, 2}, 0, 3,
     vxhittest::SideLeft, 3},
    {"samples on the line count on neither side", {{0, 2}, {0, 2}, {0, 3}}, {0, 2}, 0, 3, vxhittest::SideLeft,
     0},
    {"sides 3 and 4 compare x", {{1, 0}, {3, 0}}, {2, 0}, 3, 0, vxhittest::SideUp, 1},
    {"sides 3 and 4 use the x step", {{1, 0}, {3, 0}}, {2, 0}, 0, 3, vxhittest::SideDown, 0},
    {"sides 1 and 2 do not compare x", {{1, 0}, {3, 0}}, {2, 0}, 3, 3, vxhittest::SideLeft, 0},
    {"the nearest of each side is kept", {{0, -5}, {0, 9}, {0, 1.5f}, {0, 2.5f}}, {0, 2}, 0, 1.5f,
     vxhittest::SideLeft, 1},
    // Samples farther than 1000 from the line never become the nearest,
    // which then stay at 0.
    {"far samples leave the nearest at 0", {{0, -2000}, {0, 2001}}, {0, 0}, 0, 5, vxhittest::SideLeft, 1},
    {"an unknown side counts nothing", {{0, 1}, {0, 3}}, {0, 2}, 3, 3, 5, 0},
};

TEST(CountSideCrossings, ReadsCrossingsFromSamples) {
  for (const CrossingCase& c : kCrossingCases) {
    int counter = 0;
    vxhittest::CountSideCrossings(c.point.x, c.point.y, Samples(c.samples), counter, c.maxDX, c.maxDY, c.side);
    EXPECT_EQ(counter, c.expected) << c.what;
  }
}

}  // namespace
