#pragma once
// OpenJPEG set up for the codecs: a stream over our own handle, and a codec
// whose messages go nowhere.

#include <openjpeg.h>

namespace vxbase_image {

/// An input or output stream over `handle` with the given procedures (read
/// or write, skip, seek); null when memory runs out.
inline opj_stream_t* OpenJpegStream(bool input, void* handle, opj_stream_read_fn transfer, opj_stream_skip_fn skip,
                                    opj_stream_seek_fn seek) {
  opj_stream_t* stream = opj_stream_create(64 * 1024, input ? OPJ_TRUE : OPJ_FALSE);
  if (stream == nullptr) return nullptr;
  opj_stream_set_user_data(stream, handle, nullptr);
  if (input) {
    opj_stream_set_read_function(stream, transfer);
  } else {
    opj_stream_set_write_function(stream, transfer);
  }
  opj_stream_set_skip_function(stream, skip);
  opj_stream_set_seek_function(stream, seek);
  return stream;
}

/// Drops the codec's information, warning and error messages.
inline void SilenceCodec(opj_codec_t* codec) {
  struct Drop {
    static void Message(const char*, void*) {}
  };
  opj_set_info_handler(codec, Drop::Message, nullptr);
  opj_set_warning_handler(codec, Drop::Message, nullptr);
  opj_set_error_handler(codec, Drop::Message, nullptr);
}

}  // namespace vxbase_image
