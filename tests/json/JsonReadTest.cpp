// Classification and the acceptance rules of every scalar kind, across the
// integer boundaries, for parsed numbers and for numbers written by the
// integer writes.

#include <cstdint>
#include <limits>
#include <string>

#include "json/JsonTestUtil.h"

namespace {

constexpr uint64 kU64Max = std::numeric_limits<uint64>::max();

struct NumberRow {
  const char* text;
  VXJsonType type;
  bool intOk;
  bool uintOk;
  unsigned int uintValue;
  bool int64Ok;
  bool uint64Ok;
  uint64 uint64Value;
  bool floatOk;  // and Double: same rows accept both for integers
};

const NumberRow kNumberRows[] = {
    {"-9223372036854775808", VXJsonType_Int64, false, false, 0, true, true, 0x8000000000000000ull, false},
    {"-2147483649", VXJsonType_Int64, false, false, 0, true, true, kU64Max - 2147483648ull, false},
    {"-2147483648", VXJsonType_Int, true, true, 2147483648u, true, true, kU64Max - 2147483647ull, true},
    {"-1", VXJsonType_Int, true, true, 4294967295u, true, true, kU64Max, true},
    {"0", VXJsonType_Uint, true, true, 0, true, true, 0, true},
    {"2147483647", VXJsonType_Uint, true, true, 2147483647u, true, true, 2147483647ull, true},
    {"4294967295", VXJsonType_Uint, false, true, 4294967295u, true, true, 4294967295ull, false},
    {"4294967296", VXJsonType_Uint64, false, false, 0, true, true, 4294967296ull, false},
    {"9223372036854775808", VXJsonType_Uint64, false, false, 0, false, true, 0x8000000000000000ull, false},
    {"18446744073709551615", VXJsonType_Uint64, false, false, 0, false, true, kU64Max, false},
};

VXSharedPtr<const VXJson> FirstElement(const std::string& text) {
  VXSharedPtr<VXJson> root = Parse(("[" + text + "]").c_str());
  // Keep the tree alive through a clone of the element.
  return root->GetAt(0)->Clone();
}

void ExpectNumberRow(const VXJson& v, const NumberRow& row) {
  SCOPED_TRACE(row.text);
  EXPECT_EQ(v.GetType(), row.type);
  bool ok = !row.intOk;
  int i = v.GetInt(&ok);
  EXPECT_EQ(ok, row.intOk);
  EXPECT_EQ(i, row.intOk ? static_cast<int>(static_cast<int64>(row.uint64Value)) : 0);
  ok = !row.uintOk;
  EXPECT_EQ(v.GetUint(&ok), row.uintValue);
  EXPECT_EQ(ok, row.uintOk);
  int64 i64 = 77;
  EXPECT_EQ(v.TryGetInt64(i64), row.int64Ok);
  if (row.int64Ok) {
    EXPECT_EQ(static_cast<uint64>(i64), row.uint64Value);
  } else {
    EXPECT_EQ(i64, 77);
  }
  ok = !row.uint64Ok;
  EXPECT_EQ(v.GetUint64(&ok), row.uint64Value);
  EXPECT_EQ(ok, row.uint64Ok);
  float f = -3.0f;
  EXPECT_EQ(v.TryGetFloat(f), row.floatOk);
  double d = -3.0;
  EXPECT_EQ(v.TryGetDouble(d), row.floatOk);
  if (row.floatOk) {
    EXPECT_EQ(f, static_cast<float>(d));
    EXPECT_EQ(d, static_cast<double>(static_cast<int64>(row.uint64Value)));
  } else {
    EXPECT_EQ(f, -3.0f);
    EXPECT_EQ(d, -3.0);
  }
  const char* text = "keep";
  EXPECT_FALSE(v.TryGetString(text));
  EXPECT_STREQ(text, "keep");
  EXPECT_STREQ(v.GetString(&ok), "");
  EXPECT_FALSE(ok);
  EXPECT_FALSE(v.GetBoolean(&ok));
  EXPECT_FALSE(ok);
}

TEST(JsonRead, ParsedIntegersFollowTheAcceptanceTable) {
  for (const NumberRow& row : kNumberRows) ExpectNumberRow(*FirstElement(row.text), row);
}

TEST(JsonRead, WrittenIntegersClassifyByValueNotByWrite) {
  for (const NumberRow& row : kNumberRows) {
    VXSharedPtr<VXJson> array = Parse("[]");
    VXSharedPtr<VXJson> object = Parse("{}");
    if (row.text[0] == '-') {
      const int64 value = static_cast<int64>(row.uint64Value);
      ASSERT_TRUE(array->InsertInt64At(0, value));
      object->SetInt64Member("n", value);
    } else {
      ASSERT_TRUE(array->InsertUint64At(0, row.uint64Value));
      object->SetUint64Member("n", row.uint64Value);
    }
    ExpectNumberRow(*array->GetAt(0), row);
    ExpectNumberRow(*object->GetMember("n"), row);
    EXPECT_EQ(Text(array), std::string("[") + row.text + "]");
  }
}

struct OtherRow {
  const char* element;
  VXJsonType type;
  bool floatOk;
  bool doubleOk;
};

TEST(JsonRead, FloatingPointAndOtherKinds) {
  const OtherRow rows[] = {
      {"1.5", VXJsonType_Double, true, true},       {"1e300", VXJsonType_Double, false, true},
      {"-1e300", VXJsonType_Double, false, true},   {"3.4028234e38", VXJsonType_Double, true, true},
      {"1.0", VXJsonType_Double, true, true},       {"\"x\"", VXJsonType_String, false, false},
      {"true", VXJsonType_Boolean, false, false},   {"null", VXJsonType_Null, false, false},
      {"[]", VXJsonType_Array, false, false},       {"{}", VXJsonType_Object, false, false},
  };
  for (const OtherRow& row : rows) {
    SCOPED_TRACE(row.element);
    VXSharedPtr<const VXJson> v = FirstElement(row.element);
    EXPECT_EQ(v->GetType(), row.type);
    bool ok = true;
    v->GetInt(&ok);
    EXPECT_FALSE(ok);  // a floating-point number is never an integer
    v->GetUint64(&ok);
    EXPECT_FALSE(ok);
    v->GetFloat(&ok);
    EXPECT_EQ(ok, row.floatOk);
    v->GetDouble(&ok);
    EXPECT_EQ(ok, row.doubleOk);
  }
}

TEST(JsonRead, NanWrittenAsDoubleReadsAsDoubleOnly) {
  VXSharedPtr<VXJson> object = Parse("{}");
  object->SetDoubleMember("nan", std::numeric_limits<double>::quiet_NaN());
  object->SetDoubleMember("inf", std::numeric_limits<double>::infinity());
  for (const char* key : {"nan", "inf"}) {
    VXSharedPtr<const VXJson> v = object->GetMember(key);
    float f = 2.0f;
    EXPECT_FALSE(v->TryGetFloat(f));
    EXPECT_EQ(f, 2.0f);
    double d = 0;
    EXPECT_TRUE(v->TryGetDouble(d));
  }
}

TEST(JsonRead, FloatWriteStoresTheWidenedFloat) {
  VXSharedPtr<VXJson> object = Parse("{}");
  object->SetFloatMember("f", 0.1f);
  EXPECT_EQ(object->GetMember("f")->GetType(), VXJsonType_Double);
  EXPECT_EQ(object->GetDoubleMember("f", 0), 0.10000000149011612);
}

TEST(JsonRead, StringAndBooleanReads) {
  VXSharedPtr<VXJson> root = Parse("[\"ab\", false, 3]");
  const char* text = nullptr;
  EXPECT_TRUE(root->GetAt(0)->TryGetString(text));
  EXPECT_STREQ(text, "ab");
  bool b = true;
  EXPECT_TRUE(root->GetAt(1)->TryGetBoolean(b));
  EXPECT_FALSE(b);
  EXPECT_STREQ(root->GetStringAt(2, "dflt"), "dflt");
  EXPECT_EQ(root->GetStringAt(2, nullptr), nullptr);
  EXPECT_STREQ(root->GetStringAt(0, nullptr), "ab");
  EXPECT_TRUE(root->GetBooleanAt(7, true));
}

TEST(JsonRead, DefaultsForMissingElementsMembersAndWrongContainers) {
  VXSharedPtr<VXJson> array = Parse("[1, 2]");
  VXSharedPtr<VXJson> object = Parse("{\"\":1, \"a\":2, \"a\":3}");
  EXPECT_EQ(array->GetIntAt(-1, 9), 9);
  EXPECT_EQ(array->GetIntAt(2, 9), 9);
  EXPECT_EQ(array->GetIntAt(1, 9), 2);
  EXPECT_EQ(array->GetIntMember("a", 9), 9);
  EXPECT_EQ(object->GetIntAt(0, 9), 9);
  EXPECT_EQ(object->GetIntMember("a", 9), 2);  // first match
  EXPECT_EQ(object->GetIntMember("", 7), 7);
  EXPECT_EQ(object->GetIntMember(nullptr, 7), 7);
  EXPECT_FALSE(object->HasMember(""));
  EXPECT_FALSE(object->GetMember(nullptr));
  EXPECT_FALSE(object->GetMember("ab"));
  EXPECT_FALSE(array->GetAt(2));
  EXPECT_EQ(array->GetAt(2).use_count(), 1);  // a counted null handle
  EXPECT_EQ(object->GetSize(), 3);
  EXPECT_EQ(array->GetAt(0)->GetSize(), -1);
  EXPECT_EQ(Parse("[]")->GetSize(), 0);
  EXPECT_EQ(Parse("{}")->GetSize(), 0);
}

TEST(JsonRead, TypeNames) {
  const char* const names[] = {"null",   "int",    "uint",    "int64", "uint64", "float",
                               "double", "string", "boolean", "array", "object"};
  for (int i = 0; i <= 10; ++i) EXPECT_STREQ(GetJsonTypeString(static_cast<VXJsonType>(i)), names[i]);
  EXPECT_STREQ(GetJsonTypeString(static_cast<VXJsonType>(11)), "unknown");
  EXPECT_STREQ(GetJsonTypeString(static_cast<VXJsonType>(-1)), "unknown");
}

}  // namespace
