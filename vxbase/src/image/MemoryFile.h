#pragma once
// A growable, seekable block of bytes for encoders whose libraries seek back
// in their output (TIFF directories, JPEG 2000 box lengths). Allocation
// failures are results, never exceptions, because the callers are C
// callbacks.

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <vxbase/Stream.h>

namespace vxbase_image {

class MemoryFile {
 public:
  MemoryFile() = default;
  ~MemoryFile() { std::free(m_pData); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  /// Writes at the position, growing the block; false when memory runs out.
  bool Write(const void* data, std::size_t size) {
    if (size > SIZE_MAX / 4 - m_nPosition) return false;
    const std::size_t end = m_nPosition + size;
    if (end > m_nCapacity && !Grow(end)) return false;
    if (m_nPosition > m_nSize) std::memset(m_pData + m_nSize, 0, m_nPosition - m_nSize);
    std::memcpy(m_pData + m_nPosition, data, size);
    m_nPosition = end;
    if (end > m_nSize) m_nSize = end;
    return true;
  }
  /// Reads from the position; the count read.
  std::size_t Read(void* buffer, std::size_t size) {
    const std::size_t left = m_nPosition < m_nSize ? m_nSize - m_nPosition : 0;
    if (size > left) size = left;
    if (size != 0) std::memcpy(buffer, m_pData + m_nPosition, size);
    m_nPosition += size;
    return size;
  }
  /// Moves to an absolute position (past the end is allowed, as in a file).
  bool Seek(std::int64_t position) {
    if (position < 0 || static_cast<std::uint64_t>(position) > SIZE_MAX / 4) return false;
    m_nPosition = static_cast<std::size_t>(position);
    return true;
  }
  std::size_t GetPosition() const { return m_nPosition; }
  std::size_t GetSize() const { return m_nSize; }
  const unsigned char* GetData() const { return m_pData; }
  /// Fills the block with the whole of `reader` from its start; false when
  /// its size is unknown or memory runs out.
  bool LoadFrom(ICA_StreamReader& reader) {
    const std::int64_t size = reader.GetSize();
    if (size < 0 || static_cast<std::uint64_t>(size) > SIZE_MAX / 4 || !reader.Seek(0)) return false;
    if (size > 0 && !Grow(static_cast<std::size_t>(size))) return false;
    std::size_t done = 0;
    while (done < static_cast<std::size_t>(size)) {
      const std::size_t got = reader.Read(m_pData + done, static_cast<std::size_t>(size) - done);
      if (got == 0) return false;
      done += got;
    }
    m_nSize = done;
    m_nPosition = 0;
    return true;
  }
  /// Hands the whole block to `writer`.
  bool CopyTo(ICA_StreamWriter& writer) const { return m_nSize == 0 || writer.Write(m_pData, m_nSize); }

 private:
  bool Grow(std::size_t needed) {
    std::size_t capacity = m_nCapacity < 65536 ? 65536 : m_nCapacity;
    while (capacity < needed) capacity *= 2;
    void* grown = std::realloc(m_pData, capacity);
    if (grown == nullptr) return false;
    m_pData = static_cast<unsigned char*>(grown);
    m_nCapacity = capacity;
    return true;
  }

  unsigned char* m_pData = nullptr;
  std::size_t m_nSize = 0;
  std::size_t m_nCapacity = 0;
  std::size_t m_nPosition = 0;
};

}  // namespace vxbase_image
