#pragma once
/// Image file formats and their detection by signature.

#include <vxbase/vxbase_export.h>

class ICA_StreamReader;

/// The formats the codec factory knows.
enum CA_ImageFormat : int {
  CA_ImageFormat_Unknown = 0,
  CA_ImageFormat_BMP = 1,
  CA_ImageFormat_JPEG = 2,
  /// A JP2 box file or a raw JPEG 2000 codestream.
  CA_ImageFormat_JPEG2000 = 3,
  CA_ImageFormat_PNG = 4,
  /// TIFF, classic or BigTIFF, either byte order.
  CA_ImageFormat_TIF = 5,
  CA_ImageFormat_GIF = 6,
};

/// The format whose signature starts the stream, read from position 0; the
/// stream is left at position 0. CA_ImageFormat_Unknown for a null reader, a
/// stream that cannot be read, or bytes that match no signature.
VXBASE_EXPORT CA_ImageFormat CA_GetImageFormat(ICA_StreamReader* reader);

/// True when the codestream of a JPEG 2000 stream is raw (J2K) rather than
/// wrapped in JP2 boxes; the stream is left at position 0.
VXBASE_EXPORT bool CA_IsRawJpeg2000(ICA_StreamReader* reader);
