#include <gtest/gtest.h>

#include <vxutility/Encoding.h>

namespace {

TEST(CharsetConversion, StepsKeepTextAndStopAtNul) {
  EXPECT_EQ(Utf82Unicode("\xE4\xB8\xAD", -1), std::wstring(1, 0x4E2D));
  EXPECT_EQ(Unicode2Utf8(std::wstring(1, 0x4E2D).c_str(), -1), "\xE4\xB8\xAD");
  EXPECT_EQ(Local2Unicode("abc", -1), L"abc");
  EXPECT_EQ(Unicode2Local(L"abc", -1), "abc");
  // An explicit length that covers a NUL stops there; a shorter one cuts.
  EXPECT_EQ(Utf82Unicode("ab\0cd", 5), L"ab");
  EXPECT_EQ(Unicode2Utf8(L"ab\0cd", 5), "ab");
  EXPECT_EQ(Local2Utf8("ab\0cd", 5), "ab");
  EXPECT_EQ(Utf82Local("ab\0cd", 5), "ab");
  EXPECT_EQ(Utf82Local("abcd", 2), "ab");
  // Two steps keep the text; empty or null input gives an empty result.
  EXPECT_EQ(Local2Utf8("plain ascii", -1), "plain ascii");
  EXPECT_EQ(Utf82Local("\xE4\xB8\xAD", -1), "\xE4\xB8\xAD");  // C locale is UTF-8
  EXPECT_EQ(Local2Utf8("", -1), "");
  EXPECT_EQ(Utf82Local(nullptr, -1), "");
  EXPECT_EQ(Utf82Local("abc", 0), "");
}

TEST(CharsetConversion, SurrogatesAndBadSequences) {
  EXPECT_EQ(Utf82Local("\xC0", -1), "\xEF\xBF\xBD");  // invalid input is replaced
  const std::wstring replacement(1, 0xFFFD);
  EXPECT_EQ(Utf82Unicode("\xED\xA0\x80", -1), replacement + replacement + replacement);  // encoded surrogate
  EXPECT_EQ(Utf82Unicode("a\xE4\xB8", -1), L"a" + replacement);                          // cut short
  EXPECT_EQ(Unicode2Utf8(std::wstring{0xD83D, 0xDE00}.c_str(), -1), "\xF0\x9F\x98\x80");   // a UTF-16 pair
  EXPECT_EQ(Unicode2Utf8(std::wstring{0xDC00, L'x'}.c_str(), -1), "\xEF\xBF\xBD" "x");     // lone low half
  EXPECT_EQ(Utf82Local("\xF0\x9F\x98\x80", -1), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Local2Utf8("\0abc", 4), "");  // the intermediate is empty
}

}  // namespace
