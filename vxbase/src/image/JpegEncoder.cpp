// JPEG encoding with libjpeg-turbo at quality 90 with its default 4:2:0
// chroma subsampling: Gray8 as a gray JPEG, Rgb24 and Argb32 as colour (the
// alpha channel is dropped). Rows go to the library as they are in memory.

#include <stdio.h>

#include <jpeglib.h>

#include <csetjmp>
#include <memory>
#include <new>

#include "image/Codecs.h"
#include "image/JpegError.h"

namespace vxbase_image {
namespace {

constexpr int kQuality = 90;
constexpr std::size_t kOutputChunk = 64 * 1024;

/// Collects libjpeg's output in chunks and hands them to an ICA_StreamWriter.
struct StreamDestination {
  jpeg_destination_mgr manager;
  ICA_StreamWriter* writer;
  JOCTET buffer[kOutputChunk];
};

void InitDestination(j_compress_ptr info) {
  StreamDestination* destination = reinterpret_cast<StreamDestination*>(info->dest);
  destination->manager.next_output_byte = destination->buffer;
  destination->manager.free_in_buffer = kOutputChunk;
}

boolean EmptyOutput(j_compress_ptr info) {
  StreamDestination* destination = reinterpret_cast<StreamDestination*>(info->dest);
  if (!destination->writer->Write(destination->buffer, kOutputChunk)) ERREXIT(info, JERR_FILE_WRITE);
  InitDestination(info);
  return TRUE;
}

void TermDestination(j_compress_ptr info) {
  StreamDestination* destination = reinterpret_cast<StreamDestination*>(info->dest);
  const std::size_t used = kOutputChunk - destination->manager.free_in_buffer;
  if (used != 0 && !destination->writer->Write(destination->buffer, used)) ERREXIT(info, JERR_FILE_WRITE);
}

struct InputLayout {
  J_COLOR_SPACE space;
  int components;
};

InputLayout LayoutOf(CA_DibFormat format) {
  switch (format) {
    case CA_DibFormat_Gray8: return {JCS_GRAYSCALE, 1};
    case CA_DibFormat_Rgb24: return {JCS_EXT_BGR, 3};
    default: return {JCS_EXT_BGRA, 4};  // libjpeg-turbo skips the fourth byte
  }
}

class JpegEncoder final : public EncoderBase {
 protected:
  bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) override {
    std::unique_ptr<StreamDestination> destination(new (std::nothrow) StreamDestination);
    if (!destination) return false;
    destination->writer = &writer;
    destination->manager = {nullptr, 0, InitDestination, EmptyOutput, TermDestination};
    jpeg_compress_struct info = {};
    QuietJpegErrors errors = {};
    info.err = InstallQuietErrors(&errors);
    const bool written = Compress(info, errors, dib, destination->manager);
    jpeg_destroy_compress(&info);
    return written;
  }

 private:
  // Holds no object with a destructor: the error jump lands here.
  static bool Compress(jpeg_compress_struct& info, QuietJpegErrors& errors, const CCA_Dib& dib,
                       jpeg_destination_mgr& destination) {
    if (setjmp(errors.jump) != 0) return false;
    jpeg_create_compress(&info);
    info.dest = &destination;
    const InputLayout layout = LayoutOf(dib.GetFormat());
    info.image_width = static_cast<JDIMENSION>(dib.GetWidth());
    info.image_height = static_cast<JDIMENSION>(dib.GetHeight());
    info.input_components = layout.components;
    info.in_color_space = layout.space;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, kQuality, TRUE);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
      JSAMPROW row = const_cast<JSAMPROW>(dib.GetScanline(static_cast<int>(info.next_scanline)));
      jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    return true;
  }
};

}  // namespace

ICA_ImageEncoder* NewJpegEncoder() { return new (std::nothrow) JpegEncoder; }

}  // namespace vxbase_image
