// Parsing: framing of the input, accepted documents, every error code and
// the two messages; the text form written back; the nesting limit.

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "json/JsonTestUtil.h"

namespace {

TEST(JsonParse, EmptyInputGivesAnEmptyObject) {
  const VXSharedPtr<VXJson> results[] = {
      VXJsonFactory::ParseJsonString("", 0xFFFFFFFFu, nullptr),
      VXJsonFactory::ParseJsonString(nullptr, 10, nullptr),
      VXJsonFactory::ParseJsonString("{}", 0, nullptr),
      VXJsonFactory::ParseJsonString("[1]", 0, nullptr),
  };
  const std::vector<char> oneByte(1, '[');  // reading past it would overflow
  const VXSharedPtr<VXJson> fromNoBytes = VXJsonFactory::ParseJsonString(oneByte.data() + 1, 0, nullptr);
  EXPECT_EQ(Text(fromNoBytes), "{}");
  for (const VXSharedPtr<VXJson>& result : results) {
    ASSERT_TRUE(result);
    EXPECT_EQ(result->GetType(), VXJsonType_Object);
    EXPECT_EQ(Text(result), "{}");
  }
}

TEST(JsonParse, LengthFramesTheInput) {
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString("[1,2]", 0xFFFFFFFFu, nullptr)), "[1,2]");
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString("[1,2]xyz", 5, nullptr)), "[1,2]");
  std::string printed = CapturedStdout([] { EXPECT_FALSE(VXJsonFactory::ParseJsonString("[1,2]xyz", 8, nullptr)); });
  EXPECT_EQ(printed, "Parse json error. code=2\n");
  // Without a NUL, reading stops at the length.
  const char unterminated[] = {'[', '7', ']', ' ', '!'};
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString(unterminated, 4, nullptr)), "[7]");
}

TEST(JsonParse, ByteOrderMarkBytesAreSkippedOneByOne) {
  const char* const inputs[] = {"\xEF\xBB\xBF[1]", "\xEF[1]", "\xBB[1]", "\xEF\xBF[1]", "\xBF[1]"};
  for (const char* input : inputs) {
    VXSharedPtr<VXJson> result = Parse(input);
    ASSERT_TRUE(result) << input;
    EXPECT_EQ(Text(result), "[1]");
  }
  CapturedStdout([] { EXPECT_FALSE(Parse("\xBF\xEF[1]")); });
}

TEST(JsonParse, ScalarDocumentsAreRefused) {
  for (const char* input : {"\"abc\"", "42", "true", "null", " -1.5 "}) {
    VXSharedPtr<VXJson> result;
    std::string printed = CapturedStdout([&] { result = Parse(input); });
    EXPECT_FALSE(result) << input;
    EXPECT_EQ(result.use_count(), 1);
    EXPECT_EQ(printed, "Only allow array and object\n") << input;
  }
}

TEST(JsonParse, EveryErrorCode) {
  struct Row {
    std::string text;
    int code;
  };
  const Row rows[] = {
      {" \t\r\n", 1},          {"[1] [2]", 2},          {"[1,]", 3},           {"[NaN]", 3},
      {"// x\n[]", 3},         {"['a']", 3},            {"{\"a\":1,}", 4},     {"{1:2}", 4},
      {"{\"a\" 1}", 5},        {"{\"a\":1 \"b\":2}", 6}, {"[1 2]", 7},          {"[\"\\u12G4\"]", 8},
      {"[\"\\uD800x\"]", 9},   {"[\"\\q\"]", 10},       {"[\"a\x01\"]", 10},   {"[\"abc", 11},
      {std::string("[\"a\0b\"]", 7), 11},               {"[1e400]", 13},       {"[1.]", 14},
      {"[1e]", 15},            {"[1]\f", 2},
  };
  for (const Row& row : rows) {
    VXSharedPtr<VXJson> result;
    std::string printed = CapturedStdout([&] {
      result = VXJsonFactory::ParseJsonString(row.text.data(), static_cast<unsigned>(row.text.size()), nullptr);
    });
    EXPECT_FALSE(result) << row.text;
    EXPECT_EQ(printed, "Parse json error. code=" + std::to_string(row.code) + "\n") << row.text;
  }
}

TEST(JsonParse, DuplicateMembersAreKept) {
  VXSharedPtr<VXJson> result = Parse("{\"a\":1,\"a\":2}");
  EXPECT_EQ(result->GetSize(), 2);
  EXPECT_EQ(result->GetIntMember("a", 0), 1);
}

TEST(JsonParse, WhitespaceAndEscapesRoundTripCompact) {
  EXPECT_EQ(Text(Parse(" { \"a\" : [ 1 , 2.50 , \"x\\/y\" ] } ")), "{\"a\":[1,2.5,\"x/y\"]}");
  EXPECT_EQ(Text(Parse("[\"\\uD83D\\uDE00\\u00e9\"]")), "[\"\xF0\x9F\x98\x80\xC3\xA9\"]");
}

