#include "text/CoverageBlend.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "image/PixelRow.h"

namespace vxbase_detail {
namespace {

/// x / 255 rounded, exact for x in 0 ... 255 * 255.
inline unsigned Div255(unsigned x) {
  x += 128;
  return (x + (x >> 8)) >> 8;
}

/// `dst` moved toward `src` by alpha / 255.
inline std::uint8_t Lerp(unsigned dst, unsigned src, unsigned alpha) {
  return static_cast<std::uint8_t>(Div255(dst * (255 - alpha) + src * alpha));
}

/// Source over destination with straight alpha on one 0xAARRGGBB word;
/// `src` is the colour with its alpha bits ignored.
inline std::uint32_t BlendArgb(std::uint32_t dst, std::uint32_t src, unsigned alpha) {
  const unsigned da = dst >> 24;
  if (alpha == 255 || da == 0) return (src & 0x00FFFFFFu) | (alpha << 24);
  if (da == 255) {
    // Red and blue in two 16-bit lanes of one word, green alone; every
    // product stays below 2^16, so the lanes never carry into each other.
    const unsigned inverse = 255 - alpha;
    std::uint32_t rb = (src & 0xFF00FFu) * alpha + (dst & 0xFF00FFu) * inverse + 0x800080u;
    rb = ((rb + ((rb >> 8) & 0xFF00FFu)) >> 8) & 0xFF00FFu;
    std::uint32_t g = ((src >> 8) & 0xFFu) * alpha + ((dst >> 8) & 0xFFu) * inverse + 0x80u;
    g = ((g + (g >> 8)) >> 8) & 0xFFu;
    return 0xFF000000u | rb | (g << 8);
  }
  // Both partly transparent: weights sa and da * (1 - sa), in 255^2 units.
  const unsigned sw = alpha * 255;
  const unsigned dw = da * (255 - alpha);
  const unsigned total = sw + dw;
  std::uint32_t out = Div255(total) << 24;
  for (int shift = 0; shift < 24; shift += 8) {
    const unsigned s = (src >> shift) & 0xFF, d = (dst >> shift) & 0xFF;
    out |= ((s * sw + d * dw + total / 2) / total) << shift;
  }
  return out;
}

/// Blends one row of `count` pixels of kBytes each, pixel by pixel, with
/// alpha = coverage x the colour's alpha.
template <int kBytes, typename BlendPixel>
void BlendPixels(std::uint8_t* px, const unsigned char* cover, std::int64_t count, unsigned colorAlpha,
                 BlendPixel blend) {
  for (std::int64_t i = 0; i < count; ++i, px += kBytes) {
    const unsigned c = cover[i];
    if (c == 0) continue;
    const unsigned alpha = colorAlpha == 255 ? c : Div255(c * colorAlpha);
    if (alpha != 0) blend(px, alpha);
  }
}

void BlendArgbPixels(std::uint8_t* px, const unsigned char* cover, std::int64_t count, std::uint32_t argb) {
  BlendPixels<4>(px, cover, count, argb >> 24, [argb](std::uint8_t* p, unsigned alpha) {
    // Bytes B, G, R, A; compilers turn this into one load and one store.
    std::uint32_t word = p[0] | (p[1] << 8) | (p[2] << 16) | (std::uint32_t(p[3]) << 24);
    word = BlendArgb(word, argb, alpha);
    p[0] = static_cast<std::uint8_t>(word);
    p[1] = static_cast<std::uint8_t>(word >> 8);
    p[2] = static_cast<std::uint8_t>(word >> 16);
    p[3] = static_cast<std::uint8_t>(word >> 24);
  });
}

#if defined(__SSE2__)
/// Four pixels at a time where all four are opaque, with the same rounding
/// as BlendArgb; other groups and the tail go pixel by pixel.
void BlendArgbRow(std::uint8_t* px, const unsigned char* cover, std::int64_t count, std::int64_t room,
                  std::uint32_t argb) {
  // Coverage rows carry zero padding, so a last group may run past the
  // glyph (its extra pixels stay as they are) while it stays in the bitmap.
  const std::int64_t groups = std::min((count + 3) & ~std::int64_t(3), room);
  const __m128i zero = _mm_setzero_si128();
  const __m128i opaque = _mm_set1_epi32(static_cast<int>(0xFF000000u));
  const __m128i full = _mm_set1_epi16(255);
  const __m128i half = _mm_set1_epi16(128);
  const __m128i colorAlpha = _mm_set1_epi16(static_cast<short>(argb >> 24));
  const __m128i source = _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(argb | 0xFF000000u)), zero);
  const bool solid = (argb >> 24) == 255;
  std::int64_t i = 0;
  for (; i + 4 <= groups; i += 4) {
    std::uint32_t cover4;
    std::memcpy(&cover4, cover + i, 4);
    if (cover4 == 0) continue;
    std::uint8_t* p = px + i * 4;
    const __m128i dst = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(_mm_and_si128(dst, opaque), opaque)) != 0xFFFF) {
      BlendArgbPixels(p, cover + i, 4, argb);
      continue;
    }
    __m128i alpha = _mm_unpacklo_epi8(_mm_cvtsi32_si128(static_cast<int>(cover4)), zero);  // 4 x 16 bits
    if (!solid) {
      alpha = _mm_add_epi16(_mm_mullo_epi16(alpha, colorAlpha), half);
      alpha = _mm_srli_epi16(_mm_add_epi16(alpha, _mm_srli_epi16(alpha, 8)), 8);
    }
    alpha = _mm_unpacklo_epi16(alpha, alpha);  // a0 a0 a1 a1 a2 a2 a3 a3
    const __m128i alphaLo = _mm_unpacklo_epi32(alpha, alpha);
    const __m128i alphaHi = _mm_unpackhi_epi32(alpha, alpha);
    auto lerp = [&](__m128i d, __m128i a) {
      __m128i t = _mm_add_epi16(_mm_mullo_epi16(source, a), _mm_mullo_epi16(d, _mm_sub_epi16(full, a)));
      t = _mm_add_epi16(t, half);
      return _mm_srli_epi16(_mm_add_epi16(t, _mm_srli_epi16(t, 8)), 8);
    };
    const __m128i lo = lerp(_mm_unpacklo_epi8(dst, zero), alphaLo);
    const __m128i hi = lerp(_mm_unpackhi_epi8(dst, zero), alphaHi);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(lo, hi));
  }
  if (i < count) BlendArgbPixels(px + i * 4, cover + i, count - i, argb);
}
#else
void BlendArgbRow(std::uint8_t* px, const unsigned char* cover, std::int64_t count, std::int64_t,
                  std::uint32_t argb) {
  BlendArgbPixels(px, cover, count, argb);
}
#endif

