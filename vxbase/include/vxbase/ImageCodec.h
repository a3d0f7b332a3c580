#pragma once
/// Image decoders and encoders, made by CCA_CodecFactory (see Context.h).
/// Each is deleted by whoever obtained it, through the virtual destructor.

#include <vxbase/Dib.h>
#include <vxbase/ImageFormat.h>
#include <vxbase/Stream.h>
#include <vxbase/vxbase_export.h>

/// Reads one image format into bitmaps.
class VXBASE_EXPORT ICA_ImageDecoder {
 public:
  virtual ~ICA_ImageDecoder();
  /// Binds the decoder to `reader` (not owned; it must outlive the decoder)
  /// and reads the image header from the reader's start. `flag` is kept for
  /// callers of the family and has no effect. Non-zero on success; 0 when the
  /// header is not valid, the image is larger than CA_DibMaxArea pixels, or
  /// the decoder was opened before.
  virtual int Open(ICA_StreamReader* reader, int flag) = 0;
  /// Decodes frame `frame` (0: the first; only the first exists for every
  /// format) into a new bitmap owned by the caller, in the layout the image
  /// needs (gray, RGB, or ARGB when it carries transparency). The two last
  /// arguments are kept for callers of the family and have no effect. Null
  /// before a successful Open, for another frame, for damaged data, or when
  /// memory runs out.
  virtual CCA_Dib* DecodeFrame(int frame, int reserved1, int reserved2) = 0;
  /// The image width and height after a successful Open; 0 before.
  virtual int GetWidth() const = 0;
  virtual int GetHeight() const = 0;
  /// The layout DecodeFrame will produce; CA_DibFormat_Invalid before Open.
  virtual CA_DibFormat GetDibFormat() const = 0;
};

/// Writes bitmaps in one image format.
class VXBASE_EXPORT ICA_ImageEncoder {
 public:
  virtual ~ICA_ImageEncoder();
  /// Writes `dib` as one complete file to `writer`. Non-zero on success; 0
  /// for a null or empty bitmap, a null writer, a failed write or a failure
  /// of the codec (the writer may then hold part of a file).
  virtual int Encode(CCA_Dib* dib, ICA_StreamWriter* writer) = 0;
};

/// Makes the decoders and encoders of the formats this build supports.
class VXBASE_EXPORT CCA_CodecFactory {
 public:
  CCA_CodecFactory() = default;
  virtual ~CCA_CodecFactory();
  CCA_CodecFactory(const CCA_CodecFactory&) = delete;
  CCA_CodecFactory& operator=(const CCA_CodecFactory&) = delete;

  /// A new decoder for `format`, owned by the caller; null for
  /// CA_ImageFormat_Unknown, for a format this build has no library for, or
  /// when memory runs out.
  virtual ICA_ImageDecoder* CreateImageDecoder(CA_ImageFormat format);
  /// A new encoder for `format`, owned by the caller; null as for decoders.
  virtual ICA_ImageEncoder* CreateImageEncoder(CA_ImageFormat format);
};
