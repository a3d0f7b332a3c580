#include "Utf8.h"

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vxbase_utf8 {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint64_t kHighBits = 0x8080808080808080ull;

// Where wide characters are 32 bits and SSE2 is there, runs of ASCII move 16
// characters per step; elsewhere 8 bytes are tested as one word.
#if defined(__SSE2__)
constexpr bool kVectorAscii = sizeof(wchar_t) == 4;
#else
constexpr bool kVectorAscii = false;
#endif

bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

/// Widens the run of ASCII bytes at the start of `s`, in whole blocks;
/// returns how many bytes were widened (possibly 0).
int WidenAsciiRun(const unsigned char* s, int length, wchar_t* out) {
  int i = 0;
#if defined(__SSE2__)
  if constexpr (kVectorAscii) {
    const __m128i zero = _mm_setzero_si128();
    for (; i + 16 <= length; i += 16) {
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
      if (_mm_movemask_epi8(bytes) != 0) break;
      const __m128i low = _mm_unpacklo_epi8(bytes, zero);
      const __m128i high = _mm_unpackhi_epi8(bytes, zero);
      __m128i* o = reinterpret_cast<__m128i*>(out + i);
      _mm_storeu_si128(o, _mm_unpacklo_epi16(low, zero));
      _mm_storeu_si128(o + 1, _mm_unpackhi_epi16(low, zero));
      _mm_storeu_si128(o + 2, _mm_unpacklo_epi16(high, zero));
      _mm_storeu_si128(o + 3, _mm_unpackhi_epi16(high, zero));
    }
    return i;
  }
#endif
  for (; i + 8 <= length; i += 8) {
    std::uint64_t word;
    std::memcpy(&word, s + i, 8);
    if (word & kHighBits) break;
    for (int k = 0; k < 8; ++k) out[i + k] = static_cast<wchar_t>(s[i + k]);
  }
  return i;
}

#if defined(__SSE2__)
/// True when the sixteen 32-bit units at `in` are all below 0x80.
bool IsAsciiBlock(const __m128i* in) {
  const __m128i any = _mm_or_si128(_mm_or_si128(_mm_loadu_si128(in), _mm_loadu_si128(in + 1)),
                                   _mm_or_si128(_mm_loadu_si128(in + 2), _mm_loadu_si128(in + 3)));
  const __m128i high = _mm_and_si128(any, _mm_set1_epi32(~0x7F));
  return _mm_movemask_epi8(_mm_cmpeq_epi32(high, _mm_setzero_si128())) == 0xFFFF;
}
#endif

/// Narrows the run of wide ASCII characters at the start of `text`, in whole
/// blocks; returns how many were narrowed (possibly 0).
int NarrowAsciiRun(const wchar_t* text, int length, char* out) {
  int i = 0;
#if defined(__SSE2__)
  if constexpr (kVectorAscii) {
    for (; i + 16 <= length; i += 16) {
      const __m128i* in = reinterpret_cast<const __m128i*>(text + i);
      if (!IsAsciiBlock(in)) break;
      const __m128i a = _mm_loadu_si128(in);
      const __m128i b = _mm_loadu_si128(in + 1);
      const __m128i c = _mm_loadu_si128(in + 2);
      const __m128i d = _mm_loadu_si128(in + 3);
      const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), bytes);
    }
    return i;
  }
#endif
  for (; i + 4 <= length; i += 4) {
    if (static_cast<std::uint32_t>(text[i] | text[i + 1] | text[i + 2] | text[i + 3]) >= 0x80) break;
    for (int k = 0; k < 4; ++k) out[i + k] = static_cast<char>(text[i + k]);
  }
  return i;
}

/// Valid range of the second byte after lead byte `lead`.
void SecondByteRange(unsigned char lead, unsigned char& low, unsigned char& high) {
  low = 0x80;
  high = 0xBF;
  if (lead == 0xE0) low = 0xA0;
  else if (lead == 0xED) high = 0x9F;
  else if (lead == 0xF0) low = 0x90;
  else if (lead == 0xF4) high = 0x8F;
}

/// Decodes one multi-byte sequence at `s` (lead byte >= 0x80), ill-formed
/// ones included; stores the code point or U+FFFD and returns the number of
/// bytes consumed.
int DecodeSequence(const unsigned char* s, int available, std::uint32_t& out) {
  const unsigned char lead = s[0];
  int need;
  std::uint32_t cp;
  if (lead >= 0xC2 && lead <= 0xDF) { need = 1; cp = lead & 0x1F; }
  else if (lead >= 0xE0 && lead <= 0xEF) { need = 2; cp = lead & 0x0F; }
  else if (lead >= 0xF0 && lead <= 0xF4) { need = 3; cp = lead & 0x07; }
  else { out = kReplacement; return 1; }

  unsigned char low, high;
  SecondByteRange(lead, low, high);
  int used = 1;
  for (int k = 0; k < need; ++k) {
    if (used >= available) { out = kReplacement; return used; }
    const unsigned char b = s[used];
    const bool ok = (k == 0) ? (b >= low && b <= high) : IsContinuation(b);
    if (!ok) { out = kReplacement; return used; }
    cp = (cp << 6) | (b & 0x3F);
    ++used;
  }
  out = cp;
  return used;
}

