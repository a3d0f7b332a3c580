#pragma once
/// Text encodings: conversions between the local encoding, wide text and
/// UTF-8.
///
/// Wide text carries one code point per wchar_t on Linux (UTF-16 on
/// Windows); "local" is the current locale's encoding, UTF-8 under the plain
/// C/POSIX locale. `length` counts input units; -1 means "up to the NUL".
/// Results end at the first NUL of the converted text; invalid input becomes
/// U+FFFD; a null text gives an empty result.

#include <string>

#include <vxutility/vxutility_export.h>

/// Local text to wide text.
VXUTILITY_EXPORT std::wstring Local2Unicode(const char* text, int length);
/// UTF-8 to wide text.
VXUTILITY_EXPORT std::wstring Utf82Unicode(const char* text, int length);
/// Wide text to local text.
VXUTILITY_EXPORT std::string Unicode2Local(const wchar_t* text, int length);
/// Wide text to UTF-8.
VXUTILITY_EXPORT std::string Unicode2Utf8(const wchar_t* text, int length);
/// Local text to UTF-8 through wide text; empty when the wide step is empty.
VXUTILITY_EXPORT std::string Local2Utf8(const char* text, int length);
/// UTF-8 to local text through wide text; empty when the wide step is empty.
VXUTILITY_EXPORT std::string Utf82Local(const char* text, int length);
