// Colours, geometry and paths as JSON arrays.

#include <string>

#include <vxutility/VXJsonHelper.h>

#include "json/JsonTestUtil.h"

namespace {

TEST(JsonHelperGraphics, ColoursRoundTripInEachSpace) {
  struct Row {
    CA_ColorSpace space;
    unsigned int color;
    const char* json;
    unsigned int readBack;
  };
  const Row rows[] = {
      {CA_ColorSpace_Gray, 0x12345678u, "[120]", 0x00787878u},
      {CA_ColorSpace_RGB, 0x00102030u, "[48,32,16]", 0x00102030u},
      {CA_ColorSpace_RGB, 0xFF102030u, "[48,32,16]", 0x00102030u},
      {CA_ColorSpace_CMYK, 0x80FF0010u, "[128,255,0,16]", 0x80FF0010u},
  };
  for (const Row& row : rows) {
    VXSharedPtr<VXJson> json = VXJsonHelper::FromColor(row.space, row.color);
    EXPECT_EQ(Text(json), row.json);
    unsigned int color = 1;
    EXPECT_TRUE(VXJsonHelper::ToColor(json, row.space, color));
    EXPECT_EQ(color, row.readBack);
  }
  EXPECT_EQ(Text(VXJsonHelper::FromCMYK(0x01020304u)), "[1,2,3,4]");
  EXPECT_EQ(Text(VXJsonHelper::FromRGB(0x01020304u)), "[4,3,2]");
  EXPECT_EQ(Text(VXJsonHelper::FromGray(0x01020304u)), "[4]");
  unsigned int cmyk = 0;
  EXPECT_TRUE(VXJsonHelper::ToCMYK(Parse("[1,2,3,4]"), cmyk));
  EXPECT_EQ(cmyk, 0x01020304u);
}

TEST(JsonHelperGraphics, ComponentsSpillWithoutMasking) {
  struct Row {
    const char* json;
    unsigned int (*read)(VXSharedPtr<const VXJson>);
    unsigned int expected;
  };
  const auto rgb = [](VXSharedPtr<const VXJson> v) { unsigned int c = 0; VXJsonHelper::ToRGB(v, c); return c; };
  const auto argb = [](VXSharedPtr<const VXJson> v) { unsigned int c = 0; VXJsonHelper::ToARGB(v, c); return c; };
  const auto gray = [](VXSharedPtr<const VXJson> v) { unsigned int c = 0; VXJsonHelper::ToGray(v, c); return c; };
  const Row rows[] = {
      {"[255, 0]", rgb, 0xFFFF00FFu},        {"[1, 2, 3]", argb, 0xFFFFFFFFu},
      {"[256, 0, 0]", rgb, 0x00000100u},     {"[0, 0, 0, 256]", argb, 0x00000100u},
      {"[]", gray, 0xFFFFFFFFu},             {"[\"16\", true, 2.9]", rgb, 0x00020110u},
      {"[1, 2, 3, 4, 5]", argb, 0x01020304u}, {"[300]", gray, 0x012D2D2Cu},
  };
  for (const Row& row : rows) EXPECT_EQ(row.read(Parse(row.json)), row.expected) << row.json;
}

TEST(JsonHelperGraphics, ColourReadersRefuseNonArraysAndUnknownSpaces) {
  unsigned int color = 42;
  for (int space = 0; space <= 4; ++space) {
    EXPECT_FALSE(VXJsonHelper::ToColor(Parse("{\"r\":1}"), static_cast<CA_ColorSpace>(space), color));
    EXPECT_FALSE(VXJsonHelper::ToColor(VXSharedPtr<const VXJson>(), static_cast<CA_ColorSpace>(space), color));
  }
  EXPECT_FALSE(VXJsonHelper::ToColor(Parse("[1,2,3]"), static_cast<CA_ColorSpace>(4), color));
  EXPECT_FALSE(VXJsonHelper::ToRGB(VXSharedPtr<const VXJson>(nullptr), color));
  EXPECT_EQ(color, 42u);
  VXSharedPtr<VXJson> none = VXJsonHelper::FromColor(static_cast<CA_ColorSpace>(4), color);
  EXPECT_FALSE(none);
  EXPECT_EQ(none.use_count(), 1);
}

TEST(JsonHelperGraphics, GeometryBuilders) {
  EXPECT_EQ(Text(VXJsonHelper::FromRect(CCA_Rect{1, 2, 3, 4})), "[1,2,3,4]");
  EXPECT_EQ(Text(VXJsonHelper::FromRectF(CCA_GRect{1, 2.5f, -3, 0.1f})), "[1.0,2.5,-3.0,0.10000000149011612]");
  EXPECT_EQ(Text(VXJsonHelper::FromMatrix(CCA_Matrix())), "[1.0,0.0,0.0,1.0,0.0,0.0]");
  EXPECT_EQ(Text(VXJsonHelper::FromPoint(CCA_Point{-1, 7})), "[-1,7]");
  EXPECT_EQ(Text(VXJsonHelper::FromSize(CCA_Size{3, 4})), "[3,4]");
  EXPECT_EQ(Text(VXJsonHelper::FromPointF(CCA_GPoint{0.5f, -2})), "[0.5,-2.0]");
  EXPECT_EQ(Text(VXJsonHelper::FromSizeF(CCA_GSize{8, 9})), "[8.0,9.0]");
}

TEST(JsonHelperGraphics, ShortAndLongGeometryArrays) {
  CCA_Rect rect;
  ASSERT_TRUE(VXJsonHelper::ToRect(Parse("[1, 2]"), rect));
  EXPECT_EQ(rect.left, 1);
  EXPECT_EQ(rect.top, 2);
  EXPECT_EQ(rect.right, -1);
  EXPECT_EQ(rect.bottom, -1);
  CCA_GRect grect;
  ASSERT_TRUE(VXJsonHelper::ToRectF(Parse("[1, 2]"), grect));
  EXPECT_EQ(grect.left, 1.0f);
  EXPECT_EQ(grect.right, 0.0f);
  EXPECT_EQ(grect.bottom, 0.0f);
  CCA_Point point;
  ASSERT_TRUE(VXJsonHelper::ToPoint(Parse("[\"3\", true]"), point));
  EXPECT_EQ(point.x, 3);
  EXPECT_EQ(point.y, 1);
  CCA_Matrix m;
  ASSERT_TRUE(VXJsonHelper::ToMatrix(Parse("[2,0,0,3,10,20,99]"), m));
  EXPECT_EQ(m.a, 2.0f);
  EXPECT_EQ(m.d, 3.0f);
  EXPECT_EQ(m.e, 10.0f);
  EXPECT_EQ(m.f, 20.0f);
  CCA_GPoint gpoint;
  ASSERT_TRUE(VXJsonHelper::ToPointF(Parse("[1e300, \"-2.5\"]"), gpoint));
  EXPECT_EQ(gpoint.x, std::numeric_limits<float>::infinity());
  EXPECT_EQ(gpoint.y, -2.5f);
  CCA_Size size{5, 6};
  EXPECT_FALSE(VXJsonHelper::ToSize(Parse("{\"w\":1}"), size));
  EXPECT_FALSE(VXJsonHelper::ToSize(VXSharedPtr<const VXJson>(), size));
  EXPECT_EQ(size.width, 5);
  EXPECT_EQ(size.height, 6);
  CCA_GSize gsize;
  ASSERT_TRUE(VXJsonHelper::ToSizeF(Parse("[]"), gsize));
  EXPECT_EQ(gsize.width, 0.0f);
}

TEST(JsonHelperGraphics, PathKeepsOnlyCoordinates) {
  EXPECT_EQ(Text(VXJsonHelper::FromPath(CCA_Path())), "[]");
  CCA_Path path;
  path.MoveTo(0, 0);
  path.LineTo(10, 0);
  path.LineTo(10, 10);
  path.Close();
  EXPECT_EQ(Text(VXJsonHelper::FromPath(path)), "[[0.0,0.0],[10.0,0.0],[10.0,10.0]]");
  CCA_Path curves;
  curves.MoveTo(1, 2);
  curves.QuadTo(3, 4, 5, 6);
  curves.CubicBezierTo(7, 8, 9, 10, 11.5f, 12);
  curves.Close();
  EXPECT_EQ(Text(VXJsonHelper::FromPath(curves)),
            "[[1.0,2.0],[3.0,4.0],[5.0,6.0],[7.0,8.0],[9.0,10.0],[11.5,12.0]]");
}

}  // namespace
