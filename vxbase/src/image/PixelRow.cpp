#include "image/PixelRow.h"

#include <cstring>

namespace vxbase_image {

unsigned int ReadArgb(const std::uint8_t* row, int x, CA_DibFormat format) {
  switch (format) {
    case CA_DibFormat_Gray8: {
      const unsigned g = row[x];
      return 0xFF000000u | g << 16 | g << 8 | g;
    }
    case CA_DibFormat_Rgb24: {
      const std::uint8_t* p = row + static_cast<std::size_t>(x) * 3;
      return 0xFF000000u | unsigned(p[2]) << 16 | unsigned(p[1]) << 8 | p[0];
    }
    case CA_DibFormat_Argb32: {
      const std::uint8_t* p = row + static_cast<std::size_t>(x) * 4;
      return unsigned(p[3]) << 24 | unsigned(p[2]) << 16 | unsigned(p[1]) << 8 | p[0];
    }
    default: return 0;
  }
}

void WriteArgb(std::uint8_t* row, int x, CA_DibFormat format, unsigned int argb) {
  const std::uint8_t b = argb & 0xFF, g = (argb >> 8) & 0xFF, r = (argb >> 16) & 0xFF;
  switch (format) {
    case CA_DibFormat_Gray8: row[x] = Luma(r, g, b); break;
    case CA_DibFormat_Rgb24: {
      std::uint8_t* p = row + static_cast<std::size_t>(x) * 3;
      p[0] = b, p[1] = g, p[2] = r;
      break;
    }
    case CA_DibFormat_Argb32: {
      std::uint8_t* p = row + static_cast<std::size_t>(x) * 4;
      p[0] = b, p[1] = g, p[2] = r, p[3] = static_cast<std::uint8_t>(argb >> 24);
      break;
    }
    default: break;
  }
}

void ConvertRow(const std::uint8_t* from, CA_DibFormat fromFormat, std::uint8_t* to,
                CA_DibFormat toFormat, int width) {
  if (fromFormat == toFormat) {
    std::memcpy(to, from, static_cast<std::size_t>(width) * CA_DibBytesPerPixel(fromFormat));
    return;
  }
  for (int x = 0; x < width; ++x) WriteArgb(to, x, toFormat, ReadArgb(from, x, fromFormat));
}

}  // namespace vxbase_image
