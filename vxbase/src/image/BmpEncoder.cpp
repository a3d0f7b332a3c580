// BMP encoding (own code), bottom-up: Gray8 as 8 bits with a gray palette,
// Rgb24 as 24 bits, Argb32 as 32 bits with bit fields in a version 4 header
// so the alpha channel survives.

#include <new>

#include "image/Codecs.h"
#include "image/StreamIo.h"

namespace vxbase_image {
namespace {

constexpr std::uint32_t kFileHeaderSize = 14;
constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kV4HeaderSize = 108;

class BmpEncoder final : public EncoderBase {
 protected:
  bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) override {
    const CA_DibFormat format = dib.GetFormat();
    const bool alpha = format == CA_DibFormat_Argb32;
    const std::uint32_t infoSize = alpha ? kV4HeaderSize : kInfoHeaderSize;
    const std::uint32_t paletteSize = format == CA_DibFormat_Gray8 ? 256 * 4 : 0;
    const std::uint32_t offset = kFileHeaderSize + infoSize + paletteSize;
    // The area limit keeps the pixel data below 2^30 bytes.
    const std::uint32_t dataSize = static_cast<std::uint32_t>(dib.GetPitch()) * dib.GetHeight();

    unsigned char header[kFileHeaderSize + kV4HeaderSize] = {'B', 'M'};
    StoreLe32(header + 2, offset + dataSize);
    StoreLe32(header + 10, offset);
    unsigned char* info = header + kFileHeaderSize;
    StoreLe32(info, infoSize);
    StoreLe32(info + 4, static_cast<std::uint32_t>(dib.GetWidth()));
    StoreLe32(info + 8, static_cast<std::uint32_t>(dib.GetHeight()));
    StoreLe16(info + 12, 1);
    StoreLe16(info + 14, static_cast<std::uint32_t>(format));  // the enumerators are bit counts
    StoreLe32(info + 16, alpha ? 3 : 0);
    StoreLe32(info + 20, dataSize);
    StoreLe32(info + 24, 3780), StoreLe32(info + 28, 3780);  // 96 dpi
    if (paletteSize != 0) StoreLe32(info + 32, 256);
    if (alpha) {
      StoreLe32(info + 40, 0x00FF0000), StoreLe32(info + 44, 0x0000FF00);
      StoreLe32(info + 48, 0x000000FF), StoreLe32(info + 52, 0xFF000000);
      StoreLe32(info + 56, 0x73524742);  // colour space 'sRGB'
    }
    if (!writer.Write(header, kFileHeaderSize + infoSize)) return false;
    if (paletteSize != 0 && !WriteGrayPalette(writer)) return false;
    // Rows are padded to 4 bytes in memory exactly as in the file.
    for (int y = dib.GetHeight() - 1; y >= 0; --y) {
      if (!writer.Write(dib.GetScanline(y), static_cast<std::size_t>(dib.GetPitch()))) return false;
    }
    return true;
  }

 private:
  static bool WriteGrayPalette(ICA_StreamWriter& writer) {
    unsigned char palette[256 * 4];
    for (unsigned i = 0; i < 256; ++i) StoreLe32(palette + i * 4, i * 0x010101u);
    return writer.Write(palette, sizeof palette);
  }
};

}  // namespace

ICA_ImageEncoder* NewBmpEncoder() { return new (std::nothrow) BmpEncoder; }

}  // namespace vxbase_image
