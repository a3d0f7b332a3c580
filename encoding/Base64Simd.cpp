// Base64 block coders for x86 vector units: 12 bytes to 16 characters (and
// back) per SSSE3 step, twice that per AVX2 step. Bits move with multiplies
// and byte shuffles; characters map to values through range offsets picked
// by nibble lookups. The unit is chosen once, from what the processor
// reports; without SSSE3 (or off x86) the block coders take nothing and the
// table coder does all the work.

#include "encoding/Base64Internal.h"

#if defined(__x86_64__) || defined(__i386__)

#include <immintrin.h>

#include <cstdint>
#include <cstring>

#define VX_SSSE3 __attribute__((target("ssse3"), always_inline)) inline
#define VX_AVX2 __attribute__((target("avx2"), always_inline)) inline

namespace vxbase64 {
namespace {

// --- 128-bit steps -------------------------------------------------------

/// Spreads the four 6-bit values of each 3-byte group into the four bytes of
/// a 32-bit lane (the 12 bytes must sit in the first 12 of `in`).
VX_SSSE3 __m128i SplitGroups(__m128i in) {
  in = _mm_shuffle_epi8(in, _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  const __m128i high = _mm_mulhi_epu16(_mm_and_si128(in, _mm_set1_epi32(0x0FC0FC00)), _mm_set1_epi32(0x04000040));
  const __m128i low = _mm_mullo_epi16(_mm_and_si128(in, _mm_set1_epi32(0x003F03F0)), _mm_set1_epi32(0x01000010));
  return _mm_or_si128(high, low);
}

/// Values 0-63 to characters: each range of the alphabet gets its offset.
VX_SSSE3 __m128i ValuesToCharacters(__m128i values) {
  const __m128i offsets = _mm_setr_epi8(65, 71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0);
  __m128i range = _mm_subs_epu8(values, _mm_set1_epi8(51));
  range = _mm_sub_epi8(range, _mm_cmpgt_epi8(values, _mm_set1_epi8(25)));
  return _mm_add_epi8(values, _mm_shuffle_epi8(offsets, range));
}

// Nibble tables: a character is in the alphabet exactly when the entries for
// its low and its high nibble share no bit.
#define VX_LOW_NIBBLE_CLASS \
  0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A
#define VX_HIGH_NIBBLE_CLASS \
  0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10
// Offset from character to value by high nibble; index 1 is '/' (0x2F).
#define VX_VALUE_OFFSET 0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0
// Each group's three bytes, most significant first, in the lane's first 12.
#define VX_GROUP_BYTES 2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1

/// Sixteen characters to their values; false when one is outside the alphabet.
VX_SSSE3 bool CharactersToValues(__m128i& text) {
  const __m128i mask = _mm_set1_epi8(0x2F);  // low nibble (bit 5 is ignored by the shuffles) and '/'
  const __m128i high = _mm_and_si128(_mm_srli_epi32(text, 4), mask);
  const __m128i low = _mm_and_si128(text, mask);
  const __m128i clash = _mm_and_si128(_mm_shuffle_epi8(_mm_setr_epi8(VX_LOW_NIBBLE_CLASS), low),
                                      _mm_shuffle_epi8(_mm_setr_epi8(VX_HIGH_NIBBLE_CLASS), high));
  if (_mm_movemask_epi8(_mm_cmpgt_epi8(clash, _mm_setzero_si128())) != 0) return false;
  const __m128i index = _mm_add_epi8(_mm_cmpeq_epi8(text, mask), high);
  text = _mm_add_epi8(text, _mm_shuffle_epi8(_mm_setr_epi8(VX_VALUE_OFFSET), index));
  return true;
}

/// Four 6-bit values per lane to the group's three bytes, packed in the
/// first 12.
VX_SSSE3 __m128i JoinGroups(__m128i values) {
  const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
  const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
  return _mm_shuffle_epi8(groups, _mm_setr_epi8(VX_GROUP_BYTES));
}

VX_SSSE3 void Store12(unsigned char* out, __m128i bytes) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
  const std::uint32_t last = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(bytes, 8)));
  std::memcpy(out + 8, &last, 4);
}

VX_SSSE3 std::size_t Encode16(const unsigned char* data, std::size_t length, char* out, std::size_t done) {
  for (; length - done >= 16; done += 12, out += 16) {  // 16 bytes read, 12 used
    const __m128i in = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + done));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), ValuesToCharacters(SplitGroups(in)));
  }
  return done;
}

VX_SSSE3 std::size_t Decode16(const unsigned char* text, std::size_t length, unsigned char* out, std::size_t done) {
  for (; length - done >= 16; done += 16, out += 12) {
    __m128i in = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + done));
    if (!CharactersToValues(in)) break;
    Store12(out, JoinGroups(in));
  }
  return done;
}

// --- 256-bit steps: the same per 128-bit lane ----------------------------

