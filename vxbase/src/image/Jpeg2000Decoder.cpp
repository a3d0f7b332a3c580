// JPEG 2000 decoding with OpenJPEG, from a JP2 box file or a raw codestream.
// One component gives Gray8, three Rgb24 (YCC converted), two (gray and
// alpha) or four (colour and alpha) Argb32, four in CMYK Rgb24. Samples of
// any precision are scaled to 8 bits; subsampled components are stretched.
// The library's messages are dropped. Images with more than four components,
// or whose decoded samples would take more than 1 GiB, are refused at Open.

#include <algorithm>
#include <new>

#include "image/Codecs.h"
#include "image/Jpeg2000Support.h"
#include "image/PixelRow.h"

namespace vxbase_image {
namespace {

constexpr std::uint64_t kMaxSampleBytes = std::uint64_t(1) << 30;

ICA_StreamReader* ReaderOf(void* data) { return static_cast<ICA_StreamReader*>(data); }

OPJ_SIZE_T ReadProc(void* buffer, OPJ_SIZE_T size, void* data) {
  const std::size_t got = ReaderOf(data)->Read(buffer, size);
  return got == 0 ? static_cast<OPJ_SIZE_T>(-1) : got;
}
OPJ_OFF_T SkipProc(OPJ_OFF_T count, void* data) {
  ICA_StreamReader* reader = ReaderOf(data);
  const std::int64_t position = reader->GetPosition();
  if (count < 0 || count > reader->GetSize() - position) return -1;
  return reader->Seek(position + count) ? count : -1;
}
OPJ_BOOL SeekProc(OPJ_OFF_T position, void* data) { return ReaderOf(data)->Seek(position) ? OPJ_TRUE : OPJ_FALSE; }

/// One component's sample for image pixel (x, y), as 0...255.
struct ComponentReader {
  const opj_image_comp_t* comp;
  int offset;
  int shiftDown;
  int maxValue;

  explicit ComponentReader(const opj_image_comp_t* c) : comp(c) {
    const int precision = std::clamp<int>(static_cast<int>(c->prec), 1, 31);
    offset = c->sgnd ? 1 << (precision - 1) : 0;
    shiftDown = precision > 8 ? precision - 8 : 0;
    maxValue = precision >= 8 ? 255 : (1 << precision) - 1;
  }
  int At(std::uint32_t x, std::uint32_t y) const {
    const std::uint32_t cx = std::min(x / comp->dx, comp->w - 1), cy = std::min(y / comp->dy, comp->h - 1);
    std::int64_t v = static_cast<std::int64_t>(comp->data[std::size_t(cy) * comp->w + cx]) + offset;
    v >>= shiftDown;
    v = std::clamp<std::int64_t>(v, 0, maxValue);
    return maxValue == 255 ? static_cast<int>(v) : static_cast<int>(v * 255 / maxValue);
  }
};

std::uint8_t Clamp8(int v) { return static_cast<std::uint8_t>(std::clamp(v, 0, 255)); }

class Jpeg2000Decoder final : public DecoderBase {
 public:
  ~Jpeg2000Decoder() override {
    if (m_pImage != nullptr) opj_image_destroy(m_pImage);
    if (m_pCodec != nullptr) opj_destroy_codec(m_pCodec);
    if (m_pStream != nullptr) opj_stream_destroy(m_pStream);
  }

 protected:
  bool ReadHeader(ICA_StreamReader& reader) override {
    const bool raw = CA_IsRawJpeg2000(&reader);
    m_pStream = OpenJpegStream(true, &reader, ReadProc, SkipProc, SeekProc);
    m_pCodec = opj_create_decompress(raw ? OPJ_CODEC_J2K : OPJ_CODEC_JP2);
    if (m_pStream == nullptr || m_pCodec == nullptr) return false;
    opj_stream_set_user_data_length(m_pStream, static_cast<OPJ_UINT64>(reader.GetSize()));
    SilenceCodec(m_pCodec);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!opj_setup_decoder(m_pCodec, &parameters) || !opj_read_header(m_pStream, m_pCodec, &m_pImage)) return false;
    return DescribeImage();
  }

