// BMP decoding (own code): core and Windows info headers up to version 5;
// 1, 4 and 8 bits with a palette, 16 and 32 bits with or without bit
// fields, 24 bits; bottom-up and top-down rows. Compressed (RLE, embedded
// JPEG/PNG) bitmaps are refused.

#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "image/Codecs.h"
#include "image/PixelRow.h"
#include "image/StreamIo.h"

namespace vxbase_image {
namespace {

enum : std::uint32_t { kBiRgb = 0, kBiBitFields = 3, kBiAlphaBitFields = 6 };

/// One channel of a bit-field pixel: where it sits and how wide it is.
struct Channel {
  std::uint32_t mask = 0;
  int shift = 0;
  int bits = 0;

  explicit Channel(std::uint32_t m = 0) : mask(m) {
    if (mask == 0) return;
    while (((mask >> shift) & 1) == 0) ++shift;
    while (shift + bits < 32 && ((mask >> (shift + bits)) & 1) != 0) ++bits;
  }
  /// The channel of `pixel` scaled to 0...255; `absent` when there is no mask.
  std::uint8_t Extract(std::uint32_t pixel, std::uint8_t absent) const {
    if (bits == 0) return absent;
    const std::uint32_t value = (pixel & mask) >> shift;
    if (bits >= 8) return static_cast<std::uint8_t>(value >> (bits - 8));
    return static_cast<std::uint8_t>(value * 255u / ((1u << bits) - 1u));
  }
};

class BmpDecoder final : public DecoderBase {
 protected:
  bool ReadHeader(ICA_StreamReader& reader) override;
  bool DecodePixels(ICA_StreamReader& reader, CCA_Dib& dib) override;

 private:
  bool ReadMasks(ICA_StreamReader& reader, const unsigned char* info, std::uint32_t infoSize);
  bool ReadPalette(ICA_StreamReader& reader, std::uint32_t count, int entrySize);
  void DecodeRow(const unsigned char* in, std::uint8_t* out) const;

