#include <gtest/gtest.h>

#include "graphics/hittest/LineSegmentTest.h"
#include "hittest/HitTestSupport.h"

namespace {

using namespace hittest_test;
using vxhittest::Line;

struct LineCase {
  const char* what;
  XY p0, p1, point;
  float tolerance;
  bool hit;
  Counts counts;
};

// Every place of a point around the segment's box, for each orientation;
// the cases pick points where the measures that must not count would
// decide differently from those that must.
const LineCase kLineCases[] = {
    // diagonal (0,0)-(10,10)
    {"inside, axis distance 1.4 within sqrt 2", {0, 0}, {10, 10}, {5, 6.4f}, 1, true, {0, 0, 0, 0}},
    {"inside, axis distance 1.5 counts both sides", {0, 0}, {10, 10}, {5, 6.5f}, 1, false, {1, 0, 0, 1}},
    {"inside, crossings right and below", {0, 0}, {10, 10}, {2, 8}, 1, false, {1, 0, 0, 1}},
    {"inside, crossing within sqrt 2 counts nothing", {0, 0}, {10, 10}, {5, 5.5f}, 1, true, {0, 0, 0, 0}},
    {"corner, near the start", {0, 0}, {10, 10}, {-0.5f, -0.5f}, 1, true, {0, 0, 0, 0}},
    {"corner, on the line's extension but too far from the end", {0, 0}, {10, 10}, {11, 11}, 1, false,
     {0, 0, 0, 0}},
    {"corner, on the extension near the end", {0, 0}, {10, 10}, {10.5f, 10.5f}, 1, true, {0, 0, 0, 0}},
    {"beside in y, axis distance alone hits", {0, 0}, {10, 10}, {9.5f, 10.9f}, 1, true, {0, 0, 0, 0}},
    {"beside in y, both measures too far", {0, 0}, {10, 10}, {9.5f, 11.2f}, 1, false, {0, 0, 0, 1}},
    {"beside in x, axis distance alone hits", {0, 0}, {10, 10}, {-0.9f, 0.5f}, 1, true, {0, 0, 0, 0}},
    {"on the box line x = maxX, crossing counts inclusively", {0, 0}, {10, 10}, {10, 20}, 1, false,
     {0, 0, 0, 1}},
    {"tolerance 0 still hits the start", {0, 0}, {10, 10}, {0, 0}, 0, true, {0, 0, 0, 0}},
    {"tolerance 0 still hits the end", {0, 0}, {10, 10}, {10, 10}, 0, true, {0, 0, 0, 0}},
    // descending diagonal
    {"descending, crossings right and above", {0, 10}, {10, 0}, {2, 2}, 1, false, {1, 0, 1, 0}},
    // shallow and steep lines: beside in one axis ignores the other axis
    {"beside in x ignores the y distance", {0, 0}, {10, 2}, {-1, 0.1f}, 1, false, {1, 0, 0, 0}},
    {"beside in y ignores the x distance", {0, 0}, {2, 10}, {0.1f, -1}, 1, false, {0, 0, 1, 0}},
    // horizontal (0,0)-(10,0)
    {"horizontal, beside in y at 1.4", {0, 0}, {10, 0}, {5, 1.4f}, 1, true, {0, 0, 0, 0}},
    {"horizontal, beside in y at 1.5", {0, 0}, {10, 0}, {5, 1.5f}, 1, false, {0, 0, 0, 1}},
    {"horizontal, corner beyond the tolerance", {0, 0}, {10, 0}, {11, 0.5f}, 1, false, {0, 0, 0, 0}},
    {"horizontal, corner near the end", {0, 0}, {10, 0}, {10.5f, 0.5f}, 1, true, {0, 0, 0, 0}},
    {"horizontal, on its line beyond the end", {0, 0}, {10, 0}, {12, 0}, 1, true, {0, 0, 0, 0}},
    {"horizontal, on its line before the start", {0, 0}, {10, 0}, {-5, 0}, 1, true, {0, 0, 0, 0}},
    {"horizontal, counts in y beyond its ends", {0, 0}, {10, 0}, {20, -3}, 1, false, {0, 0, 1, 0}},
    // vertical (0,0)-(0,10)
    {"vertical, beside in x at 1.4", {0, 0}, {0, 10}, {1.4f, 5}, 1, true, {0, 0, 0, 0}},
    {"vertical, beside in x at 1.5", {0, 0}, {0, 10}, {1.5f, 5}, 1, false, {0, 1, 0, 0}},
    {"vertical, on its line beyond the end", {0, 0}, {0, 10}, {0, 12}, 1, true, {0, 0, 0, 0}},
    {"vertical, corner near the end", {0, 0}, {0, 10}, {0.5f, 10.5f}, 1, true, {0, 0, 0, 0}},
    {"vertical, corner beyond the tolerance", {0, 0}, {0, 10}, {-0.5f, 11}, 1, false, {0, 0, 0, 0}},
    {"vertical, counts in x only", {0, 0}, {0, 10}, {-3, 5}, 1, false, {1, 0, 0, 0}},
    // zero length at (5,5)
    {"zero length, strictly beyond in both axes", {5, 5}, {5, 5}, {5.5f, 5.5f}, 1, true, {0, 0, 0, 0}},
    {"zero length, on its position", {5, 5}, {5, 5}, {5, 5}, 1, false, {0, 0, 0, 0}},
    {"zero length, on one of its lines", {5, 5}, {5, 5}, {5, 5.5f}, 1, false, {0, 0, 0, 0}},
    {"zero length, far away counts nothing", {5, 5}, {5, 5}, {8, 9}, 1, false, {0, 0, 0, 0}},
};

TEST(TestLineSegment, PlacesAroundTheBox) {
  for (const LineCase& c : kLineCases) {
    const vxhittest::PathSegment segment = MakeSegment(Line, {c.p0, c.p1});
    vxhittest::SideCounts counts;
    EXPECT_EQ(vxhittest::TestLineSegment(c.point.x, c.point.y, c.tolerance, segment, counts), c.hit) << c.what;
    EXPECT_EQ(ToCounts(counts), c.counts) << c.what;
  }
}

TEST(TestLineSegment, AddsToRunningCounts) {
  const vxhittest::PathSegment segment = MakeSegment(Line, {{0, 0}, {10, 10}});
  vxhittest::SideCounts counts;
  counts.plusX = 3;
  counts.minusY = 7;
  vxhittest::TestLineSegment(2, 8, 1, segment, counts);
  EXPECT_EQ(ToCounts(counts), (Counts{4, 0, 0, 8}));
}

TEST(GetControlBox, SpansEveryPoint) {
  const vxhittest::ControlBox arch = vxhittest::GetControlBox(MakeSegment(Line, {{0, 0}, {5, 10}, {10, 0}}).points);
  EXPECT_EQ(arch.minX, 0);
  EXPECT_EQ(arch.minY, 0);
  EXPECT_EQ(arch.maxX, 10);
  EXPECT_EQ(arch.maxY, 10);
  const vxhittest::ControlBox dot = vxhittest::GetControlBox(MakeSegment(Line, {{5, 5}, {5, 5}}).points);
  EXPECT_EQ(dot.minX, 5);
  EXPECT_EQ(dot.maxX, 5);
  EXPECT_EQ(dot.minY, 5);
  EXPECT_EQ(dot.maxY, 5);
  const vxhittest::ControlBox down = vxhittest::GetControlBox(MakeSegment(Line, {{4, 9}, {-2, 3}, {1, -6}}).points);
  EXPECT_EQ(down.minX, -2);
  EXPECT_EQ(down.minY, -6);
  EXPECT_EQ(down.maxX, 4);
  EXPECT_EQ(down.maxY, 9);
}

}  // namespace
