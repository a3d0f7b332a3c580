#pragma once
// Option values shared by the process-runtime subcommands.

#include <string>

#include "Command.h"

/// Reads the value after option `args[i]` as a whole number in [low, high],
/// moving `i` onto it; false when it is missing or out of range.
inline bool TakeNumberOption(const Args& args, std::size_t& i, long long low, long long high, long long& value) {
  if (i + 1 >= args.size() || !ParseIntArg(args[i + 1], value) || value < low || value > high) return false;
  ++i;
  return true;
}
