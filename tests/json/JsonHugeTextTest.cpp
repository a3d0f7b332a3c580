// Writing strings near the sizes where 32-bit arithmetic breaks: the longest
// string whose worst-case escaped form a 32-bit size still counts, one byte
// more, and a text that would pass 2^31 - 1 bytes. Each needs gigabytes, so
// the suite is labelled `slow`, runs alone, and skips where memory is short.

#include <cstdio>
#include <cstring>
#include <string>

#include "json/JsonTestUtil.h"

namespace {

/// Memory the system can still hand out, from /proc/meminfo.
unsigned long long AvailableBytes() {
  unsigned long long kib = 0;
  FILE* meminfo = std::fopen("/proc/meminfo", "r");
  if (meminfo == nullptr) return 0;
  char line[256];
  while (std::fgets(line, sizeof line, meminfo) != nullptr) {
    if (std::sscanf(line, "MemAvailable: %llu kB", &kib) == 1) break;
  }
  std::fclose(meminfo);
  return kib * 1024;
}

constexpr unsigned long long kGiB = 1ull << 30;

#define SKIP_UNLESS_AVAILABLE(bytes)                                                                      \
  if (AvailableBytes() < (bytes))                                                                       \
  GTEST_SKIP() << "needs " << (bytes) / kGiB << " GiB of free memory, " << AvailableBytes() / kGiB \
               << " GiB available"

TEST(JsonHugeText, StringsEitherSideOfTheWritersThirtyTwoBitReserve) {
  SKIP_UNLESS_AVAILABLE(5 * kGiB);
  const std::string head = "\"\\\n\x01/\xC3\xA9";
  const std::string escapedHead = "\\\"\\\\\\n\\u0001/\xC3\xA9";
  for (const std::size_t length : {std::size_t(715827882), std::size_t(715827883)}) {
    JsonPtr array = Parse("[]");
    {
      std::string text(length, 'x');
      text.replace(0, head.size(), head);
      ASSERT_TRUE(array->InsertStringAt(0, text.c_str()));
    }
    const CCA_String written = array->ToJsonString();
    const std::size_t expected = length - head.size() + escapedHead.size() + 4;
    ASSERT_EQ(static_cast<std::size_t>(written.GetLength()), expected) << length;
    const char* at = written.c_str();
    EXPECT_EQ(std::string(at, 2 + escapedHead.size()), "[\"" + escapedHead) << length;
    EXPECT_EQ(std::string(at + expected - 4, 4), "xx\"]") << length;
    EXPECT_EQ(std::strspn(at + 2 + escapedHead.size(), "x"), expected - 4 - escapedHead.size()) << length;
  }
}

TEST(JsonHugeText, TextPastTwoGigabytesStopsBeforeTheString) {
  SKIP_UNLESS_AVAILABLE(4 * kGiB);
  JsonPtr object = Parse("{\"a\":1}");
  {
    // 400 million control characters escape to 2.4 billion bytes.
    const std::string controls(400000000, '\x01');
    object->SetStringMember("b", controls.c_str());
  }
  object->SetIntMember("c", 2);
  EXPECT_EQ(Text(object), "{\"a\":1,\"b\":");
}

}  // namespace
