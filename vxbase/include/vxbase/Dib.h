#pragma once
/// A device-independent bitmap: rows top-down, each row padded to a multiple
/// of 4 bytes, pixels in one of three layouts.

#include <cstddef>
#include <cstdint>

#include <vxbase/vxbase_export.h>

/// Pixel layouts of a CCA_Dib.
enum CA_DibFormat : int {
  /// No pixels (a bitmap that was never created).
  CA_DibFormat_Invalid = 0,
  /// One byte per pixel, 0 black to 255 white.
  CA_DibFormat_Gray8 = 8,
  /// Three bytes per pixel in the order B, G, R.
  CA_DibFormat_Rgb24 = 24,
  /// One 32-bit word 0xAARRGGBB per pixel (bytes B, G, R, A in memory);
  /// alpha is not premultiplied.
  CA_DibFormat_Argb32 = 32,
};

/// The largest area, in pixels, a bitmap may have (2^28). Decoders refuse
/// larger images before they allocate anything.
constexpr std::int64_t CA_DibMaxArea = std::int64_t(1) << 28;

/// Bytes one pixel of `format` takes; 0 for CA_DibFormat_Invalid or any
/// value that is not a format.
VXBASE_EXPORT int CA_DibBytesPerPixel(CA_DibFormat format);

/// True when a `width` x `height` bitmap may be created: both positive and
/// the area at most CA_DibMaxArea.
VXBASE_EXPORT bool CA_DibSizeAllowed(std::int64_t width, std::int64_t height);

class VXBASE_EXPORT CCA_Dib {
 public:
  /// An empty bitmap: no pixels, format CA_DibFormat_Invalid.
  CCA_Dib() = default;
  ~CCA_Dib();
  CCA_Dib(const CCA_Dib&) = delete;
  CCA_Dib& operator=(const CCA_Dib&) = delete;

  /// Makes a zero-filled `width` x `height` bitmap of `format`. Returns false,
  /// keeping the current pixels, when a size is not positive, the area is
  /// above CA_DibMaxArea, the format is not one of the three, or memory runs
  /// out.
  bool Create(int width, int height, CA_DibFormat format);

  int GetWidth() const { return m_nWidth; }
  int GetHeight() const { return m_nHeight; }
  /// Bytes from one row to the next (a multiple of 4); 0 when empty.
  int GetPitch() const { return m_nPitch; }
  CA_DibFormat GetFormat() const { return m_Format; }
  /// The first byte of the top row; null when empty.
  std::uint8_t* GetBuffer() { return m_pBuffer; }
  const std::uint8_t* GetBuffer() const { return m_pBuffer; }
  /// The first byte of `row` (0 is the top); null when `row` is outside.
  std::uint8_t* GetScanline(int row);
  const std::uint8_t* GetScanline(int row) const;

  /// The pixel at (x, y) as 0xAARRGGBB whatever the format: gray g gives
  /// 0xFFgggggg, Rgb24 is opaque. 0 outside the bitmap.
  unsigned int GetPixel(int x, int y) const;
  /// Stores 0xAARRGGBB at (x, y) in the bitmap's own format: Rgb24 drops
  /// alpha, Gray8 keeps the luminance. Ignored outside the bitmap.
  void SetPixel(int x, int y, unsigned int argb);

  /// A new bitmap with the same size and pixels in `format`, owned by the
  /// caller; null when this one is empty, the format is invalid, or memory
  /// runs out. Alpha is dropped (not composited) going to Rgb24 or Gray8.
  CCA_Dib* Convert(CA_DibFormat format) const;
  /// A new copy owned by the caller; null when empty or out of memory.
  CCA_Dib* Clone() const { return Convert(m_Format); }

 private:
  int m_nWidth = 0;
  int m_nHeight = 0;
  int m_nPitch = 0;
  CA_DibFormat m_Format = CA_DibFormat_Invalid;
  std::uint8_t* m_pBuffer = nullptr;
};
