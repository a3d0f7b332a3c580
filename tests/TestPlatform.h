#pragma once
// The few facts in which the tests' expectations differ between systems,
// each stated once; tests read them instead of keeping a copy per system.

#include <cstdlib>
#include <string>
#include <string_view>

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <process.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace test_platform {

#if defined(_WIN32)
constexpr char kNativeSep = '\\';
/// "C:" names a drive, and a lone separator is no path at all.
constexpr bool kDriveLetters = true;
/// Files have only a read-only attribute: every file is readable.
constexpr bool kPermissionBits = false;
/// FIFOs and symbolic links can be made by any test.
constexpr bool kSpecialFiles = false;
/// The variable that names the temporary directory.
constexpr const char* kTempDirVariable = "TMP";
#else
constexpr char kNativeSep = '/';
constexpr bool kDriveLetters = false;
constexpr bool kPermissionBits = true;
constexpr bool kSpecialFiles = true;
constexpr const char* kTempDirVariable = "TMPDIR";
#endif

/// Code page numbers of the local encodings the tests know.
constexpr unsigned kCodePageUtf8 = 65001;
constexpr unsigned kCodePageWestern = 1252;
constexpr unsigned kCodePageJapanese = 932;

/// The local encoding the tests run with: the active code page on Windows;
/// the C locale elsewhere, which counts as UTF-8.
inline unsigned LocalCodePage() {
#if defined(_WIN32)
  return GetACP();
#else
  return kCodePageUtf8;
#endif
}

/// `text` as this system's wide strings carry it: UTF-16 where wchar_t has
/// 16 bits (a code point past U+FFFF becomes a surrogate pair), whole code
/// points elsewhere. Lone surrogates are kept as they are.
inline std::wstring Wide(std::u32string_view text) {
  std::wstring wide;
  for (const char32_t cp : text) {
    if (sizeof(wchar_t) == 2 && cp >= 0x10000) {
      wide += static_cast<wchar_t>(0xD800 + ((cp - 0x10000) >> 10));
      wide += static_cast<wchar_t>(0xDC00 + (cp & 0x3FF));
    } else {
      wide += static_cast<wchar_t>(cp);
    }
  }
  return wide;
}

inline void SetEnv(const char* name, const std::string& value) {
#if defined(_WIN32)
  _putenv_s(name, value.c_str());
#else
  setenv(name, value.c_str(), 1);
#endif
}

inline unsigned ProcessId() {
#if defined(_WIN32)
  return static_cast<unsigned>(_getpid());
#else
  return static_cast<unsigned>(getpid());
#endif
}

/// Whether a directory without write permission refuses new entries: not
/// for root, and not on Windows, whose read-only attribute does not apply
/// to a directory's contents.
inline bool ReadOnlyDirectoriesRefuseWrites() {
#if defined(_WIN32)
  return false;
#else
  return geteuid() != 0;
#endif
}

}  // namespace test_platform
