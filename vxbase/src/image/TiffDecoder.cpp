// TIFF decoding with libtiff, first page only, from the whole file in memory. Plain 8-bit gray and RGB
// strips (with or without an unassociated alpha sample) are read row by row
// as they are; every other variant (palette, bilevel, 16-bit, CMYK, YCbCr,
// tiles, associated alpha, separate planes) goes through libtiff's RGBA
// reader in bands of rows, with its premultiplied alpha undone.

#include <algorithm>
#include <memory>
#include <new>

#include "image/Codecs.h"
#include "image/PixelRow.h"
#include "image/TiffSupport.h"

namespace vxbase_image {
namespace {

/// Rows of libtiff's RGBA raster per band: about 4 MiB, at least one row.
constexpr std::size_t kBandBytes = 4u << 20;

/// libtiff gives R, G, B, A in memory with colour premultiplied by alpha.
void RgbaRowToDib(const std::uint32_t* raster, std::uint8_t* out, CA_DibFormat format, int width) {
  for (int x = 0; x < width; ++x) {
    const std::uint32_t p = raster[x];
    unsigned r = TIFFGetR(p), g = TIFFGetG(p), b = TIFFGetB(p);
    const unsigned a = TIFFGetA(p);
    if (a != 0 && a != 255) {
      r = std::min(255u, (r * 255 + a / 2) / a);
      g = std::min(255u, (g * 255 + a / 2) / a);
      b = std::min(255u, (b * 255 + a / 2) / a);
    }
    WriteArgb(out, x, format, a << 24 | r << 16 | g << 8 | b);
  }
}

class TiffDecoder final : public DecoderBase {
 public:
  ~TiffDecoder() override {
    if (m_pTiff != nullptr) TIFFClose(m_pTiff);
  }

 protected:
  bool ReadHeader(ICA_StreamReader& reader) override {
    if (!m_File.LoadFrom(reader)) return false;
    m_pTiff = OpenQuietTiff("r", &m_File);
    if (m_pTiff == nullptr) return false;
    std::uint32_t width = 0, height = 0;
    std::uint16_t samples = 1, bits = 1, photometric = 0, planar = PLANARCONFIG_CONTIG;
    std::uint16_t extraCount = 0;
    std::uint16_t* extraKinds = nullptr;
    TIFFGetField(m_pTiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(m_pTiff, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(m_pTiff, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(m_pTiff, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(m_pTiff, TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetFieldDefaulted(m_pTiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extraKinds);
    if (!TIFFGetField(m_pTiff, TIFFTAG_PHOTOMETRIC, &photometric)) return false;
    char message[1024];
    if (!CA_DibSizeAllowed(width, height) || !TIFFRGBAImageOK(m_pTiff, message)) return false;

    const bool alpha = extraCount > 0 && extraKinds != nullptr && extraKinds[0] != EXTRASAMPLE_UNSPECIFIED;
    const bool gray = photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
    const CA_DibFormat format = alpha ? CA_DibFormat_Argb32 : gray ? CA_DibFormat_Gray8 : CA_DibFormat_Rgb24;
    const int colourSamples = gray ? 1 : 3;
    m_bDirect = !TIFFIsTiled(m_pTiff) && planar == PLANARCONFIG_CONTIG && bits == 8 &&
                (photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_RGB) &&
                samples == colourSamples + (alpha ? 1 : 0) &&
                (!alpha || extraKinds[0] == EXTRASAMPLE_UNASSALPHA);
    m_nSamples = samples;
    SetImage(static_cast<int>(width), static_cast<int>(height), format);
    return true;
  }

  bool DecodePixels(ICA_StreamReader&, CCA_Dib& dib) override {
    return m_bDirect ? ReadScanlines(dib) : ReadThroughRgba(dib);
  }

 private:
  bool ReadScanlines(CCA_Dib& dib) {
    const tmsize_t lineSize = TIFFScanlineSize(m_pTiff);
    const std::size_t expected = static_cast<std::size_t>(dib.GetWidth()) * m_nSamples;
    if (lineSize <= 0 || static_cast<std::size_t>(lineSize) != expected) return false;
    std::unique_ptr<std::uint8_t[]> line(new (std::nothrow) std::uint8_t[expected]);
    if (!line) return false;
    for (int y = 0; y < dib.GetHeight(); ++y) {
      if (TIFFReadScanline(m_pTiff, line.get(), static_cast<std::uint32_t>(y), 0) < 0) return false;
      std::uint8_t* out = dib.GetScanline(y);
      const std::uint8_t* in = line.get();
      if (dib.GetFormat() == CA_DibFormat_Gray8) {
        std::copy(in, in + expected, out);
        continue;
      }
      for (int x = 0; x < dib.GetWidth(); ++x, in += m_nSamples) {
        const unsigned a = m_nSamples == 4 ? in[3] : m_nSamples == 2 ? in[1] : 255;
        const unsigned r = in[0], g = m_nSamples >= 3 ? in[1] : in[0], b = m_nSamples >= 3 ? in[2] : in[0];
        WriteArgb(out, x, dib.GetFormat(), a << 24 | r << 16 | g << 8 | b);
      }
    }
    return true;
  }

  bool ReadThroughRgba(CCA_Dib& dib) {
    const int width = dib.GetWidth(), height = dib.GetHeight();
    const int band = static_cast<int>(std::max<std::size_t>(1, kBandBytes / (std::size_t(width) * 4)));
    const int rows = std::min(band, height);
    std::unique_ptr<std::uint32_t[]> raster(new (std::nothrow) std::uint32_t[std::size_t(width) * rows]);
    if (!raster) return false;
    char message[1024];
    TIFFRGBAImage image;
    if (!TIFFRGBAImageBegin(&image, m_pTiff, 0, message)) return false;
    image.req_orientation = ORIENTATION_TOPLEFT;
    bool ok = true;
    for (int top = 0; ok && top < height; top += rows) {
      const int count = std::min(rows, height - top);
      image.row_offset = top;
      image.col_offset = 0;
      ok = TIFFRGBAImageGet(&image, raster.get(), static_cast<std::uint32_t>(width),
                            static_cast<std::uint32_t>(count)) != 0;
      for (int y = 0; ok && y < count; ++y) {
        RgbaRowToDib(raster.get() + std::size_t(y) * width, dib.GetScanline(top + y), dib.GetFormat(), width);
      }
    }
    TIFFRGBAImageEnd(&image);
    return ok;
  }

  MemoryFile m_File;  // the whole file; libtiff reads it as a mapping
  TIFF* m_pTiff = nullptr;
  bool m_bDirect = false;
  int m_nSamples = 1;
};

}  // namespace

ICA_ImageDecoder* NewTiffDecoder() { return new (std::nothrow) TiffDecoder; }

}  // namespace vxbase_image
