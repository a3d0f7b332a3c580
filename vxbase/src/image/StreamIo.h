#pragma once
// Whole reads and little-endian fields over the streams, for the codecs.

#include <cstdint>

#include <vxbase/Stream.h>

namespace vxbase_image {

/// Reads exactly `size` bytes; false when the stream ends first.
inline bool ReadExactly(ICA_StreamReader& reader, void* buffer, std::size_t size) {
  unsigned char* out = static_cast<unsigned char*>(buffer);
  while (size != 0) {
    const std::size_t got = reader.Read(out, size);
    if (got == 0) return false;
    out += got, size -= got;
  }
  return true;
}

inline std::uint16_t LoadLe16(const unsigned char* p) { return std::uint16_t(p[0] | p[1] << 8); }
inline std::uint32_t LoadLe32(const unsigned char* p) {
  return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
         std::uint32_t(p[3]) << 24;
}
inline void StoreLe16(unsigned char* p, std::uint32_t v) { p[0] = v & 0xFF, p[1] = (v >> 8) & 0xFF; }
inline void StoreLe32(unsigned char* p, std::uint32_t v) {
  StoreLe16(p, v & 0xFFFF), StoreLe16(p + 2, v >> 16);
}

}  // namespace vxbase_image
