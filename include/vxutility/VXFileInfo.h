#pragma once
/// What a path names: existence, kind and owner permissions, read once when
/// the object is made.
///
/// Paths are taken with either `/` or `\` as separators. One trailing
/// separator is dropped before the query (`dir/` asks about `dir`); a lone
/// separator still names the root. Drive letters (`C:` meaning `C:\`) are
/// known on Windows only.

#include <vxutility/vxutility_export.h>

/// The part of a file's status the library reads: its mode word.
struct VXFileStatus;

class VXUTILITY_EXPORT VXFileInfo {
 public:
  /// Reads the status of a UTF-8 path; `length` in bytes, -1 up to the NUL
  /// (an explicit length stops at a NUL). A null, empty or missing path gives
  /// an object that reports nothing.
  VXFileInfo(const char* path, int length);
  /// Reads the status of a wide path; `length` in characters, -1 up to the
  /// NUL. A null, empty or missing path gives an object that reports nothing.
  VXFileInfo(const wchar_t* path, int length);
  /// Copies take a status record of their own (deep copy).
  VXFileInfo(const VXFileInfo& other);
  /// Replaces the status with a copy of `other`'s.
  VXFileInfo& operator=(const VXFileInfo& other);
  /// Frees the status record.
  ~VXFileInfo();

  /// True when the path could be queried; false for a missing path.
  bool IsExists() const;
  /// True for a directory; false when it is not one or does not exist.
  bool IsDir() const;
  /// True for a regular file; false when it is not one or does not exist.
  bool IsFile() const;
  /// True when the owner may read it; false otherwise or when missing.
  bool ReadEnable() const;
  /// True when the owner may write it; false otherwise or when missing.
  bool WriteEnable() const;

 private:
  /// Owned; null when the path was empty or could not be queried.
  VXFileStatus* m_pStatus;
};

/// File flags: 1 exists, 2 regular file, 4 directory, 16 readable,
/// 32 writable. 2, 4, 16 and 32 never come without 1.

/// Which of the properties asked for in `flags` hold for the UTF-8 `path`;
/// 0 for a null, empty or missing path, or when `flags` lacks 1.
VXUTILITY_EXPORT int CheckFilePath(const char* path, int flags);
/// The same for a wide path.
VXUTILITY_EXPORT int CheckFilePath(const wchar_t* path, int flags);
/// Every property that holds for the UTF-8 `path` (51 for a readable,
/// writable file); 0 for a null, empty or missing path.
VXUTILITY_EXPORT int GetFileFlags(const char* path);
/// The same for a wide path.
VXUTILITY_EXPORT int GetFileFlags(const wchar_t* path);
