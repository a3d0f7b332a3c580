// Texts whose converted form reaches 2^31 - 1 bytes, the most one string can
// hold: up to the limit the text converts whole, past it the result is empty.
// Each case needs gigabytes; it is skipped, with a message, where the machine
// has too little memory free.

#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <string>
#include <vector>

#include <vxbase/StringConverter.h>
#include <vxutility/Encoding.h>

#include "support/ScopedLocale.h"

namespace {

constexpr long long kGiB = 1LL << 30;
constexpr int kWideCount = 1 << 29;  // four bytes each in UTF-8 and GB18030: 2^31 in all

/// Memory the system can still give, from /proc/meminfo; 0 when unknown.
long long AvailableBytes() {
  std::ifstream meminfo("/proc/meminfo");
  std::string key;
  long long kib = 0;
  while (meminfo >> key >> kib) {
    if (key == "MemAvailable:") return kib * 1024;
    meminfo.ignore(256, '\n');
  }
  return 0;
}

#define SKIP_UNLESS_MEMORY(gib)                                                           \
  if (AvailableBytes() < (gib)*kGiB)                                                      \
  GTEST_SKIP() << "needs " << (gib) << " GiB of free memory, " << AvailableBytes() / kGiB \
               << " GiB available"

TEST(ConversionBoundary, WideToUtf8AtAndPastTheLimit) {
  SKIP_UNLESS_MEMORY(6);
  std::vector<wchar_t> wide(kWideCount, static_cast<wchar_t>(0x1F600));
  EXPECT_EQ(Unicode2Utf8(wide.data(), kWideCount), "");  // 2^31 bytes
  wide.back() = 0xFFFD;                                  // one byte less: 2^31 - 1
  const CCA_String utf8 = CCA_StringConverter::unicode_to_utf8(wide.data(), kWideCount);
  ASSERT_EQ(utf8.GetLength(), INT_MAX);
  EXPECT_EQ(std::string(utf8.c_str() + INT_MAX - 7, 7), "\xF0\x9F\x98\x80\xEF\xBF\xBD");
}

TEST(ConversionBoundary, InvalidBytesGrowPastTheLimitThroughUtf8) {
  SKIP_UNLESS_MEMORY(5);
  // Each byte becomes U+FFFD, three bytes: one byte past the limit.
  const std::string bytes(INT_MAX / 3 + 1, '\xFF');
  EXPECT_EQ(Utf82Local(bytes.data(), static_cast<int>(bytes.size())), "");
  EXPECT_EQ(Local2Utf8(bytes.data(), static_cast<int>(bytes.size())), "");
}

TEST(ConversionBoundary, WideToLocalIsMeasuredWhenTheBoundPassesTheLimit) {
  SKIP_UNLESS_MEMORY(5);
  ScopedCtypeLocale locale(kGb18030Locale);
  if (!locale.ok()) return;
  std::vector<wchar_t> wide(kWideCount, static_cast<wchar_t>(0x1F600));
  EXPECT_EQ(Unicode2Local(wide.data(), kWideCount), "");  // four bytes each: 2^31
  // One byte each: the quick bound (four per character) passes the limit,
  // the text itself does not.
  std::fill(wide.begin(), wide.end(), L'a');
  wide.back() = 0x4E2D;
  const CCA_String local = CCA_StringConverter::unicode_to_local(wide.data(), kWideCount);
  ASSERT_EQ(local.GetLength(), kWideCount + 1);
  EXPECT_EQ(std::string(local.c_str() + kWideCount - 2, 3), "a\xD6\xD0");
}

}  // namespace
