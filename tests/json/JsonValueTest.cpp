// The value model: acceptance rules of every scalar kind across the integer
// boundaries (parsed, and written by the integer writes), defaults, writes,
// inserts, removal, enumeration, copies and handle lifetimes. Run under
// AddressSanitizer, the lifetime cases catch a view that outlives its storage.
// Also VXSharedPtr's counting, layout and release order.

#include <cmath>
#include <cstring>
#include <limits>
#include <cstdlib>
#include <tuple>
#include <vector>

#include "json/JsonTestUtil.h"

namespace {

constexpr uint64 kU64Max = std::numeric_limits<uint64>::max();

// `accepts`: i Int, u Uint, I Int64, U Uint64, f Float, d Double, s String,
// b Boolean. `bits`: the integer value, as 64 bits.
struct KindRow {
  const char* text;
  VXJsonType type;
  const char* accepts;
  uint64 bits;
};

const KindRow kKindRows[] = {
    {"-9223372036854775808", VXJsonType_Int64, "IU", 0x8000000000000000ull},
    {"-2147483649", VXJsonType_Int64, "IU", kU64Max - 2147483648ull},
    {"-2147483648", VXJsonType_Int, "iuIUfd", kU64Max - 2147483647ull},
    {"-1", VXJsonType_Int, "iuIUfd", kU64Max},
    {"0", VXJsonType_Uint, "iuIUfd", 0},
    {"2147483647", VXJsonType_Uint, "iuIUfd", 2147483647ull},
    {"4294967295", VXJsonType_Uint, "uIU", 4294967295ull},
    {"4294967296", VXJsonType_Uint64, "IU", 4294967296ull},
    {"9223372036854775808", VXJsonType_Uint64, "U", 0x8000000000000000ull},
    {"18446744073709551615", VXJsonType_Uint64, "U", kU64Max},
    {"1.5", VXJsonType_Double, "fd", 0},   {"3.4028234e38", VXJsonType_Double, "fd", 0},
    {"1e300", VXJsonType_Double, "d", 0},  {"-1e300", VXJsonType_Double, "d", 0},
    {"1.0", VXJsonType_Double, "fd", 0},   {"\"x\"", VXJsonType_String, "s", 0},
    {"true", VXJsonType_Boolean, "b", 0},  {"null", VXJsonType_Null, "", 0},
    {"[]", VXJsonType_Array, "", 0},       {"{}", VXJsonType_Object, "", 0},
    {"=nan", VXJsonType_Double, "d", 0},   {"=inf", VXJsonType_Double, "d", 0},
};

void ExpectKindRow(const VXJson& v, const KindRow& row) {
  SCOPED_TRACE(row.text);
  auto has = [&](char kind) { return std::strchr(row.accepts, kind) != nullptr; };
  const int64 value = static_cast<int64>(row.bits);
  const double number = std::strtod(row.text + (row.text[0] == '='), nullptr);
  bool ok[] = {!has('i'), !has('u'), !has('U'), !has('d'), !has('b')};  // each flag must flip
  int64 i64 = 77;
  float f = -3.0f;
  const char* text = "k";
  EXPECT_EQ(v.GetType(), row.type);
  EXPECT_EQ(v.GetInt(&ok[0]), has('i') ? static_cast<int>(value) : 0);
  EXPECT_EQ(v.GetUint(&ok[1]), has('u') ? static_cast<unsigned int>(value) : 0u);
  EXPECT_EQ(v.GetUint64(&ok[2]), has('U') ? row.bits : 0u);
  const double d = v.GetDouble(&ok[3]);
  EXPECT_TRUE(has('d') ? d == number || (std::isnan(d) && std::isnan(number)) : d == 0.0) << d;
  EXPECT_EQ(v.GetBoolean(&ok[4]), row.text[0] == 't');
  EXPECT_EQ(std::vector<bool>(ok, ok + 5), std::vector<bool>({has('i'), has('u'), has('U'), has('d'), has('b')}));
  EXPECT_EQ(v.TryGetInt64(i64), has('I'));
  EXPECT_EQ(i64, has('I') ? value : 77);
  EXPECT_EQ(v.TryGetFloat(f), has('f'));
  EXPECT_EQ(f, has('f') ? static_cast<float>(number) : -3.0f);
  EXPECT_EQ(v.TryGetString(text), has('s'));
  EXPECT_STREQ(text, has('s') ? "x" : "k");
}

TEST(JsonValue, EveryKindParsedOrWrittenFollowsTheAcceptanceTable) {
  for (const KindRow& row : kKindRows) {
    ExpectKindRow(*Element(row.text), row);
    if (row.type < VXJsonType_Int || row.type > VXJsonType_Uint64) continue;
    // Written integers classify by value, not by the write used.
    JsonPtr array = Parse("[]");
    JsonPtr object = Parse("{}");
    const bool negative = row.text[0] == '-';
    ASSERT_TRUE(negative ? array->InsertInt64At(0, row.bits) : array->InsertUint64At(0, row.bits));
    negative ? object->SetInt64Member("n", row.bits) : object->SetUint64Member("n", row.bits);
    ExpectKindRow(*array->GetAt(0), row);
    ExpectKindRow(*object->GetMember("n"), row);
    EXPECT_EQ(Text(array), std::string("[") + row.text + "]");
  }
}

TEST(JsonValue, DefaultsOfKeyedAndIndexedReadsAndTypeNames) {
  JsonPtr array = Parse("[\"ab\", false, 3]");
  JsonPtr object = Parse("{\"\":1, \"a\":2, \"a\":3}");
  EXPECT_STREQ(array->GetStringAt(0, nullptr), "ab");
  EXPECT_STREQ(array->GetStringAt(2, "dflt"), "dflt");
  EXPECT_TRUE(array->GetBooleanAt(7, true) && !array->GetBooleanAt(1, true));
  const std::vector<int> ints = {array->GetIntAt(-1, 9),      array->GetIntAt(3, 9),       array->GetIntAt(2, 9),
                                 array->GetIntMember("a", 9), object->GetIntAt(0, 9),      object->GetIntMember("a", 9),
                                 object->GetIntMember("", 9), object->GetIntMember(nullptr, 9)};
  EXPECT_EQ(ints, std::vector<int>({9, 9, 3, 9, 9, 2, 9, 9}));  // 2: the first match
  EXPECT_FALSE(object->HasMember("") || object->GetMember(nullptr) || object->GetMember("ab"));
  EXPECT_EQ(array->GetAt(3).use_count(), 1);  // a counted null handle
  EXPECT_TRUE(object->GetSize() == 3 && array->GetAt(2)->GetSize() == -1);  // a scalar has no size
  object->SetFloatMember("f", 0.1f);  // stored as the widened float
  EXPECT_EQ(object->GetDoubleMember("f", 0), 0.10000000149011612);
  const char* const names[] = {"null",   "int",    "uint",    "int64", "uint64", "float",
                               "double", "string", "boolean", "array", "object", "unknown"};
  for (int i = -1; i <= 11; ++i) EXPECT_STREQ(GetJsonTypeString(static_cast<VXJsonType>(i)), names[i < 0 ? 11 : i]);
}

TEST(JsonValue, ReplacingWritesFlipTheMemberTypeInPlace) {
  const std::tuple<void (*)(const JsonPtr&), const char*, VXJsonType> rows[] = {
      {[](const JsonPtr& o) { o->SetIntMember("b", -3); }, "-3", VXJsonType_Int},
      {[](const JsonPtr& o) { o->SetUintMember("b", 3000000000u); }, "3000000000", VXJsonType_Uint},
      {[](const JsonPtr& o) { o->SetBooleanMember("b", true); }, "true", VXJsonType_Boolean},
      {[](const JsonPtr& o) { o->SetDoubleMember("b", 5); }, "5.0", VXJsonType_Double},
      {[](const JsonPtr& o) { o->SetArrayMember("b")->InsertIntAt(0, 4); }, "[4]", VXJsonType_Array},
      {[](const JsonPtr& o) { o->SetObjectMember("b")->SetStringMember("k", "v"); }, "{\"k\":\"v\"}", VXJsonType_Object},
      {[](const JsonPtr& o) { o->SetValueMember("b", Parse("[null]")->GetAt(0)); }, "null", VXJsonType_Null},
      {[](const JsonPtr& o) { o->SetValueMember("b", Parse("{}")); o->SetValueMember("b", o); },
       "{\"a\":1,\"b\":{},\"c\":3}", VXJsonType_Object},
      {[](const JsonPtr& o) { char k[] = "b", v[] = "s"; o->SetStringMember(k, v); k[0] = v[0] = 'X'; }, "\"s\"",
       VXJsonType_String},
  };
  for (const auto& row : rows) {
    JsonPtr object = Parse("{\"a\":1,\"b\":{\"x\":[1,2]},\"c\":3}");
    std::get<0>(row)(object);
    EXPECT_EQ(Text(object), std::string("{\"a\":1,\"b\":") + std::get<1>(row) + ",\"c\":3}");
    EXPECT_EQ(object->GetMember("b")->GetType(), std::get<2>(row));
  }
}

TEST(JsonValue, WritesAppendNewKeysButNeverElementsAndIgnoreBadTargets) {
  JsonPtr object = Parse("{\"a\":1}");
  for (const char* key : {"z", "", static_cast<const char*>(nullptr)}) object->SetIntMember(key, 0);
  EXPECT_FALSE(object->SetObjectMember("") || object->SetIntAt(0, 1) || object->InsertArrayAt(0));
  EXPECT_EQ(Text(object), "{\"a\":1,\"z\":0}");
  JsonPtr array = Parse("[1]");
  array->SetIntMember("a", 1);
  EXPECT_FALSE(array->SetArrayMember("a") || array->SetStringAt(1, "x") || array->SetStringAt(-1, "x"));
  EXPECT_FALSE(array->SetValueAt(1, Parse("{}")) || array->SetValueAt(0, ConstJsonPtr(nullptr)));
  EXPECT_TRUE(array->SetStringAt(0, nullptr));
  EXPECT_EQ(Text(array), "[\"\"]");
}

TEST(JsonValue, InsertAtBothEndsInTheMiddleAndIntoFullStorage) {
  const char* const expected[] = {"[7,10,20,30]", "[10,7,20,30]", "[10,20,7,30]", "[10,20,30,7]"};
  for (int index = -5; index <= 4; ++index) {
    JsonPtr array = Parse("[10,20,30]");
    EXPECT_TRUE(array->InsertIntAt(index, 7));
    EXPECT_EQ(Text(array), expected[index < 0 ? 3 : std::min(index, 3)]) << index;
  }
  JsonPtr full = Parse("[]");  // sixteen appends leave the element storage exactly full
  for (int i = 0; i < 16; ++i) full->InsertIntAt(-1, i);
  EXPECT_TRUE(full->InsertIntAt(1, 99));
  EXPECT_EQ(Text(full), "[0,99,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15]");
}

TEST(JsonValue, InsertOtherKindsAndValuesOfTheSameArray) {
  // The integer, float and string inserts are exercised by the table above and
  // by the helpers' builders.
  JsonPtr array = Parse("[]");
  array->InsertStringAt(-1, nullptr);
  array->InsertBooleanAt(-1, false);
  array->InsertDoubleAt(-1, -0.0);
  array->InsertObjectAt(0)->SetIntMember("k", 1);
  array->InsertArrayAt(100)->InsertIntAt(0, 2);
  EXPECT_FALSE(array->InsertValueAt(0, ConstJsonPtr(nullptr)));
  EXPECT_EQ(Text(array), "[{\"k\":1},\"\",false,-0.0,[2]]");
  JsonPtr letters = Parse("[\"a\",\"b\",\"c\"]");  // an element is inserted as it was before the call
  EXPECT_TRUE(letters->InsertValueAt(0, letters->GetAt(0)) && letters->InsertValueAt(1, letters->GetAt(3)));
  EXPECT_EQ(Text(letters), "[\"a\",\"c\",\"a\",\"b\",\"c\"]");
}

TEST(JsonValue, RemoveAtBothEndsAndRemoveMemberMovesTheLastMember) {
  JsonPtr array = Parse("[1,2,3,4]");
  EXPECT_FALSE(array->RemoveAt(4) || array->RemoveAt(-1) || Parse("{\"a\":1}")->RemoveAt(0));
  EXPECT_TRUE(array->RemoveAt(0) && array->RemoveAt(2));
  EXPECT_EQ(Text(array), "[2,3]");
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"{\"a\":1,\"b\":2,\"c\":3}", "a", "{\"c\":3,\"b\":2}"}, {"{\"a\":1,\"b\":2,\"c\":3}", "b", "{\"a\":1,\"c\":3}"},
      {"{\"a\":1,\"b\":2,\"c\":3}", "c", "{\"a\":1,\"b\":2}"}, {"{\"a\":1,\"b\":2}", "x", "{\"a\":1,\"b\":2}"},
      {"{\"a\":1,\"b\":2}", "", "{\"a\":1,\"b\":2}"},          {"{\"a\":1}", "a", "{}"},
      {"{\"a\":1,\"a\":2}", "a", "{\"a\":2}"}};
  for (const auto& row : rows) {
    JsonPtr object = Parse(std::get<0>(row));
    object->RemoveMember(std::get<1>(row));
    EXPECT_EQ(Text(object), std::get<2>(row)) << std::get<1>(row);
  }
}

