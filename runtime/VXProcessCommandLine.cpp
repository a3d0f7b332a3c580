// The single command line a child is started from where the system takes
// one text rather than an argument vector.

#include <cstring>

#include "runtime/VXProcessDetail.h"

namespace detail {

std::string BuildCommandLine(const char* const* argv, int argc) {
  std::string line;
  for (int i = 0; i < argc; ++i) {
    if (i > 0) line += ' ';
    const bool quoted = std::strchr(argv[i], ' ') != nullptr;
    if (quoted) line += '"';
    line += argv[i];
    if (quoted) line += '"';
  }
  return line;
}

}  // namespace detail
