#include "Utf8.h"

#include <cstdint>
#include <cstring>

namespace vxbase_utf8 {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::uint64_t kHighBits = 0x8080808080808080ull;

bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

/// Valid range of the second byte after lead byte `lead`.
void SecondByteRange(unsigned char lead, unsigned char& low, unsigned char& high) {
  low = 0x80;
  high = 0xBF;
  if (lead == 0xE0) low = 0xA0;
  else if (lead == 0xED) high = 0x9F;
  else if (lead == 0xF0) low = 0x90;
  else if (lead == 0xF4) high = 0x8F;
}

/// Decodes one multi-byte sequence at `s` (lead byte >= 0x80); stores the
/// code point or U+FFFD and returns the number of bytes consumed.
int DecodeSequence(const unsigned char* s, int available, wchar_t& out) {
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
  out = static_cast<wchar_t>(cp);
  return used;
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

}  // namespace

int Decode(const char* text, int length, wchar_t* out) {
  const unsigned char* s = reinterpret_cast<const unsigned char*>(text);
  int i = 0;
  int n = 0;
  while (i < length) {
    // Whole words of ASCII widen without per-byte branching.
    while (i + 8 <= length) {
      std::uint64_t word;
      std::memcpy(&word, s + i, 8);
      if (word & kHighBits) break;
      for (int k = 0; k < 8; ++k) out[n + k] = static_cast<wchar_t>(s[i + k]);
      i += 8;
      n += 8;
    }
    if (i >= length) break;
    if (s[i] < 0x80) {
      out[n++] = static_cast<wchar_t>(s[i++]);
      continue;
    }
    i += DecodeSequence(s + i, length - i, out[n]);
    ++n;
  }
  return n;
}

int EncodedBound(const wchar_t* text, int length) {
  long long bytes = 0;
  for (int i = 0; i < length; ++i) {
    const std::uint32_t c = static_cast<std::uint32_t>(text[i]);
    bytes += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  }
  return bytes > 0x7fffffff ? 0x7fffffff : static_cast<int>(bytes);
}

int Encode(const wchar_t* text, int length, char* out) {
  int n = 0;
  int i = 0;
  while (i < length) {
    while (i + 4 <= length &&
           static_cast<std::uint32_t>(text[i] | text[i + 1] | text[i + 2] | text[i + 3]) < 0x80) {
      out[n] = static_cast<char>(text[i]);
      out[n + 1] = static_cast<char>(text[i + 1]);
      out[n + 2] = static_cast<char>(text[i + 2]);
      out[n + 3] = static_cast<char>(text[i + 3]);
      i += 4;
      n += 4;
    }
    if (i >= length) break;
    std::uint32_t cp = static_cast<std::uint32_t>(text[i++]);
    if (IsHighSurrogate(cp) && i < length && IsLowSurrogate(static_cast<std::uint32_t>(text[i]))) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (static_cast<std::uint32_t>(text[i++]) - 0xDC00);
    } else if (IsHighSurrogate(cp) || IsLowSurrogate(cp) || cp > 0x10FFFF) {
      cp = kReplacement;
    }
    n += EncodeCodePoint(cp, out + n);
  }
  return n;
}

}  // namespace vxbase_utf8
