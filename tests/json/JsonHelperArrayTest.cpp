// Readers of JSON arrays into base-library arrays, and the builders back.

#include <string>

#include <vxutility/VXJsonHelper.h>

#include "json/JsonTestUtil.h"

namespace {

template <typename T>
std::string Join(const CCA_ArrayTemplate<T>& array) {
  std::string text;
  for (int i = 0; i < array.GetSize(); ++i) text += (i ? "," : "") + std::to_string(array[i]);
  return text;
}

TEST(JsonHelperArray, IntegerReadersKeepTheLowBits) {
  VXSharedPtr<VXJson> input = Parse("[1, 300, -1, 256, 65536, 65535, 4294967295, 2.5, \"4\", true, null, [], 5000000000]");
  CCA_ArrayTemplate<unsigned char> bytes;
  CCA_ArrayTemplate<unsigned short> words;
  CCA_ArrayTemplate<unsigned int> dwords;
  ASSERT_TRUE(VXJsonHelper::ToByteArray(input, bytes));
  ASSERT_TRUE(VXJsonHelper::ToWordArray(input, words));
  ASSERT_TRUE(VXJsonHelper::ToDWordArray(input, dwords));
  EXPECT_EQ(Join(bytes), "1,44,255,0,0,255,255,0,0,0,0,0,0");
  EXPECT_EQ(Join(words), "1,300,65535,256,0,65535,65535,0,0,0,0,0,0");
  EXPECT_EQ(Join(dwords), "1,300,4294967295,256,65536,65535,4294967295,0,0,0,0,0,0");
}

TEST(JsonHelperArray, ReadersAppendAfterExistingContent) {
  CCA_ArrayTemplate<float> floats;
  floats.Add(9.0f);
  ASSERT_TRUE(VXJsonHelper::ToFloatArray(Parse("[1.5, 2, \"3\", 1e300]"), floats));
  ASSERT_EQ(floats.GetSize(), 5);
  EXPECT_EQ(floats[0], 9.0f);
  EXPECT_EQ(floats[1], 1.5f);
  EXPECT_EQ(floats[2], 2.0f);
  EXPECT_EQ(floats[3], 0.0f);
  EXPECT_EQ(floats[4], 0.0f);

  CCA_ObjArrayTemplate<CCA_String> strings;
  strings.Add(CCA_String("first"));
  ASSERT_TRUE(VXJsonHelper::ToStringArray(Parse("[\"a\", 1, null, \"\\u00e9\"]"), strings));
  ASSERT_EQ(strings.GetSize(), 5);
  EXPECT_EQ(strings[0], "first");
  EXPECT_EQ(strings[1], "a");
  EXPECT_EQ(strings[2], "");
  EXPECT_EQ(strings[3], "");
  EXPECT_EQ(strings[4], "\xC3\xA9");

  CCA_ObjArrayTemplate<CCA_WString> wide;
  ASSERT_TRUE(VXJsonHelper::ToStringArray(Parse("[\"\\u00e9x\", 2]"), wide));
  ASSERT_EQ(wide.GetSize(), 2);
  EXPECT_EQ(wide[0], L"\u00e9x");
  EXPECT_EQ(wide[1], L"");
}

TEST(JsonHelperArray, ReadersRefuseNonArraysAndNullHandles) {
  CCA_ArrayTemplate<unsigned char> bytes;
  bytes.Add(7);
  CCA_ObjArrayTemplate<CCA_WString> wide;
  const VXSharedPtr<const VXJson> refused[] = {Parse("{\"a\":1}"), Parse("[\"s\"]")->GetAt(0)->Clone(),
                                               VXSharedPtr<const VXJson>(), VXSharedPtr<const VXJson>(nullptr)};
  for (const VXSharedPtr<const VXJson>& value : refused) {
    EXPECT_FALSE(VXJsonHelper::ToByteArray(value, bytes));
    EXPECT_FALSE(VXJsonHelper::ToStringArray(value, wide));
  }
  EXPECT_EQ(Join(bytes), "7");
  EXPECT_EQ(wide.GetSize(), 0);
  EXPECT_TRUE(VXJsonHelper::ToByteArray(Parse("[]"), bytes));
  EXPECT_EQ(Join(bytes), "7");
}

TEST(JsonHelperArray, BuildersWriteEachElement) {
  CCA_ArrayTemplate<int> ints;
  ints.Add(-1);
  ints.Add(2);
  CCA_ArrayTemplate<unsigned int> dwords;
  dwords.Add(4294967295u);
  CCA_ArrayTemplate<unsigned short> words;
  words.Add(65535);
  words.Add(0);
  CCA_ArrayTemplate<unsigned char> bytes;
  bytes.Add(255);
  CCA_ArrayTemplate<float> floats;
  floats.Add(0.1f);
  EXPECT_EQ(Text(VXJsonHelper::FromIntArray(ints)), "[-1,2]");
  EXPECT_EQ(Text(VXJsonHelper::FromDWordArray(dwords)), "[4294967295]");
  EXPECT_EQ(Text(VXJsonHelper::FromWordArray(words)), "[65535,0]");
  EXPECT_EQ(Text(VXJsonHelper::FromByteArray(bytes)), "[255]");
  EXPECT_EQ(Text(VXJsonHelper::FromFloatArray(floats)), "[0.10000000149011612]");
  EXPECT_EQ(Text(VXJsonHelper::FromByteArray(CCA_ArrayTemplate<unsigned char>())), "[]");
}

TEST(JsonHelperArray, StringBuildersCopyTheText) {
  CCA_ObjArrayTemplate<CCA_String> narrow;
  EXPECT_EQ(Text(VXJsonHelper::FromStringArray(narrow)), "[]");
  narrow.Add(CCA_String("a\"b"));
  narrow.Add(CCA_String("\xC3\xA9"));
  VXSharedPtr<VXJson> built = VXJsonHelper::FromStringArray(narrow);
  narrow[0] = "changed";
  EXPECT_EQ(Text(built), "[\"a\\\"b\",\"\xC3\xA9\"]");
  CCA_ObjArrayTemplate<CCA_WString> wide;
  wide.Add(CCA_WString(L"\u00e9\U0001F600"));
  EXPECT_EQ(Text(VXJsonHelper::FromStringArray(wide)), "[\"\xC3\xA9\xF0\x9F\x98\x80\"]");
}

TEST(JsonHelperArray, DWordRoundTripKeepsSignedPatterns) {
  CCA_ArrayTemplate<int> ints;
  ints.Add(-2147483647 - 1);
  ints.Add(-5);
  CCA_ArrayTemplate<unsigned int> back;
  ASSERT_TRUE(VXJsonHelper::ToDWordArray(VXJsonHelper::FromIntArray(ints), back));
  EXPECT_EQ(static_cast<int>(back[0]), -2147483647 - 1);
  EXPECT_EQ(static_cast<int>(back[1]), -5);
}

}  // namespace
