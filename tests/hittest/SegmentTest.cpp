// The tests of one straight or curved segment against a point, and the
// crossings read from a curve's samples.

#include <gtest/gtest.h>

#include "graphics/hittest/CurveSegmentTest.h"
#include "graphics/hittest/LineSegmentTest.h"
#include "hittest/HitTestSupport.h"

namespace {

using namespace hittest_test;
using namespace vxhittest;

struct LineCase { const char* what; CCA_GPoint p0, p1, point; float tolerance; bool hit; Counts counts; };

// Every place of a point around the segment's box, for each orientation;
// the points sit where the measures that must not count would decide
// differently from those that must.
const LineCase kLineCases[] = {
    {"diagonal, inside, axis distance 1.4", {0, 0}, {10, 10}, {5, 6.4f}, 1, true, {0, 0, 0, 0}},
    {"diagonal, inside, axis distance 1.5", {0, 0}, {10, 10}, {5, 6.5f}, 1, false, {1, 0, 0, 1}},
    {"diagonal, corner exactly 5 from the start", {0, 0}, {10, 10}, {-3, -4}, 5, true, {0, 0, 0, 0}},
    {"diagonal, corner on the extension, far", {0, 0}, {10, 10}, {11, 11}, 1, false, {0, 0, 0, 0}},
    {"diagonal, corner on the extension, near", {0, 0}, {10, 10}, {10.5f, 10.5f}, 1, true, {0, 0, 0, 0}},
    {"diagonal, beside in y, axis hits", {0, 0}, {10, 10}, {9.5f, 10.9f}, 1, true, {0, 0, 0, 0}},
    {"diagonal, beside in y, too far", {0, 0}, {10, 10}, {9.5f, 11.2f}, 1, false, {0, 0, 0, 1}},
    {"diagonal, beside in x, axis hits", {0, 0}, {10, 10}, {-0.9f, 0.5f}, 1, true, {0, 0, 0, 0}},
    {"diagonal, on the box line x = maxX", {0, 0}, {10, 10}, {10, 20}, 1, false, {0, 0, 0, 1}},
    {"diagonal, tolerance 0 on the end point", {0, 0}, {10, 10}, {10, 10}, 0, true, {0, 0, 0, 0}},
    {"descending, right and above", {0, 10}, {10, 0}, {2, 2}, 1, false, {1, 0, 1, 0}},
    {"shallow, beside in x ignores y", {0, 0}, {10, 2}, {-1, 0.1f}, 1, false, {1, 0, 0, 0}},
    {"steep, beside in y ignores x", {0, 0}, {2, 10}, {0.1f, -1}, 1, false, {0, 0, 1, 0}},
    {"horizontal, beside in y at 1.4", {0, 0}, {10, 0}, {5, 1.4f}, 1, true, {0, 0, 0, 0}},
    {"horizontal, beside in y at 1.5", {0, 0}, {10, 0}, {5, 1.5f}, 1, false, {0, 0, 0, 1}},
    {"horizontal, corner, far", {0, 0}, {10, 0}, {11, 0.5f}, 1, false, {0, 0, 0, 0}},
    {"horizontal, corner near the end", {0, 0}, {10, 0}, {10.5f, 0.5f}, 1, true, {0, 0, 0, 0}},
    {"horizontal, on its line beyond the end", {0, 0}, {10, 0}, {12, 0}, 1, true, {0, 0, 0, 0}},
    {"horizontal, counts in y beyond its ends", {0, 0}, {10, 0}, {20, -3}, 1, false, {0, 0, 1, 0}},
    {"vertical, beside in x at 1.4", {0, 0}, {0, 10}, {1.4f, 5}, 1, true, {0, 0, 0, 0}},
    {"vertical, beside in x at 1.5", {0, 0}, {0, 10}, {1.5f, 5}, 1, false, {0, 1, 0, 0}},
    {"vertical, on its line beyond the end", {0, 0}, {0, 10}, {0, 12}, 1, true, {0, 0, 0, 0}},
    {"vertical, corner near the end", {0, 0}, {0, 10}, {0.5f, 10.5f}, 1, true, {0, 0, 0, 0}},
    {"vertical, corner, far", {0, 0}, {0, 10}, {-0.5f, 11}, 1, false, {0, 0, 0, 0}},
    {"vertical, counts in x only", {0, 0}, {0, 10}, {-3, 5}, 1, false, {1, 0, 0, 0}},
    {"zero length, beyond in both axes", {5, 5}, {5, 5}, {5.5f, 5.5f}, 1, true, {0, 0, 0, 0}},
    {"zero length, on its position", {5, 5}, {5, 5}, {5, 5}, 1, false, {0, 0, 0, 0}},
    {"zero length, on one of its lines", {5, 5}, {5, 5}, {5, 5.5f}, 1, false, {0, 0, 0, 0}},
    {"zero length, far away", {5, 5}, {5, 5}, {8, 9}, 1, false, {0, 0, 0, 0}},
};

TEST(TestLineSegment, PlacesAroundTheBox) {
  for (const LineCase& c : kLineCases) {
    const CA_PathPoint p0{c.p0.x, c.p0.y, 0}, p1{c.p1.x, c.p1.y, 0};
    SideCounts counts;
    EXPECT_EQ(TestLineSegment(c.point.x, c.point.y, c.tolerance, p0, p1, &counts), c.hit) << c.what;
    EXPECT_EQ(TestLineSegment(c.point.x, c.point.y, c.tolerance, p0, p1, nullptr), c.hit) << c.what;
    EXPECT_EQ(ToCounts(counts), c.counts) << c.what;
  }
}

struct CurveCase { const char* what; SegmentKind kind; std::initializer_list<CCA_GPoint> points; CCA_GPoint point;
                   float tolerance; bool hit; };

const std::initializer_list<CCA_GPoint> kArch = {{0, 0}, {5, 10}, {10, 0}};
const std::initializer_list<CCA_GPoint> kBow = {{0, 0}, {0, 10}, {10, 10}, {10, 0}};
const std::initializer_list<CCA_GPoint> kWide = {{0, 0}, {50, 100}, {100, 0}};

const CurveCase kCurveCases[] = {
    {"arch top at distance exactly 1", Quadratic, kArch, {5, 6}, 1, true},
    {"arch, under the top", Quadratic, kArch, {5, 4.6f}, 1, true},
    {"arch, under the top, too far", Quadratic, kArch, {5, 3.9f}, 1, false},
    {"tolerance 0 hits the end", Cubic, kBow, {10, 0}, 0, true},
    {"cubic, above its middle (5, 7.5)", Cubic, kBow, {5, 8.4f}, 1, true},
    {"cubic, too far above its middle", Cubic, kBow, {5, 8.6f}, 1, false},
    // B(0.51) lies between the samples t = 0.50 and 0.52 (1.0002 away).
    // Only the first halving probe, t = 0.515 (0.5006 away), can find it;
    // the probe at 0.51 itself is never compared with the tolerance.
    {"found by the search toward larger t", Quadratic, kWide, {51, 49.98f}, 0.6f, true},
    {"the search stops once it stops gaining", Quadratic, kWide, {51, 49.98f}, 0.5f, false},
    {"found by the search toward smaller t", Quadratic, kWide, {49, 49.98f}, 0.6f, true},
    {"the search toward smaller t stops too", Quadratic, kWide, {49, 49.98f}, 0.5f, false},
    // Nearest sample t = 0: the search interval is clamped to the curve, so
    // the curve's extension (B(-0.015) lies 1.01 away) is never probed.
    {"the search stays on the curve", Quadratic, {{0, 0}, {0, 100}, {100, 100}}, {0.01f, -2.01f}, 1.1f, false},
    // Two samples whose distances round to the same float: the later one is
    // closer in double and becomes the nearest, and the search from it finds
    // the curve within the tolerance (from the earlier one it would not).
    {"a near tie goes to the closer sample", Quadratic, {{17, 6}, {2, 8}, {17, 2}}, {13.8304892f, 8.9333849f},
     2.56087971f, true},
    {"near the start, beyond the box in x and y", Quadratic, {{20, 20}, {25, 30}, {30, 20}}, {19.5f, 19.5f}, 1, false},
};

TEST(TestCurveSegment, HitsAndMisses) {
  for (const CurveCase& c : kCurveCases) {
    SideCounts counts;
    const std::vector<CA_PathPoint> points = RecordsOf(c.points);
    EXPECT_EQ(TestCurveSegment(c.point.x, c.point.y, c.tolerance, c.kind, points.data(), &counts), c.hit) << c.what;
    EXPECT_EQ(TestCurveSegment(c.point.x, c.point.y, c.tolerance, c.kind, points.data(), nullptr), c.hit) << c.what;
    EXPECT_TRUE(!c.hit || ToCounts(counts) == (Counts{1, 1, 1, 1})) << c.what;  // a hit counts once on every side
  }
}

// Side counts on an arch: crossings are read from samples on both sides of
// the point's lines, close enough together to be one crossing.
// The sides counted at least once: +x, -x, +y, -y.
struct ArchCase { const char* what; CCA_GPoint point; std::array<bool, 4> counted; };

const ArchCase kArchCases[] = {
    // The sample at x = 5 counts on neither side; its neighbours at 4.8 and
    // 5.2 lie farther apart than one step.
    {"under the top", {5, 2}, {true, true, false, false}},
    {"under the top, off the sample", {5.1f, 2}, {true, true, true, false}},
    {"above the arch", {5.1f, 8}, {false, false, false, true}},
    {"beside the arch", {12, 3}, {false, true, false, false}},
    {"beyond the box in both axes", {-0.5f, -0.5f}, {false, false, false, false}},
};

TEST(TestCurveSegment, SideCountsOnAnArch) {
  for (const ArchCase& c : kArchCases) {
    SideCounts s;
    EXPECT_FALSE(TestCurveSegment(c.point.x, c.point.y, 1, Quadratic, RecordsOf(kArch).data(), &s));
    const std::array<bool, 4> counted = {s.plusX >= 1, s.minusX >= 1, s.plusY >= 1, s.minusY >= 1};
    EXPECT_EQ(counted, c.counted) << c.what;
  }
}

// Crossings read from samples directly: the step boundary, the axis that
// sides 3 and 4 compare, far samples (never the nearest, which then stay at
// 0) and a side number that is not one of the four.
struct CrossingCase { const char* what; std::initializer_list<CCA_GPoint> samples; float px, py, maxDX, maxDY;
                      int side, expected; };

const CrossingCase kCrossingCases[] = {
    {"a pair exactly one step apart", {{0, 1}, {0, 3}}, 0, 2, 0, 2, SideRight, 0},
    {"sides 3 and 4 compare x, with the x step", {{1, 0}, {3, 0}}, 2, 0, 3, 0, SideUp, 1},
    {"sides 1 and 2 do not compare x", {{1, 0}, {3, 0}}, 2, 0, 3, 3, SideLeft, 0},
    {"far samples leave the nearest at 0", {{0, -2000}, {0, 2001}}, 0, 0, 0, 5, SideLeft, 1},
    {"an unknown side counts nothing", {{0, 1}, {0, 3}}, 0, 2, 3, 3, 5, 0},
};

TEST(CountSideCrossings, ReadsCrossingsFromSamples) {
  for (const CrossingCase& c : kCrossingCases) {
    const std::vector<CCA_GPoint> samples(c.samples);
    std::int32_t counter = 0;
    CountSideCrossings(c.px, c.py, samples.data(), static_cast<int>(samples.size()), counter, c.maxDX, c.maxDY, c.side);
    EXPECT_EQ(counter, c.expected) << c.what;
  }
}

// A path of tens of millions of curves must not overflow a counter: each
// stops at its maximum, through every way of raising it.
TEST(SideCounts, StopAtTheirMaximum) {
  SideCounts counts{INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX};
  EXPECT_TRUE(TestCurveSegment(5, 6, 1, Quadratic, RecordsOf(kArch).data(), &counts));
  EXPECT_FALSE(TestCurveSegment(5.1f, 2, 1, Quadratic, RecordsOf(kArch).data(), &counts));
  EXPECT_FALSE(TestLineSegment(2, 8, 1, {0, 0, 0}, {10, 10, 0}, &counts));
  EXPECT_FALSE(TestLineSegment(8, 2, 1, {0, 0, 0}, {10, 10, 0}, &counts));
  EXPECT_EQ(ToCounts(counts), (Counts{INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX}));
  EXPECT_FALSE(counts.plusX < 0 || counts.minusX < 0 || counts.plusY < 0 || counts.minusY < 0);
}

}  // namespace
