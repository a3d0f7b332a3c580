// File flags: the status of a path as one small bit set.

#include <vxutility/VXFileInfo.h>

#include <cwchar>

namespace {

constexpr int kFlagExists = 1;
constexpr int kFlagFile = 2;
constexpr int kFlagDirectory = 4;
constexpr int kFlagReadable = 16;
constexpr int kFlagWritable = 32;

bool IsNullOrEmpty(const char* path) { return path == nullptr || *path == '\0'; }
bool IsNullOrEmpty(const wchar_t* path) { return path == nullptr || *path == L'\0'; }

/// The properties asked for in `flags` that hold; existence is always asked.
int CheckedFlags(const VXFileInfo& info, int flags) {
  if (!info.IsExists()) return 0;
  int result = kFlagExists;
  if ((flags & kFlagFile) && info.IsFile()) result |= kFlagFile;
  if ((flags & kFlagDirectory) && info.IsDir()) result |= kFlagDirectory;
  if ((flags & kFlagReadable) && info.ReadEnable()) result |= kFlagReadable;
  if ((flags & kFlagWritable) && info.WriteEnable()) result |= kFlagWritable;
  return result;
}

/// Every property that holds; a regular file is never also called a
/// directory.
int AllFlags(const VXFileInfo& info) {
  if (!info.IsExists()) return 0;
  int result = kFlagExists;
  if (info.IsFile()) {
    result |= kFlagFile;
  } else if (info.IsDir()) {
    result |= kFlagDirectory;
  }
  if (info.ReadEnable()) result |= kFlagReadable;
  if (info.WriteEnable()) result |= kFlagWritable;
  return result;
}

template <typename CharT>
int CheckPath(const CharT* path, int flags) {
  if (IsNullOrEmpty(path) || !(flags & kFlagExists)) return 0;
  return CheckedFlags(VXFileInfo(path, -1), flags);
}

template <typename CharT>
int FlagsOfPath(const CharT* path) {
  if (IsNullOrEmpty(path)) return 0;
  return AllFlags(VXFileInfo(path, -1));
}

}  // namespace

int CheckFilePath(const char* path, int flags) { return CheckPath(path, flags); }

int CheckFilePath(const wchar_t* path, int flags) { return CheckPath(path, flags); }

int GetFileFlags(const char* path) { return FlagsOfPath(path); }

int GetFileFlags(const wchar_t* path) { return FlagsOfPath(path); }