TEST(JsonParse, TextFormOfNumbers) {
  struct Row {
    const char* input;
    const char* written;
  };
  const Row rows[] = {
      {"[5.0]", "[5.0]"},       {"[5]", "[5]"},         {"[0.0]", "[0.0]"},     {"[-0.0]", "[-0.0]"},
      {"[1e2]", "[100.0]"},     {"[0.1]", "[0.1]"},     {"[1e300]", "[1e300]"}, {"[-2.5e-7]", "[-2.5e-7]"},
      {"[18446744073709551616]", "[18446744073709553000.0]"}, {"[1e21]", "[1e21]"},
      {"[-9223372036854775808]", "[-9223372036854775808]"},
  };
  for (const Row& row : rows) EXPECT_EQ(Text(Parse(row.input)), row.written) << row.input;
}

TEST(JsonParse, TextFormOfStrings) {
  VXSharedPtr<VXJson> array = Parse("[]");
  array->InsertStringAt(0, "\b\f\n\r\t\x01\x1f\"\\/\xC3\xA9\x7f");
  EXPECT_EQ(Text(array), "[\"\\b\\f\\n\\r\\t\\u0001\\u001F\\\"\\\\/\xC3\xA9\x7f\"]");
  EXPECT_EQ(Text(array->GetAt(0)), "\"\\b\\f\\n\\r\\t\\u0001\\u001F\\\"\\\\/\xC3\xA9\x7f\"");
  EXPECT_EQ(Text(Parse("[\"a\\u0000b\"]")), "[\"a\\u0000b\"]");
}

TEST(JsonParse, NonFiniteNumbersTruncateTheText) {
  VXSharedPtr<VXJson> object = Parse("{}");
  object->SetDoubleMember("a", std::nan(""));
  object->SetIntMember("b", 1);
  EXPECT_EQ(Text(object), "{\"a\":");
  EXPECT_EQ(Text(object->GetMember("a")), "");
  VXSharedPtr<VXJson> array = Parse("[1]");
  array->InsertDoubleAt(-1, -std::numeric_limits<double>::infinity());
  EXPECT_EQ(std::string(VXJsonFactory::BuildJsonString(array, nullptr).c_str()), "[1,");
}

TEST(JsonParse, BuildIgnoresItsConfigurationAndAcceptsNull) {
  VXSharedPtr<VXJson> value = Parse("{\"k\":[true,null]}");
  VXJsonFactory::BuildConfig config;
  EXPECT_EQ(std::string(VXJsonFactory::BuildJsonString(value, nullptr).c_str()), "{\"k\":[true,null]}");
  EXPECT_EQ(std::string(VXJsonFactory::BuildJsonString(value, &config).c_str()), "{\"k\":[true,null]}");
  EXPECT_TRUE(VXJsonFactory::BuildJsonString(VXSharedPtr<const VXJson>(), nullptr).IsEmpty());
  EXPECT_TRUE(VXJsonFactory::BuildJsonString(VXSharedPtr<const VXJson>(nullptr), nullptr).IsEmpty());
}

std::string Nested(int depth, char open, char close) {
  return std::string(depth, open) + std::string(depth, close);
}

TEST(JsonParse, NestingUpToTheLimitParsesAndOnePastFails) {
  constexpr int kLimit = 512;
  const std::string atLimit = Nested(kLimit, '[', ']');
  EXPECT_EQ(Text(Parse(atLimit.c_str())), atLimit);
  std::string objects;
  for (int i = 0; i < kLimit; ++i) objects += "{\"a\":";
  objects += "1" + std::string(kLimit, '}');
  EXPECT_EQ(Text(Parse(objects.c_str())), objects);

  for (const std::string& tooDeep : {Nested(kLimit + 1, '[', ']'), Nested(200000, '[', ']'),
                                     std::string(200000, '[')}) {
    std::string printed = CapturedStdout([&] { EXPECT_FALSE(Parse(tooDeep.c_str())); });
    EXPECT_EQ(printed, "Parse json error. code=16\n");
  }
}

TEST(JsonParse, WriterStopsAtContainersPastTheLimit) {
  VXSharedPtr<VXJson> root = Parse("[]");
  VXSharedPtr<VXJson> inner = root;
  for (int depth = 1; depth < 512; ++depth) inner = inner->InsertArrayAt(0);
  EXPECT_EQ(Text(root), Nested(512, '[', ']'));
  inner->InsertArrayAt(0);
  EXPECT_EQ(Text(root), std::string(512, '['));
}

}  // namespace
