// Variants of JPEG, TIFF, GIF and JPEG 2000 that our encoders never write,
// made here with the libraries themselves: progressive and CMYK JPEG; palette,
// 16-bit, tiled and premultiplied TIFF; interlaced GIF frames smaller than
// their screen; raw JPEG 2000 codestreams.

#include <gtest/gtest.h>

#include <gif_lib.h>
#include <stdio.h>
#include <jpeglib.h>
#include <tiffio.h>

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "image/ImageTestSupport.h"

namespace {

// ---- JPEG ----------------------------------------------------------------

/// A 16 x 16 JPEG of one flat colour given as the file's own samples.
std::string WriteFlatJpeg(J_COLOR_SPACE space, int components, const unsigned char* sample, bool progressive) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* buffer = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&info, &buffer, &size);
  info.image_width = info.image_height = 16;
  info.input_components = components;
  info.in_color_space = space;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, 95, TRUE);
  if (progressive) jpeg_simple_progression(&info);
  jpeg_start_compress(&info, TRUE);
  std::vector<unsigned char> row(16 * components);
  for (int x = 0; x < 16; ++x) std::memcpy(&row[x * components], sample, components);
  while (info.next_scanline < 16) {
    JSAMPROW p = row.data();
    jpeg_write_scanlines(&info, &p, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  std::string out(reinterpret_cast<char*>(buffer), size);
  free(buffer);
  return out;
}

TEST(LibraryVariants, ProgressiveAndCmykJpeg) {
  const unsigned char rgb[] = {200, 100, 50};
  // Adobe CMYK stores inverted inks: 255 means no ink. Inks C=0, M=50%, Y=100%, K=0.
  const unsigned char cmyk[] = {255, 127, 0, 255};
  struct Case {
    const char* name;
    std::string file;
    unsigned expected;
  } cases[] = {
      {"progressive RGB", WriteFlatJpeg(JCS_RGB, 3, rgb, true), 0xFFC86432u},
      {"CMYK", WriteFlatJpeg(JCS_CMYK, 4, cmyk, false), 0xFFFF7F00u},
  };
  for (const Case& c : cases) {
    DibPtr dib = DecodeBytes(c.file);
    ASSERT_NE(dib, nullptr) << c.name;
    EXPECT_EQ(dib->GetFormat(), CA_DibFormat_Rgb24) << c.name;
    const unsigned got = dib->GetPixel(8, 8);
    for (int shift = 0; shift < 24; shift += 8) {
      EXPECT_NEAR(int((got >> shift) & 0xFF), int((c.expected >> shift) & 0xFF), 3) << c.name << " " << std::hex << got;
    }
  }
}

// ---- TIFF ----------------------------------------------------------------

struct TiffSpec {
  const char* name;
  int photometric, samples, bits, extraKind;  // extraKind -1: no extra sample
  bool tiled;
};

/// A 20 x 20 TIFF through a temporary file; each sample is `sample(x, y, s)`.
std::string WriteTiff(const TiffSpec& layout, unsigned (*sample)(int x, int y, int s)) {
  char path[] = "/tmp/vxtiff-XXXXXX";
  const int fd = mkstemp(path);
  if (fd < 0) return std::string();
  close(fd);
  TIFF* tiff = TIFFOpen(path, "w");
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, 20);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, 20);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, layout.samples);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, layout.bits);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, layout.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  if (layout.extraKind >= 0) {
    const uint16_t kinds[] = {uint16_t(layout.extraKind)};
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, kinds);
  }
  if (layout.photometric == PHOTOMETRIC_PALETTE) {
    std::vector<uint16_t> r(256), g(256), b(256);
    for (int i = 0; i < 256; ++i) r[i] = uint16_t(i * 257), g[i] = uint16_t((255 - i) * 257), b[i] = 0x8080;
    TIFFSetField(tiff, TIFFTAG_COLORMAP, r.data(), g.data(), b.data());
  }
  const int bytes = layout.bits / 8;
  auto pack = [&](int x, int y, unsigned char* out) {
    for (int s = 0; s < layout.samples; ++s) {
      const unsigned v = sample(x, y, s);
      if (bytes == 2) {
        const uint16_t wide = uint16_t(v * 257);
        std::memcpy(out + (s * 2), &wide, 2);
      } else {
        out[s] = static_cast<unsigned char>(v);
      }
    }
  };
  const int pixelBytes = layout.samples * bytes;
  if (layout.tiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
    std::vector<unsigned char> tile(16 * 16 * pixelBytes);
    for (int ty = 0; ty < 20; ty += 16) {
      for (int tx = 0; tx < 20; tx += 16) {
        std::fill(tile.begin(), tile.end(), 0);
        for (int y = ty; y < std::min(20, ty + 16); ++y) {
          for (int x = tx; x < std::min(20, tx + 16); ++x) pack(x, y, &tile[((y - ty) * 16 + (x - tx)) * pixelBytes]);
        }
        TIFFWriteTile(tiff, tile.data(), tx, ty, 0, 0);
      }
    }
  } else {
    std::vector<unsigned char> row(20 * pixelBytes);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) pack(x, y, &row[x * pixelBytes]);
      TIFFWriteScanline(tiff, row.data(), y, 0);
    }
  }
  TIFFClose(tiff);
  std::string bytesOut;
  if (FILE* file = fopen(path, "rb")) {
    char chunk[4096];
    for (size_t got; (got = fread(chunk, 1, sizeof chunk, file)) > 0;) bytesOut.append(chunk, got);
    fclose(file);
  }
  unlink(path);
  return bytesOut;
}

