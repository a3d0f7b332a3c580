#pragma once
// The platform's path conventions, shared by the file functions.

#if defined(_WIN32)
constexpr char kNativePathSep = '\\';
/// `C:` names a drive's current directory, `C:\` its root.
constexpr bool kPathsHaveDriveLetters = true;
#else
constexpr char kNativePathSep = '/';
constexpr bool kPathsHaveDriveLetters = false;
#endif

/// Both separators count on input, whatever the platform.
template <typename CharT>
constexpr bool IsPathSep(CharT ch) {
  return ch == CharT('/') || ch == CharT('\\');
}
