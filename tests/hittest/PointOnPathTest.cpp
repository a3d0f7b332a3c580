#include <gtest/gtest.h>

#include <vxutility/HitTest.h>

#include "hittest/HitTestSupport.h"

namespace {

using namespace hittest_test;

const CCA_Path kOpenSquare = PathOf({{0, 0, M}, {10, 0, L}, {10, 10, L}, {0, 10, L}});
const CCA_Path kRing = PathOf({{0, 0, M}, {30, 0, L}, {30, 30, L}, {0, 30, L | Z},  //
                               {10, 10, M}, {20, 10, L}, {20, 20, L}, {10, 20, L | Z}});
const CCA_Path kLShape = PathOf({{0, 0, M}, {10, 0, L}, {10, 5, L}, {5, 5, L}, {5, 10, L}, {0, 10, L | Z}});
const CCA_Path kStarts = PathOf({{0, 0, M}, {5, 5, M | Z}});

// Two half arcs (radii, rotation and large-arc flag, sweep flag, end).
const CCA_Path kCircle = PathOf({{0, 0, M}, {5, 5, A}, {0, 0, 0}, {1, 0, 0}, {10, 0, 0},  //
                                 {5, 5, A}, {0, 0, 0}, {1, 0, 0}, {0, 0, 0}});
const CCA_Path kLens = PathOf({{0, 0, M}, {5, 10, Q}, {10, 0, 0}, {10, -5, C}, {0, -5, 0}, {0, 0, Z}});
// Two horizontal and two vertical segments, each far from the others: their
// lines count on their sides well beyond their ends.
const CCA_Path kBars = PathOf({{100, 0, M}, {110, 0, L}, {100, 50, M}, {110, 50, L},  //
                               {0, 100, M}, {0, 110, L}, {50, 100, M}, {50, 110, L}});
const CCA_Path kDot = PathOf({{5, 5, M}, {5, 5, L}});
const CCA_Path kDegenerateArc = PathOf({{4, 4, M}, {5, 5, A}, {0, 0, 0}, {1, 0, 0}, {4, 4, 0}});
const CCA_Path kNearTie = PathOf({{17, 6, M}, {2, 8, Q}, {17, 2, 0}});

struct Probe { const char* what; CCA_Path path; float tolerance; CCA_GPoint point; bool onOutline, inArea; };

// The area test asks only for crossings on all four sides: holes and
// notches with edges all around are inside. A crossing exactly on a sample
// counts on no side: the circle centre's lines meet it only at the arcs' ends.
const Probe kProbes[] = {
    {"empty path", CCA_Path(), 1, {0, 0}, false, false},
    {"figure starts only", kStarts, 10, {0, 0}, false, false},
    {"open square, inside", kOpenSquare, 1, {5, 5}, false, false},
    {"open square, on the missing side", kOpenSquare, 1, {0.5f, 5}, false, false},
    {"ring, in the hole", kRing, 1, {15, 15}, false, true},
    {"ring, in the band", kRing, 1, {5, 15}, false, true},
    {"L shape, in the notch", kLShape, 1, {7, 7}, false, true},
    {"L shape, above the notch", kLShape, 1, {7, 12}, false, false},
    {"circle, on the centre", kCircle, 0.5f, {5, 0}, false, false},
    {"circle, at the join of the arcs", kCircle, 0.5f, {5, 5}, true, true},
    {"circle, at the top", kCircle, 0.5f, {5, -5.3f}, true, true},
    {"circle, inside", kCircle, 0.5f, {5.3f, 1}, false, true},
    {"lens, on the quadratic", kLens, 0.5f, {5, 5.2f}, true, true},
    {"lens, on the cubic", kLens, 0.5f, {5, -3.6f}, true, true},
    {"bars, between their lines", kBars, 1, {25, 25}, false, true},
    {"bars, beyond one pair of lines", kBars, 1, {25, 75}, false, false},
    {"bars, on the line of one, far from it", kBars, 1, {25, 0}, true, true},
    {"zero-length segment, on its position", kDot, 1, {5, 5}, false, false},
    {"zero-length segment, on one of its lines", kDot, 1, {5, 5.5f}, false, false},
    {"zero-length segment, off its lines", kDot, 1, {5.5f, 4.5f}, true, true},
    {"degenerate arc, at its ends", kDegenerateArc, 1, {4, 4}, false, false},
    {"a near tie of two samples, the closer one wins", kNearTie, 2.56087971f, {13.8304892f, 8.9333849f}, true, true},
};

// Neither the fill mode nor the fourth argument changes an answer; the
// prepared path answers alike.
TEST(JudgePointOnPath, Probes) {
  for (const Probe& p : kProbes) {
    const VXHitTestPath prepared(p.path);
    for (bool fill : {false, true}) {
      const bool expected = fill ? p.inArea : p.onOutline;
      EXPECT_EQ(JudgePointOnPath(p.point, p.tolerance, p.path, 0, fill, CA_FillMode_Alternate), expected) << p.what;
      EXPECT_EQ(JudgePointOnPath(p.point, p.tolerance, p.path, -3, fill, CA_FillMode_Winding), expected) << p.what;
      EXPECT_EQ(prepared.JudgePoint(p.point, p.tolerance, fill), expected) << p.what;
    }
  }
}

// The prepared path copies what it needs: changing or dropping the path
// afterwards changes no answer.
TEST(VXHitTestPath, KeepsThePathItWasGiven) {
  CCA_Path path = kLShape;
  const VXHitTestPath prepared(path);
  path.RemoveAll();
  path.MoveTo(7, 7);
  path.LineTo(8, 8);
  EXPECT_TRUE(prepared.JudgePoint({7, 7}, 1, true));
  EXPECT_FALSE(prepared.JudgePoint({7, 7}, 1, false));
  EXPECT_TRUE(prepared.JudgePoint({10, 2}, 0.5f, false));
}

}  // namespace
