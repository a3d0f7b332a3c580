#include <gtest/gtest.h>

#include <string>

#include <vxutility/ColorString.h>

namespace {

struct ColorCase {
  const char* text;
  unsigned int space;  // kUnchanged: the text is rejected and both outputs stay as they were
  unsigned int color;
};

constexpr unsigned int kUnchanged = 99, kBefore = 0x12345678;

TEST(ParseColorString, ReadsEachFormAndRejectsOtherCounts) {
  const ColorCase cases[] = {
      {"#80", 1, 0x00808080}, {"#1a2B3c", 2, 0x003C2B1A}, {"#00FF0080", 3, 0x00FF0080}, {"#ffFFff", 2, 0x00FFFFFF},
      // A non-digit counts as -1: it sets every bit above its place.
      {"#GG0000", 2, 0xFFFFFFFF}, {"#0G0000", 2, 0xFFFFFFFF}, {"#G00000", 2, 0xFFFFFFF0},
      {"#0000G0", 2, 0xFFF00000}, {"#zz", 1, 0xFFFFFFFF}, {"#000000G0", 3, 0xFFFFFFF0},
      {"255 0 0", 2, 0x000000FF}, {"  128", 1, 0x00808080}, {"\t\n128", 1, 0x00808080}, {"0 0 0 0", 3, 0},
      {"10 20 30 40", 3, 0x0A141E28}, {"1 2 3   ", 2, 0x00030201}, {"1   2 3", 2, 0x00030201},
      {"+1 -0 2", 2, 0x00020001}, {"x", 1, 0},
      // Commas and tabs belong to the item they follow.
      {"255,0,0", 1, 0x00FFFFFF}, {"1,5 2\t7 3", 2, 0x00030201}, {"10\t20 30", kUnchanged, kBefore},
      // Values are not clamped: the excess spills into the next byte.
      {"300 0 0", 2, 0x0000012C}, {"-1", 1, 0xFFFFFFFF}, {"0 0 -1", 2, 0xFFFF0000},
      // Digit and item counts other than 1, 3 and 4 (hex: 2, 6 and 8).
      {"#FFF", kUnchanged, kBefore}, {"#", kUnchanged, kBefore}, {"#1", kUnchanged, kBefore},
      {"#1234567", kUnchanged, kBefore}, {"#123456789", kUnchanged, kBefore}, {"", kUnchanged, kBefore},
      {"   ", kUnchanged, kBefore}, {"1 2", kUnchanged, kBefore}, {"1 2 3 4 5", kUnchanged, kBefore},
      {"1 2 3 4 5 6 7 8", kUnchanged, kBefore},
  };
  for (const ColorCase& c : cases) {
    unsigned int color = kBefore, space = kUnchanged;
    EXPECT_EQ(ParseColorString(c.text, color, space), c.space != kUnchanged) << c.text;
    EXPECT_EQ(space, c.space) << c.text;
    EXPECT_EQ(color, c.color) << std::hex << c.text;
  }
}

// RGB only, two digits per byte even for small values; bits 24-31 are
// ignored. Other spaces leave the text as it was.
TEST(ParseColorByte, WritesRgbOnly) {
  const ColorCase cases[] = {
      {"#1A2B3C", 2, 0x003C2B1A}, {"#FF0000", 2, 0xFF0000FF}, {"#030201", 2, 0x00010203}, {"#000000", 2, 0},
      {"kept", 0, 0x003C2B1A}, {"kept", 1, 0x003C2B1A}, {"kept", 3, 0x003C2B1A},
  };
  for (const ColorCase& c : cases) {
    std::string text = "kept";
    EXPECT_EQ(ParseColorByte(c.color, c.space, text), c.space == 2) << c.text;
    EXPECT_EQ(text, c.text);
  }
}

}  // namespace
