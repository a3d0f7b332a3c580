#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "graphics/hittest/ArcToCubics.h"
#include "hittest/HitTestSupport.h"

namespace {

struct Arc { float x0, y0, rx, ry, rotation, largeArc, sweep, x1, y1; };

// The figure start, then three records per piece; checks that the count
// returned matches them.
std::vector<CCA_GPoint> Convert(const Arc& a) {
  CCA_Path arc;
  arc.MoveTo(a.x0, a.y0);
  arc.ArcTo(a.rx, a.ry, a.rotation, a.largeArc, a.sweep, a.x1, a.y1);
  CCA_Path out;
  const int pieces = vxhittest::ConvertArcToCubics(out, arc);
  EXPECT_EQ(out.GetPointCount(), 1 + 3 * pieces);
  std::vector<CCA_GPoint> points;
  for (int i = 0; i < out.GetPointCount(); ++i) points.push_back({out.GetPoint(i).x, out.GetPoint(i).y});
  return points;
}

void ExpectNear(const std::vector<CCA_GPoint>& got, const std::vector<CCA_GPoint>& expected, float within) {
  ASSERT_EQ(got.size(), expected.size());
  for (size_t i = 0; i < got.size(); ++i) {
    EXPECT_NEAR(got[i].x, expected[i].x, within) << "point " << i;
    EXPECT_NEAR(got[i].y, expected[i].y, within) << "point " << i;
  }
}

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const float kInf = std::numeric_limits<float>::infinity();
const Arc kHalfCircle{0, 0, 5, 5, 0, 0, 1, 10, 0};
const Arc kRotated{0, 0, 8, 4, 0.5f, 1, 0, 10, 3};  // the large arc of a rotated ellipse
const float k = 2.7614f, j = 5 - k;  // a quarter circle's control distance for radius 5, and the rest

// The records of the conversion: worked numbers, or those of an arc that
// must convert alike.
TEST(ConvertArcToCubics, Records) {
  const struct { Arc arc; std::vector<CCA_GPoint> expected; float within; } cases[] = {
      {kHalfCircle, {{0, 0}, {0, -k}, {j, -5}, {5, -5}, {5 + k, -5}, {10, -k}, {10, 0}}, 1e-4f},
      {{0, 0, 5, 5, 0, 0, 0, 10, 0}, {{0, 0}, {0, k}, {j, 5}, {5, 5}, {5 + k, 5}, {10, k}, {10, 0}}, 1e-4f},  // sweep 0
      {{0, 0, 5, 5, 0, 0, 1, 5, 5}, {{0, 0}, {k, 0}, {5, j}, {5, 5}}, 1e-4f},                 // a quarter turn
      {{0, 0, 10, 10, 0, 0, 1, 10, 0}, {{0, 0}, {3.094f, -1.7863f}, {6.906f, -1.7863f}, {10, 0}}, 1e-4f},  // radii kept
      {{0, 0, 2, 2, 0, 0, 1, 10, 0}, Convert(kHalfCircle), 0},                                // radii grow to reach
      {{0, 0, -5, -5, 0, 0, 1, 10, 0}, Convert(kHalfCircle), 0},                              // negative radii
      {{0, 0, 8, 4, 6.2831855f + 0.5f, 1, 0, 10, 3}, Convert(kRotated), 1e-3f},               // whole turns wrap
      {{0, 0, 8, 4, 0.5f - 2 * 6.2831855f, 1, 0, 10, 3}, Convert(kRotated), 1e-3f},           //
      {{0, 0, 8, 4, -0.00005f, 1, 0, 10, 3}, Convert({0, 0, 8, 4, 0, 1, 0, 10, 3}), 1e-2f},  // left as it is
      // Degenerate arcs yield only the figure start.
      {{3, 4, 5, 5, 0, 0, 1, 3, 4}, {{3, 4}}, 0},      // end on the start
      {{0, 0, 0, 5, 0, 0, 1, 10, 0}, {{0, 0}}, 0},     // rx = 0
      {{0, 0, 5, 0, 0, 0, 1, 10, 0}, {{0, 0}}, 0},     // ry = 0
      {{0, 0, kNaN, 5, 0, 0, 1, 10, 0}, {{0, 0}}, 0},  // a radius not a number
      {{0, 0, 5, 5, kInf, 0, 1, 10, 0}, {{0, 0}}, 0},  // a rotation that no turn changes
      {{0, 0, 5, 5, -kInf, 0, 1, 10, 0}, {{0, 0}}, 0},
      {{0, 0, 5, 5, 0, 0, 1, kNaN, 0}, {{0, 0}}, 0},   // an end not a number
  };
  for (const auto& c : cases) ExpectNear(Convert(c.arc), c.expected, c.within);
}

// More than half a turn takes four pieces, the small arc one; a huge
// rotation terminates, whatever it yields.
TEST(ConvertArcToCubics, PieceCount) {
  const std::vector<CCA_GPoint> large = Convert(kRotated);
  ASSERT_EQ(large.size(), 13u);
  ExpectNear({large.back()}, {{10, 3}}, 1e-3f);
  EXPECT_EQ(Convert({0, 0, 8, 4, 0.5f, 0, 0, 10, 3}).size(), 4u);
  Convert({0, 0, 5, 5, 1e30f, 0, 1, 10, 0});
}

TEST(ConvertArcToCubics, TooFewRecordsAppendNothing) {
  using namespace hittest_test;
  CCA_Path out;
  EXPECT_EQ(vxhittest::ConvertArcToCubics(out, PathOf({{0, 0, M}, {5, 5, A}, {0, 0, 0}, {1, 0, 0}})), 0);
  EXPECT_EQ(out.GetPointCount(), 0);
}

}  // namespace
