// PNG decoding with libpng. Every colour type and bit depth is read into the
// nearest layout: gray as Gray8, colour as Rgb24, anything with an alpha
// channel or a transparency chunk as Argb32; 16-bit samples are rounded to
// 8 bits, interlaced images are assembled by libpng. libpng's errors jump
// back here and its warnings are dropped, so nothing is printed.

#include <png.h>

#include <csetjmp>
#include <new>

#include "image/Codecs.h"
#include "image/StreamIo.h"

namespace vxbase_image {
namespace {

// Ancillary chunks past this size (compressed text, ICC profiles) are
// refused rather than allocated.
constexpr png_alloc_size_t kChunkLimit = 8u << 20;

void RaiseError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void DropWarning(png_structp, png_const_charp) {}

void ReadFromStream(png_structp png, png_bytep data, size_t length) {
  ICA_StreamReader* reader = static_cast<ICA_StreamReader*>(png_get_io_ptr(png));
  if (!ReadExactly(*reader, data, length)) png_error(png, "truncated");
}

/// The layout for a PNG colour type, with or without a transparency chunk.
CA_DibFormat LayoutFor(int colorType, bool transparency) {
  if ((colorType & PNG_COLOR_MASK_ALPHA) != 0 || transparency) return CA_DibFormat_Argb32;
  return colorType == PNG_COLOR_TYPE_GRAY ? CA_DibFormat_Gray8 : CA_DibFormat_Rgb24;
}

class PngDecoder final : public DecoderBase {
 public:
  ~PngDecoder() override {
    if (m_pPng != nullptr) png_destroy_read_struct(&m_pPng, &m_pInfo, nullptr);
  }

 protected:
  bool ReadHeader(ICA_StreamReader& reader) override {
    m_pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, RaiseError, DropWarning);
    if (m_pPng == nullptr) return false;
    m_pInfo = png_create_info_struct(m_pPng);
    if (m_pInfo == nullptr) return false;
    png_set_read_fn(m_pPng, &reader, ReadFromStream);
    png_set_user_limits(m_pPng, PNG_USER_WIDTH_MAX, PNG_USER_HEIGHT_MAX);
    png_set_chunk_malloc_max(m_pPng, kChunkLimit);
    return ReadInfoAndTransforms();
  }

  bool DecodePixels(ICA_StreamReader&, CCA_Dib& dib) override { return ReadImage(dib); }

 private:
  // The two functions below hold no object with a destructor, so libpng's
  // jump back out of them skips nothing.
  bool ReadInfoAndTransforms() {
    if (setjmp(png_jmpbuf(m_pPng)) != 0) return false;
    png_read_info(m_pPng, m_pInfo);
    png_uint_32 width = 0, height = 0;
    int depth = 0, colorType = 0;
    png_get_IHDR(m_pPng, m_pInfo, &width, &height, &depth, &colorType, nullptr, nullptr, nullptr);
    const bool transparency = png_get_valid(m_pPng, m_pInfo, PNG_INFO_tRNS) != 0;
    const CA_DibFormat format = LayoutFor(colorType, transparency);
    if (!CA_DibSizeAllowed(width, height)) return false;
    if (depth == 16) png_set_scale_16(m_pPng);
    if (colorType == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(m_pPng);
    if (colorType == PNG_COLOR_TYPE_GRAY && depth < 8) png_set_expand_gray_1_2_4_to_8(m_pPng);
    if (transparency) png_set_tRNS_to_alpha(m_pPng);
    if (format != CA_DibFormat_Gray8) {
      if ((colorType & PNG_COLOR_MASK_COLOR) == 0) png_set_gray_to_rgb(m_pPng);
      png_set_bgr(m_pPng);
    }
    m_nPasses = png_set_interlace_handling(m_pPng);
    png_read_update_info(m_pPng, m_pInfo);
    if (png_get_rowbytes(m_pPng, m_pInfo) != static_cast<size_t>(width) * CA_DibBytesPerPixel(format)) {
      return false;
    }
    SetImage(static_cast<int>(width), static_cast<int>(height), format);
    return true;
  }

  // Row by row, pass by pass: no table of row pointers, which for a tall
  // narrow image would cost more than the pixels.
  bool ReadImage(CCA_Dib& dib) {
    if (setjmp(png_jmpbuf(m_pPng)) != 0) return false;
    for (int pass = 0; pass < m_nPasses; ++pass) {
      for (int y = 0; y < dib.GetHeight(); ++y) png_read_row(m_pPng, dib.GetScanline(y), nullptr);
    }
    png_read_end(m_pPng, nullptr);
    return true;
  }

  png_structp m_pPng = nullptr;
  png_infop m_pInfo = nullptr;
  int m_nPasses = 1;
};

}  // namespace

ICA_ImageDecoder* NewPngDecoder() { return new (std::nothrow) PngDecoder; }

}  // namespace vxbase_image
