#include <gtest/gtest.h>

#include <vector>

#include "graphics/hittest/BuildPathSegments.h"
#include "hittest/HitTestSupport.h"

namespace {

using hittest_test::XY;
using namespace vxhittest;

struct Expected {
  SegmentKind kind;
  std::vector<XY> points;
};

void ExpectSegments(const CCA_Path& path, std::initializer_list<Expected> expected) {
  PathSegmentList segments;
  BuildPathSegments(path, segments);
  ASSERT_EQ(segments.GetSize(), static_cast<int>(expected.size()));
  int i = 0;
  for (const Expected& e : expected) {
    const PathSegment& s = segments[i];
    EXPECT_EQ(s.kind, e.kind) << "segment " << i;
    ASSERT_EQ(s.points.GetSize(), static_cast<int>(e.points.size())) << "segment " << i;
    for (int j = 0; j < s.points.GetSize(); ++j) {
      EXPECT_EQ(s.points[j].x, e.points[j].x) << "segment " << i << " point " << j;
      EXPECT_EQ(s.points[j].y, e.points[j].y) << "segment " << i << " point " << j;
    }
    ++i;
  }
}

TEST(BuildPathSegments, EveryKindStartsWhereTheLastEnded) {
  CCA_Path path;
  path.MoveTo(1, 1);
  path.LineTo(2, 2);
  path.QuadTo(3, 3, 4, 4);
  path.CubicBezierTo(5, 5, 6, 6, 7, 7);
  path.LineTo(8, 8);
  ExpectSegments(path, {{Line, {{1, 1}, {2, 2}}},
                        {Quadratic, {{2, 2}, {3, 3}, {4, 4}}},
                        {Cubic, {{4, 4}, {5, 5}, {6, 6}, {7, 7}}},
                        {Line, {{7, 7}, {8, 8}}}});
}

TEST(BuildPathSegments, ArcBecomesCubicsAndTheNextSegmentStartsAtItsEnd) {
  CCA_Path path;
  path.MoveTo(0, 0);
  path.ArcTo(5, 5, 0, 0, 1, 10, 0);
  path.LineTo(10, 10);
  PathSegmentList segments;
  BuildPathSegments(path, segments);
  ASSERT_EQ(segments.GetSize(), 3);
  EXPECT_EQ(segments[0].kind, Cubic);
  EXPECT_EQ(segments[1].kind, Cubic);
  ASSERT_EQ(segments[1].points.GetSize(), 4);
  EXPECT_EQ(segments[0].points[0].x, 0);
  EXPECT_EQ(segments[0].points[3].x, segments[1].points[0].x);
  EXPECT_NEAR(segments[1].points[3].x, 10, 1e-4);
  EXPECT_EQ(segments[2].kind, Line);
  EXPECT_EQ(segments[2].points[0].x, 10);
  EXPECT_EQ(segments[2].points[0].y, 0);
}

TEST(BuildPathSegments, FirstSegmentBitDecides) {
  CCA_Path path;
  path.MoveTo(0, 0);
  path.AddPoint(1, 0, PathFlagLineTo | PathFlagQuadTo | PathFlagArcTo);
  path.AddPoint(2, 0, PathFlagCubicTo | PathFlagQuadTo);
  path.AddPoint(3, 0, 0);
  path.AddPoint(4, 0, PathFlagArcTo | PathFlagCubicTo);
  path.AddPoint(5, 0, 0);
  path.AddPoint(6, 0, 0);
  ExpectSegments(path, {{Line, {{0, 0}, {1, 0}}},
                        {Quadratic, {{1, 0}, {2, 0}, {3, 0}}},
                        {Cubic, {{3, 0}, {4, 0}, {5, 0}, {6, 0}}}});
}

TEST(BuildPathSegments, FigureStartWinsAndOpensNothing) {
  CCA_Path path;
  path.AddPoint(7, 7, PathFlagLineTo);  // first point: no segment
  path.AddPoint(1, 1, PathFlagMoveTo | PathFlagLineTo | PathFlagClose);
  path.LineTo(2, 1);
  path.AddPoint(2, 2, PathFlagLineTo | PathFlagClose);
  ExpectSegments(path, {{Line, {{1, 1}, {2, 1}}}, {Line, {{2, 1}, {2, 2}}}, {Line, {{2, 2}, {1, 1}}}});
}

TEST(BuildPathSegments, CloseBeforeAnyFigureStartGoesToTheOrigin) {
  CCA_Path path;
  path.AddPoint(3, 3, 0);
  path.AddPoint(5, 3, PathFlagLineTo | PathFlagClose);
  path.MoveTo(9, 9);
  path.LineTo(9, 4);
  path.Close();
  ExpectSegments(path, {{Line, {{3, 3}, {5, 3}}},
                        {Line, {{5, 3}, {0, 0}}},
                        {Line, {{9, 9}, {9, 4}}},
                        {Line, {{9, 4}, {9, 9}}}});
}

TEST(BuildPathSegments, EachFigureClosesToItsOwnStart) {
  CCA_Path path;
  path.MoveTo(0, 0);
  path.LineTo(4, 0);
  path.LineTo(4, 4);  // left open
  path.MoveTo(10, 10);
  path.QuadTo(12, 14, 14, 10);
  path.Close();
  ExpectSegments(path, {{Line, {{0, 0}, {4, 0}}},
                        {Line, {{4, 0}, {4, 4}}},
                        {Quadratic, {{10, 10}, {12, 14}, {14, 10}}},
                        {Line, {{14, 10}, {10, 10}}}});
}

TEST(BuildPathSegments, CloseCountsOnlyOnTheLastPointOfASegment) {
  CCA_Path path;
  path.MoveTo(0, 0);
  path.AddPoint(1, 2, PathFlagQuadTo | PathFlagClose);  // control point
  path.AddPoint(2, 0, 0);
  path.AddPoint(3, 2, PathFlagCubicTo);
  path.AddPoint(4, 2, PathFlagClose);  // second control point
  path.AddPoint(5, 0, 0);
  ExpectSegments(path, {{Quadratic, {{0, 0}, {1, 2}, {2, 0}}}, {Cubic, {{2, 0}, {3, 2}, {4, 2}, {5, 0}}}});
}

TEST(BuildPathSegments, CurvesMissingTheirPointsMakeNoSegment) {
  struct Case {
    const char* what;
    int flag;
    int pointsAfter;
  };
  const Case cases[] = {{"quadratic on the last point", PathFlagQuadTo, 0},
                        {"cubic with one point after it", PathFlagCubicTo, 1},
                        {"arc with two points after it", PathFlagArcTo, 2}};
  for (const Case& c : cases) {
    CCA_Path path;
    path.MoveTo(0, 0);
    path.AddPoint(5, 5, c.flag);
    for (int i = 0; i < c.pointsAfter; ++i) path.AddPoint(6.0f + i, 6, 0);
    PathSegmentList segments;
    BuildPathSegments(path, segments);
    EXPECT_EQ(segments.GetSize(), 0) << c.what;
    // Its own point still closes the figure.
    path.GetPoint(1).flags |= PathFlagClose;
    ExpectSegments(path, {{Line, {{5, 5}, {0, 0}}}});
  }
}

TEST(BuildPathSegments, PointsWithoutSegmentBitsOnlyClose) {
  CCA_Path path;
  path.MoveTo(1, 1);
  path.AddPoint(2, 2, 0);
  path.AddPoint(3, 3, PathFlagClose);
  ExpectSegments(path, {{Line, {{3, 3}, {1, 1}}}});
}

TEST(BuildPathSegments, DegenerateArcMakesNoSegment) {
  CCA_Path path;
  path.MoveTo(4, 4);
  path.ArcTo(5, 5, 0, 0, 1, 4, 4);
  path.Close();
  ExpectSegments(path, {{Line, {{4, 4}, {4, 4}}}});
}

}  // namespace
