// PNG variants written with libpng itself: bit depths, palettes with
// transparency, gray with alpha, Adam7 interlacing.

#include <gtest/gtest.h>
#include <png.h>

#include <csetjmp>
#include <string>
#include <vector>

#include "image/ImageTestSupport.h"

namespace {

struct PngSpec {
  int colorType;
  int depth;
  bool interlaced;
  std::vector<png_color> palette;
  std::vector<png_byte> paletteAlpha;  // tRNS for palettes
  bool grayTransparent;                // tRNS gray value 0
};

void Append(png_structp png, png_bytep data, size_t size) {
  static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char*>(data), size);
}

/// Writes `rows` (already packed for the layout) as a PNG; empty on failure.
std::string WritePng(const PngSpec& layout, int width, std::vector<std::vector<png_byte>> rows) {
  std::string out;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  std::vector<png_bytep> pointers;
  for (auto& row : rows) pointers.push_back(row.data());
  if (setjmp(png_jmpbuf(png)) == 0) {
    png_set_write_fn(png, &out, Append, nullptr);
    png_set_IHDR(png, info, width, static_cast<png_uint_32>(rows.size()), layout.depth, layout.colorType,
                 layout.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!layout.palette.empty()) png_set_PLTE(png, info, layout.palette.data(), int(layout.palette.size()));
    if (!layout.paletteAlpha.empty()) {
      png_set_tRNS(png, info, layout.paletteAlpha.data(), int(layout.paletteAlpha.size()), nullptr);
    }
    png_color_16 transparentGray = {};
    if (layout.grayTransparent) png_set_tRNS(png, info, nullptr, 0, &transparentGray);
    png_write_info(png, info);
    png_write_image(png, pointers.data());
    png_write_end(png, nullptr);
  } else {
    out.clear();
  }
  png_destroy_write_struct(&png, &info);
  return out;
}

TEST(PngVariants, EveryColourTypeDecodesToTheNearestLayout) {
  const int width = 9, height = 7;  // enough rows and columns for every Adam7 pass
  struct Case {
    const char* name;
    PngSpec layout;
    unsigned (*pixel)(int x, int y);  // 0xAARRGGBB the file holds at (x, y)
    CA_DibFormat format;
  } cases[] = {
      {"1-bit gray", {PNG_COLOR_TYPE_GRAY, 1, false, {}, {}, false},
       [](int x, int y) { return (x + y) % 2 ? 0xFFFFFFFFu : 0xFF000000u; }, CA_DibFormat_Gray8},
      {"16-bit gray, interlaced", {PNG_COLOR_TYPE_GRAY, 16, true, {}, {}, false},
       [](int x, int y) { return 0xFF000000u | unsigned(x * 20 + y) * 0x010101u; }, CA_DibFormat_Gray8},
      {"gray with a transparent value", {PNG_COLOR_TYPE_GRAY, 8, false, {}, {}, true},
       [](int x, int) { return x == 0 ? 0u : 0xFF000000u | unsigned(x * 20) * 0x010101u; }, CA_DibFormat_Argb32},
      {"gray and alpha", {PNG_COLOR_TYPE_GRAY_ALPHA, 8, true, {}, {}, false},
       [](int x, int y) { return unsigned(y * 30) << 24 | unsigned(x * 20) * 0x010101u; }, CA_DibFormat_Argb32},
      {"palette with alpha", {PNG_COLOR_TYPE_PALETTE, 4, false, {{255, 0, 0}, {0, 0, 255}, {1, 2, 3}}, {0, 128}, false},
       [](int x, int y) {
         const unsigned index = unsigned(x + y) % 3;
         return index == 0 ? 0x00FF0000u : index == 1 ? 0x800000FFu : 0xFF010203u;
       },
       CA_DibFormat_Argb32},
      {"16-bit RGB, interlaced", {PNG_COLOR_TYPE_RGB, 16, true, {}, {}, false},
       [](int x, int y) { return 0xFF000000u | unsigned(x * 25) << 16 | unsigned(y * 30) << 8 | 0x77u; },
       CA_DibFormat_Rgb24},
      {"16-bit RGBA", {PNG_COLOR_TYPE_RGB_ALPHA, 16, false, {}, {}, false},
       [](int x, int y) { return unsigned(x * 25 + 5) << 24 | unsigned(y * 30) << 16 | 0x1234u; },
       CA_DibFormat_Argb32},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::vector<png_byte>> rows(height);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const unsigned p = c.pixel(x, y);
        const png_byte a = p >> 24, r = p >> 16, g = p >> 8, b = p;
        std::vector<png_byte> samples;
        switch (c.layout.colorType) {
          case PNG_COLOR_TYPE_GRAY: samples = {g}; break;
          case PNG_COLOR_TYPE_GRAY_ALPHA: samples = {g, a}; break;
          case PNG_COLOR_TYPE_PALETTE: samples = {png_byte((x + y) % 3)}; break;
          case PNG_COLOR_TYPE_RGB: samples = {r, g, b}; break;
          default: samples = {r, g, b, a};
        }
        for (png_byte s : samples) {
          if (c.layout.depth == 16) {
            rows[y].push_back(s), rows[y].push_back(s);  // 0xSSSS scales back to 0xSS exactly
          } else if (c.layout.depth == 8) {
            rows[y].push_back(s);
          } else {
            const int perByte = 8 / c.layout.depth;
            const unsigned value = c.layout.colorType == PNG_COLOR_TYPE_GRAY ? s >> (8 - c.layout.depth) : s;
            if (x % perByte == 0) rows[y].push_back(0);
            rows[y].back() |= png_byte(value << (8 - c.layout.depth * (x % perByte + 1)));
          }
        }
      }
    }
    DibPtr dib = DecodeBytes(WritePng(c.layout, width, rows));
    ASSERT_NE(dib, nullptr);
    EXPECT_EQ(dib->GetFormat(), c.format);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        ASSERT_EQ(dib->GetPixel(x, y), c.pixel(x, y)) << x << "," << y;
      }
    }
  }
}

}  // namespace
