#pragma once
// The system's local multibyte encoding; implemented per system.

namespace vxbase_local {

/// True when local text is UTF-8: a UTF-8 codeset, or the plain C/POSIX
/// locale. Any other locale, one with an ASCII codeset included, is not.
bool LocalIsUtf8();

/// Decodes `length` local bytes (no NUL among them) into `out` (room for
/// `length`); returns the number of wide characters written. A byte that
/// does not start a complete, valid character becomes U+FFFD and decoding
/// goes on with the next byte.
int DecodeLocal(const char* text, int length, wchar_t* out);

/// A quick upper bound of the local size of `length` wide characters, in 64
/// bits (it may pass 2^31 - 1).
long long EncodedLocalBound(int length);

/// The exact local size of `length` wide characters, in 64 bits; slower
/// than the bound, for texts whose bound passes 2^31 - 1.
long long EncodedLocalSize(const wchar_t* text, int length);

/// Encodes `length` wide characters into `out`; returns the bytes written.
/// A character the encoding cannot hold becomes '?'.
int EncodeLocal(const wchar_t* text, int length, char* out);

}  // namespace vxbase_local