/// Runs `blendRow(pixels, coverage, count, room)` over each row of `mask`
/// that lies inside `target`, clipped at both ends; `room` is the number of
/// pixels from the first one to the end of the bitmap's row.
template <int kBytes, typename BlendRow>
void ForEachRow(CCA_Dib& target, const GlyphMask& mask, BlendRow blendRow) {
  const std::int64_t x0 = std::max<std::int64_t>(0, mask.left);
  const std::int64_t y0 = std::max<std::int64_t>(0, mask.top);
  const std::int64_t x1 = std::min<std::int64_t>(target.GetWidth(), std::int64_t(mask.left) + mask.width);
  const std::int64_t y1 = std::min<std::int64_t>(target.GetHeight(), std::int64_t(mask.top) + mask.rows);
  if (x0 >= x1 || y0 >= y1) return;
  std::uint8_t* const buffer = target.GetBuffer();
  const std::int64_t pitch = target.GetPitch();
  for (std::int64_t y = y0; y < y1; ++y) {
    blendRow(buffer + y * pitch + x0 * kBytes, mask.coverage + (y - mask.top) * mask.pitch + (x0 - mask.left),
             x1 - x0, target.GetWidth() - x0);
  }
}

}  // namespace

void BlendCoverage(CCA_Dib& target, const GlyphMask& mask, unsigned int argb) {
  const unsigned colorAlpha = argb >> 24;
  if (colorAlpha == 0 || target.GetBuffer() == nullptr) return;
  const unsigned src[3] = {argb & 0xFF, (argb >> 8) & 0xFF, (argb >> 16) & 0xFF};  // B, G, R
  switch (target.GetFormat()) {
    case CA_DibFormat_Argb32:
      ForEachRow<4>(target, mask,
                    [argb](std::uint8_t* px, const unsigned char* cover, std::int64_t count, std::int64_t room) {
                      BlendArgbRow(px, cover, count, room, argb);
      });
      break;
    case CA_DibFormat_Rgb24:
      ForEachRow<3>(target, mask, [&](std::uint8_t* px, const unsigned char* cover, std::int64_t count, std::int64_t) {
        BlendPixels<3>(px, cover, count, colorAlpha, [&src](std::uint8_t* p, unsigned alpha) {
          for (int i = 0; i < 3; ++i) p[i] = Lerp(p[i], src[i], alpha);
        });
      });
      break;
    case CA_DibFormat_Gray8: {
      const unsigned gray = vxbase_image::Luma(src[2], src[1], src[0]);
      ForEachRow<1>(target, mask, [&](std::uint8_t* px, const unsigned char* cover, std::int64_t count, std::int64_t) {
        BlendPixels<1>(px, cover, count, colorAlpha, [gray](std::uint8_t* p, unsigned alpha) {
          p[0] = Lerp(p[0], gray, alpha);
        });
      });
      break;
    }
    default: break;
  }
}

}  // namespace vxbase_detail
