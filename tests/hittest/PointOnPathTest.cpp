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
};

// Neither the fill mode nor the fourth argument changes an answer.
TEST(JudgePointOnPath, Probes) {
  for (const Probe& p : kProbes) {
    for (bool fill : {false, true}) {
      const bool expected = fill ? p.inArea : p.onOutline;
      EXPECT_EQ(JudgePointOnPath(p.point, p.tolerance, p.path, 0, fill, CA_FillMode_Alternate), expected) << p.what;
      EXPECT_EQ(JudgePointOnPath(p.point, p.tolerance, p.path, -3, fill, CA_FillMode_Winding), expected) << p.what;
    }
  }
}

}  // namespace
