#include "text/CoverageBlend.h"

#include <algorithm>
#include <cstdint>

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

/// Source over destination with straight alpha on bytes B, G, R, A.
inline void BlendArgb(std::uint8_t* px, const unsigned src[3], unsigned alpha) {
  const unsigned da = px[3];
  if (alpha == 255 || da == 0) {
    px[0] = static_cast<std::uint8_t>(src[0]);
    px[1] = static_cast<std::uint8_t>(src[1]);
    px[2] = static_cast<std::uint8_t>(src[2]);
    px[3] = static_cast<std::uint8_t>(alpha);
    return;
  }
  if (da == 255) {
    for (int i = 0; i < 3; ++i) px[i] = Lerp(px[i], src[i], alpha);
    return;
  }
  // Both partly transparent: weights sa and da * (1 - sa), in 255^2 units.
  const unsigned sw = alpha * 255;
  const unsigned dw = da * (255 - alpha);
  const unsigned total = sw + dw;
  for (int i = 0; i < 3; ++i) px[i] = static_cast<std::uint8_t>((src[i] * sw + px[i] * dw + total / 2) / total);
  px[3] = static_cast<std::uint8_t>(Div255(total));
}

}  // namespace

void BlendCoverage(CCA_Dib& target, const GlyphMask& mask, unsigned int argb) {
  const unsigned colorAlpha = argb >> 24;
  if (colorAlpha == 0 || target.GetBuffer() == nullptr) return;
  const std::int64_t x0 = std::max<std::int64_t>(0, mask.left);
  const std::int64_t y0 = std::max<std::int64_t>(0, mask.top);
  const std::int64_t x1 = std::min<std::int64_t>(target.GetWidth(), std::int64_t(mask.left) + mask.width);
  const std::int64_t y1 = std::min<std::int64_t>(target.GetHeight(), std::int64_t(mask.top) + mask.rows);
  if (x0 >= x1 || y0 >= y1) return;

  const unsigned src[3] = {argb & 0xFF, (argb >> 8) & 0xFF, (argb >> 16) & 0xFF};  // B, G, R
  const unsigned gray = vxbase_image::Luma(src[2], src[1], src[0]);
  const CA_DibFormat format = target.GetFormat();
  const int bytes = CA_DibBytesPerPixel(format);
  for (std::int64_t y = y0; y < y1; ++y) {
    const unsigned char* cover = mask.coverage + (y - mask.top) * mask.pitch + (x0 - mask.left);
    std::uint8_t* px = target.GetScanline(static_cast<int>(y)) + x0 * bytes;
    for (std::int64_t x = x0; x < x1; ++x, ++cover, px += bytes) {
      if (*cover == 0) continue;
      const unsigned alpha = colorAlpha == 255 ? *cover : Div255(*cover * colorAlpha);
      if (alpha == 0) continue;
      switch (format) {
        case CA_DibFormat_Argb32: BlendArgb(px, src, alpha); break;
        case CA_DibFormat_Rgb24:
          for (int i = 0; i < 3; ++i) px[i] = Lerp(px[i], src[i], alpha);
          break;
        case CA_DibFormat_Gray8: px[0] = Lerp(px[0], gray, alpha); break;
        default: return;
      }
    }
  }
}

}  // namespace vxbase_detail
