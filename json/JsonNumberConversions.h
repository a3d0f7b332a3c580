#pragma once
// Conversions of floating-point numbers that C++ leaves undefined out of
// range: each tests first and gives the library's documented result.

#include <climits>
#include <cstdint>
#include <cstdlib>

namespace json_numbers {

/// Truncation toward zero; INT_MIN for NaN and values outside [-2^31, 2^31).
inline int TruncateToInt(double value) {
  if (!(value >= -2147483648.0 && value < 2147483648.0)) return INT_MIN;
  return static_cast<int>(value);
}

/// The low 32 bits of the truncation to a signed 64-bit integer; 0 for NaN
/// and values outside [-2^63, 2^63).
inline unsigned int TruncateToUint(double value) {
  if (!(value >= -9223372036854775808.0 && value < 9223372036854775808.0)) return 0;
  return static_cast<unsigned int>(static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
}

/// The float nearest to `value`, rounded as the conversion rounds: a double
/// within half a float step past FLT_MAX (up to 0x1.ffffffp127) gives
/// FLT_MAX, only one beyond that an infinity of the same sign; NaN stays NaN.
/// Floats include the infinities, so the conversion is defined for every
/// double.
inline float NarrowToFloat(double value) { return static_cast<float>(value); }

/// The integer at the start of `text` as the C library's atoi reads it
/// (leading white space, a sign, decimal digits), clamped to the int range
/// instead of the C library's own overflow behaviour, which differs from one
/// library to another.
inline int ClampedAtoi(const char* text) {
  const long long value = std::strtoll(text, nullptr, 10);  // saturates at the long long range
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

}  // namespace json_numbers