  bool DecodePixels(ICA_StreamReader&, CCA_Dib& dib) override {
    if (!opj_decode(m_pCodec, m_pStream, m_pImage) || !opj_end_decompress(m_pCodec, m_pStream)) return false;
    for (OPJ_UINT32 c = 0; c < m_pImage->numcomps; ++c) {
      const opj_image_comp_t& comp = m_pImage->comps[c];
      if (comp.data == nullptr || comp.w == 0 || comp.h == 0 || comp.dx == 0 || comp.dy == 0) return false;
    }
    for (int y = 0; y < dib.GetHeight(); ++y) {
      std::uint8_t* row = dib.GetScanline(y);
      for (int x = 0; x < dib.GetWidth(); ++x) WriteArgb(row, x, dib.GetFormat(), PixelAt(x, y));
    }
    return true;
  }

 private:
  bool DescribeImage() {
    const opj_image_t& image = *m_pImage;
    if (image.x1 <= image.x0 || image.y1 <= image.y0 || image.numcomps == 0 || image.numcomps > 4) return false;
    const std::uint32_t width = image.x1 - image.x0, height = image.y1 - image.y0;
    if (!CA_DibSizeAllowed(width, height)) return false;
    std::uint64_t sampleBytes = 0;
    for (OPJ_UINT32 c = 0; c < image.numcomps; ++c) {
      const opj_image_comp_t& comp = image.comps[c];
      if (comp.dx == 0 || comp.dy == 0) return false;
      sampleBytes += std::uint64_t(width / comp.dx + 1) * (height / comp.dy + 1) * 4;
    }
    if (sampleBytes > kMaxSampleBytes) return false;
    m_bCmyk = image.color_space == OPJ_CLRSPC_CMYK && image.numcomps == 4;
    m_bYcc = image.color_space == OPJ_CLRSPC_SYCC && image.numcomps >= 3;
    CA_DibFormat format = CA_DibFormat_Rgb24;
    if (image.numcomps == 1) format = CA_DibFormat_Gray8;
    if ((image.numcomps == 2 || image.numcomps == 4) && !m_bCmyk) format = CA_DibFormat_Argb32;
    SetImage(static_cast<int>(width), static_cast<int>(height), format);
    return true;
  }

  unsigned PixelAt(int x, int y) const {
    const opj_image_t& image = *m_pImage;
    int s[4] = {0, 0, 0, 255};
    for (OPJ_UINT32 c = 0; c < image.numcomps; ++c) s[c] = ComponentReader(&image.comps[c]).At(x, y);
    int r = s[0], g = s[1], b = s[2], a = s[3];
    if (image.numcomps <= 2) {
      g = b = r;
      a = image.numcomps == 2 ? s[1] : 255;
    } else if (m_bCmyk) {
      const int k = 255 - s[3];
      r = (255 - s[0]) * k / 255, g = (255 - s[1]) * k / 255, b = (255 - s[2]) * k / 255, a = 255;
    } else if (m_bYcc) {
      const int cb = s[1] - 128, cr = s[2] - 128;
      r = Clamp8(s[0] + (91881 * cr >> 16));
      g = Clamp8(s[0] - ((22554 * cb + 46802 * cr) >> 16));
      b = Clamp8(s[0] + (116130 * cb >> 16));
    }
    return unsigned(a) << 24 | unsigned(r) << 16 | unsigned(g) << 8 | unsigned(b);
  }

  opj_stream_t* m_pStream = nullptr;
  opj_codec_t* m_pCodec = nullptr;
  opj_image_t* m_pImage = nullptr;
  bool m_bCmyk = false;
  bool m_bYcc = false;
};

}  // namespace

ICA_ImageDecoder* NewJpeg2000Decoder() { return new (std::nothrow) Jpeg2000Decoder; }

}  // namespace vxbase_image
