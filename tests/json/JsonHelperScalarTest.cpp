// The lenient scalar readers across every kind of value.

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <vxutility/VXJsonHelper.h>

#include "json/JsonTestUtil.h"

namespace {

VXSharedPtr<const VXJson> Element(const char* text) { return Parse((std::string("[") + text + "]").c_str())->GetAt(0)->Clone(); }

struct ScalarRow {
  const char* element;
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
    {"3.9e9", VXJsonType_Double, -2147483648, 3900000000u, 3.9e9f, 3.9e9, true, "3900000000.00"},
    {"-1.0", VXJsonType_Double, -1, 4294967295u, -1.0f, -1.0, true, "-1.00"},
    {"1e20", VXJsonType_Double, -2147483648, 0, 1e20f, 1e20, true, "100000000000000000000.00"},
    {"1e18", VXJsonType_Double, -2147483648, 2808348672u, 1e18f, 1e18, true, "1000000000000000000.00"},
    {"1e19", VXJsonType_Double, -2147483648, 0, 1e19f, 1e19, true, "10000000000000000000.00"},
    {"2147483647.9", VXJsonType_Double, 2147483647, 2147483647u, 2147483648.0f, 2147483647.9, true,
     "2147483647.90"},
    {"-2147483648.9", VXJsonType_Double, -2147483648, 2147483648u, -2147483648.0f, -2147483648.9, true,
     "-2147483648.90"},
    {"0.0", VXJsonType_Double, 0, 0, 0.0f, 0.0, false, "0.00"},
    {"-0.5", VXJsonType_Double, 0, 0, -0.5f, -0.5, true, "-0.50"},
    {"\"12abc\"", VXJsonType_String, 12, 12, 12.0f, 12.0, false, "12abc"},
    {"\"  -3.5e1x\"", VXJsonType_String, -3, 4294967293u, -35.0f, -35.0, false, "  -3.5e1x"},
    {"\"abc\"", VXJsonType_String, 0, 0, 0.0f, 0.0, false, "abc"},
    {"\"true\"", VXJsonType_String, 0, 0, 0.0f, 0.0, true, "true"},
    {"\"TRUE\"", VXJsonType_String, 0, 0, 0.0f, 0.0, false, "TRUE"},
    {"\"true \"", VXJsonType_String, 0, 0, 0.0f, 0.0, false, "true "},
    {"\"1\"", VXJsonType_String, 1, 1, 1.0f, 1.0, false, "1"},
    {"true", VXJsonType_Boolean, 1, 1, 1.0f, 1.0, true, "true"},
    {"false", VXJsonType_Boolean, 0, 0, 0.0f, 0.0, false, "false"},
    {"null", VXJsonType_Null, -1, 0, 0.0f, 0.0, false, ""},
    {"[1]", VXJsonType_Array, -1, 0, 0.0f, 0.0, false, ""},
    {"{}", VXJsonType_Object, -1, 0, 0.0f, 0.0, false, ""},
};

TEST(JsonHelperScalar, EveryKindConvertsByTheTable) {
  for (const ScalarRow& row : kRows) {
    SCOPED_TRACE(row.element);
    VXSharedPtr<const VXJson> v = Element(row.element);
    ASSERT_EQ(v->GetType(), row.type);
    EXPECT_EQ(VXJsonHelper::ToInt(v), row.asInt);
    EXPECT_EQ(VXJsonHelper::ToUint(v), row.asUint);
    EXPECT_EQ(VXJsonHelper::ToFloat(v), row.asFloat);
    EXPECT_EQ(VXJsonHelper::ToDouble(v), row.asDouble);
    EXPECT_EQ(VXJsonHelper::ToBoolean(v), row.asBoolean);
    EXPECT_EQ(std::string(VXJsonHelper::ToString(v, 2).c_str()), row.asString);
  }
}

TEST(JsonHelperScalar, NullHandlesGiveTheFallbacks) {
  for (const VXSharedPtr<const VXJson>& none : {VXSharedPtr<const VXJson>(), VXSharedPtr<const VXJson>(nullptr)}) {
    EXPECT_EQ(VXJsonHelper::ToInt(none), -1);
    EXPECT_EQ(VXJsonHelper::ToUint(none), 0u);
    EXPECT_EQ(VXJsonHelper::ToFloat(none), 0.0f);
    EXPECT_EQ(VXJsonHelper::ToDouble(none), 0.0);
    EXPECT_FALSE(VXJsonHelper::ToBoolean(none));
    EXPECT_TRUE(VXJsonHelper::ToString(none, 3).IsEmpty());
  }
}

TEST(JsonHelperScalar, NonFiniteNumbersNeverReachAnIntegerConversion) {
  VXSharedPtr<VXJson> object = Parse("{}");
  object->SetDoubleMember("nan", std::numeric_limits<double>::quiet_NaN());
  object->SetDoubleMember("inf", std::numeric_limits<double>::infinity());
  object->SetDoubleMember("-inf", -std::numeric_limits<double>::infinity());
  object->SetDoubleMember("big", 1e300);
  for (const char* key : {"nan", "inf", "-inf", "big"}) {
    SCOPED_TRACE(key);
    VXSharedPtr<const VXJson> v = object->GetMember(key);
    EXPECT_EQ(VXJsonHelper::ToInt(v), -2147483648);
    EXPECT_EQ(VXJsonHelper::ToUint(v), 0u);
    EXPECT_TRUE(VXJsonHelper::ToBoolean(v));
  }
  EXPECT_TRUE(std::isnan(VXJsonHelper::ToFloat(object->GetMember("nan"))));
  EXPECT_EQ(VXJsonHelper::ToFloat(object->GetMember("big")), std::numeric_limits<float>::infinity());
  EXPECT_EQ(VXJsonHelper::ToFloat(object->GetMember("-inf")), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(VXJsonHelper::ToFloat(Element("\"-1e300\"")), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(std::string(VXJsonHelper::ToString(object->GetMember("inf"), 2).c_str()), "inf");
}

TEST(JsonHelperScalar, PrecisionOfTheFixedPointText) {
  struct Row {
    const char* element;
    int precision;
    const char* text;
  };
  const Row rows[] = {{"1.5", 3, "1.500"},        {"1.5", 0, "1.500000"},   {"1.5", -4, "1.500000"},
                      {"2.5", 2, "2.50"},         {"2.5", 1, "2.5"},        {"0.125", 2, "0.12"},
                      {"-0.0", 1, "-0.0"},        {"-12", 5, "-12"},        {"1e-7", 0, "0.000000"}};
  for (const Row& row : rows) {
    EXPECT_EQ(std::string(VXJsonHelper::ToString(Element(row.element), row.precision).c_str()), row.text)
        << row.element << " " << row.precision;
  }
  VXSharedPtr<VXJson> object = Parse("{}");
  object->SetFloatMember("f", 0.1f);
  EXPECT_EQ(std::string(VXJsonHelper::ToString(object->GetMember("f"), 10).c_str()), "0.1000000015");
}

TEST(JsonHelperScalar, HugeMagnitudesAndPrecisionsAreWrittenInFull) {
  // 1e300 has 301 integer digits; every requested decimal is written.
  const CCA_String wide = VXJsonHelper::ToString(Element("1e300"), 500);
  EXPECT_EQ(wide.GetLength(), 301 + 1 + 500);
  EXPECT_EQ(std::string(wide.c_str()).substr(0, 17), "10000000000000000");
  EXPECT_EQ(wide[301], '.');
  const CCA_String plain = VXJsonHelper::ToString(Element("-1.7976931348623157e308"), 0);
  EXPECT_EQ(plain.GetLength(), 1 + 309 + 1 + 6);
  // Past 1074 decimals every digit of a double is zero: the precision is capped.
  const CCA_String capped = VXJsonHelper::ToString(Element("5e-324"), 0x7fffffff);
  EXPECT_EQ(capped.GetLength(), 2 + 1074);
  EXPECT_EQ(capped[capped.GetLength() - 1], '5');
}

TEST(JsonHelperScalar, StringListFormIsAlwaysEmpty) {
  EXPECT_EQ(VXJsonHelper::ToString(Element("\"a,b\""), ",").GetSize(), 0);
  EXPECT_EQ(VXJsonHelper::ToString(VXSharedPtr<const VXJson>(), nullptr).GetSize(), 0);
}

}  // namespace
