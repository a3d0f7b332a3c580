// Joining paths and taking them apart. Only the bytes `/`, `\` and `.` are
// looked at, so any ASCII-compatible encoding works.

#include <vxutility/FileUtils.h>

#include <cstdarg>
#include <cstring>

#include <vxbase/String.h>

#include "files/NativePath.h"

namespace {

const char kEmptyText[] = "";

/// The bytes of `path` to consider: all of them up to the NUL for a negative
/// `length`, else exactly `length`, NULs among them included (a caller may
/// pass a buffer that holds several names).
int BytesToConsider(const char* path, int length) {
  if (path == nullptr) return 0;
  return length < 0 ? static_cast<int>(std::strlen(path)) : length;
}

/// Index of the last separator before `end`, or -1.
int LastSepIndex(const char* path, int end) {
  for (int i = end - 1; i >= 0; --i) {
    if (IsPathSep(path[i])) return i;
  }
  return -1;
}

/// Index of the last '.' in [begin, end), or -1.
int LastDotIndex(const char* path, int begin, int end) {
  for (int i = end - 1; i >= begin; --i) {
    if (path[i] == '.') return i;
  }
  return -1;
}

/// Adds `part` with one separator between it and the text so far; the first
/// non-empty part is taken as it is.
void JoinPart(std::string& result, const char* part) {
  if (part == nullptr || *part == '\0') return;
  if (result.empty()) {
    result = part;
    return;
  }
  if (IsPathSep(*part)) ++part;
  if (!IsPathSep(result.back())) result += '/';
  result += part;
}

}  // namespace

std::string PathJoin(const char* first, const char* second, ...) {
  std::string result;
  JoinPart(result, first);
  JoinPart(result, second);
  va_list parts;
  va_start(parts, second);
  for (const char* part = va_arg(parts, const char*); part != nullptr; part = va_arg(parts, const char*)) {
    JoinPart(result, part);
  }
  va_end(parts);
  return result;
}

const char* GetFileExt(const char* path, int length) {
  const int dot = LastDotIndex(path, 0, BytesToConsider(path, length));
  return dot < 0 ? kEmptyText : path + dot;
}

CCA_String GetFileName(const char* path, int length) {
  const int end = BytesToConsider(path, length);
  const int begin = LastSepIndex(path, end) + 1;
  const int dot = LastDotIndex(path, begin, end);
  return CCA_String(path + begin, (dot < 0 ? end : dot) - begin);
}

const char* GetFileNameWithExt(const char* path, int length) {
  const int sep = LastSepIndex(path, BytesToConsider(path, length));
  return sep < 0 ? kEmptyText : path + sep + 1;
}
