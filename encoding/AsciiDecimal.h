#pragma once
// Reading decimal numbers out of plain text the way the C library's atoi does
// in the "C" locale, without its undefined overflow and without needing a
// NUL after the number.

#include <cstdint>

namespace vxutility_detail {

/// White space of the "C" locale: space, tab, line feed, vertical tab, form
/// feed and carriage return.
inline bool IsAsciiSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The number at the start of [begin, end): leading white space, an optional
/// sign, then decimal digits up to the first other character or `end`.
/// Without digits the value is 0; digits beyond the range of int wrap modulo
/// 2^32.
inline int ReadAsciiDecimal(const char* begin, const char* end) {
  const char* p = begin;
  while (p < end && IsAsciiSpace(*p)) ++p;
  bool negative = false;
  if (p < end && (*p == '+' || *p == '-')) negative = *p++ == '-';
  std::uint32_t value = 0;
  for (; p < end && *p >= '0' && *p <= '9'; ++p) value = value * 10u + static_cast<std::uint32_t>(*p - '0');
  if (negative) value = 0u - value;
  return static_cast<int>(value);
}

}  // namespace vxutility_detail
