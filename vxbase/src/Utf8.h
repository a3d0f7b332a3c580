#pragma once
// UTF-8 <-> code point transcoding used by the string converter.

namespace vxbase_utf8 {

/// Decodes `length` bytes (no NUL among them) into `out`, which has room for
/// `length` wide characters; returns the number written. Ill-formed
/// sequences become one U+FFFD per maximal invalid subpart; where wchar_t is
/// 16 bits, code points past U+FFFF become surrogate pairs.
int Decode(const char* text, int length, wchar_t* out);

/// The UTF-8 size of `length` wide characters, counted in 64 bits so that
/// text past 2^31 - 1 bytes shows as such. Exact where wchar_t holds code
/// points; where it is 16 bits a surrogate pair counts 6 for its 4 bytes.
long long EncodedBound(const wchar_t* text, int length);

/// Encodes `length` wide characters into `out` (room for EncodedBound);
/// returns the number of bytes written. Surrogate pairs combine; lone
/// surrogates and values past U+10FFFF become U+FFFD.
int Encode(const wchar_t* text, int length, char* out);

}  // namespace vxbase_utf8
