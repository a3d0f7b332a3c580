#pragma once
/// Decoding and encoding images through the base library's codec factory,
/// and the names of the image formats as text.

#include <vxbase/Context.h>
#include <vxbase/Dib.h>
#include <vxbase/ImageFormat.h>
#include <vxbase/Stream.h>

#include <vxutility/vxutility_export.h>

/// Format names for callers; the library itself does not read them.
VXUTILITY_EXPORT extern const char* const ImageFormat_BMP;       ///< "BMP"
VXUTILITY_EXPORT extern const char* const ImageFormat_JPEG;      ///< "JPEG"
VXUTILITY_EXPORT extern const char* const ImageFormat_JPEG2000;  ///< "JPEG2000"
VXUTILITY_EXPORT extern const char* const ImageFormat_PNG;       ///< "PNG"
VXUTILITY_EXPORT extern const char* const ImageFormat_TIF;       ///< "TIF"
VXUTILITY_EXPORT extern const char* const ImageFormat_GIF;       ///< "GIF"

/// Detects the format of `reader`'s content and decodes its first frame into
/// a new bitmap owned by the caller. Null when the format is unknown or has
/// no decoder in this build, when the decoder cannot open the stream, or when
/// decoding fails. `reader` is passed on unchecked.
VXUTILITY_EXPORT CCA_Dib* ImageDecode(ICA_StreamReader* reader);

/// Writes `dib` to `writer` in `format`. Returns the encoder's result (non-zero
/// on success); 0, without touching the writer, when the format has no
/// encoder in this build. `dib` and `writer` are passed on unchecked.
VXUTILITY_EXPORT int ImageEncode(CCA_Dib* dib, CA_ImageFormat format, ICA_StreamWriter* writer);

/// Does nothing: always null; `dib` is left unchanged.
VXUTILITY_EXPORT CCA_Dib* ImageBinary(const CCA_Dib* dib);

/// Does nothing: always null; `dib` is left unchanged.
VXUTILITY_EXPORT CCA_Dib* AlphaBlending(const CCA_Dib* dib, unsigned int value);
