// Replacing and inserting writes, container creation, removal, enumeration
// and copies.

#include <cstring>
#include <string>
#include <vector>

#include "json/JsonTestUtil.h"

namespace {

TEST(JsonEdit, ReplacingWritesFlipTheMemberTypeInPlace) {
  struct Row {
    void (*write)(VXJson&);
    const char* expected;
    VXJsonType type;
  };
  const Row rows[] = {
      {[](VXJson& o) { o.SetIntMember("b", -3); }, "{\"a\":1,\"b\":-3,\"c\":3}", VXJsonType_Int},
      {[](VXJson& o) { o.SetUintMember("b", 3000000000u); }, "{\"a\":1,\"b\":3000000000,\"c\":3}", VXJsonType_Uint},
      {[](VXJson& o) { o.SetStringMember("b", "s"); }, "{\"a\":1,\"b\":\"s\",\"c\":3}", VXJsonType_String},
      {[](VXJson& o) { o.SetBooleanMember("b", true); }, "{\"a\":1,\"b\":true,\"c\":3}", VXJsonType_Boolean},
      {[](VXJson& o) { o.SetDoubleMember("b", 5); }, "{\"a\":1,\"b\":5.0,\"c\":3}", VXJsonType_Double},
      {[](VXJson& o) { o.SetArrayMember("b"); }, "{\"a\":1,\"b\":[],\"c\":3}", VXJsonType_Array},
      {[](VXJson& o) { o.SetObjectMember("b"); }, "{\"a\":1,\"b\":{},\"c\":3}", VXJsonType_Object},
      {[](VXJson& o) { o.SetValueMember("b", Parse("[null]")->GetAt(0)); }, "{\"a\":1,\"b\":null,\"c\":3}",
       VXJsonType_Null},
  };
  for (const Row& row : rows) {
    VXSharedPtr<VXJson> object = Parse("{\"a\":1,\"b\":{\"x\":[1,2]},\"c\":3}");
    row.write(*object);
    EXPECT_EQ(Text(object), row.expected);
    EXPECT_EQ(object->GetMember("b")->GetType(), row.type);
  }
}

TEST(JsonEdit, MemberWritesAppendNewKeysAndIgnoreBadTargets) {
  VXSharedPtr<VXJson> object = Parse("{\"a\":1,\"b\":2}");
  object->SetIntMember("b", 9);
  object->SetIntMember("z", 0);
  object->SetIntMember("", 5);
  object->SetIntMember(nullptr, 5);
  EXPECT_EQ(Text(object), "{\"a\":1,\"b\":9,\"z\":0}");
  VXSharedPtr<VXJson> array = Parse("[1]");
  array->SetIntMember("a", 1);
  EXPECT_FALSE(array->SetArrayMember("a"));
  EXPECT_FALSE(object->SetObjectMember(""));
  EXPECT_EQ(Text(array), "[1]");
}

TEST(JsonEdit, ElementWritesNeverAppend) {
  VXSharedPtr<VXJson> array = Parse("[]");
  EXPECT_FALSE(array->SetIntAt(0, 1));
  EXPECT_FALSE(array->SetValueAt(0, Parse("{}")));
  array->InsertIntAt(0, 1);
  EXPECT_FALSE(array->SetStringAt(1, "x"));
  EXPECT_FALSE(array->SetStringAt(-1, "x"));
  EXPECT_TRUE(array->SetStringAt(0, nullptr));
  EXPECT_FALSE(array->SetValueAt(0, VXSharedPtr<const VXJson>(nullptr)));
  EXPECT_EQ(Text(array), "[\"\"]");
  EXPECT_FALSE(Parse("{}")->SetIntAt(0, 1));
}

TEST(JsonEdit, InsertAtBothEndsAndInTheMiddle) {
  struct Row {
    int index;
    const char* expected;
  };
  const Row rows[] = {{0, "[7,10,20,30]"},  {1, "[10,7,20,30]"}, {2, "[10,20,7,30]"},
                      {3, "[10,20,30,7]"},  {4, "[10,20,30,7]"}, {-1, "[10,20,30,7]"},
                      {-5, "[10,20,30,7]"}};
  for (const Row& row : rows) {
    VXSharedPtr<VXJson> array = Parse("[10,20,30]");
    EXPECT_TRUE(array->InsertIntAt(row.index, 7));
    EXPECT_EQ(Text(array), row.expected) << row.index;
  }
  EXPECT_FALSE(Parse("{}")->InsertIntAt(0, 1));
  EXPECT_FALSE(Parse("{}")->InsertArrayAt(0));
}

TEST(JsonEdit, InsertIntoExactlyFullStorage) {
  // Grow by appends until a power of two, so the element storage is full.
  VXSharedPtr<VXJson> array = Parse("[]");
  for (int i = 0; i < 16; ++i) array->InsertIntAt(-1, i);
  EXPECT_TRUE(array->InsertIntAt(1, 99));
  EXPECT_EQ(array->GetSize(), 17);
  EXPECT_EQ(array->GetIntAt(0, -1), 0);
  EXPECT_EQ(array->GetIntAt(1, -1), 99);
  EXPECT_EQ(array->GetIntAt(2, -1), 1);
  EXPECT_EQ(array->GetIntAt(16, -1), 15);
}

TEST(JsonEdit, InsertEveryKindAndContainers) {
  VXSharedPtr<VXJson> array = Parse("[]");
  array->InsertIntAt(-1, -1);
  array->InsertUintAt(-1, 4294967295u);
  array->InsertInt64At(-1, -5000000000ll);
  array->InsertUint64At(-1, 18446744073709551615ull);
  array->InsertStringAt(-1, nullptr);
  array->InsertBooleanAt(-1, false);
  array->InsertFloatAt(-1, 0.5f);
  array->InsertDoubleAt(-1, -0.0);
  VXSharedPtr<VXJson> inner = array->InsertObjectAt(0);
  inner->SetIntMember("k", 1);
  array->InsertArrayAt(100)->InsertIntAt(0, 2);
  EXPECT_EQ(Text(array),
            "[{\"k\":1},-1,4294967295,-5000000000,18446744073709551615,\"\",false,0.5,-0.0,[2]]");
  EXPECT_FALSE(array->InsertValueAt(0, VXSharedPtr<const VXJson>(nullptr)));
  EXPECT_EQ(array->GetSize(), 10);
}

TEST(JsonEdit, InsertValueOfAnElementOfTheSameArrayInsertsItsOldValue) {
  VXSharedPtr<VXJson> array = Parse("[\"a\",\"b\",\"c\"]");
  EXPECT_TRUE(array->InsertValueAt(0, array->GetAt(0)));
  EXPECT_TRUE(array->InsertValueAt(1, array->GetAt(3)));
  EXPECT_EQ(Text(array), "[\"a\",\"c\",\"a\",\"b\",\"c\"]");
}

TEST(JsonEdit, RemoveAtBothEnds) {
  VXSharedPtr<VXJson> array = Parse("[1,2,3,4]");
  EXPECT_FALSE(array->RemoveAt(4));
  EXPECT_FALSE(array->RemoveAt(-1));
  EXPECT_TRUE(array->RemoveAt(0));
  EXPECT_TRUE(array->RemoveAt(2));
  EXPECT_EQ(Text(array), "[2,3]");
  EXPECT_FALSE(Parse("{\"a\":1}")->RemoveAt(0));
}

TEST(JsonEdit, RemoveMemberMovesTheLastMember) {
  struct Row {
    const char* key;
    const char* expected;
  };
  const Row rows[] = {{"a", "{\"c\":3,\"b\":2}"}, {"b", "{\"a\":1,\"c\":3}"}, {"c", "{\"a\":1,\"b\":2}"},
                      {"x", "{\"a\":1,\"b\":2,\"c\":3}"}, {"", "{\"a\":1,\"b\":2,\"c\":3}"}};
  for (const Row& row : rows) {
    VXSharedPtr<VXJson> object = Parse("{\"a\":1,\"b\":2,\"c\":3}");
    object->RemoveMember(row.key);
    EXPECT_EQ(Text(object), row.expected) << row.key;
  }
  VXSharedPtr<VXJson> single = Parse("{\"a\":1}");
  single->RemoveMember("a");
  EXPECT_EQ(Text(single), "{}");
  VXSharedPtr<VXJson> twins = Parse("{\"a\":1,\"a\":2}");
  twins->RemoveMember("a");
  EXPECT_EQ(Text(twins), "{\"a\":2}");
}

std::vector<std::string> Enumerate(VXJson& object, bool& lastResult) {
  std::vector<std::string> seen;
  CCA_String name("untouched");
  VXSharedPtr<VXJson> value;
  bool more = object.FirstMember(name, value);
  if (value) seen.push_back(std::string(name.c_str()) + "=" + Text(value));
  while (more) {
    more = object.NextMember(name, value);
    seen.push_back(std::string(name.c_str()) + "=" + Text(value));
  }
  lastResult = more;
  return seen;
}

TEST(JsonEdit, EnumerationOnZeroOneAndThreeMembers) {
  bool last = true;
  VXSharedPtr<VXJson> empty = Parse("{}");
  EXPECT_TRUE(Enumerate(*empty, last).empty());
  VXSharedPtr<VXJson> one = Parse("{\"a\":1}");
  EXPECT_EQ(Enumerate(*one, last), std::vector<std::string>({"a=1"}));
  VXSharedPtr<VXJson> three = Parse("{\"a\":1,\"b\":[2],\"c\":\"x\"}");
  EXPECT_EQ(Enumerate(*three, last), std::vector<std::string>({"a=1", "b=[2]", "c=\"x\""}));
  EXPECT_FALSE(last);
  CCA_String name("kept");
  VXSharedPtr<VXJson> value;
  EXPECT_FALSE(three->NextMember(name, value));  // the cursor stays at the end
  EXPECT_FALSE(Parse("{\"a\":1}")->NextMember(name, value));  // a new handle starts at the end
  EXPECT_FALSE(Parse("[1]")->FirstMember(name, value));
  EXPECT_FALSE(empty->FirstMember(name, value));
  EXPECT_EQ(name, "kept");
  EXPECT_FALSE(value);
}

TEST(JsonEdit, EnumeratedValuesAreWritableViews) {
  VXSharedPtr<VXJson> object = Parse("{\"a\":1,\"b\":2}");
  CCA_String name;
  VXSharedPtr<VXJson> value;
  object->FirstMember(name, value);
  value->CopyFrom(Parse("[3]"));
  EXPECT_EQ(Text(object), "{\"a\":[3],\"b\":2}");
}

TEST(JsonEdit, MemberNamesInOrderWithDuplicates) {
  CCA_ObjArrayTemplate<CCA_String> names = Parse("{\"b\":1,\"a\":2,\"b\":3}")->GetMemberNames();
  ASSERT_EQ(names.GetSize(), 3);
  EXPECT_EQ(names[0], "b");
  EXPECT_EQ(names[1], "a");
  EXPECT_EQ(names[2], "b");
  EXPECT_EQ(Parse("[1]")->GetMemberNames().GetSize(), 0);
}

TEST(JsonEdit, ContainerMembersReplaceWholeTrees) {
  VXSharedPtr<VXJson> object = Parse("{\"a\":{\"x\":1}}");
  VXSharedPtr<VXJson> array = object->SetArrayMember("a");
  EXPECT_EQ(array->GetSize(), 0);
  array->InsertIntAt(0, 4);
  object->SetObjectMember("n")->SetStringMember("k", "v");
  EXPECT_EQ(Text(object), "{\"a\":[4],\"n\":{\"k\":\"v\"}}");
}

TEST(JsonEdit, ValueMemberOfItselfAndCopiedStrings) {
  VXSharedPtr<VXJson> object = Parse("{\"a\":1}");
  object->SetValueMember("self", object);
  EXPECT_EQ(Text(object), "{\"a\":1,\"self\":{\"a\":1}}");
  char key[] = "k";
  char value[] = "v";
  object->SetStringMember(key, value);
  object->SetStringMember("n", nullptr);
  key[0] = 'X';
  value[0] = 'Y';
  EXPECT_STREQ(object->GetStringMember("k", nullptr), "v");
  EXPECT_STREQ(object->GetStringMember("n", nullptr), "");
}

TEST(JsonEdit, CopyFromOnRootCloneAndChild) {
  VXSharedPtr<VXJson> source = Parse("{\"a\":[1,2]}");
  VXSharedPtr<VXJson> clone = Parse("[0]")->Clone();
  EXPECT_FALSE(clone->CopyFrom(VXSharedPtr<const VXJson>(nullptr)));
  EXPECT_EQ(Text(clone), "[0]");
  EXPECT_TRUE(clone->CopyFrom(source));
  EXPECT_EQ(Text(clone), "{\"a\":[1,2]}");
  clone->SetIntMember("b", 3);  // later writes draw from the new pool
  EXPECT_EQ(Text(clone), "{\"a\":[1,2],\"b\":3}");

  VXSharedPtr<VXJson> root = Parse("{\"x\":{\"y\":1}}");
  EXPECT_TRUE(root->GetMutableMember("x")->CopyFrom(source));
  EXPECT_TRUE(root->CopyFrom(root->GetMember("x")));
  EXPECT_EQ(Text(root), "{\"a\":[1,2]}");
}

TEST(JsonEdit, CopyFromContentOfTheCloneItself) {
  VXSharedPtr<VXJson> clone = Parse("{\"a\":[1,{\"b\":\"long enough to live in the pool\"}]}")->Clone();
  EXPECT_TRUE(clone->CopyFrom(clone->GetMember("a")));
  EXPECT_EQ(Text(clone), "[1,{\"b\":\"long enough to live in the pool\"}]");
  EXPECT_TRUE(clone->CopyFrom(clone));
  EXPECT_EQ(Text(clone), "[1,{\"b\":\"long enough to live in the pool\"}]");
  VXSharedPtr<VXJson> child = clone->GetMutableAt(1);
  EXPECT_TRUE(child->CopyFrom(clone->GetAt(0)));
  EXPECT_EQ(Text(clone), "[1,1]");
}

}  // namespace
