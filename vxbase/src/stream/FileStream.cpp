// Streams over files; opening, seeking and telling differ per system.

#include <vxbase/Stream.h>

#include "stream/FileStreamDetail.h"

#if defined(_WIN32)
#include "stream/windows/FileStream.inc"
#else
#include "stream/unix/FileStream.inc"
#endif

CCA_FileStreamReader::CCA_FileStreamReader(const char* utf8Path) {
  if (utf8Path != nullptr) m_pFile = vxbase_stream::OpenRegularFileForReading(utf8Path, m_nSize);
}

CCA_FileStreamReader::~CCA_FileStreamReader() {
  if (m_pFile != nullptr) std::fclose(m_pFile);
}

std::size_t CCA_FileStreamReader::Read(void* buffer, std::size_t size) {
  if (m_pFile == nullptr || size == 0) return 0;
  return std::fread(buffer, 1, size, m_pFile);
}

bool CCA_FileStreamReader::Seek(std::int64_t position) {
  if (m_pFile == nullptr || position < 0 || position > m_nSize) return false;
  return vxbase_stream::SeekFile(m_pFile, position);
}

std::int64_t CCA_FileStreamReader::GetPosition() {
  return m_pFile == nullptr ? -1 : vxbase_stream::TellFile(m_pFile);
}

CCA_FileStreamWriter::CCA_FileStreamWriter(const char* utf8Path) {
  if (utf8Path != nullptr) m_pFile = vxbase_stream::OpenFileForWriting(utf8Path);
}

CCA_FileStreamWriter::~CCA_FileStreamWriter() { Close(); }

bool CCA_FileStreamWriter::Write(const void* data, std::size_t size) {
  if (m_pFile == nullptr) return false;
  if (size != 0 && std::fwrite(data, 1, size, m_pFile) != size) m_bFailed = true;
  return !m_bFailed;
}

bool CCA_FileStreamWriter::Close() {
  if (m_pFile == nullptr) return false;
  if (std::fclose(m_pFile) != 0) m_bFailed = true;
  m_pFile = nullptr;
  return !m_bFailed;
}
