#pragma once
// Bitmaps made by the tests themselves, and helpers to push them through the
// codecs.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include <vxutility/ImageCodec.h>

using DibPtr = std::unique_ptr<CCA_Dib>;

/// A `width` x `height` bitmap of `format` with smooth colour ramps (so lossy
/// coders keep them well), fewer than 256 colours at the sizes tests use,
/// and alpha 0, 0x80 or 0xFF along diagonals.
inline DibPtr MakeTestDib(int width, int height, CA_DibFormat format) {
  DibPtr dib(new CCA_Dib);
  if (!dib->Create(width, height, format)) return nullptr;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const unsigned r = x * 255u / (width > 1 ? width - 1 : 1);
      const unsigned g = y * 255u / (height > 1 ? height - 1 : 1);
      const unsigned b = (r + g) / 2;
      const unsigned a = (x + y) % 5 == 0 ? 0u : (x + y) % 5 == 1 ? 0x80u : 0xFFu;
      dib->SetPixel(x, y, a << 24 | r << 16 | g << 8 | b);
    }
  }
  return dib;
}

/// Encodes `dib` as `format` into memory; empty when the encoder fails.
inline std::string EncodeToBytes(CCA_Dib* dib, CA_ImageFormat format) {
  CCA_MemoryStreamWriter writer;
  if (ImageEncode(dib, format, &writer) == 0) return std::string();
  return std::string(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
}

inline DibPtr DecodeBytes(const std::string& bytes) {
  CCA_MemoryStreamReader reader(bytes.data(), bytes.size());
  return DibPtr(ImageDecode(&reader));
}