std::string Enumerate(VXJson& object) {
  std::string seen;
  CCA_String name;
  JsonPtr value;
  for (bool more = object.FirstMember(name, value); value; more = object.NextMember(name, value)) {
    seen += Str(name) + "=" + Text(value) + (more ? " " : ".");
    if (!more) break;
  }
  return seen;
}

TEST(JsonValue, EnumerationOnZeroOneAndThreeMembers) {
  JsonPtr three = Parse("{\"a\":1,\"b\":[2],\"c\":\"x\"}");
  EXPECT_EQ(Enumerate(*Parse("{}")) + "|" + Enumerate(*Parse("{\"a\":1}")), "|a=1.");
  EXPECT_EQ(Enumerate(*three), "a=1 b=[2] c=\"x\".");
  CCA_String name("kept");
  JsonPtr value;
  EXPECT_FALSE(three->NextMember(name, value));  // the cursor stays at the end
  EXPECT_FALSE(Parse("{\"a\":1}")->NextMember(name, value));  // a new handle starts at the end
  EXPECT_FALSE(Parse("[1]")->FirstMember(name, value) || Parse("{}")->FirstMember(name, value) || value);
  EXPECT_EQ(name, "kept");
  three->FirstMember(name, value);
  value->CopyFrom(Parse("[3]"));  // enumerated values are writable views
  EXPECT_EQ(Text(three), "{\"a\":[3],\"b\":[2],\"c\":\"x\"}");
  CCA_ObjArrayTemplate<CCA_String> names = Parse("{\"b\":1,\"a\":2,\"b\":3}")->GetMemberNames();
  ASSERT_EQ(names.GetSize(), 3);
  EXPECT_EQ(Str(names[0]) + Str(names[1]) + Str(names[2]), "bab");
  EXPECT_EQ(Parse("[1]")->GetMemberNames().GetSize(), 0);
}

