// GIF decoding with giflib: the first frame, placed on the logical screen.
// A frame with a transparent colour, or one that leaves part of the screen
// uncovered, gives Argb32 (uncovered and transparent pixels are 0x00000000);
// otherwise an all-gray palette gives Gray8 and any other Rgb24. Interlaced
// frames are put back in row order.

#include <gif_lib.h>

#include <algorithm>
#include <memory>
#include <new>

#include "image/Codecs.h"
#include "image/PixelRow.h"
#include "image/StreamIo.h"

namespace vxbase_image {
namespace {

int ReadFromStream(GifFileType* gif, GifByteType* buffer, int size) {
  if (size <= 0) return 0;
  return static_cast<int>(static_cast<ICA_StreamReader*>(gif->UserData)->Read(buffer, static_cast<std::size_t>(size)));
}

bool PaletteIsGray(const ColorMapObject* map) {
  for (int i = 0; i < map->ColorCount; ++i) {
    const GifColorType& c = map->Colors[i];
    if (c.Red != c.Green || c.Green != c.Blue) return false;
  }
  return true;
}

class GifDecoder final : public DecoderBase {
 public:
  ~GifDecoder() override {
    int error = 0;
    if (m_pGif != nullptr) DGifCloseFile(m_pGif, &error);
  }

 protected:
  bool ReadHeader(ICA_StreamReader& reader) override {
    int error = 0;
    m_pGif = DGifOpen(&reader, ReadFromStream, &error);
    if (m_pGif == nullptr || !CA_DibSizeAllowed(m_pGif->SWidth, m_pGif->SHeight)) return false;
    if (!FindFirstFrame()) return false;
    const GifImageDesc& frame = m_pGif->Image;
    m_pMap = frame.ColorMap != nullptr ? frame.ColorMap : m_pGif->SColorMap;
    if (m_pMap == nullptr || !CA_DibSizeAllowed(frame.Width, frame.Height)) return false;
    const bool covers = frame.Left == 0 && frame.Top == 0 && frame.Width >= m_pGif->SWidth &&
                        frame.Height >= m_pGif->SHeight;
    CA_DibFormat format = CA_DibFormat_Rgb24;
    if (m_nTransparent >= 0 || !covers) {
      format = CA_DibFormat_Argb32;
    } else if (PaletteIsGray(m_pMap)) {
      format = CA_DibFormat_Gray8;
    }
    SetImage(m_pGif->SWidth, m_pGif->SHeight, format);
    return true;
  }

  bool DecodePixels(ICA_StreamReader&, CCA_Dib& dib) override {
    const GifImageDesc& frame = m_pGif->Image;
    std::unique_ptr<GifPixelType[]> line(new (std::nothrow) GifPixelType[frame.Width]);
    if (!line) return false;
    static const int kStart[] = {0, 4, 2, 1}, kStep[] = {8, 8, 4, 2};
    const int passes = frame.Interlace ? 4 : 1;
    for (int pass = 0; pass < passes; ++pass) {
      const int start = frame.Interlace ? kStart[pass] : 0, step = frame.Interlace ? kStep[pass] : 1;
      for (int row = start; row < frame.Height; row += step) {
        if (DGifGetLine(m_pGif, line.get(), frame.Width) != GIF_OK) return false;
        PlaceRow(line.get(), frame.Top + row, dib);
      }
    }
    return true;
  }

 private:
  /// Reads records up to the first image, noting its transparent colour.
  bool FindFirstFrame() {
    for (;;) {
      GifRecordType type;
      if (DGifGetRecordType(m_pGif, &type) != GIF_OK) return false;
      if (type == IMAGE_DESC_RECORD_TYPE) return DGifGetImageDesc(m_pGif) == GIF_OK;
      if (type != EXTENSION_RECORD_TYPE) return false;  // the end before any image
      int code = 0;
      GifByteType* block = nullptr;
      if (DGifGetExtension(m_pGif, &code, &block) != GIF_OK) return false;
      if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr && block[0] >= 4) {
        GraphicsControlBlock control;
        if (DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) m_nTransparent = control.TransparentColor;
      }
      while (block != nullptr) {
        if (DGifGetExtensionNext(m_pGif, &block) != GIF_OK) return false;
      }
    }
  }

  void PlaceRow(const GifPixelType* line, int y, CCA_Dib& dib) const {
    std::uint8_t* out = dib.GetScanline(y);
    if (out == nullptr) return;  // the frame reaches below the screen
    const GifImageDesc& frame = m_pGif->Image;
    const int end = std::min(dib.GetWidth(), frame.Left + frame.Width);
    for (int x = frame.Left; x < end; ++x) {
      const int index = line[x - frame.Left];
      unsigned argb = 0xFF000000u;
      if (index == m_nTransparent) {
        argb = 0;
      } else if (index < m_pMap->ColorCount) {
        const GifColorType& c = m_pMap->Colors[index];
        argb |= unsigned(c.Red) << 16 | unsigned(c.Green) << 8 | c.Blue;
      }
      WriteArgb(out, x, dib.GetFormat(), argb);
    }
  }

  GifFileType* m_pGif = nullptr;
  const ColorMapObject* m_pMap = nullptr;
  int m_nTransparent = NO_TRANSPARENT_COLOR;
};

}  // namespace

ICA_ImageDecoder* NewGifDecoder() { return new (std::nothrow) GifDecoder; }

}  // namespace vxbase_image
