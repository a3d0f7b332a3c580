#pragma once
// libtiff set up for the codecs: I/O through a block of memory, messages
// dropped.

#include <tiffio.h>

#include <cstdint>

#include "image/MemoryFile.h"

namespace vxbase_image {

/// Opens a TIFF over the MemoryFile `file` with error and warning handlers
/// that print nothing and a cap on single allocations. Reading maps the
/// whole block: libtiff's unmapped path misreads uncompressed tiles.
inline TIFF* OpenQuietTiff(const char* mode, MemoryFile* file) {
  struct Handlers {
    static MemoryFile* FileOf(thandle_t handle) { return static_cast<MemoryFile*>(handle); }
    static tmsize_t Read(thandle_t handle, void* buffer, tmsize_t size) {
      return size <= 0 ? 0 : static_cast<tmsize_t>(FileOf(handle)->Read(buffer, static_cast<std::size_t>(size)));
    }
    static tmsize_t Write(thandle_t handle, void* buffer, tmsize_t size) {
      return size >= 0 && FileOf(handle)->Write(buffer, static_cast<std::size_t>(size)) ? size : -1;
    }
    static toff_t Seek(thandle_t handle, toff_t offset, int whence) {
      MemoryFile* memory = FileOf(handle);
      std::int64_t base = 0;
      if (whence == SEEK_CUR) base = static_cast<std::int64_t>(memory->GetPosition());
      if (whence == SEEK_END) base = static_cast<std::int64_t>(memory->GetSize());
      if (offset > toff_t(INT64_MAX / 2)) return static_cast<toff_t>(-1);
      const std::int64_t target = base + static_cast<std::int64_t>(offset);
      return memory->Seek(target) ? static_cast<toff_t>(target) : static_cast<toff_t>(-1);
    }
    static toff_t Size(thandle_t handle) { return static_cast<toff_t>(FileOf(handle)->GetSize()); }
    static int Map(thandle_t handle, void** base, toff_t* size) {
      *base = const_cast<unsigned char*>(FileOf(handle)->GetData());
      *size = static_cast<toff_t>(FileOf(handle)->GetSize());
      return *base != nullptr;
    }
    static void Unmap(thandle_t, void*, toff_t) {}
    static int Drop(TIFF*, void*, const char*, const char*, va_list) { return 1; }
    static int Close(thandle_t) { return 0; }
  };
  TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
  if (options == nullptr) return nullptr;
  TIFFOpenOptionsSetErrorHandlerExtR(options, Handlers::Drop, nullptr);
  TIFFOpenOptionsSetWarningHandlerExtR(options, Handlers::Drop, nullptr);
  TIFFOpenOptionsSetMaxSingleMemAlloc(options, tmsize_t(256) << 20);
  TIFF* tiff = TIFFClientOpenExt("stream", mode, file, Handlers::Read, Handlers::Write, Handlers::Seek,
                                 Handlers::Close, Handlers::Size, Handlers::Map, Handlers::Unmap, options);
  TIFFOpenOptionsFree(options);
  return tiff;
}

}  // namespace vxbase_image
