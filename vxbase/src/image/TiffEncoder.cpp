// TIFF encoding with libtiff: one page, Deflate with the horizontal
// predictor, 8 bits per sample; Gray8 as gray, Rgb24 as RGB, Argb32 as RGB
// with an unassociated alpha sample. libtiff seeks back in its output, so the
// file is built in memory and handed to the writer whole.

#include <cstring>
#include <memory>
#include <new>

#include "image/Codecs.h"
#include "image/MemoryFile.h"
#include "image/TiffSupport.h"

namespace vxbase_image {
namespace {

/// Turns one row of the bitmap into TIFF sample order (R, G, B[, A]).
void ToTiffSamples(const std::uint8_t* in, std::uint8_t* out, CA_DibFormat format, int width) {
  const int step = format == CA_DibFormat_Argb32 ? 4 : 3;
  for (int x = 0; x < width; ++x, in += step, out += step) {
    out[0] = in[2], out[1] = in[1], out[2] = in[0];
    if (step == 4) out[3] = in[3];
  }
}

class TiffEncoder final : public EncoderBase {
 protected:
  bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) override {
    MemoryFile file;
    TIFF* tiff = OpenQuietTiff("wm", &file);
    if (tiff == nullptr) return false;
    const bool written = WritePage(tiff, dib);
    TIFFClose(tiff);  // writes the directory
    return written && file.GetSize() != 0 && file.CopyTo(writer);
  }

 private:
  static bool WritePage(TIFF* tiff, const CCA_Dib& dib) {
    const CA_DibFormat format = dib.GetFormat();
    const int samples = CA_DibBytesPerPixel(format);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(dib.GetWidth()));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(dib.GetHeight()));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, samples);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, samples == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    if (samples == 4) {
      const std::uint16_t kinds[] = {EXTRASAMPLE_UNASSALPHA};
      TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, kinds);
    }
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
    // The predictor works in place, so even gray rows go through a copy.
    const std::size_t rowBytes = static_cast<std::size_t>(dib.GetWidth()) * samples;
    std::unique_ptr<std::uint8_t[]> row(new (std::nothrow) std::uint8_t[rowBytes]);
    if (!row) return false;
    for (int y = 0; y < dib.GetHeight(); ++y) {
      if (samples == 1) {
        std::memcpy(row.get(), dib.GetScanline(y), rowBytes);
      } else {
        ToTiffSamples(dib.GetScanline(y), row.get(), format, dib.GetWidth());
      }
      if (TIFFWriteScanline(tiff, row.get(), static_cast<std::uint32_t>(y), 0) < 0) return false;
    }
    return TIFFWriteDirectory(tiff) != 0;
  }
};

}  // namespace

ICA_ImageEncoder* NewTiffEncoder() { return new (std::nothrow) TiffEncoder; }

}  // namespace vxbase_image
