// The stream interfaces and their memory implementations.

#include <vxbase/Stream.h>

#include <cstdlib>
#include <cstring>

ICA_StreamReader::~ICA_StreamReader() = default;
ICA_StreamWriter::~ICA_StreamWriter() = default;

CCA_MemoryStreamReader::CCA_MemoryStreamReader(const void* data, std::size_t size)
    : m_pData(static_cast<const unsigned char*>(data)), m_nSize(data == nullptr ? 0 : size) {}

std::size_t CCA_MemoryStreamReader::Read(void* buffer, std::size_t size) {
  const std::size_t count = size < m_nSize - m_nPosition ? size : m_nSize - m_nPosition;
  if (count == 0) return 0;
  std::memcpy(buffer, m_pData + m_nPosition, count);
  m_nPosition += count;
  return count;
}

bool CCA_MemoryStreamReader::Seek(std::int64_t position) {
  if (position < 0 || static_cast<std::uint64_t>(position) > m_nSize) return false;
  m_nPosition = static_cast<std::size_t>(position);
  return true;
}

CCA_MemoryStreamWriter::~CCA_MemoryStreamWriter() { std::free(m_pData); }

bool CCA_MemoryStreamWriter::Write(const void* data, std::size_t size) {
  if (size == 0) return true;
  if (size > m_nCapacity - m_nSize) {
    if (size > SIZE_MAX / 2 - m_nSize) return false;
    std::size_t capacity = m_nCapacity < 4096 ? 4096 : m_nCapacity;
    while (capacity < m_nSize + size) capacity *= 2;
    void* grown = std::realloc(m_pData, capacity);
    if (grown == nullptr) return false;
    m_pData = static_cast<unsigned char*>(grown);
    m_nCapacity = capacity;
  }
  std::memcpy(m_pData + m_nSize, data, size);
  m_nSize += size;
  return true;
}
