#include <gtest/gtest.h>

#include <vxbase/Matrix.h>
#include <vxbase/Path.h>

namespace {

struct Record {
  float x, y;
  int flags;
};

void ExpectRecords(const CCA_Path& path, std::initializer_list<Record> expected) {
  ASSERT_EQ(path.GetPointCount(), static_cast<int>(expected.size()));
  int i = 0;
  for (const Record& r : expected) {
    const CA_PathPoint& p = path.GetPoint(i);
    EXPECT_EQ(p.x, r.x) << "point " << i;
    EXPECT_EQ(p.y, r.y) << "point " << i;
    EXPECT_EQ(p.flags, r.flags) << "point " << i;
    ++i;
  }
}

TEST(Path, LaysDownRecordsForEveryKind) {
  CCA_Path path;
  path.MoveTo(1, 2);
  path.LineTo(3, 4);
  path.QuadTo(5, 6, 7, 8);
  path.CubicBezierTo(9, 10, 11, 12, 13, 14);
  path.ArcTo(5, 6, 0.5f, 1, 0, 20, 21);
  path.Close();
  ExpectRecords(path, {{1, 2, PathFlagMoveTo},
                       {3, 4, PathFlagLineTo},
                       {5, 6, PathFlagQuadTo},
                       {7, 8, 0},
                       {9, 10, PathFlagCubicTo},
                       {11, 12, 0},
                       {13, 14, 0},
                       {5, 6, PathFlagArcTo},
                       {0.5f, 1, 0},
                       {0, 0, 0},
                       {20, 21, PathFlagClose}});
}

TEST(Path, CopiesAreIndependentAndReadsAreChecked) {
  CCA_Path path;
  EXPECT_FALSE(path.Close());
  path.AddPoint(1, 1, PathFlagMoveTo | PathFlagClose);
  CCA_Path copy(path);
  copy.GetPoint(0).x = 99;
  EXPECT_EQ(path.GetPoint(0).x, 1);
  CCA_GPoint point;
  int flags = 0;
  EXPECT_TRUE(path.GetPoint(0, point, flags));
  EXPECT_EQ(flags, PathFlagMoveTo | PathFlagClose);
  EXPECT_FALSE(path.GetPoint(1, point, flags));
  EXPECT_FALSE(path.GetPoint(-1, point, flags));
}

TEST(Matrix, DefaultIsIdentityAndTranslateMovesOrigin) {
  CCA_Matrix m;
  EXPECT_TRUE(m.IsIdentity());
  m.Translate(3, 12.5f);
  EXPECT_EQ(m.a, 1);
  EXPECT_EQ(m.b, 0);
  EXPECT_EQ(m.c, 0);
  EXPECT_EQ(m.d, 1);
  const CCA_GPoint moved = m.Transform(CCA_GPoint{1, 2});
  EXPECT_EQ(moved.x, 4);
  EXPECT_EQ(moved.y, 14.5f);
  m.Scale(2, 2);  // applies after the translation
  EXPECT_EQ(m.Transform(CCA_GPoint{1, 2}).x, 8);
}

}  // namespace
