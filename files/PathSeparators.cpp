// Separator rewriting: both `/` and `\` become one chosen separator.

#include <vxutility/FileUtils.h>

#include "files/NativePath.h"

std::string ConvertPathSep(const char* path, char sep) {
  std::string result = path ? path : "";
  ConvertPathSep(result, sep);
  return result;
}

char* ConvertPathSep(char* path, char sep) {
  if (path == nullptr) return path;
  for (char* ch = path; *ch != '\0'; ++ch) {
    if (IsPathSep(*ch)) *ch = sep;
  }
  return path;
}

void ConvertPathSep(std::string& path, char sep) {
  for (char& ch : path) {
    if (IsPathSep(ch)) ch = sep;
  }
}

std::string ToNativePathSep(const char* path) { return ConvertPathSep(path, kNativePathSep); }

char* ToNativePathSep(char* path) { return ConvertPathSep(path, kNativePathSep); }

void ToNativePathSep(std::string& path) { ConvertPathSep(path, kNativePathSep); }
