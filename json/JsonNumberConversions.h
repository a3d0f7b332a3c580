#pragma once
// Conversions of floating-point numbers that C++ leaves undefined out of
// range: each tests first and gives the library's documented result.

#include <cfloat>
#include <climits>
#include <cstdint>
#include <limits>

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

/// The nearest float; beyond the float range an infinity of the same sign,
/// as the hardware rounds it; NaN stays NaN.
inline float NarrowToFloat(double value) {
  if (value > FLT_MAX) return std::numeric_limits<float>::infinity();
  if (value < -FLT_MAX) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(value);
}

}  // namespace json_numbers
