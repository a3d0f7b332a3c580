// Image decoding and encoding through the codec factory of the base library.

#include <vxutility/ImageCodec.h>

const char* const ImageFormat_BMP = "BMP";
const char* const ImageFormat_JPEG = "JPEG";
const char* const ImageFormat_JPEG2000 = "JPEG2000";
const char* const ImageFormat_PNG = "PNG";
const char* const ImageFormat_TIF = "TIF";
const char* const ImageFormat_GIF = "GIF";

CCA_Dib* ImageDecode(ICA_StreamReader* reader) {
  const CA_ImageFormat format = CA_GetImageFormat(reader);
  ICA_ImageDecoder* decoder = CCA_Context::Get()->GetCodecFactory()->CreateImageDecoder(format);
  if (decoder == nullptr) return nullptr;
  CCA_Dib* dib = nullptr;
  if (decoder->Open(reader, 1) != 0) dib = decoder->DecodeFrame(0, 0, 0);
  delete decoder;
  return dib;
}

int ImageEncode(CCA_Dib* dib, CA_ImageFormat format, ICA_StreamWriter* writer) {
  ICA_ImageEncoder* encoder = CCA_Context::Get()->GetCodecFactory()->CreateImageEncoder(format);
  if (encoder == nullptr) return 0;
  const int result = encoder->Encode(dib, writer);
  delete encoder;
  return result;
}

namespace {

/// The one body behind the two image operations that do nothing.
CCA_Dib* NoImage() { return nullptr; }

}  // namespace

CCA_Dib* ImageBinary(const CCA_Dib*) { return NoImage(); }

CCA_Dib* AlphaBlending(const CCA_Dib*, unsigned int) { return NoImage(); }
