#pragma once
// libjpeg error handling for the codecs: errors jump back to the caller's
// setjmp, messages go nowhere, and nothing calls exit.

#include <stdio.h>

#include <jpeglib.h>
#include <jerror.h>

#include <csetjmp>

namespace vxbase_image {

struct QuietJpegErrors {
  jpeg_error_mgr manager;
  std::jmp_buf jump;
};

inline void JumpOnError(j_common_ptr info) {
  std::longjmp(reinterpret_cast<QuietJpegErrors*>(info->err)->jump, 1);
}
inline void DropMessage(j_common_ptr, int) {}
inline void DropOutput(j_common_ptr) {}

/// Fills `errors` with the library defaults, then replaces every path that
/// would print or exit; returns the manager to put into the codec's `err`.
inline jpeg_error_mgr* InstallQuietErrors(QuietJpegErrors* errors) {
  jpeg_std_error(&errors->manager);
  errors->manager.error_exit = JumpOnError;
  errors->manager.emit_message = DropMessage;
  errors->manager.output_message = DropOutput;
  return &errors->manager;
}

}  // namespace vxbase_image
