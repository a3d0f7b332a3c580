#pragma once
// libtiff set up for the codecs: I/O through our streams, messages dropped.

#include <tiffio.h>

namespace vxbase_image {

/// Opens a TIFF over `handle` with the given procedures, with error and
/// warning handlers that print nothing and a cap on single allocations.
inline TIFF* OpenQuietTiff(const char* mode, thandle_t handle, TIFFReadWriteProc read,
                           TIFFReadWriteProc write, TIFFSeekProc seek, TIFFSizeProc size) {
  struct Handlers {
    static int Drop(TIFF*, void*, const char*, const char*, va_list) { return 1; }
    static int Close(thandle_t) { return 0; }
    static int NoMap(thandle_t, void**, toff_t*) { return 0; }
    static void NoUnmap(thandle_t, void*, toff_t) {}
  };
  TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
  if (options == nullptr) return nullptr;
  TIFFOpenOptionsSetErrorHandlerExtR(options, Handlers::Drop, nullptr);
  TIFFOpenOptionsSetWarningHandlerExtR(options, Handlers::Drop, nullptr);
  TIFFOpenOptionsSetMaxSingleMemAlloc(options, tmsize_t(256) << 20);
  TIFF* tiff = TIFFClientOpenExt("stream", mode, handle, read, write, seek, Handlers::Close, size,
                                 Handlers::NoMap, Handlers::NoUnmap, options);
  TIFFOpenOptionsFree(options);
  return tiff;
}

}  // namespace vxbase_image
