#pragma once
// The system's local multibyte encoding; implemented per system.

namespace vxbase_local {

/// True when local text is UTF-8 (including the plain C/POSIX locale).
bool LocalIsUtf8();

/// Decodes `length` local bytes (no NUL among them) into `out` (room for
/// `length`); returns the number of wide characters written.
int DecodeLocal(const char* text, int length, wchar_t* out);

/// Room needed to encode `length` wide characters as local text.
int EncodedLocalBound(int length);

/// Encodes `length` wide characters into `out`; returns the bytes written.
int EncodeLocal(const wchar_t* text, int length, char* out);

}  // namespace vxbase_local
