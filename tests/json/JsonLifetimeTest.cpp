// Lifetimes of root, clone and child handles. Run under AddressSanitizer,
// these catch a view that outlives its storage or a tree that leaks.

#include <string>

#include "json/JsonTestUtil.h"

namespace {

TEST(JsonLifetime, ChildSeesWritesThroughTheParentAndSurvivesEditsThatDoNotMoveIt) {
  VXSharedPtr<VXJson> root = Parse("[1,2]");
  VXSharedPtr<VXJson> first = root->GetMutableAt(0);
  root->SetIntAt(0, 5);
  EXPECT_EQ(first->GetInt(), 5);
  first->SetIntMember("ignored", 1);
  EXPECT_TRUE(first->SetIntAt(0, 1) == false);
  root->InsertIntAt(0, 9);
  EXPECT_EQ(Text(root), "[9,5,2]");

  VXSharedPtr<VXJson> object = Parse("{\"list\":[1],\"n\":0}");
  VXSharedPtr<VXJson> list = object->GetMutableMember("list");
  object->SetIntMember("n", 7);  // replaces another member: the list stays put
  for (int i = 0; i < 100; ++i) list->InsertIntAt(-1, i);
  EXPECT_EQ(object->GetMember("list")->GetSize(), 101);
  EXPECT_EQ(list->GetIntAt(100, -1), 99);
}

TEST(JsonLifetime, CloneOutlivesItsSourceAndIsIndependent) {
  VXSharedPtr<VXJson> clone;
  {
    VXSharedPtr<VXJson> root = Parse("{\"a\":{\"s\":\"a string longer than the inline size\"}}");
    clone = root->GetMember("a")->Clone();
    root->SetIntMember("a", 0);
  }
  EXPECT_EQ(Text(clone), "{\"s\":\"a string longer than the inline size\"}");
  VXSharedPtr<VXJson> child = clone->GetMutableMember("s");
  clone->SetStringMember("t", "more");
  EXPECT_STREQ(child->GetString(), "a string longer than the inline size");
  VXSharedPtr<VXJson> copyOfClone = clone->Clone();
  clone = VXSharedPtr<VXJson>();
  EXPECT_EQ(Text(copyOfClone), "{\"s\":\"a string longer than the inline size\",\"t\":\"more\"}");
}

TEST(JsonLifetime, CloneOfAScalarChild) {
  VXSharedPtr<VXJson> clone = Parse("[\"text\"]")->GetAt(0)->Clone();
  EXPECT_EQ(clone->GetType(), VXJsonType_String);
  EXPECT_EQ(Text(clone), "\"text\"");
}

TEST(JsonLifetime, HandlesReleasedInAnyOrderAfterCopyFrom) {
  for (int order = 0; order < 2; ++order) {
    VXSharedPtr<VXJson> root = Parse("{\"x\":[0]}");
    VXSharedPtr<VXJson> child = root->GetMutableMember("x");
    VXSharedPtr<VXJson> source = Parse("{\"deep\":{\"s\":\"copied into the tree's own pool\"}}");
    ASSERT_TRUE(child->CopyFrom(source));
    ASSERT_TRUE(root->CopyFrom(source));
    ASSERT_TRUE(root->CopyFrom(child));  // the child now views detached content in the same pool
    source = VXSharedPtr<VXJson>();
    if (order == 0) child = VXSharedPtr<VXJson>();
    EXPECT_EQ(Text(root), "{\"deep\":{\"s\":\"copied into the tree's own pool\"}}");
    root = VXSharedPtr<VXJson>();
  }
}

}  // namespace
