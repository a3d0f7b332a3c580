// GIF encoding with giflib, one frame. The palette is exact when the bitmap
// has at most 256 colours (255 when some pixel is transparent); above that
// the colours are reduced with giflib's median-cut quantiser. Argb32 pixels
// with alpha below 128 become the transparent colour.

#include <gif_lib.h>

#include <cstring>
#include <memory>
#include <new>

#include "image/Codecs.h"
#include "image/PixelRow.h"

namespace vxbase_image {
namespace {

int WriteToStream(GifFileType* gif, const GifByteType* data, int size) {
  ICA_StreamWriter* writer = static_cast<ICA_StreamWriter*>(gif->UserData);
  return size >= 0 && writer->Write(data, static_cast<std::size_t>(size)) ? size : 0;
}

bool IsTransparent(unsigned argb) { return (argb >> 24) < 0x80; }

/// A palette and one index per pixel.
struct Indexed {
  GifColorType colors[256] = {};
  int count = 0;
  int transparent = NO_TRANSPARENT_COLOR;
  std::unique_ptr<GifPixelType[]> pixels;
};

/// Open-addressed table from 24-bit colour to palette index.
class ColorTable {
 public:
  ColorTable() { std::memset(m_Keys, 0xFF, sizeof m_Keys); }
  /// The index of `rgb`, adding it while there is room; -1 when full.
  int Find(unsigned rgb, Indexed& out, int room) {
    unsigned slot = (rgb * 2654435761u) >> 23;  // 9 bits: 512 slots
    while (m_Keys[slot] != 0xFFFFFFFFu && m_Keys[slot] != rgb) slot = (slot + 1) & 511;
    if (m_Keys[slot] == rgb) return m_Index[slot];
    if (out.count == room) return -1;
    m_Keys[slot] = rgb;
    m_Index[slot] = out.count;
    out.colors[out.count] = {GifByteType(rgb >> 16), GifByteType(rgb >> 8), GifByteType(rgb)};
    return out.count++;
  }

 private:
  unsigned m_Keys[512];
  int m_Index[512];
};

bool HasTransparency(const CCA_Dib& dib) {
  if (dib.GetFormat() != CA_DibFormat_Argb32) return false;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x) {
      if (IsTransparent(dib.GetPixel(x, y))) return true;
    }
  }
  return false;
}

/// Exact palette; false when the bitmap has more colours than `room`.
bool IndexExactly(const CCA_Dib& dib, Indexed& out, int room) {
  ColorTable table;
  GifPixelType* pixel = out.pixels.get();
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x, ++pixel) {
      const unsigned argb = dib.GetPixel(x, y);
      if (out.transparent >= 0 && IsTransparent(argb)) {
        *pixel = static_cast<GifPixelType>(out.transparent);
        continue;
      }
      const int index = table.Find(argb & 0xFFFFFF, out, room);
      if (index < 0) return false;
      *pixel = static_cast<GifPixelType>(index);
    }
  }
  return true;
}

bool Quantize(const CCA_Dib& dib, Indexed& out, int room) {
  const std::size_t area = static_cast<std::size_t>(dib.GetWidth()) * dib.GetHeight();
  std::unique_ptr<GifByteType[]> planes(new (std::nothrow) GifByteType[area * 3]);
  if (!planes) return false;
  GifByteType *red = planes.get(), *green = red + area, *blue = green + area;
  std::size_t i = 0;
  for (int y = 0; y < dib.GetHeight(); ++y) {
    for (int x = 0; x < dib.GetWidth(); ++x, ++i) {
      const unsigned argb = dib.GetPixel(x, y);
      red[i] = GifByteType(argb >> 16), green[i] = GifByteType(argb >> 8), blue[i] = GifByteType(argb);
    }
  }
  int size = room;
  if (GifQuantizeBuffer(static_cast<unsigned>(dib.GetWidth()), static_cast<unsigned>(dib.GetHeight()), &size,
                        red, green, blue, out.pixels.get(), out.colors) != GIF_OK) {
    return false;
  }
  out.count = size;
  if (out.transparent >= 0) {
    i = 0;
    for (int y = 0; y < dib.GetHeight(); ++y) {
      for (int x = 0; x < dib.GetWidth(); ++x, ++i) {
        if (IsTransparent(dib.GetPixel(x, y))) out.pixels[i] = static_cast<GifPixelType>(out.transparent);
      }
    }
  }
  return true;
}

bool IndexPixels(const CCA_Dib& dib, Indexed& out) {
  const std::size_t area = static_cast<std::size_t>(dib.GetWidth()) * dib.GetHeight();
  out.pixels.reset(new (std::nothrow) GifPixelType[area]);
  if (!out.pixels) return false;
  if (dib.GetFormat() == CA_DibFormat_Gray8) {  // the levels are the indices
    for (int i = 0; i < 256; ++i) out.colors[i] = {GifByteType(i), GifByteType(i), GifByteType(i)};
    out.count = 256;
    for (int y = 0; y < dib.GetHeight(); ++y) {
      std::memcpy(out.pixels.get() + static_cast<std::size_t>(y) * dib.GetWidth(), dib.GetScanline(y),
                  static_cast<std::size_t>(dib.GetWidth()));
    }
    return true;
  }
  // The transparent colour takes the last of the 256 entries.
  const int room = HasTransparency(dib) ? 255 : 256;
  if (room == 255) out.transparent = 255;
  if (IndexExactly(dib, out, room)) return true;
  out.count = 0;
  return Quantize(dib, out, room);
}

int MapSizeFor(int count) {
  int size = 2;
  while (size < count) size *= 2;
  return size;
}

class GifEncoder final : public EncoderBase {
 protected:
  bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) override {
    Indexed indexed;
    if (!IndexPixels(dib, indexed)) return false;
    if (indexed.transparent >= 0) indexed.count = 256;
    ColorMapObject* map = GifMakeMapObject(MapSizeFor(indexed.count), indexed.colors);
    if (map == nullptr) return false;
    int error = 0;
    GifFileType* gif = EGifOpen(&writer, WriteToStream, &error);
    bool ok = gif != nullptr && Write(gif, dib, indexed, map);
    if (gif != nullptr && EGifCloseFile(gif, &error) != GIF_OK) ok = false;
    GifFreeMapObject(map);
    return ok;
  }

 private:
  static bool Write(GifFileType* gif, const CCA_Dib& dib, const Indexed& indexed, ColorMapObject* map) {
    const int width = dib.GetWidth(), height = dib.GetHeight();
    EGifSetGifVersion(gif, true);
    if (EGifPutScreenDesc(gif, width, height, 8, 0, map) != GIF_OK) return false;
    if (indexed.transparent >= 0) {
      GraphicsControlBlock control = {DISPOSAL_UNSPECIFIED, false, 0, indexed.transparent};
      GifByteType block[4];
      const std::size_t length = EGifGCBToExtension(&control, block);
      if (EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(length), block) != GIF_OK) return false;
    }
    if (EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) != GIF_OK) return false;
    for (int y = 0; y < height; ++y) {
      GifPixelType* row = indexed.pixels.get() + static_cast<std::size_t>(y) * width;
      if (EGifPutLine(gif, row, width) != GIF_OK) return false;
    }
    return true;
  }
};

}  // namespace

ICA_ImageEncoder* NewGifEncoder() { return new (std::nothrow) GifEncoder; }

}  // namespace vxbase_image
