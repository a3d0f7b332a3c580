#include <gtest/gtest.h>

#include <vxutility/HitTest.h>

#include "graphics/hittest/BuildPathSegments.h"
#include "graphics/hittest/PointOnPath.h"

namespace {

CCA_Path Polygon(std::initializer_list<CCA_GPoint> corners, bool close = true) {
  CCA_Path path;
  bool first = true;
  for (const CCA_GPoint& p : corners) {
    if (first) {
      path.MoveTo(p.x, p.y);
    } else {
      path.LineTo(p.x, p.y);
    }
    first = false;
  }
  if (close) path.Close();
  return path;
}

void Append(CCA_Path& path, const CCA_Path& more) {
  for (int i = 0; i < more.GetPointCount(); ++i) {
    const CA_PathPoint& p = more.GetPoint(i);
    path.AddPoint(p.x, p.y, p.flags);
  }
}

struct Probe {
  CCA_GPoint point;
  bool onStroke;
  bool withFill;
};

void ExpectProbes(const char* what, const CCA_Path& path, float tolerance, std::initializer_list<Probe> probes) {
  for (const Probe& p : probes) {
    EXPECT_EQ(JudgePointOnPath(p.point, tolerance, path, 0, false, CA_FillMode_Alternate), p.onStroke)
        << what << " (" << p.point.x << ", " << p.point.y << ") outline";
    EXPECT_EQ(JudgePointOnPath(p.point, tolerance, path, 0, true, CA_FillMode_Alternate), p.withFill)
        << what << " (" << p.point.x << ", " << p.point.y << ") area";
  }
}

TEST(JudgePointOnPath, NothingToHit) {
  ExpectProbes("empty", CCA_Path(), 1, {{{0, 0}, false, false}});
  CCA_Path starts;
  starts.MoveTo(0, 0);
  starts.MoveTo(5, 5);
  starts.Close();
  ExpectProbes("figure starts only", starts, 10, {{{0, 0}, false, false}, {{5, 5}, false, false}});
}

TEST(JudgePointOnPath, Rectangle) {
  ExpectProbes("rectangle", Polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}}), 1,
               {{{5, 0.5f}, true, true}, {{5, 5}, false, true}, {{20, 5}, false, false}});
}

TEST(JudgePointOnPath, UnclosedFigureLacksItsClosingSide) {
  const CCA_Path open = Polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, false);
  ExpectProbes("open", open, 1, {{{5, 5}, false, false}, {{0.5f, 5}, false, false}, {{5, 9.5f}, true, true}});
}

// The area test asks only for crossings on all four sides: holes and
// notches with edges all around are inside.
TEST(JudgePointOnPath, FourSideRuleIgnoresFigures) {
  CCA_Path ring = Polygon({{0, 0}, {30, 0}, {30, 30}, {0, 30}});
  Append(ring, Polygon({{10, 10}, {20, 10}, {20, 20}, {10, 20}}));
  ExpectProbes("ring", ring, 1, {{{15, 15}, false, true}, {{5, 15}, false, true}, {{35, 15}, false, false}});

  const CCA_Path notched = Polygon({{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}});
  ExpectProbes("L shape", notched, 1, {{{7, 7}, false, true}, {{2, 2}, false, true}, {{7, 12}, false, false}});
}

TEST(JudgePointOnPath, CircleFromTwoArcs) {
  CCA_Path circle;
  circle.MoveTo(0, 0);
  circle.ArcTo(5, 5, 0, 0, 1, 10, 0);
  circle.ArcTo(5, 5, 0, 0, 1, 0, 0);
  ExpectProbes("circle", circle, 0.5f,
               {{{5, 5}, true, true},
                {{5, -5.3f}, true, true},
                {{5 + 3.6f, 3.6f}, true, true},
                {{5.3f, 1}, false, true},
                {{5, 6}, false, false},
                {{11, 0}, false, false}});
}

// A crossing that falls exactly on a sample lies on neither side of the
// point: the centre's lines meet the circle only at the arcs' ends.
TEST(JudgePointOnPath, CrossingOnASampleCountsOnNoSide) {
  CCA_Path circle;
  circle.MoveTo(0, 0);
  circle.ArcTo(5, 5, 0, 0, 1, 10, 0);
  circle.ArcTo(5, 5, 0, 0, 1, 0, 0);
  ExpectProbes("circle centre", circle, 0.5f, {{{5, 0}, false, false}});
}

TEST(JudgePointOnPath, CurvesInAClosedFigure) {
  CCA_Path path;
  path.MoveTo(0, 0);
  path.QuadTo(5, 10, 10, 0);
  path.CubicBezierTo(10, -5, 0, -5, 0, 0);
  path.Close();
  ExpectProbes("lens", path, 0.5f,
               {{{5, 5.2f}, true, true}, {{5, -3.6f}, true, true}, {{5.3f, 1}, false, true}, {{5, 7}, false, false}});
}

TEST(JudgePointOnPath, ToleranceZeroHitsEndPoints) {
  const CCA_Path path = Polygon({{0, 0}, {10, 3}}, false);
  ExpectProbes("tolerance 0", path, 0, {{{0, 0}, true, true}, {{10, 3}, true, true}, {{5, 1.6f}, false, false}});
}

TEST(JudgePointOnPath, FillModeAndUnusedArgumentChangeNothing) {
  const CCA_Path path = Polygon({{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}});
  const CCA_GPoint points[] = {{7, 7}, {5, 0.5f}, {20, 5}, {2, 2}};
  for (const CCA_GPoint& point : points) {
    for (bool fill : {false, true}) {
      const bool reference = JudgePointOnPath(point, 1, path, 0, fill, CA_FillMode_Alternate);
      for (float unused : {-3.0f, 0.5f, 100.0f}) {
        for (CA_FillMode mode : {CA_FillMode_Alternate, CA_FillMode_Winding}) {
          EXPECT_EQ(JudgePointOnPath(point, 1, path, unused, fill, mode), reference);
        }
      }
    }
  }
}

// The drivers skip segments whose point count does not fit their kind.
TEST(TestPointOnStroke, SkipsMisfitSegments) {
  using namespace vxhittest;
  PathSegmentList segments;
  const CA_PathPoint line[3] = {{0, 0, 0}, {10, 0, 0}, {20, 0, 0}};
  AppendSegment(segments, Line, line, 1);
  AppendSegment(segments, Line, line, 3);
  AppendSegment(segments, Quadratic, line, 2);
  AppendSegment(segments, static_cast<SegmentKind>(9), line, 2);
  EXPECT_FALSE(TestPointOnStroke({0, 0}, 5, segments));
  EXPECT_FALSE(TestPointInFill({0, 0}, 5, segments));
  AppendSegment(segments, Line, line, 2);
  EXPECT_TRUE(TestPointOnStroke({0, 0}, 5, segments));
}

}  // namespace
