#pragma once
// Seconds as a float to whole milliseconds for VXThread::sleep.

namespace detail {

/// The longest sleep a float can ask for: one below the platform's "forever".
constexpr unsigned kLongestSleepMs = 0xFFFFFFFEu;

/// `seconds` × 1000 cut towards zero; negative and NaN give 0, anything
/// beyond kLongestSleepMs gives that. The float is tested before it is
/// converted, so no out-of-range conversion ever happens.
inline unsigned SleepMilliseconds(float seconds) {
  const double milliseconds = static_cast<double>(seconds) * 1000.0;
  if (!(milliseconds > 0.0)) return 0;
  if (milliseconds >= static_cast<double>(kLongestSleepMs)) return kLongestSleepMs;
  return static_cast<unsigned>(milliseconds);
}

}  // namespace detail
