// JPEG 2000 encoding with OpenJPEG: a JP2 file, lossless (reversible 5/3
// wavelet, one quality layer), one component per channel: gray, RGB, or RGB
// and alpha. The codec seeks back in its output, so the file is built in
// memory and handed to the writer whole.

#include <new>

#include "image/Codecs.h"
#include "image/Jpeg2000Support.h"
#include "image/MemoryFile.h"

namespace vxbase_image {
namespace {

MemoryFile* FileOf(void* data) { return static_cast<MemoryFile*>(data); }

OPJ_SIZE_T WriteProc(void* buffer, OPJ_SIZE_T size, void* data) {
  return FileOf(data)->Write(buffer, size) ? size : static_cast<OPJ_SIZE_T>(-1);
}
OPJ_OFF_T SkipProc(OPJ_OFF_T count, void* data) {
  MemoryFile* file = FileOf(data);
  return file->Seek(static_cast<std::int64_t>(file->GetPosition()) + count) ? count : -1;
}
OPJ_BOOL SeekProc(OPJ_OFF_T position, void* data) { return FileOf(data)->Seek(position) ? OPJ_TRUE : OPJ_FALSE; }

/// Resolution levels the image is large enough for (the library refuses more).
int ResolutionsFor(int width, int height) {
  int levels = 1;
  while (levels < 6 && (width >> levels) > 0 && (height >> levels) > 0) ++levels;
  return levels;
}

/// A component image filled from the bitmap; null when memory runs out.
opj_image_t* ImageFrom(const CCA_Dib& dib) {
  const int count = CA_DibBytesPerPixel(dib.GetFormat());
  opj_image_cmptparm_t parameters[4] = {};
  for (int c = 0; c < count; ++c) {
    parameters[c].dx = parameters[c].dy = 1;
    parameters[c].w = static_cast<OPJ_UINT32>(dib.GetWidth());
    parameters[c].h = static_cast<OPJ_UINT32>(dib.GetHeight());
    parameters[c].prec = 8;
  }
  opj_image_t* image = opj_image_create(static_cast<OPJ_UINT32>(count), parameters,
                                        count == 1 ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB);
  if (image == nullptr) return nullptr;
  image->x1 = static_cast<OPJ_UINT32>(dib.GetWidth());
  image->y1 = static_cast<OPJ_UINT32>(dib.GetHeight());
  if (count == 4) image->comps[3].alpha = 1;
  // Bitmap bytes are B, G, R, A: component c reads byte `source[c]`.
  static const int kSource[4] = {2, 1, 0, 3};
  std::size_t i = 0;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    const std::uint8_t* row = dib.GetScanline(y);
    for (int x = 0; x < dib.GetWidth(); ++x, ++i, row += count) {
      if (count == 1) {
        image->comps[0].data[i] = row[0];
        continue;
      }
      for (int c = 0; c < count; ++c) image->comps[c].data[i] = row[kSource[c]];
    }
  }
  return image;
}

class Jpeg2000Encoder final : public EncoderBase {
 protected:
  bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) override {
    MemoryFile file;
    opj_image_t* image = ImageFrom(dib);
    opj_codec_t* codec = opj_create_compress(OPJ_CODEC_JP2);
    opj_stream_t* stream = OpenJpegStream(false, &file, WriteProc, SkipProc, SeekProc);
    bool ok = image != nullptr && codec != nullptr && stream != nullptr;
    if (ok) {
      SilenceCodec(codec);
      opj_cparameters_t parameters;
      opj_set_default_encoder_parameters(&parameters);
      parameters.tcp_numlayers = 1;
      parameters.tcp_rates[0] = 0;  // lossless
      parameters.cp_disto_alloc = 1;
      parameters.numresolution = ResolutionsFor(dib.GetWidth(), dib.GetHeight());
      parameters.tcp_mct = image->numcomps >= 3 ? 1 : 0;
      ok = opj_setup_encoder(codec, &parameters, image) && opj_start_compress(codec, image, stream) &&
           opj_encode(codec, stream) && opj_end_compress(codec, stream);
    }
    if (stream != nullptr) opj_stream_destroy(stream);  // flushes into the file
    if (codec != nullptr) opj_destroy_codec(codec);
    if (image != nullptr) opj_image_destroy(image);
    return ok && file.GetSize() != 0 && file.CopyTo(writer);
  }
};

}  // namespace

ICA_ImageEncoder* NewJpeg2000Encoder() { return new (std::nothrow) Jpeg2000Encoder; }

}  // namespace vxbase_image
