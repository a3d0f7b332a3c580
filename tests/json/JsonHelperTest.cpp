// The lenient readers and the builders of VXJsonHelper: scalars across every
// kind of value, base-library arrays, colours, geometry and paths.

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <string>
#include <tuple>

#include <vxutility/VXJsonHelper.h>

#include "json/JsonTestUtil.h"

namespace {

using H = VXJsonHelper;
constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr int kIntMin = -2147483647 - 1;
constexpr int kIntMax = 2147483647;

struct ScalarRow {
  const char* element;  // nullptr: a handle without a block; "": a counted null
  VXJsonType type;
  int asInt;
  unsigned int asUint;
  float asFloat;
  double asDouble;
  bool asBoolean;
  const char* asString;  // precision 2
};

const ScalarRow kRows[] = {
    {"-7", VXJsonType_Int, -7, 4294967289u, -7.0f, -7.0, true, "-7"},
    {"0", VXJsonType_Uint, 0, 0, 0.0f, 0.0, false, "0"},
    {"3000000000", VXJsonType_Uint, -1294967296, 3000000000u, 3e9f, 3e9, true, "3000000000"},
    {"5000000000", VXJsonType_Uint64, -1, 0, 0.0f, 0.0, false, ""},
    {"-5000000000", VXJsonType_Int64, -1, 0, 0.0f, 0.0, false, ""},
    {"-7.9", VXJsonType_Double, -7, 4294967289u, -7.9f, -7.9, true, "-7.90"},
    {"3.9e9", VXJsonType_Double, kIntMin, 3900000000u, 3.9e9f, 3.9e9, true, "3900000000.00"},
    {"1e18", VXJsonType_Double, kIntMin, 2808348672u, 1e18f, 1e18, true, "1000000000000000000.00"},
    {"1e19", VXJsonType_Double, kIntMin, 0, 1e19f, 1e19, true, "10000000000000000000.00"},
    {"1e300", VXJsonType_Double, kIntMin, 0, kInf, 1e300, true, nullptr},
    // Doubles within half a float step of the largest float round to it.
    {"3.4028235e38", VXJsonType_Double, kIntMin, 0, FLT_MAX, 3.4028235e38, true, nullptr},
    {"-3.4028235677e38", VXJsonType_Double, kIntMin, 0, -FLT_MAX, -3.4028235677e38, true, nullptr},
    {"3.4028235678e38", VXJsonType_Double, kIntMin, 0, kInf, 3.4028235678e38, true, nullptr},
    {"2147483647.9", VXJsonType_Double, 2147483647, 2147483647u, 2147483648.0f, 2147483647.9, true, "2147483647.90"},
    {"-2147483648.9", VXJsonType_Double, kIntMin, 2147483648u, -2147483648.0f, -2147483648.9, true, "-2147483648.90"},
    {"0.0", VXJsonType_Double, 0, 0, 0.0f, 0.0, false, "0.00"},
    {"-0.5", VXJsonType_Double, 0, 0, -0.5f, -0.5, true, "-0.50"},
    {"=nan", VXJsonType_Double, kIntMin, 0, NAN, NAN, true, "nan"},
    {"=inf", VXJsonType_Double, kIntMin, 0, kInf, HUGE_VAL, true, "inf"},
    {"=-inf", VXJsonType_Double, kIntMin, 0, -kInf, -HUGE_VAL, true, "-inf"},
    {"\"12abc\"", VXJsonType_String, 12, 12, 12.0f, 12.0, false, "12abc"},
    {"\"  -3.5e1x\"", VXJsonType_String, -3, 4294967293u, -35.0f, -35.0, false, "  -3.5e1x"},
    {"\"-1e300\"", VXJsonType_String, -1, 4294967295u, -kInf, -1e300, false, "-1e300"},
    {"\"abc\"", VXJsonType_String, 0, 0, 0.0f, 0.0, false, "abc"},
    {"\"3.4028235e38\"", VXJsonType_String, 3, 3, FLT_MAX, 3.4028235e38, false, "3.4028235e38"},
    // Integer text beyond the int range clamps, whatever the C library does.
    {"\"3000000000\"", VXJsonType_String, kIntMax, 2147483647u, 3e9f, 3e9, false, "3000000000"},
    {"\"4294967297\"", VXJsonType_String, kIntMax, 2147483647u, 4294967297.0f, 4294967297.0, false, "4294967297"},
    {"\"-4294967297x\"", VXJsonType_String, kIntMin, 2147483648u, -4294967297.0f, -4294967297.0, false, nullptr},
    {"\" +99999999999999999999\"", VXJsonType_String, kIntMax, 2147483647u, 1e20f, 1e20, false, nullptr},
    {"\"true\"", VXJsonType_String, 0, 0, 0.0f, 0.0, true, "true"},
    {"\"TRUE\"", VXJsonType_String, 0, 0, 0.0f, 0.0, false, "TRUE"},
    {"\"true \"", VXJsonType_String, 0, 0, 0.0f, 0.0, false, "true "},
    {"true", VXJsonType_Boolean, 1, 1, 1.0f, 1.0, true, "true"},
    {"false", VXJsonType_Boolean, 0, 0, 0.0f, 0.0, false, "false"},
    {"null", VXJsonType_Null, -1, 0, 0.0f, 0.0, false, ""},
    {"[1]", VXJsonType_Array, -1, 0, 0.0f, 0.0, false, ""},
    {"{}", VXJsonType_Object, -1, 0, 0.0f, 0.0, false, ""},
    {nullptr, VXJsonType_Null, -1, 0, 0.0f, 0.0, false, ""},
    {"", VXJsonType_Null, -1, 0, 0.0f, 0.0, false, ""},
};

ConstJsonPtr Value(const char* element) {
  if (element == nullptr || *element == '\0') return element ? ConstJsonPtr(nullptr) : ConstJsonPtr();
  return Element(element);
}

TEST(JsonHelper, ScalarsConvertByTheTableForEveryKind) {
  for (const ScalarRow& row : kRows) {
    SCOPED_TRACE(row.element ? row.element : "(no block)");
    ConstJsonPtr v = Value(row.element);
    ASSERT_TRUE(!v || v->GetType() == row.type);
    EXPECT_EQ(H::ToInt(v), row.asInt);
    EXPECT_EQ(H::ToUint(v), row.asUint);
    EXPECT_TRUE(std::isnan(row.asFloat) ? std::isnan(H::ToFloat(v)) : H::ToFloat(v) == row.asFloat);
    EXPECT_TRUE(std::isnan(row.asDouble) ? std::isnan(H::ToDouble(v)) : H::ToDouble(v) == row.asDouble);
    EXPECT_EQ(H::ToBoolean(v), row.asBoolean);
    EXPECT_TRUE(!row.asString || Str(H::ToString(v, 2)) == row.asString) << Str(H::ToString(v, 2));
  }
  EXPECT_EQ(H::ToString(Element("\"a,b\""), ",").GetSize() + H::ToString(ConstJsonPtr(), nullptr).GetSize(), 0);
}

TEST(JsonHelper, PrecisionOfTheFixedPointText) {
  const std::tuple<const char*, int, const char*> rows[] = {
      {"1.5", 3, "1.500"}, {"1.5", 0, "1.500000"}, {"1.5", -4, "1.500000"}, {"2.5", 2, "2.50"},
      {"2.5", 1, "2.5"},   {"0.125", 2, "0.12"},   {"-0.0", 1, "-0.0"},     {"-12", 5, "-12"},
      {"1e-7", 0, "0.000000"}, {"0.10000000149011612", 10, "0.1000000015"}};
  for (const auto& row : rows) {
    EXPECT_EQ(Str(H::ToString(Element(std::get<0>(row)), std::get<1>(row))), std::get<2>(row)) << std::get<1>(row);
  }
  // 1e300 has 301 integer digits; every requested decimal is written.
  const std::string wide = Str(H::ToString(Element("1e300"), 500));
  EXPECT_EQ(wide.size(), 301u + 1 + 500);
  EXPECT_EQ(wide.substr(0, 17) + wide[301], "10000000000000000.");
  EXPECT_EQ(H::ToString(Element("-1.7976931348623157e308"), 0).GetLength(), 1 + 309 + 1 + 6);
  // Past 1074 decimals every digit of a double is zero: the precision is capped.
  const std::string capped = Str(H::ToString(Element("5e-324"), 0x7fffffff));
  EXPECT_EQ(capped.size(), 2u + 1074);
  EXPECT_EQ(capped.back(), '5');
}

template <typename T>
std::string Join(const CCA_ArrayTemplate<T>& array) {
  std::string text;
  for (int i = 0; i < array.GetSize(); ++i) text += (i ? "," : "") + std::to_string(array[i]);
  return text;
}

template <typename T>
CCA_ArrayTemplate<T> Of(std::initializer_list<T> items) {
  CCA_ArrayTemplate<T> array;
  for (T item : items) array.Add(item);
  return array;
}

TEST(JsonHelper, ArrayReadersKeepTheLowBitsAndAppend) {
  JsonPtr input = Parse("[1, 300, -1, 256, 65536, 65535, 4294967295, 2.5, \"4\", true, null, [], 5000000000]");
  CCA_ArrayTemplate<unsigned char> bytes = Of<unsigned char>({7});
  CCA_ArrayTemplate<unsigned short> words;
  CCA_ArrayTemplate<unsigned int> dwords;
  CCA_ArrayTemplate<float> floats = Of<float>({9.0f});
  ASSERT_TRUE(H::ToByteArray(input, bytes) && H::ToWordArray(input, words) && H::ToDWordArray(input, dwords));
  ASSERT_TRUE(H::ToFloatArray(Parse("[1.5, 2, \"3\", 1e300]"), floats) && H::ToByteArray(Parse("[]"), bytes));
  CCA_ObjArrayTemplate<CCA_String> strings;
  strings.Add(CCA_String("first"));
  ASSERT_TRUE(H::ToStringArray(Parse("[\"a\", 1, null, \"\\u00e9\"]"), strings));
  CCA_ObjArrayTemplate<CCA_WString> wide;
  ASSERT_TRUE(H::ToStringArray(Parse("[\"\\u00e9x\", 2]"), wide));
  for (const ConstJsonPtr& refused : {ConstJsonPtr(Parse("{\"a\":1}")), ConstJsonPtr(Element("\"s\"")),
                                      ConstJsonPtr(), ConstJsonPtr(nullptr)}) {
    EXPECT_FALSE(H::ToByteArray(refused, bytes) || H::ToStringArray(refused, wide));
  }
  EXPECT_EQ(Join(bytes), "7,1,44,255,0,0,255,255,0,0,0,0,0,0");
  EXPECT_EQ(Join(words), "1,300,65535,256,0,65535,65535,0,0,0,0,0,0");
  EXPECT_EQ(Join(dwords), "1,300,4294967295,256,65536,65535,4294967295,0,0,0,0,0,0");
  EXPECT_EQ(Join(floats), "9.000000,1.500000,2.000000,0.000000,0.000000");
  ASSERT_EQ(strings.GetSize(), 5);
  EXPECT_EQ(Str(strings[0]) + "|" + Str(strings[1]) + "|" + Str(strings[2]) + Str(strings[3]) + "|" + Str(strings[4]),
            "first|a||\xC3\xA9");
  ASSERT_EQ(wide.GetSize(), 2);
  EXPECT_TRUE(wide[0] == L"\u00e9x" && wide[1] == L"");
}

TEST(JsonHelper, ArrayBuildersWriteEachElement) {
  EXPECT_EQ(Text(H::FromIntArray(Of<int>({-1, 2}))) + Text(H::FromDWordArray(Of<unsigned int>({4294967295u}))),
            "[-1,2][4294967295]");
  EXPECT_EQ(Text(H::FromWordArray(Of<unsigned short>({65535, 0}))) + Text(H::FromByteArray(Of<unsigned char>({255}))),
            "[65535,0][255]");
  EXPECT_EQ(Text(H::FromByteArray(Of<unsigned char>({}))), "[]");
  EXPECT_EQ(Text(H::FromFloatArray(Of<float>({0.1f}))), "[0.10000000149011612]");
  CCA_ObjArrayTemplate<CCA_String> narrow;
  CCA_ObjArrayTemplate<CCA_WString> wide;
  narrow.Add(CCA_String("a\"b"));
  wide.Add(CCA_WString(L"\u00e9\U0001F600"));
  JsonPtr built = H::FromStringArray(narrow);
  narrow[0] = "changed";  // the builder copied the text
  EXPECT_EQ(Text(built) + Text(H::FromStringArray(wide)), "[\"a\\\"b\"][\"\xC3\xA9\xF0\x9F\x98\x80\"]");
}

TEST(JsonHelper, ColoursRoundTripInEachSpaceAndRefuseUnknownSpaces) {
  const std::tuple<CA_ColorSpace, unsigned int, const char*, unsigned int> rows[] = {
      {CA_ColorSpace_Gray, 0x12345678u, "[120]", 0x00787878u},
      {CA_ColorSpace_RGB, 0x00102030u, "[48,32,16]", 0x00102030u},
      {CA_ColorSpace_RGB, 0xFF102030u, "[48,32,16]", 0x00102030u},
      {CA_ColorSpace_CMYK, 0x80FF0010u, "[128,255,0,16]", 0x80FF0010u},
  };
  for (const auto& row : rows) {
    JsonPtr json = H::FromColor(std::get<0>(row), std::get<1>(row));
    unsigned int color = 1;
    EXPECT_TRUE(H::ToColor(json, std::get<0>(row), color));
    EXPECT_EQ(Text(json), std::get<2>(row));
    EXPECT_EQ(color, std::get<3>(row));
  }
  EXPECT_EQ(Text(H::FromCMYK(0x01020304u)) + Text(H::FromRGB(0x01020304u)) + Text(H::FromGray(0x01020304u)),
            "[1,2,3,4][4,3,2][4]");
  unsigned int color = 42;
  for (int space = 0; space <= 4; ++space) {
    const auto cs = static_cast<CA_ColorSpace>(space);
    EXPECT_FALSE(H::ToColor(Parse("{\"r\":1}"), cs, color) || H::ToColor(ConstJsonPtr(), cs, color)) << space;
  }
  EXPECT_FALSE(H::ToColor(Parse("[1,2,3]"), static_cast<CA_ColorSpace>(4), color) || H::ToRGB(ConstJsonPtr(nullptr), color));
  EXPECT_EQ(color, 42u);
  JsonPtr none = H::FromColor(static_cast<CA_ColorSpace>(4), color);
  EXPECT_TRUE(!none && none.use_count() == 1);
}

TEST(JsonHelper, ColourComponentsSpillWithoutMasking) {
  const std::tuple<const char*, bool (*)(ConstJsonPtr, unsigned int&), unsigned int> rows[] = {
      {"[255, 0]", H::ToRGB, 0xFFFF00FFu},        {"[1, 2, 3]", H::ToARGB, 0xFFFFFFFFu},
      {"[256, 0, 0]", H::ToRGB, 0x00000100u},     {"[0, 0, 0, 256]", H::ToARGB, 0x00000100u},
      {"[]", H::ToGray, 0xFFFFFFFFu},             {"[\"16\", true, 2.9]", H::ToRGB, 0x00020110u},
      {"[1, 2, 3, 4, 5]", H::ToARGB, 0x01020304u}, {"[300]", H::ToGray, 0x012D2D2Cu},
      {"[1, 2, 3, 4]", H::ToCMYK, 0x01020304u},
  };
  for (const auto& row : rows) {
    unsigned int color = 0;
    EXPECT_TRUE(std::get<1>(row)(Parse(std::get<0>(row)), color));
    EXPECT_EQ(color, std::get<2>(row)) << std::get<0>(row);
  }
}

TEST(JsonHelper, GeometryFromShortAndLongArrays) {
  CCA_Rect rect;
  CCA_GRect grect;
  CCA_Point point;
  CCA_Matrix m;
  CCA_GPoint gpoint;
  CCA_GSize gsize;
  CCA_Size size{5, 6};
  ASSERT_TRUE(H::ToRect(Parse("[1, 2]"), rect) && H::ToRectF(Parse("[1, 2.5]"), grect));
  ASSERT_TRUE(H::ToPoint(Parse("[\"3\", true]"), point) && H::ToMatrix(Parse("[2,0,0,3,10,20,99]"), m));
  ASSERT_TRUE(H::ToPointF(Parse("[1e300, \"-2.5\"]"), gpoint) && H::ToSizeF(Parse("[]"), gsize));
  EXPECT_FALSE(H::ToSize(Parse("{\"w\":1}"), size) || H::ToSize(ConstJsonPtr(), size));
  EXPECT_EQ(Text(H::FromRect(rect)) + Text(H::FromRectF(grect)) + Text(H::FromPoint(point)) + Text(H::FromSize(size)),
            "[1,2,-1,-1][1.0,2.5,0.0,0.0][3,1][5,6]");
  EXPECT_EQ(Text(H::FromMatrix(m)) + Text(H::FromSizeF(gsize)), "[2.0,0.0,0.0,3.0,10.0,20.0][0.0,0.0]");
  EXPECT_TRUE(gpoint.x == kInf && gpoint.y == -2.5f);
  ASSERT_TRUE(H::ToMatrix(Parse("[3.4028235e38, \"-3.4028235e38\", 3.4028235678e38]"), m));
  EXPECT_TRUE(m.a == FLT_MAX && m.b == -FLT_MAX && m.c == kInf && m.d == 0.0f);
  EXPECT_EQ(Text(H::FromRectF(CCA_GRect{1, 2.5f, -3, 0.1f})), "[1.0,2.5,-3.0,0.10000000149011612]");
  EXPECT_EQ(Text(H::FromPointF(CCA_GPoint{0.5f, -2})) + Text(H::FromSizeF(CCA_GSize{8, 9})), "[0.5,-2.0][8.0,9.0]");
  EXPECT_EQ(Text(H::FromMatrix(CCA_Matrix())), "[1.0,0.0,0.0,1.0,0.0,0.0]");
}

TEST(JsonHelper, PathKeepsOnlyCoordinatesOfLinesCurvesAndClose) {
  CCA_Path path;
  EXPECT_EQ(Text(H::FromPath(path)), "[]");
  path.MoveTo(1, 2);
  path.LineTo(10, 0);
  path.QuadTo(3, 4, 5, 6);
  path.CubicBezierTo(7, 8, 9, 10, 11.5f, 12);
  path.Close();
  EXPECT_EQ(Text(H::FromPath(path)), "[[1.0,2.0],[10.0,0.0],[3.0,4.0],[5.0,6.0],[7.0,8.0],[9.0,10.0],[11.5,12.0]]");
}

}  // namespace
