#include <gtest/gtest.h>

#include <string>

#include <vxutility/ColorString.h>

namespace {

struct ColorCase {
  const char* text;
  unsigned int space;
  unsigned int color;
};

TEST(ParseColorString, ReadsEachForm) {
  const ColorCase cases[] = {
      {"#80", 1, 0x00808080},
      {"#1a2B3c", 2, 0x003C2B1A},
      {"#00FF0080", 3, 0x00FF0080},
      {"#ffFFff", 2, 0x00FFFFFF},
      // A non-digit counts as -1: it sets every bit above its place.
      {"#GG0000", 2, 0xFFFFFFFF},
      {"#0G0000", 2, 0xFFFFFFFF},
      {"#G00000", 2, 0xFFFFFFF0},
      {"#0000G0", 2, 0xFFF00000},
      {"#zz", 1, 0xFFFFFFFF},
      {"#000000G0", 3, 0xFFFFFFF0},
      {"255 0 0", 2, 0x000000FF},
      {"  128", 1, 0x00808080},
      {"\t\n128", 1, 0x00808080},
      {"0 0 0 0", 3, 0},
      {"10 20 30 40", 3, 0x0A141E28},
      {"1 2 3   ", 2, 0x00030201},
      {"1   2 3", 2, 0x00030201},
      {"+1 -0 2", 2, 0x00020001},
      // Commas and tabs belong to the item they follow.
      {"255,0,0", 1, 0x00FFFFFF},
      {"1,5 2\t7 3", 2, 0x00030201},
      // Values are not clamped: the excess spills into the next byte.
      {"300 0 0", 2, 0x0000012C},
      {"-1", 1, 0xFFFFFFFF},
      {"0 0 -1", 2, 0xFFFF0000},
      {"x", 1, 0},
  };
  for (const ColorCase& c : cases) {
    unsigned int color = 0x12345678, space = 99;
    EXPECT_TRUE(ParseColorString(c.text, color, space)) << c.text;
    EXPECT_EQ(space, c.space) << c.text;
    EXPECT_EQ(color, c.color) << std::hex << c.text;
  }
}

TEST(ParseColorString, RejectsOtherCountsAndLeavesOutputs) {
  const char* texts[] = {"#FFF", "#", "#1234567", "#123456789", "#1", "", "   ", "1 2", "1 2 3 4 5",
                         "10\t20 30", "1 2 3 4 5 6 7 8"};
  for (const char* text : texts) {
    unsigned int color = 0x12345678, space = 99;
    EXPECT_FALSE(ParseColorString(text, color, space)) << text;
    EXPECT_EQ(color, 0x12345678u) << text;
    EXPECT_EQ(space, 99u) << text;
  }
}

TEST(ParseColorByte, WritesRgbOnly) {
  std::string text = "kept";
  EXPECT_TRUE(ParseColorByte(0x003C2B1A, 2, text));
  EXPECT_EQ(text, "#1A2B3C");
  EXPECT_TRUE(ParseColorByte(0xFF0000FF, 2, text));  // bits 24-31 are ignored
  EXPECT_EQ(text, "#FF0000");
  for (unsigned int space : {0u, 1u, 3u}) {
    text = "kept";
    EXPECT_FALSE(ParseColorByte(0x003C2B1A, space, text));
    EXPECT_EQ(text, "kept");
  }
}

TEST(ParseColorByte, RoundTripsThroughParse) {
  for (unsigned int color : {0u, 0x00010203u, 0x00FFFFFFu, 0x00A0B0C0u}) {
    std::string text;
    ASSERT_TRUE(ParseColorByte(color, 2, text));
    unsigned int back = 0, space = 0;
    ASSERT_TRUE(ParseColorString(text.c_str(), back, space));
    EXPECT_EQ(back, color);
    EXPECT_EQ(space, 2u);
  }
}

}  // namespace