unsigned Ramp(int x, int y, int s) { return unsigned(x * 12 + y + s * 40) % 256; }
unsigned Premultiplied(int x, int y, int s) {
  const unsigned alpha = 60 + x * 8;
  return s == 3 ? alpha : Ramp(x, y, s) * alpha / 255;
}

TEST(LibraryVariants, TiffThroughTheGeneralReader) {
  struct Case {
    TiffSpec layout;
    unsigned (*sample)(int, int, int);
    CA_DibFormat format;
    int tolerance;
    unsigned (*expected)(int x, int y);
  } cases[] = {
      {{"palette", PHOTOMETRIC_PALETTE, 1, 8, -1, false}, Ramp, CA_DibFormat_Rgb24, 0,
       [](int x, int y) { const unsigned i = Ramp(x, y, 0); return 0xFF000000u | i << 16 | (255 - i) << 8 | 0x80u; }},
      {{"16-bit gray", PHOTOMETRIC_MINISBLACK, 1, 16, -1, false}, Ramp, CA_DibFormat_Gray8, 0,
       [](int x, int y) { return 0xFF000000u | Ramp(x, y, 0) * 0x010101u; }},
      {{"white is zero", PHOTOMETRIC_MINISWHITE, 1, 8, -1, false}, Ramp, CA_DibFormat_Gray8, 0,
       [](int x, int y) { return 0xFF000000u | (255 - Ramp(x, y, 0)) * 0x010101u; }},
      {{"tiled RGB", PHOTOMETRIC_RGB, 3, 8, -1, true}, Ramp, CA_DibFormat_Rgb24, 0,
       [](int x, int y) { return 0xFF000000u | Ramp(x, y, 0) << 16 | Ramp(x, y, 1) << 8 | Ramp(x, y, 2); }},
      {{"premultiplied alpha", PHOTOMETRIC_RGB, 4, 8, EXTRASAMPLE_ASSOCALPHA, false}, Premultiplied,
       CA_DibFormat_Argb32, 5, [](int x, int y) {  // premultiplying at alpha 60 loses up to 255/60
         return unsigned(60 + x * 8) << 24 | Ramp(x, y, 0) << 16 | Ramp(x, y, 1) << 8 | Ramp(x, y, 2);
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.layout.name);
    DibPtr dib = DecodeBytes(WriteTiff(c.layout, c.sample));
    ASSERT_NE(dib, nullptr);
    EXPECT_EQ(dib->GetFormat(), c.format);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) {
        const unsigned got = dib->GetPixel(x, y), want = c.expected(x, y);
        for (int shift = 0; shift < 32; shift += 8) {
          ASSERT_NEAR(int((got >> shift) & 0xFF), int((want >> shift) & 0xFF), c.tolerance)
              << x << "," << y << std::hex << " got " << got << " want " << want;
        }
      }
    }
  }
}

// ---- GIF -----------------------------------------------------------------

int AppendGif(GifFileType* gif, const GifByteType* data, int size) {
  static_cast<std::string*>(gif->UserData)->append(reinterpret_cast<const char*>(data), size);
  return size;
}

TEST(LibraryVariants, InterlacedGifFrameOnALargerScreen) {
  std::string file;
  int error = 0;
  GifFileType* gif = EGifOpen(&file, AppendGif, &error);
  GifColorType colors[4] = {{0, 0, 0}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}};
  ColorMapObject* map = GifMakeMapObject(4, colors);
  ASSERT_EQ(EGifPutScreenDesc(gif, 16, 16, 2, 0, map), GIF_OK);
  ASSERT_EQ(EGifPutImageDesc(gif, 2, 3, 10, 9, true, nullptr), GIF_OK);
  // Interlaced frames are written in pass order: rows 0, 8, then 4, then 2, 6, then odd rows.
  const int order[] = {0, 8, 4, 2, 6, 1, 3, 5, 7};
  for (int row : order) {
    GifPixelType line[10];
    for (int x = 0; x < 10; ++x) line[x] = GifPixelType((x + row) % 4);
    ASSERT_EQ(EGifPutLine(gif, line, 10), GIF_OK);
  }
  EGifCloseFile(gif, &error);
  GifFreeMapObject(map);

  DibPtr dib = DecodeBytes(file);
  ASSERT_NE(dib, nullptr);
  EXPECT_EQ(dib->GetFormat(), CA_DibFormat_Argb32);
  ASSERT_EQ(dib->GetWidth(), 16);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      const bool inside = x >= 2 && x < 12 && y >= 3 && y < 12;
      const GifColorType& c = colors[inside ? (x - 2 + y - 3) % 4 : 0];
      const unsigned want = inside ? 0xFF000000u | unsigned(c.Red) << 16 | unsigned(c.Green) << 8 | c.Blue : 0u;
      ASSERT_EQ(dib->GetPixel(x, y), want) << x << "," << y;
    }
  }
}

// ---- JPEG 2000 -------------------------------------------------------------

TEST(LibraryVariants, RawJpeg2000Codestream) {
  DibPtr original = MakeTestDib(13, 9, CA_DibFormat_Rgb24);
  const std::string jp2 = EncodeToBytes(original.get(), CA_ImageFormat_JPEG2000);
  const std::size_t box = jp2.find("jp2c");
  ASSERT_NE(box, std::string::npos);
  const std::string codestream = jp2.substr(box + 4);
  CCA_MemoryStreamReader reader(codestream.data(), codestream.size());
  ASSERT_TRUE(CA_IsRawJpeg2000(&reader));
  DibPtr dib = DecodeBytes(codestream);
  ASSERT_NE(dib, nullptr);
  for (int y = 0; y < 9; ++y) {
    for (int x = 0; x < 13; ++x) ASSERT_EQ(dib->GetPixel(x, y), original->GetPixel(x, y)) << x << "," << y;
  }
}

}  // namespace