  std::uint32_t m_nDataOffset = 0;
  int m_nBits = 0;
  int m_nWidth = 0;
  bool m_bTopDown = false;
  bool m_bBitFields = false;
  Channel m_Red, m_Green, m_Blue, m_Alpha;
  std::uint32_t m_Palette[256] = {};  // 0xAARRGGBB
  CA_DibFormat m_Format = CA_DibFormat_Invalid;
};

bool BmpDecoder::ReadHeader(ICA_StreamReader& reader) {
  unsigned char file[14 + 4];
  if (!ReadExactly(reader, file, sizeof file) || file[0] != 'B' || file[1] != 'M') return false;
  m_nDataOffset = LoadLe32(file + 10);
  const std::uint32_t infoSize = LoadLe32(file + 14);
  if (infoSize != 12 && (infoSize < 40 || infoSize > 124)) return false;
  unsigned char info[124] = {};
  if (!ReadExactly(reader, info + 4, infoSize - 4)) return false;
  std::int64_t width, height;
  std::uint32_t compression = kBiRgb, colorsUsed = 0;
  if (infoSize == 12) {
    width = LoadLe16(info + 4), height = std::int16_t(LoadLe16(info + 6));
    m_nBits = LoadLe16(info + 10);
  } else {
    width = std::int32_t(LoadLe32(info + 4)), height = std::int32_t(LoadLe32(info + 8));
    m_nBits = LoadLe16(info + 14);
    compression = LoadLe32(info + 16);
    colorsUsed = LoadLe32(info + 32);
  }
  m_bTopDown = height < 0;
  if (m_bTopDown) height = -height;
  if (!CA_DibSizeAllowed(width, height)) return false;
  m_nWidth = static_cast<int>(width);
  m_bBitFields = compression == kBiBitFields || compression == kBiAlphaBitFields;
  if (compression != kBiRgb && !(m_bBitFields && (m_nBits == 16 || m_nBits == 32))) return false;

  switch (m_nBits) {
    case 1: case 4: case 8: {
      const std::uint32_t most = 1u << m_nBits;
      if (colorsUsed == 0 || colorsUsed > most) colorsUsed = most;
      if (!ReadPalette(reader, colorsUsed, infoSize == 12 ? 3 : 4)) return false;
      break;
    }
    case 16: case 32:
      if (m_bBitFields) {
        if (!ReadMasks(reader, info, infoSize)) return false;
      } else if (m_nBits == 16) {
        m_Red = Channel(0x7C00), m_Green = Channel(0x03E0), m_Blue = Channel(0x001F);
      } else {
        m_Red = Channel(0xFF0000), m_Green = Channel(0xFF00), m_Blue = Channel(0xFF);
      }
      m_Format = m_Alpha.bits != 0 ? CA_DibFormat_Argb32 : CA_DibFormat_Rgb24;
      break;
    case 24: m_Format = CA_DibFormat_Rgb24; break;
    default: return false;
  }
  SetImage(m_nWidth, static_cast<int>(height), m_Format);
  return true;
}

/// Masks sit in the info header from version 2 on, else right after it.
bool BmpDecoder::ReadMasks(ICA_StreamReader& reader, const unsigned char* info, std::uint32_t infoSize) {
  unsigned char masks[16] = {};
  if (infoSize >= 52) {
    std::memcpy(masks, info + 40, infoSize >= 56 ? 16 : 12);
  } else if (!ReadExactly(reader, masks, 12)) {
    return false;
  }
  m_Red = Channel(LoadLe32(masks)), m_Green = Channel(LoadLe32(masks + 4));
  m_Blue = Channel(LoadLe32(masks + 8)), m_Alpha = Channel(LoadLe32(masks + 12));
  return true;
}

bool BmpDecoder::ReadPalette(ICA_StreamReader& reader, std::uint32_t count, int entrySize) {
  unsigned char entries[256 * 4];
  if (!ReadExactly(reader, entries, count * entrySize)) return false;
  bool gray = true;
  for (std::uint32_t i = 0; i < count; ++i) {
    const unsigned char* e = entries + i * entrySize;
    m_Palette[i] = 0xFF000000u | unsigned(e[2]) << 16 | unsigned(e[1]) << 8 | e[0];
    gray = gray && e[0] == e[1] && e[1] == e[2];
  }
  // Indices past the palette read as black, like the entries never given.
  for (std::uint32_t i = count; i < 256; ++i) m_Palette[i] = 0xFF000000u;
  m_Format = gray ? CA_DibFormat_Gray8 : CA_DibFormat_Rgb24;
  return true;
}

void BmpDecoder::DecodeRow(const unsigned char* in, std::uint8_t* out) const {
  switch (m_nBits) {
    case 1: case 4: case 8: {
      const int perByte = 8 / m_nBits;
      const unsigned valueMask = (1u << m_nBits) - 1;
      for (int x = 0; x < m_nWidth; ++x) {
        const int shift = 8 - m_nBits * (x % perByte + 1);
        const unsigned index = (in[x / perByte] >> shift) & valueMask;
        if (m_Format == CA_DibFormat_Gray8) {
          out[x] = static_cast<std::uint8_t>(m_Palette[index]);
        } else {
          WriteArgb(out, x, CA_DibFormat_Rgb24, m_Palette[index]);
        }
      }
      break;
    }
    case 24: std::memcpy(out, in, static_cast<std::size_t>(m_nWidth) * 3); break;
    default: {
      const int bytes = m_nBits / 8;
      for (int x = 0; x < m_nWidth; ++x) {
        const unsigned char* p = in + static_cast<std::size_t>(x) * bytes;
        const std::uint32_t pixel = bytes == 2 ? LoadLe16(p) : LoadLe32(p);
        const unsigned argb = unsigned(m_Alpha.Extract(pixel, 255)) << 24 |
                              unsigned(m_Red.Extract(pixel, 0)) << 16 |
                              unsigned(m_Green.Extract(pixel, 0)) << 8 | m_Blue.Extract(pixel, 0);
        WriteArgb(out, x, m_Format, argb);
      }
    }
  }
}

bool BmpDecoder::DecodePixels(ICA_StreamReader& reader, CCA_Dib& dib) {
  const std::size_t stride = (static_cast<std::size_t>(m_nWidth) * m_nBits + 31) / 32 * 4;
  std::unique_ptr<unsigned char[]> row(new (std::nothrow) unsigned char[stride]);
  if (!row || !reader.Seek(m_nDataOffset)) return false;
  const int height = dib.GetHeight();
  for (int i = 0; i < height; ++i) {
    if (!ReadExactly(reader, row.get(), stride)) return false;
    DecodeRow(row.get(), dib.GetScanline(m_bTopDown ? i : height - 1 - i));
  }
  return true;
}

}  // namespace

ICA_ImageDecoder* NewBmpDecoder() { return new (std::nothrow) BmpDecoder; }

}  // namespace vxbase_image
