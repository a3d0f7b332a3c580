// Parsing and writing: framing of the input, every error code and the two
// messages, the text form written back, and the nesting limit.

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonTestUtil.h"

namespace {

constexpr unsigned int kToNul = 0xFFFFFFFFu;

/// What parsing `bytes` gives: the text written back, or the message printed.
/// The buffer holds exactly `bytes` (and a NUL when the length is unbounded),
/// so that reading past the input is an overflow.
std::string Outcome(const std::string& bytes, unsigned int length) {
  std::vector<char> buffer(bytes.begin(), bytes.end());
  if (length == kToNul) buffer.push_back('\0');
  JsonPtr result;
  const std::string printed =
      CapturedStdout([&] { result = VXJsonFactory::ParseJsonString(buffer.data(), length, nullptr); });
  EXPECT_EQ(result.use_count(), 1);
  return result ? Text(result) + printed : printed;
}

std::string Nested(int depth) { return std::string(depth, '[') + std::string(depth, ']'); }

std::string Code(int code) { return "Parse json error. code=" + std::to_string(code) + "\n"; }

TEST(JsonText, FramingErrorCodesAndTheTextWrittenBack) {
  const std::string kOnlyContainers = "Only allow array and object\n";
  const std::tuple<std::string, unsigned int, std::string> rows[] = {
      // Framing by length, byte order mark bytes skipped one by one.
      {"", kToNul, "{}"}, {"{}", 0, "{}"}, {"[1]", 0, "{}"}, {"[1,2]xyz", 5, "[1,2]"}, {"[7] !", 4, "[7]"},
      {"\xEF\xBB\xBF[1]", kToNul, "[1]"}, {"\xEF[1]", 4, "[1]"}, {"\xBB[1]", 4, "[1]"}, {"\xEF\xBF[1]", 5, "[1]"},
      {"\xBF[1]", 4, "[1]"}, {"\xBF\xEF[1]", 5, Code(3)},
      // Only containers are documents.
      {"\"abc\"", kToNul, kOnlyContainers}, {"42", kToNul, kOnlyContainers}, {"true", kToNul, kOnlyContainers},
      {"null", kToNul, kOnlyContainers}, {" -1.5 ", kToNul, kOnlyContainers},
      // Every error code.
      {" \t\r\n", kToNul, Code(1)}, {"[1] [2]", kToNul, Code(2)}, {"[1,2]xyz", 8, Code(2)}, {"[1]\f", kToNul, Code(2)},
      {"[1,]", kToNul, Code(3)}, {"[NaN]", kToNul, Code(3)}, {"// x\n[]", kToNul, Code(3)}, {"['a']", kToNul, Code(3)},
      {"{\"a\":1,}", kToNul, Code(4)}, {"{1:2}", kToNul, Code(4)}, {"{\"a\" 1}", kToNul, Code(5)},
      {"{\"a\":1 \"b\":2}", kToNul, Code(6)}, {"[1 2]", kToNul, Code(7)}, {"[\"\\u12G4\"]", kToNul, Code(8)},
      {"[\"\\uD800x\"]", kToNul, Code(9)}, {"[\"\\q\"]", kToNul, Code(10)}, {"[\"a\x01\"]", kToNul, Code(10)},
      {"[\"abc", kToNul, Code(11)}, {std::string("[\"a\0b\"]", 7), 7, Code(11)}, {"[1e400]", kToNul, Code(13)},
      {"[4804444480448e298,1]", kToNul, Code(13)}, {"[17976931348623159e292]", kToNul, Code(13)},
      {"{\"a\":-99999999999999999999e300}", kToNul, Code(13)},
      {"[1.]", kToNul, Code(14)}, {"[1e]", kToNul, Code(15)},
      // One past the nesting limit, however deep.
      {Nested(513), kToNul, Code(16)}, {Nested(200000), kToNul, Code(16)}, {std::string(200000, '['), kToNul, Code(16)},
      // The compact text form of numbers, strings and duplicate members.
      {"[5.0]", kToNul, "[5.0]"}, {"[5]", kToNul, "[5]"}, {"[0.0]", kToNul, "[0.0]"}, {"[-0.0]", kToNul, "[-0.0]"},
      {"[1e2]", kToNul, "[100.0]"}, {"[0.1]", kToNul, "[0.1]"}, {"[1e300]", kToNul, "[1e300]"}, {"[1.7976931348623157e308]", kToNul, "[1.7976931348623157e308]"},
      {"[-2.5e-7]", kToNul, "[-2.5e-7]"}, {"[1e21]", kToNul, "[1e21]"},
      {"[18446744073709551616]", kToNul, "[18446744073709553000.0]"},
      {"[-9223372036854775808]", kToNul, "[-9223372036854775808]"},
      {" { \"a\" : [ 1 , 2.50 , \"x\\/y\" ] } ", kToNul, "{\"a\":[1,2.5,\"x/y\"]}"},
      {"[\"\\uD83D\\uDE00\\u00e9\"]", kToNul, "[\"\xF0\x9F\x98\x80\xC3\xA9\"]"},
      {"[\"a\\u0000b\"]", kToNul, "[\"a\\u0000b\"]"}, {"{\"a\":1,\"a\":2}", kToNul, "{\"a\":1,\"a\":2}"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Outcome(std::get<0>(row), std::get<1>(row)), std::get<2>(row)) << std::get<0>(row).substr(0, 20);
  }
  const std::vector<char> oneByte(1, '[');  // reading past it would overflow
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString(oneByte.data() + 1, 0, nullptr)), "{}");
  EXPECT_EQ(Text(VXJsonFactory::ParseJsonString(nullptr, 10, nullptr)), "{}");
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

TEST(JsonText, NestingUpToTheLimitParsesAndDeeperTreesWriteWhole) {
  constexpr int kLimit = 512;
  std::string objects;
  for (int i = 0; i < kLimit; ++i) objects += "{\"a\":";
  objects += "1" + std::string(kLimit, '}');
  for (const std::string& atLimit : {Nested(kLimit), objects}) EXPECT_EQ(Text(Parse(atLimit.c_str())), atLimit);
  JsonPtr wrapped = Parse("[]");  // a tree at the limit, wrapped once more
  wrapped->InsertValueAt(0, Parse(objects.c_str()));
  EXPECT_TRUE(Text(wrapped) == "[" + objects + "]");
}

}  // namespace
