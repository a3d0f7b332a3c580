#include <gtest/gtest.h>

#include <vxutility/Encoding.h>

#include "TestPlatform.h"

namespace {

using test_platform::Wide;

const std::string kReplacementUtf8 = "\xEF\xBF\xBD";

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
  EXPECT_EQ(Local2Utf8("", -1), "");
  EXPECT_EQ(Utf82Local(nullptr, -1), "");
  EXPECT_EQ(Utf82Local("abc", 0), "");
  EXPECT_EQ(Local2Utf8("\0abc", 4), "");  // the intermediate is empty
}

// Wide text is UTF-16 on Windows: a code point past U+FFFF is a surrogate
// pair there and one unit elsewhere. Either way it reaches UTF-8 whole, and
// a surrogate without its partner becomes U+FFFD.
TEST(CharsetConversion, SurrogatePairsAndLoneSurrogates) {
  const struct {
    std::wstring wide;
    std::string utf8;
    bool roundTrips;
  } cases[] = {
      {Wide(U"\U0001F600"), "\xF0\x9F\x98\x80", true},
      {Wide(U"a\U00010000\U0010FFFFz"), "a\xF0\x90\x80\x80\xF4\x8F\xBF\xBFz", true},
      {std::wstring{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80", false},  // a pair combines on every system
      {std::wstring{0xD83D}, kReplacementUtf8, false},            // high half at the end
      {std::wstring{0xD83D, L'x'}, kReplacementUtf8 + "x", false},
      {std::wstring{0xDE00, 0xD83D}, kReplacementUtf8 + kReplacementUtf8, false},  // halves swapped
      {std::wstring{0xDC00, L'x'}, kReplacementUtf8 + "x", false},
  };
  const bool localIsUtf8 = test_platform::LocalCodePage() == test_platform::kCodePageUtf8;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.utf8);
    EXPECT_EQ(Unicode2Utf8(c.wide.c_str(), -1), c.utf8);
    EXPECT_EQ(Unicode2Utf8(c.wide.c_str(), static_cast<int>(c.wide.size())), c.utf8);
    if (c.roundTrips) {
      EXPECT_EQ(Utf82Unicode(c.utf8.c_str(), -1), c.wide);
    }
    if (!localIsUtf8) continue;
    EXPECT_EQ(Unicode2Local(c.wide.c_str(), -1), c.utf8);
    if (c.roundTrips) {
      EXPECT_EQ(Local2Unicode(c.utf8.c_str(), -1), c.wide);
      EXPECT_EQ(Local2Utf8(c.utf8.c_str(), -1), c.utf8);
      EXPECT_EQ(Utf82Local(c.utf8.c_str(), -1), c.utf8);
    }
  }
}

TEST(CharsetConversion, BadUtf8BecomesReplacement) {
  const std::wstring replacement(1, 0xFFFD);
  EXPECT_EQ(Utf82Unicode("\xED\xA0\x80", -1), replacement + replacement + replacement);  // encoded surrogate
  EXPECT_EQ(Utf82Unicode("a\xE4\xB8", -1), L"a" + replacement);                          // cut short
  EXPECT_EQ(Utf82Unicode("\xF0\x9F\x98", -1), replacement);                              // pair cut short
}

// Local text is UTF-8 where the C locale or the UTF-8 code page is active.
// The Western and Japanese Windows code pages hold some characters as one
// or two bytes and give "?" for those they lack (null: the system may pick a
// best-fit letter instead, so no expectation).
TEST(CharsetConversion, LocalTextFollowsTheActiveEncoding) {
  const struct {
    std::string utf8;
    const char* western;   // code page 1252
    const char* japanese;  // code page 932
  } cases[] = {
      {"caf\xC3\xA9", "caf\xE9", nullptr},
      {"\xE2\x82\xAC" "5", "\x80" "5", nullptr},
      {"\xE4\xB8\xAD\xE6\x96\x87", "??", "\x92\x86\x95\xB6"},
      {"a\xEF\xBD\xB1" "b", nullptr, "a\xB1" "b"},  // half-width katakana: one byte
      {"\xE0\xB8\x81", "?", "?"},
  };
  const unsigned codePage = test_platform::LocalCodePage();
  if (codePage != test_platform::kCodePageUtf8 && codePage != test_platform::kCodePageWestern &&
      codePage != test_platform::kCodePageJapanese) {
    GTEST_SKIP() << "no expectations for code page " << codePage;
  }
  for (const auto& c : cases) {
    SCOPED_TRACE(c.utf8);
    const char* expected = codePage == test_platform::kCodePageUtf8      ? c.utf8.c_str()
                           : codePage == test_platform::kCodePageWestern ? c.western
                                                                          : c.japanese;
    if (expected == nullptr) continue;
    const std::string local = expected;
    const std::wstring wide = Utf82Unicode(c.utf8.c_str(), -1);
    EXPECT_EQ(Utf82Local(c.utf8.c_str(), -1), local);
    EXPECT_EQ(Unicode2Local(wide.c_str(), -1), local);
    if (local.find('?') != std::string::npos) continue;  // not the same text any more
    EXPECT_EQ(Local2Utf8(local.c_str(), -1), c.utf8);
    EXPECT_EQ(Local2Unicode(local.c_str(), -1), wide);
    EXPECT_EQ(Local2Unicode(local.c_str(), static_cast<int>(local.size())), wide);
  }
  // Invalid UTF-8 and lone surrogates reach local text as the replacement
  // character, or "?" where the code page has none.
  const std::string replaced = codePage == test_platform::kCodePageUtf8 ? kReplacementUtf8 : "?";
  EXPECT_EQ(Utf82Local("\xC0", -1), replaced);
  EXPECT_EQ(Unicode2Local(std::wstring{0xD800, L'a'}.c_str(), -1), replaced + "a");
}

}  // namespace
