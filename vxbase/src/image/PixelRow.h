#pragma once
// Pixel access and row conversion between the bitmap layouts, shared by the
// bitmap and the codecs.

#include <cstdint>

#include <vxbase/Dib.h>

namespace vxbase_image {

/// Luminance of an RGB triple with the usual 0.299/0.587/0.114 weights, in
/// integers (the weights sum to 256 x 256 so white stays 255).
inline std::uint8_t Luma(unsigned r, unsigned g, unsigned b) {
  return static_cast<std::uint8_t>((r * 19595u + g * 38470u + b * 7471u + 32768u) >> 16);
}

/// The pixel `x` of `row` as 0xAARRGGBB.
unsigned int ReadArgb(const std::uint8_t* row, int x, CA_DibFormat format);
/// Stores 0xAARRGGBB as pixel `x` of `row` in `format`.
void WriteArgb(std::uint8_t* row, int x, CA_DibFormat format, unsigned int argb);
/// Converts `width` pixels of `from` into `to`; the same format copies.
void ConvertRow(const std::uint8_t* from, CA_DibFormat fromFormat, std::uint8_t* to,
                CA_DibFormat toFormat, int width);

}  // namespace vxbase_image
