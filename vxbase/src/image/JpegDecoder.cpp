// JPEG decoding with libjpeg-turbo: gray images as Gray8, colour as Rgb24
// straight from the library in B, G, R order, CMYK and YCCK (Adobe's
// inverted ink values) converted to Rgb24. Baseline and progressive alike.
// The library's errors jump back here and its messages are dropped;
// progressive scans and working memory are bounded so a hostile file cannot
// hold the caller for long or take unbounded memory.

#include <stdio.h>

#include <jpeglib.h>

#include <csetjmp>
#include <memory>
#include <new>

#include "image/Codecs.h"
#include "image/JpegError.h"
#include "image/PixelRow.h"

namespace vxbase_image {
namespace {

constexpr std::size_t kInputChunk = 64 * 1024;
// More scans than any real encoder writes; crafted files use thousands to
// make decoding crawl.
constexpr long kMaxScans = 500;
constexpr long kMaxMemory = 1L << 30;

/// Feeds libjpeg from an ICA_StreamReader in chunks.
struct StreamSource {
  jpeg_source_mgr manager;
  ICA_StreamReader* reader;
  JOCTET buffer[kInputChunk];
};

void InitSource(j_decompress_ptr) {}

boolean FillInput(j_decompress_ptr info) {
  StreamSource* source = reinterpret_cast<StreamSource*>(info->src);
  const std::size_t got = source->reader->Read(source->buffer, kInputChunk);
  // The stream ended early: damaged data, not something to paper over with
  // a fake end marker.
  if (got == 0) ERREXIT(info, JERR_INPUT_EOF);
  source->manager.next_input_byte = source->buffer;
  source->manager.bytes_in_buffer = got;
  return TRUE;
}

void SkipInput(j_decompress_ptr info, long count) {
  jpeg_source_mgr* manager = info->src;
  while (count > static_cast<long>(manager->bytes_in_buffer)) {
    count -= static_cast<long>(manager->bytes_in_buffer);
    FillInput(info);
  }
  if (count > 0) {
    manager->next_input_byte += count;
    manager->bytes_in_buffer -= static_cast<std::size_t>(count);
  }
}

void TermSource(j_decompress_ptr) {}

void LimitScans(j_common_ptr common) {
  j_decompress_ptr info = reinterpret_cast<j_decompress_ptr>(common);
  if (info->is_decompressor && info->input_scan_number > kMaxScans) ERREXIT(info, JERR_NOT_COMPILED);
}

/// Adobe CMYK/YCCK holds inverted inks: the colour is the product of the
/// stored values.
void CmykRowToBgr(const JSAMPLE* in, std::uint8_t* out, int width) {
  for (int x = 0; x < width; ++x, in += 4, out += 3) {
    const unsigned k = in[3];
    out[0] = static_cast<std::uint8_t>((in[2] * k + 127) / 255);
    out[1] = static_cast<std::uint8_t>((in[1] * k + 127) / 255);
    out[2] = static_cast<std::uint8_t>((in[0] * k + 127) / 255);
  }
}

class JpegDecoder final : public DecoderBase {
 public:
  JpegDecoder() {
    m_Info.err = InstallQuietErrors(&m_Errors);
    m_Progress.progress_monitor = LimitScans;
  }
  ~JpegDecoder() override {
    if (m_bCreated) jpeg_destroy_decompress(&m_Info);
  }

 protected:
  bool ReadHeader(ICA_StreamReader& reader) override {
    m_pSource.reset(new (std::nothrow) StreamSource);
    if (!m_pSource) return false;
    m_pSource->reader = &reader;
    m_pSource->manager = {nullptr, 0, InitSource, FillInput, SkipInput, jpeg_resync_to_restart, TermSource};
    return ReadHeaderGuarded();
  }

  bool DecodePixels(ICA_StreamReader&, CCA_Dib& dib) override {
    const bool cmyk = m_Info.out_color_space == JCS_CMYK;
    std::unique_ptr<JSAMPLE[]> cmykRow;
    if (cmyk) {
      cmykRow.reset(new (std::nothrow) JSAMPLE[static_cast<std::size_t>(dib.GetWidth()) * 4]);
      if (!cmykRow) return false;
    }
    return DecodeGuarded(dib, cmykRow.get());
  }

 private:
  // The two functions below hold no object with a destructor, so the error
  // jump skips nothing.
  bool ReadHeaderGuarded() {
    if (setjmp(m_Errors.jump) != 0) return false;
    jpeg_create_decompress(&m_Info);
    m_bCreated = true;
    m_Info.src = &m_pSource->manager;
    m_Info.mem->max_memory_to_use = kMaxMemory;
    m_Info.progress = &m_Progress;
    jpeg_read_header(&m_Info, TRUE);
    CA_DibFormat format = CA_DibFormat_Rgb24;
    switch (m_Info.jpeg_color_space) {
      case JCS_GRAYSCALE: m_Info.out_color_space = JCS_GRAYSCALE, format = CA_DibFormat_Gray8; break;
      case JCS_CMYK: case JCS_YCCK: m_Info.out_color_space = JCS_CMYK; break;
      default: m_Info.out_color_space = JCS_EXT_BGR; break;
    }
    SetImage(static_cast<int>(m_Info.image_width), static_cast<int>(m_Info.image_height), format);
    return CA_DibSizeAllowed(m_Info.image_width, m_Info.image_height);
  }

  bool DecodeGuarded(CCA_Dib& dib, JSAMPLE* cmykRow) {
    if (setjmp(m_Errors.jump) != 0) return false;
    jpeg_start_decompress(&m_Info);
    while (m_Info.output_scanline < m_Info.output_height) {
      std::uint8_t* line = dib.GetScanline(static_cast<int>(m_Info.output_scanline));
      JSAMPROW target = cmykRow != nullptr ? cmykRow : line;
      if (jpeg_read_scanlines(&m_Info, &target, 1) != 1) return false;
      if (cmykRow != nullptr) CmykRowToBgr(cmykRow, line, dib.GetWidth());
    }
    jpeg_finish_decompress(&m_Info);
    return true;
  }

  jpeg_decompress_struct m_Info = {};
  QuietJpegErrors m_Errors = {};
  jpeg_progress_mgr m_Progress = {};
  std::unique_ptr<StreamSource> m_pSource;
  bool m_bCreated = false;
};

}  // namespace

ICA_ImageDecoder* NewJpegDecoder() { return new (std::nothrow) JpegDecoder; }

}  // namespace vxbase_image
