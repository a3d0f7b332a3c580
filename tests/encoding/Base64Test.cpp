#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include <vxutility/Base64.h>

namespace {

std::string Bytes(const CCA_String& s) { return std::string(s.c_str(), s.GetLength()); }

std::string Encode(const std::string& bytes) {
  return Bytes(Base64Encode(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size())));
}

std::string Decode(const std::string& text) { return Bytes(Base64Decode(text.data(), static_cast<int>(text.size()))); }

struct Pair {
  std::string bytes;
  std::string text;
};

// Every remainder of the length modulo 3, with bytes that use the first and
// last alphabet positions.
TEST(Base64, EncodesEachRemainderWithPadding) {
  const Pair cases[] = {
      {"", ""},
      {"M", "TQ=="},
      {"Ma", "TWE="},
      {"Man", "TWFu"},
      {"Many", "TWFueQ=="},
      {"Many ", "TWFueSA="},
      {std::string("\xFB\xFF", 2), "+/8="},
      {std::string("\0\0\0", 3), "AAAA"},
      {std::string("\xFF\xFF\xFF", 3), "////"},
      {std::string("\0", 1), "AA=="},
      {std::string("\xFF", 1), "/w=="},
  };
  for (const Pair& c : cases) {
    EXPECT_EQ(Encode(c.bytes), c.text) << c.text;
    EXPECT_EQ(Decode(c.text), c.bytes) << c.text;
  }
}

// Unpadded groups of k characters give k - 1 bytes; one character gives none.
TEST(Base64, DecodesPartialFinalGroup) {
  const Pair cases[] = {
      {"", "T"}, {"M", "TQ"}, {"Ma", "TWE"}, {"Man", "TWFuT"}, {"ManM", "TWFuTQ"}, {"ManMa", "TWFuTWE"},
  };
  for (const Pair& c : cases) EXPECT_EQ(Decode(c.text), c.bytes) << c.text;
}

// Reading ends at the first character outside the alphabet, whatever its
// kind, in every place of a group.
TEST(Base64, StopsAtFirstCharacterOutsideTheAlphabet) {
  const Pair cases[] = {
      {"Man", "TWFu\nTWFu"}, {"M", "TW=Fu"},      {"Man", "TWFu!!!!"}, {"", "-_8"},
      {"Man", "TWFu TWFu"},  {"Man", "TWFu\tQQ"}, {"Ma", "TWE-AAAA"},  {"M", "TQ_AAAAA"},
      {"", "T.AAAAAA"},      {"Man", "TWFu=TWFu"}, {"Man", "TWFu\xC3\xA9"},
      {std::string("Man", 3), std::string("TWFu\0TWFu", 9)},
  };
  for (const Pair& c : cases) EXPECT_EQ(Decode(c.text), c.bytes) << c.text;
}

TEST(Base64, ExplicitLengthReadsOnlyThatManyCharacters) {
  EXPECT_EQ(Bytes(Base64Decode("TWFuTWFu", 4)), "Man");
  EXPECT_EQ(Bytes(Base64Decode("TWFuTWFu", 6)), "ManM");
  EXPECT_EQ(Bytes(Base64Decode("TWFuTWFu", -1)), "ManMan");
  EXPECT_EQ(Bytes(Base64Decode("TWFu", 0)), "");
}

TEST(Base64, DecodedNulBytesCountInTheLength) {
  const CCA_String bytes = Base64Decode("AAAA", -1);
  ASSERT_EQ(bytes.GetLength(), 3);
  EXPECT_EQ(Bytes(bytes), std::string(3, '\0'));
}

TEST(Base64, BadArgumentsGiveEmptyResults) {
  const unsigned char data[] = {1, 2, 3};
  EXPECT_TRUE(Base64Encode(data, -1).IsEmpty());
  EXPECT_TRUE(Base64Encode(nullptr, 3).IsEmpty());
  EXPECT_TRUE(Base64Encode(nullptr, 0).IsEmpty());
  EXPECT_TRUE(Base64Decode("TWFu", -2).IsEmpty());
  EXPECT_TRUE(Base64Decode(nullptr, -1).IsEmpty());
  EXPECT_TRUE(Base64Decode(nullptr, 4).IsEmpty());
}

// Random bytes of every length up to a few groups past the fast path, and
// a large block, survive the round trip.
TEST(Base64, RandomBytesRoundTrip) {
  std::mt19937 random(12345);
  for (int length = 0; length < 200; ++length) {
    std::string bytes(length, '\0');
    for (char& b : bytes) b = static_cast<char>(random());
    const std::string text = Encode(bytes);
    ASSERT_EQ(text.size(), static_cast<size_t>((length + 2) / 3 * 4));
    ASSERT_EQ(Decode(text), bytes) << length;
  }
  std::string big(1 << 20, '\0');
  for (char& b : big) b = static_cast<char>(random());
  EXPECT_EQ(Decode(Encode(big)), big);
}

}  // namespace
