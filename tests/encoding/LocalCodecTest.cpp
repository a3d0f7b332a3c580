// The local codec under locales other than C and UTF-8.

#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include <vxutility/Encoding.h>

#include "support/ScopedLocale.h"

namespace {

int Size(const std::string& s) { return static_cast<int>(s.size()); }
int Size(const std::wstring& s) { return static_cast<int>(s.size()); }

std::string PrintableAscii() {
  std::string text = "\t\n";
  for (char c = 0x20; c < 0x7F; ++c) text += c;
  return text;
}

// Which ways a case holds: a replaced character does not come back.
enum Way { kBoth, kToLocal, kFromLocal };

struct CodecCase {
  const char* locale;
  std::string local;  // bytes in the locale
  std::string utf8;   // the same text in UTF-8
  Way way;
};

// ASCII passes unchanged everywhere (in Shift_JIS too, whose character map
// reads 0x5C and 0x7E as yen and overline); invalid local bytes are replaced
// one at a time, so what follows them is kept.
const CodecCase kCases[] = {
    {kLatin1Locale, PrintableAscii(), PrintableAscii(), kBoth},
    {kLatin1Locale, "caf\xE9", "caf\xC3\xA9", kBoth},
    {kLatin1Locale, "\x80\xFF", "\xC2\x80\xC3\xBF", kBoth},
    {kLatin1Locale, "?", "\xE4\xB8\xAD", kToLocal},  // not in Latin-1
    {kGb18030Locale, PrintableAscii(), PrintableAscii(), kBoth},
    {kGb18030Locale, "\xD6\xD0\xCE\xC4", "\xE4\xB8\xAD\xE6\x96\x87", kBoth},
    {kGb18030Locale, "\x81\x5C", "\xE4\xB9\x97", kBoth},  // trail byte 0x5C
    {kGb18030Locale, "\x94\x39\xFC\x36", "\xF0\x9F\x98\x80", kBoth},
    {kGb18030Locale, "\x81\x30\x41", "\xEF\xBF\xBD" "0A", kFromLocal},
    {kGb18030Locale, "a\x81", "a\xEF\xBF\xBD", kFromLocal},
    {kGb18030Locale, "\xFF\xD6\xD0", "\xEF\xBF\xBD\xE4\xB8\xAD", kFromLocal},
    {kShiftJisLocale, PrintableAscii(), PrintableAscii(), kBoth},
    {kShiftJisLocale, "\x93\xFA\x96\x7B", "\xE6\x97\xA5\xE6\x9C\xAC", kBoth},
    {kShiftJisLocale, "\x83\x5C", "\xE3\x82\xBD", kBoth},  // trail byte 0x5C
    {kShiftJisLocale, "?", "\xF0\x9F\x98\x80", kToLocal},    // not in Shift_JIS
    {kShiftJisLocale, "\x81\x20" "x", "\xEF\xBF\xBD x", kFromLocal},
    {kAsciiLocale, PrintableAscii(), PrintableAscii(), kBoth},
    {kAsciiLocale, "caf?", "caf\xC3\xA9", kToLocal},  // an ASCII locale is not UTF-8
    {kAsciiLocale, "caf\xE9", "caf\xEF\xBF\xBD", kFromLocal},
};

class LocalCodec : public ::testing::TestWithParam<CodecCase> {};

TEST_P(LocalCodec, ConvertsBothWaysThroughWideText) {
  const CodecCase& c = GetParam();
  ScopedCtypeLocale locale(c.locale);
  if (!locale.ok()) return;
  const std::wstring wide = Utf82Unicode(c.utf8.c_str(), Size(c.utf8));
  if (c.way != kToLocal) {
    EXPECT_EQ(Local2Utf8(c.local.c_str(), Size(c.local)), c.utf8);
    EXPECT_EQ(Local2Unicode(c.local.c_str(), Size(c.local)), wide);
  }
  if (c.way != kFromLocal) {
    EXPECT_EQ(Utf82Local(c.utf8.c_str(), Size(c.utf8)), c.local);
    EXPECT_EQ(Unicode2Local(wide.c_str(), Size(wide)), c.local);
  }
}

INSTANTIATE_TEST_SUITE_P(Table, LocalCodec, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<CodecCase>& info) {
                           std::string name = info.param.locale;
                           name = name.substr(name.find('.') + 1) + "_" + std::to_string(info.index);
                           for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                           return name;
                         });

TEST(LocalCodec, WideValuesNoCodesetHoldsBecomeQuestionMarks) {
  const std::wstring bad{L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), L'b'};
  for (const char* name : {kLatin1Locale, kGb18030Locale, kShiftJisLocale, kAsciiLocale}) {
    ScopedCtypeLocale locale(name);
    EXPECT_EQ(Unicode2Local(bad.c_str(), Size(bad)), "a??b") << name;
  }
}

}  // namespace