VX_AVX2 __m256i SplitGroups(__m256i in) {
  in = _mm256_shuffle_epi8(in, _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10,  //
                                                1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  const __m256i high =
      _mm256_mulhi_epu16(_mm256_and_si256(in, _mm256_set1_epi32(0x0FC0FC00)), _mm256_set1_epi32(0x04000040));
  const __m256i low =
      _mm256_mullo_epi16(_mm256_and_si256(in, _mm256_set1_epi32(0x003F03F0)), _mm256_set1_epi32(0x01000010));
  return _mm256_or_si256(high, low);
}

VX_AVX2 __m256i ValuesToCharacters(__m256i values) {
  const __m256i offsets = _mm256_setr_epi8(65, 71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0,  //
                                           65, 71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0);
  __m256i range = _mm256_subs_epu8(values, _mm256_set1_epi8(51));
  range = _mm256_sub_epi8(range, _mm256_cmpgt_epi8(values, _mm256_set1_epi8(25)));
  return _mm256_add_epi8(values, _mm256_shuffle_epi8(offsets, range));
}

VX_AVX2 bool CharactersToValues(__m256i& text) {
  const __m256i mask = _mm256_set1_epi8(0x2F);
  const __m256i high = _mm256_and_si256(_mm256_srli_epi32(text, 4), mask);
  const __m256i low = _mm256_and_si256(text, mask);
  const __m256i low_class = _mm256_shuffle_epi8(_mm256_setr_epi8(VX_LOW_NIBBLE_CLASS, VX_LOW_NIBBLE_CLASS), low);
  const __m256i high_class = _mm256_shuffle_epi8(_mm256_setr_epi8(VX_HIGH_NIBBLE_CLASS, VX_HIGH_NIBBLE_CLASS), high);
  if (!_mm256_testz_si256(low_class, high_class)) return false;
  const __m256i index = _mm256_add_epi8(_mm256_cmpeq_epi8(text, mask), high);
  text = _mm256_add_epi8(text, _mm256_shuffle_epi8(_mm256_setr_epi8(VX_VALUE_OFFSET, VX_VALUE_OFFSET), index));
  return true;
}

/// The 24 bytes of eight groups, packed in the first 24 bytes.
VX_AVX2 __m256i JoinGroups(__m256i values) {
  const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
  const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
  const __m256i lanes = _mm256_shuffle_epi8(groups, _mm256_setr_epi8(VX_GROUP_BYTES, VX_GROUP_BYTES));
  return _mm256_permutevar8x32_epi32(lanes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
}

__attribute__((target("avx2"))) std::size_t EncodeAvx2(const unsigned char* data, std::size_t length, char* out) {
  std::size_t done = 0;
  for (; length >= 28 && done <= length - 28; done += 24, out += 32) {  // 12 bytes for each lane
    const auto* in = reinterpret_cast<const __m128i*>(data + done);
    const __m256i both =
        _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(in)),
                                _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + done + 12)), 1);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), ValuesToCharacters(SplitGroups(both)));
  }
  return Encode16(data, length, out, done);
}

__attribute__((target("avx2"))) std::size_t DecodeAvx2(const unsigned char* text, std::size_t length,
                                                       unsigned char* out) {
  std::size_t done = 0;
  for (; length - done >= 32; done += 32, out += 24) {
    __m256i in = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + done));
    if (!CharactersToValues(in)) break;
    const __m256i bytes = JoinGroups(in);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(bytes));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 16), _mm256_extracti128_si256(bytes, 1));
  }
  return Decode16(text, length, out,
                  done);  // a block it refused is refused again, at 16 characters
}

__attribute__((target("ssse3"))) std::size_t EncodeSsse3(const unsigned char* data, std::size_t length, char* out) {
  return Encode16(data, length, out, 0);
}

__attribute__((target("ssse3"))) std::size_t DecodeSsse3(const unsigned char* text, std::size_t length,
                                                         unsigned char* out) {
  return Decode16(text, length, out, 0);
}

std::size_t EncodeNone(const unsigned char*, std::size_t, char*) { return 0; }
std::size_t DecodeNone(const unsigned char*, std::size_t, unsigned char*) { return 0; }

struct BlockCoders {
  std::size_t (*encode)(const unsigned char*, std::size_t, char*);
  std::size_t (*decode)(const unsigned char*, std::size_t, unsigned char*);
};

BlockCoders ChooseBlockCoders() {
  __builtin_cpu_init();  // we may run before the library's own processor check
  if (__builtin_cpu_supports("avx2")) return {EncodeAvx2, DecodeAvx2};
  if (__builtin_cpu_supports("ssse3")) return {EncodeSsse3, DecodeSsse3};
  return {EncodeNone, DecodeNone};
}

const BlockCoders& Chosen() {
  static const BlockCoders coders = ChooseBlockCoders();
  return coders;
}

}  // namespace

std::size_t EncodeBlocks(const unsigned char* data, std::size_t length, char* out) {
  return Chosen().encode(data, length, out);
}

std::size_t DecodeBlocks(const unsigned char* text, std::size_t length, unsigned char* out) {
  return Chosen().decode(text, length, out);
}

}  // namespace vxbase64

#else  // no x86 vector unit: the table coder does everything

namespace vxbase64 {
std::size_t EncodeBlocks(const unsigned char*, std::size_t, char*) { return 0; }
std::size_t DecodeBlocks(const unsigned char*, std::size_t, unsigned char*) { return 0; }
}  // namespace vxbase64

#endif
