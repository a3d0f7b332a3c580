#include <gtest/gtest.h>

#include <random>
#include <string>

#include <vxutility/Base64.h>

namespace {

std::string Bytes(const CCA_String& s) { return std::string(s.c_str(), s.GetLength()); }

std::string Encode(const std::string& bytes) {
  return Bytes(Base64Encode(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size())));
}

std::string Decode(const std::string& text) { return Bytes(Base64Decode(text.data(), static_cast<int>(text.size()))); }

struct Case {
  std::string bytes;
  std::string text;
  int length = -1;  // what the decoder is given; -1 reads up to the NUL
};

// Every remainder of the length modulo 3 in one and two groups, bytes 0x00
// and 0xFF, and both ends of the alphabet, in both directions.
TEST(Base64, EncodesEachRemainderWithPadding) {
  const Case cases[] = {
      {"", ""}, {"M", "TQ=="}, {"Ma", "TWE="}, {"Man", "TWFu"}, {"Many", "TWFueQ=="}, {"Many ", "TWFueSA="},
      {"\xFB\xFF", "+/8="}, {std::string(3, '\0'), "AAAA"}, {"\xFF\xFF\xFF", "////"},
      {std::string(1, '\0'), "AA=="}, {"\xFF", "/w=="},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Encode(c.bytes), c.text) << c.text;
    EXPECT_EQ(Decode(c.text), c.bytes) << c.text;
  }
}

// Unpadded final groups (every length modulo 4), a stop at each kind of
// character outside the alphabet in every place of a group, and explicit
// lengths shorter than the text.
TEST(Base64, DecodesPartialGroupsStopsAndLengths) {
  const Case cases[] = {
      {"", "T"}, {"M", "TQ"}, {"Ma", "TWE"}, {"Man", "TWFuT"}, {"ManM", "TWFuTQ"}, {"ManMa", "TWFuTWE"},
      {std::string(3, '\0'), "AAAA"}, {"Man", "TWFu\nTWFu"}, {"M", "TW=Fu"}, {"Man", "TWFu!!!!"}, {"", "-_8"},
      {"Man", "TWFu TWFu"}, {"Man", "TWFu\tQQ"}, {"Ma", "TWE-AAAA"}, {"M", "TQ_AAAAA"}, {"", "T.AAAAAA"},
      {"Man", "TWFu=TWFu"}, {"Man", "TWFu\xC3\xA9"}, {"Man", std::string("TWFu\0TWFu", 9), 9},
      {"Man", "TWFuTWFu", 4}, {"ManM", "TWFuTWFu", 6}, {"", "TWFu", 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Bytes(Base64Decode(c.text.data(), c.length)), c.bytes) << c.text << " " << c.length;
  }
}

TEST(Base64, BadArgumentsGiveEmptyResults) {
  const unsigned char data[] = {1, 2, 3};
  EXPECT_TRUE(Base64Encode(data, -1).IsEmpty());
  EXPECT_TRUE(Base64Encode(nullptr, 3).IsEmpty());
  EXPECT_TRUE(Base64Decode("TWFu", -2).IsEmpty());
  EXPECT_TRUE(Base64Decode(nullptr, -1).IsEmpty());
}

// Random bytes of every length up to a few groups past the fast path survive
// the round trip.
TEST(Base64, RandomBytesRoundTrip) {
  std::mt19937 random(12345);
  std::string bytes;
  for (std::size_t length = 0; length < 200; ++length, bytes += static_cast<char>(random())) {
    const std::string text = Encode(bytes);
    ASSERT_EQ(text.size(), (length + 2) / 3 * 4);
    ASSERT_EQ(Decode(text), bytes) << length;
  }
}

}  // namespace
