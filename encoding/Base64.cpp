// Base64 encoding and the permissive decoder. Both run over lookup tables
// built once, from the alphabet, before any other static object of the
// library: the encoder turns twelve bits into two characters per lookup, the
// decoder turns a group of four characters into three bytes with four
// lookups and one validity test. The bulk of a long input goes to the
// vector block coders (Base64Simd.cpp) where the processor has them; the
// tables take the rest, and any block holding a character outside the
// alphabet, so that both paths give the same bytes.

#include <vxutility/Base64.h>

#include <cstdint>
#include <cstring>

#include "InitOrder.h"
#include "encoding/Base64Internal.h"

namespace {

constexpr char kAlphabetLiteral[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr bool kBigEndian = true;
#else
constexpr bool kBigEndian = false;
#endif

/// The word whose four bytes in memory are the three bytes of the 24-bit
/// group value `v`, most significant first, then zero: decoding ORs such
/// words and stores the result as it is, with no shifts per group.
constexpr std::uint32_t InMemoryOrder(std::uint32_t v) {
  return kBigEndian ? v << 8 : ((v >> 16) & 0xFFu) | (v & 0xFF00u) | ((v & 0xFFu) << 16);
}

/// Marks a character outside the alphabet in every decoding table; it lies
/// in the fourth byte, which the three bytes of a group leave free.
constexpr std::uint32_t kNotInAlphabet = kBigEndian ? 0x01u : 0x01000000u;

class Base64Tables {
 public:
  Base64Tables() {
    std::memcpy(m_szAlphabet, kAlphabetLiteral, sizeof m_szAlphabet);
    for (int v = 0; v < 4096; ++v) {
      m_pairs[v][0] = m_szAlphabet[v >> 6];
      m_pairs[v][1] = m_szAlphabet[v & 63];
    }
    for (int place = 0; place < 4; ++place) {
      for (int c = 0; c < 256; ++c) m_decode[place][c] = kNotInAlphabet;
      for (std::uint32_t v = 0; v < 64; ++v) {
        const unsigned char c = static_cast<unsigned char>(m_szAlphabet[v]);
        m_decode[place][c] = InMemoryOrder(v << (18 - 6 * place));
      }
    }
  }

  char Character(std::uint32_t position) const { return m_szAlphabet[position]; }
  /// The two characters of a 12-bit value.
  const char* Pair(std::uint32_t value) const { return m_pairs[value]; }
  /// The value of character `c` shifted to its `place` (0 ... 3) in a group
  /// of 24 bits, in memory order (InMemoryOrder), or kNotInAlphabet.
  std::uint32_t Decode(int place, unsigned char c) const { return m_decode[place][c]; }

 private:
  char m_szAlphabet[sizeof kAlphabetLiteral];
  char m_pairs[4096][2];
  std::uint32_t m_decode[4][256];
};

const Base64Tables g_base64 VXUTILITY_INIT_BASE64_ALPHABET;

char* EncodeWholeGroups(const unsigned char* __restrict data, int groups, char* __restrict out) {
  for (int g = 0; g < groups; ++g, data += 3, out += 4) {
    const std::uint32_t v = (std::uint32_t{data[0]} << 16) | (std::uint32_t{data[1]} << 8) | data[2];
    char four[4];
    std::memcpy(four, g_base64.Pair(v >> 12), 2);
    std::memcpy(four + 2, g_base64.Pair(v & 0xFFF), 2);
    std::memcpy(out, four, 4);
  }
  return out;
}

/// The last one or two bytes: their characters, then "=" up to four.
char* EncodeTail(const unsigned char* data, int count, char* out) {
  const std::uint32_t second = count == 2 ? data[1] : 0;
  const std::uint32_t v = (std::uint32_t{data[0]} << 16) | (second << 8);
  *out++ = g_base64.Character(v >> 18);
  *out++ = g_base64.Character((v >> 12) & 63);
  *out++ = count == 2 ? g_base64.Character((v >> 6) & 63) : '=';
  *out++ = '=';
  return out;
}

/// The 24 bits of the four characters at `s` in memory order, with
/// kNotInAlphabet set when one of them is outside the alphabet.
std::uint32_t GroupBits(const unsigned char* s) {
  return g_base64.Decode(0, s[0]) | g_base64.Decode(1, s[1]) | g_base64.Decode(2, s[2]) | g_base64.Decode(3, s[3]);
}

/// Decodes whole groups of four characters until fewer than four remain or a
/// group holds a character outside the alphabet; advances `text` and `out`
/// past what was decoded. Each group is stored as four bytes, the last of
/// which the next group overwrites: the output needs one byte of room past
/// the decoded bytes (the string's terminator slot gives it).
void DecodeWholeGroups(const unsigned char*& text, const unsigned char* end, unsigned char*& out) {
  const unsigned char* __restrict s = text;
  unsigned char* __restrict o = out;
  while (end - s >= 8) {  // two groups per step when there are two
    const std::uint32_t v0 = GroupBits(s);
    const std::uint32_t v1 = GroupBits(s + 4);
    if ((v0 | v1) & kNotInAlphabet) break;
    std::memcpy(o, &v0, 4);
    std::memcpy(o + 3, &v1, 4);
    s += 8;
    o += 6;
  }
  while (end - s >= 4) {
    const std::uint32_t v = GroupBits(s);
    if (v & kNotInAlphabet) break;
    std::memcpy(o, &v, 4);
    s += 4;
    o += 3;
  }
  text = s;
  out = o;
}

/// The characters before the first one outside the alphabet (at most three
/// here) give one byte fewer than their count.
unsigned char* DecodeTail(const unsigned char* text, const unsigned char* end, unsigned char* out) {
  std::uint32_t v = 0;
  int k = 0;
  for (; k < 4 && text + k < end; ++k) {
    const std::uint32_t part = g_base64.Decode(k, text[k]);
    if (part & kNotInAlphabet) break;
    v |= part;
  }
  unsigned char bytes[4];
  std::memcpy(bytes, &v, 4);
  for (int b = 0; b < k - 1; ++b) *out++ = bytes[b];
  return out;
}

CCA_String EncodeWith(const unsigned char* data, int length, bool vector) {
  CCA_String result;
  if (length <= 0 || data == nullptr) return result;
  const long long reserve = static_cast<long long>(length) + length / 3 + 20;
  if (reserve > 0x7fffffff) return result;
  char* out = result.GetBuffer(static_cast<int>(reserve));
  if (out == nullptr) return result;
  const std::size_t taken = vector ? vxbase64::EncodeBlocks(data, static_cast<std::size_t>(length), out) : 0;
  const int rest = length - static_cast<int>(taken);
  char* end = EncodeWholeGroups(data + taken, rest / 3, out + taken / 3 * 4);
  if (rest % 3 != 0) end = EncodeTail(data + length - rest % 3, rest % 3, end);
  result.ReleaseBuffer(static_cast<int>(end - out));
  return result;
}

CCA_String DecodeWith(const char* text, int length, bool vector) {
  CCA_String result;
  if (text == nullptr || length < -1) return result;
  if (length == -1) length = static_cast<int>(std::strlen(text));
  if (length == 0) return result;
  char* buffer = result.GetBuffer(length - length / 4);
  if (buffer == nullptr) return result;
  const unsigned char* s = reinterpret_cast<const unsigned char*>(text);
  const unsigned char* end = s + length;
  unsigned char* out = reinterpret_cast<unsigned char*>(buffer);
  const std::size_t taken = vector ? vxbase64::DecodeBlocks(s, static_cast<std::size_t>(length), out) : 0;
  s += taken;
  out += taken / 4 * 3;
  DecodeWholeGroups(s, end, out);
  out = DecodeTail(s, end, out);
  result.ReleaseBuffer(static_cast<int>(out - reinterpret_cast<unsigned char*>(buffer)));
  return result;
}

}  // namespace

CCA_String vxbase64::EncodeScalar(const unsigned char* data, int length) { return EncodeWith(data, length, false); }
CCA_String vxbase64::DecodeScalar(const char* text, int length) { return DecodeWith(text, length, false); }

CCA_String Base64Encode(const unsigned char* data, int length) { return EncodeWith(data, length, true); }
CCA_String Base64Decode(const char* text, int length) { return DecodeWith(text, length, true); }
