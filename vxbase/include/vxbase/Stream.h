#pragma once
/// Byte streams: decoders read from an ICA_StreamReader, encoders write to an
/// ICA_StreamWriter. Memory and file implementations of each.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include <vxbase/vxbase_export.h>

/// A readable, seekable run of bytes.
class VXBASE_EXPORT ICA_StreamReader {
 public:
  virtual ~ICA_StreamReader();
  /// Copies up to `size` bytes from the current position into `buffer` and
  /// moves past them; returns the count copied (0 at the end or on failure).
  virtual std::size_t Read(void* buffer, std::size_t size) = 0;
  /// Moves to the absolute `position`; false, leaving the position as it
  /// was, when it is negative or past the end.
  virtual bool Seek(std::int64_t position) = 0;
  /// The current position from the start; -1 when the stream is unusable.
  virtual std::int64_t GetPosition() = 0;
  /// The whole length in bytes; -1 when the stream is unusable.
  virtual std::int64_t GetSize() = 0;
};

/// A sink of bytes.
class VXBASE_EXPORT ICA_StreamWriter {
 public:
  virtual ~ICA_StreamWriter();
  /// Appends `size` bytes of `data`; false when not all of them were taken.
  virtual bool Write(const void* data, std::size_t size) = 0;
};

/// Reads a caller's block of memory in place: the block is not copied and
/// must outlive the reader.
class VXBASE_EXPORT CCA_MemoryStreamReader : public ICA_StreamReader {
 public:
  /// A null `data` reads as an empty stream.
  CCA_MemoryStreamReader(const void* data, std::size_t size);

  std::size_t Read(void* buffer, std::size_t size) override;
  bool Seek(std::int64_t position) override;
  std::int64_t GetPosition() override { return static_cast<std::int64_t>(m_nPosition); }
  std::int64_t GetSize() override { return static_cast<std::int64_t>(m_nSize); }

 private:
  const unsigned char* m_pData;
  std::size_t m_nSize;
  std::size_t m_nPosition = 0;
};

/// Reads a regular file.
class VXBASE_EXPORT CCA_FileStreamReader : public ICA_StreamReader {
 public:
  /// Opens the file at the UTF-8 `utf8Path`. Directories, FIFOs, devices
  /// and missing files leave the reader closed (IsOpen() false), and a
  /// closed reader reads nothing.
  explicit CCA_FileStreamReader(const char* utf8Path);
  ~CCA_FileStreamReader() override;
  CCA_FileStreamReader(const CCA_FileStreamReader&) = delete;
  CCA_FileStreamReader& operator=(const CCA_FileStreamReader&) = delete;

  bool IsOpen() const { return m_pFile != nullptr; }
  std::size_t Read(void* buffer, std::size_t size) override;
  bool Seek(std::int64_t position) override;
  std::int64_t GetPosition() override;
  std::int64_t GetSize() override { return m_nSize; }

 private:
  std::FILE* m_pFile = nullptr;
  std::int64_t m_nSize = -1;
};

/// Collects everything written in one growing block of memory.
class VXBASE_EXPORT CCA_MemoryStreamWriter : public ICA_StreamWriter {
 public:
  CCA_MemoryStreamWriter() = default;
  ~CCA_MemoryStreamWriter() override;
  CCA_MemoryStreamWriter(const CCA_MemoryStreamWriter&) = delete;
  CCA_MemoryStreamWriter& operator=(const CCA_MemoryStreamWriter&) = delete;

  /// False, keeping what was written before, when memory runs out.
  bool Write(const void* data, std::size_t size) override;
  /// The bytes written so far (null before the first write); valid until
  /// the next write or the writer's end.
  const unsigned char* GetData() const { return m_pData; }
  std::size_t GetSize() const { return m_nSize; }

 private:
  unsigned char* m_pData = nullptr;
  std::size_t m_nSize = 0;
  std::size_t m_nCapacity = 0;
};

/// Writes a file, replacing what it held.
class VXBASE_EXPORT CCA_FileStreamWriter : public ICA_StreamWriter {
 public:
  /// Creates or truncates the file at the UTF-8 `utf8Path`; IsOpen() is
  /// false when that fails.
  explicit CCA_FileStreamWriter(const char* utf8Path);
  /// Closes the file (see Close).
  ~CCA_FileStreamWriter() override;
  CCA_FileStreamWriter(const CCA_FileStreamWriter&) = delete;
  CCA_FileStreamWriter& operator=(const CCA_FileStreamWriter&) = delete;

  bool IsOpen() const { return m_pFile != nullptr; }
  /// False when the writer is closed or the system took fewer bytes.
  bool Write(const void* data, std::size_t size) override;
  /// Flushes and closes the file; false when a write or the flush failed at
  /// any point (a full disk shows here). Writes after it fail.
  bool Close();

 private:
  std::FILE* m_pFile = nullptr;
  bool m_bFailed = false;
};