TEST(JsonValue, CopyFromOnRootCloneAndChild) {
  JsonPtr source = Parse("{\"a\":[1,2]}");
  JsonPtr clone = Parse("[0]")->Clone();
  EXPECT_FALSE(clone->CopyFrom(ConstJsonPtr(nullptr)));
  EXPECT_EQ(Text(clone), "[0]");
  EXPECT_TRUE(clone->CopyFrom(source));
  clone->SetIntMember("b", 3);  // later writes draw from the new pool
  EXPECT_EQ(Text(clone), "{\"a\":[1,2],\"b\":3}");
  JsonPtr root = Parse("{\"x\":{\"y\":1}}");
  EXPECT_TRUE(root->GetMutableMember("x")->CopyFrom(source) && root->CopyFrom(root->GetMember("x")));
  EXPECT_EQ(Text(root), "{\"a\":[1,2]}");
  // A clone copying its own content reads it before the old pool goes.
  const std::string pooled = "[1,{\"b\":\"long enough to live in the pool\"}]";
  clone = Parse(("{\"a\":" + pooled + "}").c_str())->Clone();
  EXPECT_TRUE(clone->CopyFrom(clone->GetMember("a")) && clone->CopyFrom(clone));
  EXPECT_EQ(Text(clone), pooled);
  EXPECT_TRUE(clone->GetMutableAt(1)->CopyFrom(clone->GetAt(0)));
  EXPECT_EQ(Text(clone), "[1,1]");
}

