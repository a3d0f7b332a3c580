// PNG encoding with libpng at its default compression: Gray8 as 8-bit gray,
// Rgb24 as RGB, Argb32 as RGBA. Errors jump back here, warnings are dropped.

#include <png.h>

#include <csetjmp>
#include <new>

#include "image/Codecs.h"

namespace vxbase_image {
namespace {

void RaiseError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void DropWarning(png_structp, png_const_charp) {}

void WriteToStream(png_structp png, png_bytep data, size_t length) {
  ICA_StreamWriter* writer = static_cast<ICA_StreamWriter*>(png_get_io_ptr(png));
  if (!writer->Write(data, length)) png_error(png, "write failed");
}
void FlushNothing(png_structp) {}

int ColorTypeFor(CA_DibFormat format) {
  switch (format) {
    case CA_DibFormat_Gray8: return PNG_COLOR_TYPE_GRAY;
    case CA_DibFormat_Rgb24: return PNG_COLOR_TYPE_RGB;
    default: return PNG_COLOR_TYPE_RGB_ALPHA;
  }
}

class PngEncoder final : public EncoderBase {
 protected:
  bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) override {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, RaiseError, DropWarning);
    if (png == nullptr) return false;
    png_infop info = png_create_info_struct(png);
    const bool written = info != nullptr && Write(png, info, dib, writer);
    png_destroy_write_struct(&png, &info);
    return written;
  }

 private:
  // Holds no object with a destructor: libpng's error jump lands here.
  static bool Write(png_structp png, png_infop info, const CCA_Dib& dib, ICA_StreamWriter& writer) {
    if (setjmp(png_jmpbuf(png)) != 0) return false;
    png_set_write_fn(png, &writer, WriteToStream, FlushNothing);
    png_set_IHDR(png, info, static_cast<png_uint_32>(dib.GetWidth()),
                 static_cast<png_uint_32>(dib.GetHeight()), 8, ColorTypeFor(dib.GetFormat()),
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    if (dib.GetFormat() != CA_DibFormat_Gray8) png_set_bgr(png);
    for (int y = 0; y < dib.GetHeight(); ++y) png_write_row(png, dib.GetScanline(y));
    png_write_end(png, nullptr);
    return true;
  }
};

}  // namespace

ICA_ImageEncoder* NewPngEncoder() { return new (std::nothrow) PngEncoder; }

}  // namespace vxbase_image
