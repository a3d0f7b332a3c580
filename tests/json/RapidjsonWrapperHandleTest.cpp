// A handle first made for the concrete value type keeps its control block
// through conversions to the interface and to its const view.

#include <gtest/gtest.h>

#include "json/RapidjsonWrapper.h"

namespace {

TEST(RapidjsonWrapperHandle, ConversionsShareTheConcreteBlock) {
  auto* document = new JsonDocument(rapidjson::kArrayType);
  VXSharedPtr<RapidjsonWrapper> concrete(new RapidjsonWrapper(document));
  VXSharedPtr<VXJson> mutableView(concrete);
  VXSharedPtr<const VXJson> constView(mutableView);
  EXPECT_EQ(concrete.use_count(), 3);
  EXPECT_EQ(constView.get(), concrete.get());
  void* const* fields = reinterpret_cast<void* const*>(&constView);
  auto* block = static_cast<sp_counted_base*>(fields[1]);
  EXPECT_NE(dynamic_cast<sp_counted_impl<RapidjsonWrapper>*>(block), nullptr);
  concrete = VXSharedPtr<RapidjsonWrapper>();
  mutableView = VXSharedPtr<VXJson>();
  EXPECT_EQ(constView.use_count(), 1);
  EXPECT_EQ(constView->GetSize(), 0);
}

TEST(RapidjsonWrapperHandle, ChildHandlesOwnNothing) {
  auto* document = new JsonDocument(rapidjson::kObjectType);
  VXSharedPtr<VXJson> root(new RapidjsonWrapper(document));
  VXSharedPtr<VXJson> child = root->SetArrayMember("a");
  child->InsertStringAt(0, "a string that needs the pool");
  const JsonValue* viewed = RapidjsonWrapper::ValueOf(child.get());
  EXPECT_EQ(viewed, &(*document)["a"]);
  child = VXSharedPtr<VXJson>();  // releasing the view leaves the tree whole
  EXPECT_STREQ(root->GetMember("a")->GetStringAt(0, nullptr), "a string that needs the pool");
}

}  // namespace