TEST(JsonValue, ChildSurvivesEditsThatDoNotMoveItAndCloneOutlivesItsSource) {
  JsonPtr object = Parse("{\"list\":[1],\"n\":0}");
  JsonPtr list = object->GetMutableMember("list");
  object->SetIntMember("n", 7);  // replaces another member: the list stays put
  for (int i = 0; i < 100; ++i) list->InsertIntAt(-1, i);
  EXPECT_EQ(object->GetMember("list")->GetIntAt(100, -1), 99);
  list = JsonPtr();  // releasing the view leaves the tree whole
  EXPECT_EQ(object->GetMember("list")->GetSize(), 101);
  const std::string text = "a string longer than the inline size";
  JsonPtr clone = Parse(("{\"a\":{\"s\":\"" + text + "\"}}").c_str())->GetMember("a")->Clone();
  JsonPtr child = clone->GetMutableMember("s");
  clone->SetStringMember("t", "more");
  EXPECT_EQ(child->GetString(), text);
  clone = clone->Clone();  // the clone of a clone outlives its source too
  EXPECT_EQ(Text(clone), "{\"s\":\"" + text + "\",\"t\":\"more\"}");
}

// Growth and removal move a container's children; a view must follow its own
// value there, and edits through it must reach the live tree.
TEST(JsonValue, ViewsFollowTheirValueWhenTheContainerMoves) {
  JsonPtr object = Parse("{\"a\":[1],\"b\":2,\"c\":{\"x\":1}}");
  JsonPtr a = object->GetMutableMember("a");
  JsonPtr c = object->GetMutableMember("c");
  for (int i = 0; i < 100; ++i) object->SetIntMember(("k" + std::to_string(i)).c_str(), i);
  object->RemoveMember("b");  // moves the last member into the gap
  EXPECT_TRUE(a->InsertIntAt(-1, 2));
  c->SetIntMember("y", 3);
  EXPECT_EQ(Text(object->GetMember("a")) + Text(object->GetMember("c")), "[1,2]{\"x\":1,\"y\":3}");
  object->RemoveMember("a");  // the last member now sits at a's old position
  EXPECT_EQ(Text(c), "{\"x\":1,\"y\":3}");
  JsonPtr array = Parse("[[0]]");
  JsonPtr first = array->GetMutableAt(0);
  for (int i = 0; i < 100; ++i) array->InsertIntAt(-1, i);
  EXPECT_TRUE(first->InsertIntAt(-1, 1));
  EXPECT_EQ(Text(array->GetAt(0)), "[0,1]");
}

