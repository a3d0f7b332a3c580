// BMP variants written byte by byte: every bit depth, both row orders, the
// old core header, bit fields with and without alpha.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "image/ImageTestSupport.h"

namespace {

void Put16(std::string& s, unsigned v) { s += char(v & 0xFF), s += char((v >> 8) & 0xFF); }
void Put32(std::string& s, unsigned v) { Put16(s, v & 0xFFFF), Put16(s, v >> 16); }

struct BmpSpec {
  int bits;
  int height;                    // negative: top-down
  unsigned compression;          // 0 plain, 3 bit fields
  std::vector<unsigned> masks;   // R, G, B[, A] for bit fields in a version 4 header
  std::vector<unsigned> palette; // 0x00RRGGBB
  bool coreHeader;
};

/// A 3 x |height| BMP whose pixel (x, y) holds `value(x, y)` in file order.
std::string MakeBmp(const BmpSpec& layout, unsigned (*value)(int, int)) {
  const int width = 3, rows = layout.height < 0 ? -layout.height : layout.height;
  // Alpha bit fields (compression 6) keep the 40-byte header and put the
  // four masks after it; other bit fields use a version 4 header.
  const bool masksAfter = layout.compression == 6;
  const unsigned infoSize = layout.coreHeader ? 12 : layout.masks.empty() || masksAfter ? 40 : 108;
  const unsigned masksSize = masksAfter ? 16 : 0;
  const unsigned paletteSize = unsigned(layout.palette.size()) * (layout.coreHeader ? 3 : 4);
  const unsigned offset = 14 + infoSize + masksSize + paletteSize;
  std::string bmp = "BM";
  Put32(bmp, 0), Put32(bmp, 0), Put32(bmp, offset);
  Put32(bmp, infoSize);
  if (layout.coreHeader) {
    Put16(bmp, width), Put16(bmp, unsigned(layout.height)), Put16(bmp, 1), Put16(bmp, layout.bits);
  } else {
    Put32(bmp, width), Put32(bmp, unsigned(layout.height)), Put16(bmp, 1), Put16(bmp, layout.bits);
    Put32(bmp, layout.compression), Put32(bmp, 0), Put32(bmp, 0), Put32(bmp, 0);
    Put32(bmp, unsigned(layout.palette.size())), Put32(bmp, 0);
    if (!layout.masks.empty()) {
      for (int i = 0; i < 4; ++i) Put32(bmp, i < int(layout.masks.size()) ? layout.masks[i] : 0);
      if (!masksAfter) bmp.append(infoSize - 56, '\0');
    }
  }
  for (unsigned c : layout.palette) {
    bmp += char(c & 0xFF), bmp += char((c >> 8) & 0xFF), bmp += char((c >> 16) & 0xFF);
    if (!layout.coreHeader) bmp += '\0';
  }
  const int stride = (width * layout.bits + 31) / 32 * 4;
  for (int i = 0; i < rows; ++i) {
    const int y = layout.height < 0 ? i : rows - 1 - i;
    std::string row(stride, '\0');
    for (int x = 0; x < width; ++x) {
      const unsigned v = value(x, y);
      if (layout.bits < 8) {
        const int shift = 8 - layout.bits * (x % (8 / layout.bits) + 1);
        row[x * layout.bits / 8] = char(row[x * layout.bits / 8] | (v << shift));
      } else {
        for (int b = 0; b < layout.bits / 8; ++b) row[x * layout.bits / 8 + b] = char((v >> (8 * b)) & 0xFF);
      }
    }
    bmp += row;
  }
  return bmp;
}

unsigned IndexPattern(int x, int y) { return unsigned(x + y) % 2; }
unsigned NibblePattern(int x, int y) { return unsigned(x * 5 + y) % 16; }
unsigned Pixel555(int x, int y) { return unsigned(x * 10) << 10 | unsigned(y * 10) << 5 | 31u; }
unsigned Pixel565(int x, int y) { return unsigned(x * 10) << 11 | unsigned(y * 20) << 5 | 0u; }
unsigned Pixel24(int x, int y) { return unsigned(x * 40) << 16 | unsigned(y * 50) << 8 | 7u; }
unsigned Pixel32(int x, int y) { return unsigned(x * 60 + y) << 24 | unsigned(x * 40) << 16 | unsigned(y * 50) << 8 | 7u; }

unsigned Scale5(unsigned v) { return v * 255 / 31; }

TEST(BmpVariants, EveryDepthAndRowOrderDecodes) {
  std::vector<unsigned> grays16, colours16;
  for (unsigned i = 0; i < 16; ++i) grays16.push_back(i * 0x111111u), colours16.push_back(i * 0x100F01u);
  struct Case {
    const char* name;
    BmpSpec layout;
    unsigned (*value)(int, int);
    CA_DibFormat format;
    unsigned (*expected)(unsigned value);
  } cases[] = {
      {"1-bit colour palette", {1, 2, 0, {}, {0x0000FF, 0xFFFF00}, false}, IndexPattern, CA_DibFormat_Rgb24,
       [](unsigned v) { return v ? 0xFFFFFF00u : 0xFF0000FFu; }},
      {"1-bit black and white, top-down", {1, -2, 0, {}, {0x000000, 0xFFFFFF}, false}, IndexPattern,
       CA_DibFormat_Gray8, [](unsigned v) { return v ? 0xFFFFFFFFu : 0xFF000000u; }},
      {"4-bit gray", {4, 3, 0, {}, grays16, false}, NibblePattern, CA_DibFormat_Gray8,
       [](unsigned v) { return 0xFF000000u | v * 0x111111u; }},
      {"4-bit colour, core header", {4, 2, 0, {}, colours16, true}, NibblePattern, CA_DibFormat_Rgb24,
       [](unsigned v) { return 0xFF000000u | v * 0x100F01u; }},
      {"8-bit, palette shorter than the indices", {8, 2, 0, {}, {0x102030, 0x405060}, false}, IndexPattern,
       CA_DibFormat_Rgb24, [](unsigned v) { return v ? 0xFF405060u : 0xFF102030u; }},
      {"16-bit 5-5-5", {16, 2, 0, {}, {}, false}, Pixel555, CA_DibFormat_Rgb24,
       [](unsigned v) { return 0xFF000000u | Scale5(v >> 10 & 31) << 16 | Scale5(v >> 5 & 31) << 8 | 255u; }},
      {"16-bit 5-6-5 bit fields", {16, -2, 3, {0xF800, 0x07E0, 0x001F}, {}, false}, Pixel565,
       CA_DibFormat_Rgb24,
       [](unsigned v) { return 0xFF000000u | Scale5(v >> 11) << 16 | ((v >> 5 & 63) * 255 / 63) << 8; }},
      {"24-bit top-down", {24, -3, 0, {}, {}, false}, Pixel24, CA_DibFormat_Rgb24,
       [](unsigned v) { return 0xFF000000u | v; }},
      {"32-bit plain ignores the fourth byte", {32, 2, 0, {}, {}, false}, Pixel32, CA_DibFormat_Rgb24,
       [](unsigned v) { return 0xFF000000u | v; }},
      {"32-bit bit fields with alpha", {32, 2, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, false}, Pixel32,
       CA_DibFormat_Argb32, [](unsigned v) { return v; }},
      {"32-bit alpha bit fields after a short header", {32, 2, 6, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, false},
       Pixel32, CA_DibFormat_Argb32, [](unsigned v) { return v; }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    DibPtr dib = DecodeBytes(MakeBmp(c.layout, c.value));
    ASSERT_NE(dib, nullptr);
    EXPECT_EQ(dib->GetFormat(), c.format);
    ASSERT_EQ(dib->GetHeight(), c.layout.height < 0 ? -c.layout.height : c.layout.height);
    for (int y = 0; y < dib->GetHeight(); ++y) {
      for (int x = 0; x < 3; ++x) {
        EXPECT_EQ(dib->GetPixel(x, y), c.expected(c.value(x, y))) << x << "," << y;
      }
    }
  }
}

TEST(BmpVariants, RefusesWhatItDoesNotRead) {
  struct Case {
    const char* name;
    BmpSpec layout;
  } cases[] = {
      {"run-length coded", {8, 2, 1, {}, {0, 1}, false}},
      {"2 bits per pixel", {2, 2, 0, {}, {0, 1, 2, 3}, false}},
      {"bit fields at 24 bits", {24, 2, 3, {0xFF0000, 0xFF00, 0xFF}, {}, false}},
      {"zero height", {24, 0, 0, {}, {}, false}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DecodeBytes(MakeBmp(c.layout, Pixel24)), nullptr) << c.name;
  }
}

}  // namespace
