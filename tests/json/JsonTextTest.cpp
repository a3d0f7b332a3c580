// Parsing: framing of the input, accepted documents, every error code and
// the two messages; the text form written back; the nesting limit.

#include <cmath>
#include <string>
#include <vector>

#include "json/JsonTestUtil.h"

namespace {

/// Parses from a buffer holding exactly `bytes` (and a NUL when the length
/// is unbounded), so that reading past the input is an overflow.
JsonPtr ParseBytes(const std::string& bytes, unsigned int length) {
  std::vector<char> buffer(bytes.begin(), bytes.end());
  if (length == 0xFFFFFFFFu) buffer.push_back('\0');
  return VXJsonFactory::ParseJsonString(buffer.data(), length, nullptr);
}

TEST(JsonText, FramingByLengthAndByteOrderMarks) {
  const std::vector<char> oneByte(1, '[');  // reading past it would overflow
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString(oneByte.data() + 1, 0, nullptr)), "{}");
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString(nullptr, 10, nullptr)), "{}");
  const std::pair<std::string, unsigned int> rows[] = {
      {"", 0xFFFFFFFFu}, {"{}", 0}, {"[1]", 0}, {"[1,2]xyz", 5}, {"[7] !", 4}, {"[1,2]", 0xFFFFFFFFu},
      {"\xEF\xBB\xBF[1]", 0xFFFFFFFFu}, {"\xEF[1]", 4}, {"\xBB[1]", 4}, {"\xEF\xBF[1]", 5}, {"\xBF[1]", 4}};
  const char* const expected[] = {"{}", "{}", "{}", "[1,2]", "[7]", "[1,2]", "[1]", "[1]", "[1]", "[1]", "[1]"};
  for (int i = 0; i < 11; ++i) EXPECT_EQ(Text(ParseBytes(rows[i].first, rows[i].second)), expected[i]) << i;
}

TEST(JsonText, ScalarDocumentsAreRefused) {
  for (const char* input : {"\"abc\"", "42", "true", "null", " -1.5 "}) {
    JsonPtr result;
    EXPECT_EQ(CapturedStdout([&] { result = Parse(input); }), "Only allow array and object\n") << input;
    EXPECT_TRUE(!result && result.use_count() == 1);
  }
}

std::string Nested(int depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JsonText, EveryErrorCodeAndOnePastTheNestingLimit) {
  const std::pair<std::string, int> rows[] = {
      {" \t\r\n", 1},        {"[1] [2]", 2},          {"[1,2]xyz", 2},      {"[1]\f", 2},
      {"[1,]", 3},           {"[NaN]", 3},            {"// x\n[]", 3},      {"['a']", 3},
      {"\xBF\xEF[1]", 3},    {"{\"a\":1,}", 4},       {"{1:2}", 4},         {"{\"a\" 1}", 5},
      {"{\"a\":1 \"b\":2}", 6}, {"[1 2]", 7},         {"[\"\\u12G4\"]", 8}, {"[\"\\uD800x\"]", 9},
      {"[\"\\q\"]", 10},     {"[\"a\x01\"]", 10},     {"[\"abc", 11},       {std::string("[\"a\0b\"]", 7), 11},
      {"[1e400]", 13},       {"[1.]", 14},            {"[1e]", 15},         {Nested(513), 16},
      {Nested(200000), 16},  {std::string(200000, '['), 16},
  };
  for (const auto& row : rows) {
    JsonPtr result;
    const std::string printed = CapturedStdout([&] { result = ParseBytes(row.first, row.first.size()); });
    EXPECT_FALSE(result) << row.first.substr(0, 20);
    EXPECT_EQ(printed, "Parse json error. code=" + std::to_string(row.second) + "\n") << row.first.substr(0, 20);
  }
}

TEST(JsonText, TextFormOfNumbersStringsAndWhitespace) {
  const std::pair<const char*, const char*> rows[] = {
      {"[5.0]", "[5.0]"},     {"[5]", "[5]"},       {"[0.0]", "[0.0]"},     {"[-0.0]", "[-0.0]"},
      {"[1e2]", "[100.0]"},   {"[0.1]", "[0.1]"},   {"[1e300]", "[1e300]"}, {"[-2.5e-7]", "[-2.5e-7]"},
      {"[1e21]", "[1e21]"},   {"[18446744073709551616]", "[18446744073709553000.0]"},
      {"[-9223372036854775808]", "[-9223372036854775808]"},
      {" { \"a\" : [ 1 , 2.50 , \"x\\/y\" ] } ", "{\"a\":[1,2.5,\"x/y\"]}"},
      {"[\"\\uD83D\\uDE00\\u00e9\"]", "[\"\xF0\x9F\x98\x80\xC3\xA9\"]"},
      {"[\"a\\u0000b\"]", "[\"a\\u0000b\"]"},
      {"{\"a\":1,\"a\":2}", "{\"a\":1,\"a\":2}"},
  };
  for (const auto& row : rows) EXPECT_EQ(Text(Parse(row.first)), row.second) << row.first;
  JsonPtr array = Parse("[]");  // escapes as written
  array->InsertStringAt(0, "\b\f\n\r\t\x01\x1f\"\\/\xC3\xA9\x7f");
  EXPECT_EQ(Text(array->GetAt(0)), "\"\\b\\f\\n\\r\\t\\u0001\\u001F\\\"\\\\/\xC3\xA9\x7f\"");
}

TEST(JsonText, NonFiniteNumbersTruncateTheTextAndNullBuildsNothing) {
  JsonPtr object = Parse("{}");
  object->SetDoubleMember("a", std::nan(""));
  object->SetIntMember("b", 1);
  EXPECT_EQ(Text(object) + "|" + Text(object->GetMember("a")), "{\"a\":|");
  JsonPtr array = Parse("[1]");
  array->InsertDoubleAt(-1, -HUGE_VAL);
  VXJsonFactory::BuildConfig config;
  EXPECT_EQ(Str(VXJsonFactory::BuildJsonString(array, &config)), "[1,");
  EXPECT_TRUE(VXJsonFactory::BuildJsonString(ConstJsonPtr(), nullptr).IsEmpty());
  EXPECT_TRUE(VXJsonFactory::BuildJsonString(ConstJsonPtr(nullptr), nullptr).IsEmpty());
}

TEST(JsonText, NestingUpToTheLimitParsesAndTheWriterStopsPastIt) {
  constexpr int kLimit = 512;
  std::string objects;
  for (int i = 0; i < kLimit; ++i) objects += "{\"a\":";
  objects += "1" + std::string(kLimit, '}');
  for (const std::string& atLimit : {Nested(kLimit), objects}) EXPECT_EQ(Text(Parse(atLimit.c_str())), atLimit);
  JsonPtr root = Parse("[]");
  JsonPtr inner = root;
  for (int depth = 1; depth < kLimit; ++depth) inner = inner->InsertArrayAt(0);
  EXPECT_EQ(Text(root), Nested(kLimit));
  inner->InsertArrayAt(0);
  EXPECT_EQ(Text(root), std::string(kLimit, '['));
}

}  // namespace