// A view whose value is gone (removed, its owner released, its clone
// overwritten without it) reads null and refuses edits; one whose clone is
// overwritten with a value at its place sees that value.
TEST(JsonValue, ViewsWhoseValueIsGoneReadNullAndRefuseEdits) {
  JsonPtr root = Parse("{\"a\":{\"s\":\"a string longer than the inline size\"},\"b\":[1]}");
  JsonPtr gone = root->GetMutableMember("a");
  JsonPtr b = root->GetMutableMember("b");
  root->RemoveMember("a");
  JsonPtr clone = Parse("{\"a\":[1]}")->Clone();
  JsonPtr inClone = clone->GetMutableMember("a");
  JsonPtr lost = clone->GetMutableMember("a");
  ASSERT_TRUE(clone->CopyFrom(Parse("{\"a\":[5]}")));
  EXPECT_EQ(inClone->GetIntAt(0, -1), 5);
  ASSERT_TRUE(clone->CopyFrom(Parse("[]")));
  root = JsonPtr();  // `b` outlives its owner
  for (JsonPtr* view : {&gone, &b, &lost}) {
    VXJson& v = **view;
    EXPECT_EQ(v.GetType(), VXJsonType_Null);
    EXPECT_EQ(v.GetSize() + v.GetIntAt(0, -1), -2);
    EXPECT_EQ(Text(*view), "null");
    v.SetIntMember("n", 1);
    EXPECT_FALSE(v.InsertIntAt(0, 1) || v.SetIntAt(0, 1) || v.RemoveAt(0) || v.InsertArrayAt(0) ||
                 v.SetObjectMember("o") || v.CopyFrom(Parse("[1]")) || clone->CopyFrom(*view));
    EXPECT_EQ(v.GetType(), VXJsonType_Null);
  }
  EXPECT_EQ(Text(clone), "[]");
}

// A view a hundred thousand levels down is made, found again and released
// without recursion.
TEST(JsonValue, DeepChainOfViews) {
  JsonPtr root = Parse("[]");
  JsonPtr node = root;
  for (int depth = 0; depth < 100000; ++depth) node = node->InsertArrayAt(0);
  root->InsertIntAt(-1, 7);  // the deepest view must look again
  EXPECT_TRUE(node->InsertIntAt(0, 1));
  EXPECT_EQ(Text(node), "[1]");
  node = JsonPtr();
  EXPECT_EQ(root->GetSize(), 2);
}

// VXSharedPtr itself: counting, layout and release order of its blocks.
TEST(SharedPtr, CountsCopiesReleasesOnceAndLaysOutObjectThenBlock) {
  static_assert(sizeof(VXSharedPtr<int>) == 2 * sizeof(void*), "two pointers");
  VXSharedPtr<int> none;
  VXSharedPtr<int> counted(static_cast<int*>(nullptr));
  EXPECT_TRUE(!counted && counted.use_count() == 1 && VXSharedPtr<int>(none).use_count() == 0);
  VXSharedPtr<const int> value(VXSharedPtr<int>(new int(5)));  // AddressSanitizer checks the single release
  VXSharedPtr<const int>& alias = value;
  value = alias;
  VXSharedPtr<const int> copy(value);
  void* const* fields = reinterpret_cast<void* const*>(&copy);
  auto* block = static_cast<sp_counted_impl<int>*>(fields[1]);
  EXPECT_TRUE(fields[0] == copy.get() && block->ownedPtr == copy.get() && block->useCount == 2);
  copy = counted;
  EXPECT_TRUE(value.use_count() == 1 && *value == 5 && counted.use_count() == 2);
}

}  // namespace