/// Appends `cp` to `out` at `n`. Where wide characters are 16 bits a code
/// point past U+FFFF becomes a surrogate pair: two units for the four bytes
/// of its sequence, so the output still takes at most one unit per byte.
void StoreCodePoint(std::uint32_t cp, wchar_t* out, int& n) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (cp >= 0x10000) {
      out[n++] = static_cast<wchar_t>(0xD800 + ((cp - 0x10000) >> 10));
      out[n++] = static_cast<wchar_t>(0xDC00 + (cp & 0x3FF));
      return;
    }
  }
  out[n++] = static_cast<wchar_t>(cp);
}

bool IsHighSurrogate(std::uint32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(std::uint32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

int EncodeCodePoint(std::uint32_t cp, char* out) {
  if (cp < 0x80) { out[0] = static_cast<char>(cp); return 1; }
  if (cp < 0x800) {
    out[0] = static_cast<char>(0xC0 | (cp >> 6));
    out[1] = static_cast<char>(0x80 | (cp & 0x3F));
    return 2;
  }
  if (cp < 0x10000) {
    out[0] = static_cast<char>(0xE0 | (cp >> 12));
    out[1] = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out[2] = static_cast<char>(0x80 | (cp & 0x3F));
    return 3;
  }
  out[0] = static_cast<char>(0xF0 | (cp >> 18));
  out[1] = static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
  out[2] = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
  out[3] = static_cast<char>(0x80 | (cp & 0x3F));
  return 4;
}

/// Encodes the unit at `text` (and its low surrogate when it starts a
/// pair) into `out`, adding the bytes written to `n`; returns the units
/// consumed. Lone surrogates and values past U+10FFFF become U+FFFD.
int EncodeUnit(const wchar_t* text, int available, char* out, int& n) {
  std::uint32_t cp = static_cast<std::uint32_t>(text[0]);
  int used = 1;
  if (IsHighSurrogate(cp) && available > 1 && IsLowSurrogate(static_cast<std::uint32_t>(text[1]))) {
    cp = 0x10000 + ((cp - 0xD800) << 10) + (static_cast<std::uint32_t>(text[1]) - 0xDC00);
    used = 2;
  } else if (IsHighSurrogate(cp) || IsLowSurrogate(cp) || cp > 0x10FFFF) {
    cp = kReplacement;
  }
  n += EncodeCodePoint(cp, out);
  return used;
}

/// Bytes one wide unit takes: 1 to 4 by its value; a value past U+10FFFF
/// becomes U+FFFD, 3 bytes (a surrogate counts 3, so a 16-bit pair counts
/// more than the 4 it becomes).
int UnitBound(std::uint32_t c) {
  return 1 + (c >= 0x80) + (c >= 0x800) + (c >= 0x10000) - (c > 0x10FFFF);
}

bool IsScalarValue(std::uint32_t cp) { return (cp - 0xD800u) >= 0x800u && cp <= 0x10FFFFu; }

/// Decodes the run of well-formed three-byte sequences (most CJK text) at
/// `s`; advances `i` and `n` past it.
void DecodeThreeByteRun(const unsigned char* s, int length, wchar_t* out, int& i, int& n) {
  while (i + 3 <= length && (s[i] & 0xF0) == 0xE0 && IsContinuation(s[i + 1]) && IsContinuation(s[i + 2])) {
    const std::uint32_t cp = ((s[i] & 0x0Fu) << 12) | ((s[i + 1] & 0x3Fu) << 6) | (s[i + 2] & 0x3Fu);
    if (cp < 0x800 || !IsScalarValue(cp)) return;  // overlong or surrogate
    out[n++] = static_cast<wchar_t>(cp);
    i += 3;
  }
}

/// Decodes the run of ASCII bytes at `s`, blocks first; advances `i` and
/// `n` past it.
void DecodeAsciiRun(const unsigned char* s, int length, wchar_t* out, int& i, int& n) {
  while (i < length && s[i] < 0x80) {
    const int block = WidenAsciiRun(s + i, length - i, out + n);
    i += block;
    n += block;
    // A run shorter than a block goes byte by byte before the next try.
    for (int k = 0; block == 0 && k < 16 && i < length && s[i] < 0x80; ++k) out[n++] = static_cast<wchar_t>(s[i++]);
  }
}

/// Encodes the run of wide characters that take three bytes each at `text`;
/// advances `i` and `n` past it.
void EncodeThreeByteRun(const wchar_t* text, int length, char* out, int& i, int& n) {
  for (; i < length; ++i) {
    const std::uint32_t cp = static_cast<std::uint32_t>(text[i]);
    if (cp < 0x800 || cp > 0xFFFF || !IsScalarValue(cp)) return;
    out[n] = static_cast<char>(0xE0 | (cp >> 12));
    out[n + 1] = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out[n + 2] = static_cast<char>(0x80 | (cp & 0x3F));
    n += 3;
  }
}

/// Encodes the run of wide ASCII characters at `text`, blocks first;
/// advances `i` and `n` past it.
void EncodeAsciiRun(const wchar_t* text, int length, char* out, int& i, int& n) {
  while (i < length && static_cast<std::uint32_t>(text[i]) < 0x80) {
    const int block = NarrowAsciiRun(text + i, length - i, out + n);
    i += block;
    n += block;
    for (int k = 0; block == 0 && k < 16 && i < length && static_cast<std::uint32_t>(text[i]) < 0x80; ++k) {
      out[n++] = static_cast<char>(text[i++]);
    }
  }
}

}  // namespace

// Text comes in runs of one kind (ASCII words, CJK phrases): each run is
// decoded by a loop of its own, so that branches change direction only where
// the kind of character changes.
int Decode(const char* text, int length, wchar_t* out) {
  const unsigned char* s = reinterpret_cast<const unsigned char*>(text);
  int i = 0;
  int n = 0;
  while (i < length) {
    DecodeAsciiRun(s, length, out, i, n);
    DecodeThreeByteRun(s, length, out, i, n);
    if (i < length && s[i] >= 0x80) {
      std::uint32_t cp;
      i += DecodeSequence(s + i, length - i, cp);
      StoreCodePoint(cp, out, n);
    }
  }
  return n;
}

long long EncodedBound(const wchar_t* text, int length) {
  long long bytes = 0;
  int i = 0;
#if defined(__SSE2__)
  if constexpr (kVectorAscii) {
    // Unsigned comparisons through a biased signed compare: each lane adds 1
    // for every limit its unit passes.
    const __m128i bias = _mm_set1_epi32(static_cast<int>(0x80000000u));
    const __m128i past1 = _mm_set1_epi32(static_cast<int>(0x8000007Fu));
    const __m128i past2 = _mm_set1_epi32(static_cast<int>(0x800007FFu));
    const __m128i past3 = _mm_set1_epi32(static_cast<int>(0x8000FFFFu));
    const __m128i pastMax = _mm_set1_epi32(static_cast<int>(0x8010FFFFu));
    while (i + 4 <= length) {
      __m128i extra = _mm_setzero_si128();
      // Lanes count at most 3 per step; flush well before they could wrap.
      const int stop = length - i > (1 << 24) ? i + (1 << 24) : length;
      for (; i + 4 <= stop; i += 4) {
        const __m128i* in = reinterpret_cast<const __m128i*>(text + i);
        if (i + 16 <= stop && IsAsciiBlock(in)) {  // sixteen units of one byte each
          i += 12;
          continue;
        }
        const __m128i v = _mm_xor_si128(_mm_loadu_si128(in), bias);
        extra = _mm_sub_epi32(extra, _mm_cmpgt_epi32(v, past1));
        extra = _mm_sub_epi32(extra, _mm_cmpgt_epi32(v, past2));
        extra = _mm_sub_epi32(extra, _mm_cmpgt_epi32(v, past3));
        extra = _mm_add_epi32(extra, _mm_cmpgt_epi32(v, pastMax));  // becomes U+FFFD: 3 bytes
      }
      std::uint32_t lanes[4];
      _mm_storeu_si128(reinterpret_cast<__m128i*>(lanes), extra);
      bytes += static_cast<long long>(lanes[0]) + lanes[1] + lanes[2] + lanes[3];
    }
    bytes += i;
  }
#endif
  for (; i < length; ++i) bytes += UnitBound(static_cast<std::uint32_t>(text[i]));
  return bytes;
}

int Encode(const wchar_t* text, int length, char* out) {
  int n = 0;
  int i = 0;
  while (i < length) {
    EncodeAsciiRun(text, length, out, i, n);
    EncodeThreeByteRun(text, length, out, i, n);
    if (i < length && static_cast<std::uint32_t>(text[i]) >= 0x80) i += EncodeUnit(text + i, length - i, out + n, n);
  }
  return n;
}

}  // namespace vxbase_utf8
