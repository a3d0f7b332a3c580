#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "graphics/hittest/ArcToCubics.h"
#include "hittest/HitTestSupport.h"

namespace {

using hittest_test::XY;

struct Arc {
  float x0, y0, rx, ry, rotation, largeArc, sweep, x1, y1;
};

struct Converted {
  int pieces;
  std::vector<XY> points;  // the figure start, then three records per piece
};

Converted Convert(const Arc& a) {
  CCA_Path arc;
  arc.MoveTo(a.x0, a.y0);
  arc.ArcTo(a.rx, a.ry, a.rotation, a.largeArc, a.sweep, a.x1, a.y1);
  CCA_Path out;
  Converted result{vxhittest::ConvertArcToCubics(out, arc), {}};
  for (int i = 0; i < out.GetPointCount(); ++i) result.points.push_back({out.GetPoint(i).x, out.GetPoint(i).y});
  return result;
}

void ExpectPoints(const Converted& got, std::initializer_list<XY> expected, float within) {
  ASSERT_EQ(got.points.size(), expected.size());
  int i = 0;
  for (const XY& e : expected) {
    EXPECT_NEAR(got.points[i].x, e.x, within) << "point " << i;
    EXPECT_NEAR(got.points[i].y, e.y, within) << "point " << i;
    ++i;
  }
}

void ExpectSame(const Converted& a, const Converted& b, float within) {
  EXPECT_EQ(a.pieces, b.pieces);
  ASSERT_EQ(a.points.size(), b.points.size());
  for (size_t i = 0; i < a.points.size(); ++i) {
    EXPECT_NEAR(a.points[i].x, b.points[i].x, within) << "point " << i;
    EXPECT_NEAR(a.points[i].y, b.points[i].y, within) << "point " << i;
  }
}

const Arc kHalfCircle{0, 0, 5, 5, 0, 0, 1, 10, 0};

TEST(ConvertArcToCubics, HalfCircleIsTwoQuarterPieces) {
  const Converted got = Convert(kHalfCircle);
  EXPECT_EQ(got.pieces, 2);
  ExpectPoints(got,
               {{0, 0}, {0, -2.7614f}, {2.2386f, -5}, {5, -5}, {7.7614f, -5}, {10, -2.7614f}, {10, 0}},
               1e-4f);
}

TEST(ConvertArcToCubics, SweepZeroMirrors) {
  Arc arc = kHalfCircle;
  arc.sweep = 0;
  const Converted got = Convert(arc);
  EXPECT_EQ(got.pieces, 2);
  ExpectPoints(got, {{0, 0}, {0, 2.7614f}, {2.2386f, 5}, {5, 5}, {7.7614f, 5}, {10, 2.7614f}, {10, 0}}, 1e-4f);
}

TEST(ConvertArcToCubics, RadiiTooSmallGrowToReach) {
  Arc small = kHalfCircle;
  small.rx = small.ry = 2;
  ExpectSame(Convert(small), Convert(kHalfCircle), 0);
  // Radii that already reach are kept: a larger circle bulges less.
  Arc large = kHalfCircle;
  large.rx = large.ry = 10;
  const Converted got = Convert(large);
  EXPECT_EQ(got.pieces, 1);
  ASSERT_EQ(got.points.size(), 4u);
  EXPECT_GT(got.points[1].y, -2.7f);
}

TEST(ConvertArcToCubics, NegativeRadiiActAsTheirSize) {
  Arc negative = kHalfCircle;
  negative.rx = -5;
  negative.ry = -5;
  ExpectSame(Convert(negative), Convert(kHalfCircle), 0);
}

TEST(ConvertArcToCubics, QuarterTurnIsOnePiece) {
  const Converted got = Convert({0, 0, 5, 5, 0, 0, 1, 5, 5});
  EXPECT_EQ(got.pieces, 1);
  ASSERT_EQ(got.points.size(), 4u);
  EXPECT_NEAR(got.points[3].x, 5, 1e-4f);
  EXPECT_NEAR(got.points[3].y, 5, 1e-4f);
}

// A rotated ellipse, the large arc: more than half a turn in four pieces.
TEST(ConvertArcToCubics, LargeRotatedArcEndsOnTheEndPoint) {
  const Converted got = Convert({0, 0, 8, 4, 0.5f, 1, 0, 10, 3});
  EXPECT_EQ(got.pieces, 4);
  ASSERT_EQ(got.points.size(), 13u);
  EXPECT_NEAR(got.points[12].x, 10, 1e-3f);
  EXPECT_NEAR(got.points[12].y, 3, 1e-3f);
  // The small arc between the same points is a single piece.
  EXPECT_EQ(Convert({0, 0, 8, 4, 0.5f, 0, 0, 10, 3}).pieces, 1);
}

TEST(ConvertArcToCubics, RotationWrapsByWholeTurns) {
  const Arc base{0, 0, 8, 4, 0.5f, 1, 0, 10, 3};
  Arc above = base;
  above.rotation = 6.2831855f + 0.5f;
  ExpectSame(Convert(above), Convert(base), 1e-3f);
  Arc below = base;
  below.rotation = 0.5f - 2 * 6.2831855f;
  ExpectSame(Convert(below), Convert(base), 1e-3f);
  // Just below zero is left as it is, and stays close to no rotation.
  Arc nearZero = base;
  nearZero.rotation = -0.00005f;
  Arc zero = base;
  zero.rotation = 0;
  ExpectSame(Convert(nearZero), Convert(zero), 1e-2f);
}

TEST(ConvertArcToCubics, DegenerateArcsGiveOnlyTheFigureStart) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();
  const Arc degenerate[] = {
      {3, 4, 5, 5, 0, 0, 1, 3, 4},      // end on the start
      {0, 0, 0, 5, 0, 0, 1, 10, 0},     // rx = 0
      {0, 0, 5, 0, 0, 0, 1, 10, 0},     // ry = 0
      {0, 0, nan, 5, 0, 0, 1, 10, 0},   // radius not a number
      {0, 0, 5, 5, inf, 0, 1, 10, 0},   // rotation that no turn changes
      {0, 0, 5, 5, -inf, 0, 1, 10, 0},  // ... either way
      {0, 0, 5, 5, 0, 0, 1, nan, 0},    // end not a number
  };
  for (const Arc& arc : degenerate) {
    const Converted got = Convert(arc);
    EXPECT_LE(got.pieces, 0);
    ExpectPoints(got, {{arc.x0, arc.y0}}, 0);
  }
}

TEST(ConvertArcToCubics, HugeRotationTerminates) {
  const Converted got = Convert({0, 0, 5, 5, 1e30f, 0, 1, 10, 0});
  EXPECT_EQ(got.points.size(), 1u + 3u * static_cast<size_t>(got.pieces));
}

TEST(ConvertArcToCubics, TooFewRecordsAppendNothing) {
  CCA_Path arc;
  arc.MoveTo(0, 0);
  arc.AddPoint(5, 5, PathFlagArcTo);
  CCA_Path out;
  EXPECT_EQ(vxhittest::ConvertArcToCubics(out, arc), 0);
  EXPECT_EQ(out.GetPointCount(), 0);
}

}  // namespace
