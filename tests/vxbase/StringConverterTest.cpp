#include <gtest/gtest.h>

#include <string>

#include <vxbase/StringConverter.h>

#include "TestPlatform.h"

namespace {

using test_platform::Wide;

/// Local text is UTF-8 here: the C locale, or the UTF-8 code page.
bool LocalIsUtf8() { return test_platform::LocalCodePage() == test_platform::kCodePageUtf8; }

std::wstring WideOf(const CCA_WString& s) { return std::wstring(s.c_str(), s.GetLength()); }
std::string Narrow(const CCA_String& s) { return std::string(s.c_str(), s.GetLength()); }

struct DecodeCase {
  const char* name;
  std::string utf8;
  std::wstring wide;
  friend void PrintTo(const DecodeCase& c, std::ostream* os) { *os << c.name; }
};

class Utf8Decoding : public ::testing::TestWithParam<DecodeCase> {};

TEST_P(Utf8Decoding, GivesCodePointsOrReplacement) {
  const DecodeCase& c = GetParam();
  const CCA_WString wide = CCA_StringConverter::utf8_to_unicode(c.utf8.data(), static_cast<int>(c.utf8.size()));
  EXPECT_EQ(WideOf(wide), c.wide);
  if (!LocalIsUtf8()) return;
  EXPECT_EQ(WideOf(CCA_StringConverter::local_to_unicode(c.utf8.data(), static_cast<int>(c.utf8.size()))), c.wide);
}

const wchar_t R = 0xFFFD;
INSTANTIATE_TEST_SUITE_P(
    Table, Utf8Decoding,
    ::testing::Values(
        DecodeCase{"ascii", "plain", L"plain"},
        DecodeCase{"cjk", "\xE4\xB8\xAD\xE6\x96\x87", std::wstring{0x4E2D, 0x6587}},
        DecodeCase{"astral", "\xF0\x9F\x98\x80", Wide(U"\U0001F600")},
        DecodeCase{"astral_run", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", Wide(U"\U00010000\U0010FFFF")},
        DecodeCase{"overlong", "\xC0\xAF", std::wstring{R, R}},
        DecodeCase{"surrogate", "\xED\xA0\x80", std::wstring{R, R, R}},
        DecodeCase{"truncated", "a\xE4\xB8", std::wstring{L'a', R}},
        DecodeCase{"bad_continuation", "\xE4\x41", std::wstring{R, L'A'}},
        DecodeCase{"past_max", "\xF4\x90\x80\x80", std::wstring{R, R, R, R}},
        DecodeCase{"stray_continuation", "\x80z", std::wstring{R, L'z'}},
        DecodeCase{"nul_in_length", std::string("ab\0cd", 5), L"ab"}),
    [](const ::testing::TestParamInfo<DecodeCase>& info) { return std::string(info.param.name); });

TEST(StringConverter, NonAsciiAtEveryWordOffsetRoundTrips) {
  // Moves one CJK character through every position of the 8-byte fast path.
  for (int at = 0; at < 20; ++at) {
    std::string text(24, 'x');
    text.insert(static_cast<std::size_t>(at), "\xE4\xB8\xAD");
    const CCA_WString wide = CCA_StringConverter::utf8_to_unicode(text.c_str(), -1);
    ASSERT_EQ(wide.GetLength(), 25) << at;
    EXPECT_EQ(wide[at], 0x4E2D) << at;
    EXPECT_EQ(Narrow(CCA_StringConverter::unicode_to_utf8(wide, -1)), text) << at;
  }
}

TEST(StringConverter, EncodesWideTextIncludingBadUnits) {
  const struct {
    std::wstring wide;
    std::string utf8;
  } cases[] = {
      {L"ascii text longer than a word", "ascii text longer than a word"},
      {std::wstring{0x4E2D}, "\xE4\xB8\xAD"},
      {Wide(U"\U0001F600"), "\xF0\x9F\x98\x80"},
      {std::wstring{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},  // a UTF-16 pair still combines
      {std::wstring{0xD800, L'a'}, "\xEF\xBF\xBD" "a"},    // lone surrogate
      {std::wstring{L'a', 0xDBFF}, "a\xEF\xBF\xBD"},       // high half cut off at the end
      // Past U+10FFFF where wchar_t can hold it; a lone low half where it cannot.
      {std::wstring(1, static_cast<wchar_t>(sizeof(wchar_t) == 4 ? 0x110000 : 0xDFFF)), "\xEF\xBF\xBD"},
      {std::wstring{L'a', L'b', 0, L'c'}, "ab"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Narrow(CCA_StringConverter::unicode_to_utf8(c.wide.data(), static_cast<int>(c.wide.size()))), c.utf8);
    if (!LocalIsUtf8()) continue;
    EXPECT_EQ(Narrow(CCA_StringConverter::unicode_to_local(c.wide.data(), static_cast<int>(c.wide.size()))), c.utf8);
  }
}

TEST(StringConverter, EmptyAndNullInputs) {
  EXPECT_TRUE(CCA_StringConverter::utf8_to_unicode(nullptr, 5).IsEmpty());
  EXPECT_TRUE(CCA_StringConverter::utf8_to_unicode("abc", 0).IsEmpty());
  EXPECT_TRUE(CCA_StringConverter::unicode_to_utf8(nullptr, -1).IsEmpty());
  EXPECT_TRUE(CCA_StringConverter::local_to_unicode("", -1).IsEmpty());
  EXPECT_TRUE(CCA_StringConverter::unicode_to_local(L"", -1).IsEmpty());
}

// Runs of every length of each kind of character, joined in every order,
// with ill-formed bytes among them: the run loops and their block steps must
// hand over at each boundary without losing or repeating a character.
TEST(StringConverter, RunsOfEveryLengthAndKindConvertBothWays) {
  struct Piece {
    std::string utf8;
    std::wstring wide;
  };
  const Piece kinds[] = {{"a", L"a"},
                         {"\xC3\xA9", Wide(U"\u00E9")},
                         {"\xE4\xB8\xAD", Wide(U"\u4E2D")},
                         {"\xF0\x9F\x98\x80", Wide(U"\U0001F600")},
                         {"\xFF", Wide(U"\uFFFD")}};
  for (const Piece& first : kinds) {
    for (const Piece& second : kinds) {
      for (int run = 0; run < 40; ++run) {
        std::string utf8;
        std::wstring wide;
        for (int k = 0; k < run; ++k) {
          utf8 += first.utf8;
          wide += first.wide;
        }
        utf8 += second.utf8 + "xyz";
        wide += second.wide + L"xyz";
        ASSERT_EQ(WideOf(CCA_StringConverter::utf8_to_unicode(utf8.data(), static_cast<int>(utf8.size()))), wide)
            << first.utf8 << " x" << run << " then " << second.utf8;
        if (first.utf8 == "\xFF" || second.utf8 == "\xFF") continue;  // replacement does not round-trip
        ASSERT_EQ(Narrow(CCA_StringConverter::unicode_to_utf8(wide.data(), static_cast<int>(wide.size()))), utf8)
            << first.utf8 << " x" << run << " then " << second.utf8;
      }
    }
  }
}

TEST(StringConverter, ThreeByteRunStopsAtBadSequences) {
  const struct {
    std::string utf8;
    std::wstring wide;
  } cases[] = {
      {"\xE4\xB8\xAD\xE0\x80\x80\xE4\xB8\xAD", std::wstring{0x4E2D, R, R, R, 0x4E2D}},  // overlong
      {"\xE4\xB8\xAD\xED\xA0\x80", std::wstring{0x4E2D, R, R, R}},                     // surrogate
      {"\xE4\xB8\xAD\xE4\xB8", std::wstring{0x4E2D, R}},                                // cut short
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WideOf(CCA_StringConverter::utf8_to_unicode(c.utf8.data(), static_cast<int>(c.utf8.size()))), c.wide);
  }
  const std::wstring wide{0x4E2D, 0xD800, 0x4E2D, 0xDC00, L'a'};
  EXPECT_EQ(Narrow(CCA_StringConverter::unicode_to_utf8(wide.data(), static_cast<int>(wide.size()))),
            "\xE4\xB8\xAD\xEF\xBF\xBD\xE4\xB8\xAD\xEF\xBF\xBD" "a");
}

}  // namespace
