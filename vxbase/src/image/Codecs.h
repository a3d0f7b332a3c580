#pragma once
// The codecs behind the factory. Each format's files are built only when its
// library was found; the generated codec table names the ones that were.

#include <vxbase/ImageCodec.h>

namespace vxbase_image {

/// Shared decoder frame: Open checks the reader, reads the header through
/// ReadHeader and refuses images above the area limit before any pixel
/// memory exists; DecodeFrame hands the first frame over once.
class DecoderBase : public ICA_ImageDecoder {
 public:
  int Open(ICA_StreamReader* reader, int flag) final;
  CCA_Dib* DecodeFrame(int frame, int reserved1, int reserved2) final;
  int GetWidth() const final { return m_nWidth; }
  int GetHeight() const final { return m_nHeight; }
  CA_DibFormat GetDibFormat() const final { return m_Format; }

 protected:
  /// Reads the header from the start of `reader`, setting the size and
  /// layout; false when the data is not a valid header.
  virtual bool ReadHeader(ICA_StreamReader& reader) = 0;
  /// Decodes the pixels into `dib`, already created with the header's size
  /// and layout; false for damaged data.
  virtual bool DecodePixels(ICA_StreamReader& reader, CCA_Dib& dib) = 0;

  void SetImage(int width, int height, CA_DibFormat format) {
    m_nWidth = width, m_nHeight = height, m_Format = format;
  }

 private:
  ICA_StreamReader* m_pReader = nullptr;
  bool m_bDecoded = false;
  int m_nWidth = 0;
  int m_nHeight = 0;
  CA_DibFormat m_Format = CA_DibFormat_Invalid;
};

/// Shared encoder frame: Encode checks its arguments and calls EncodeDib.
class EncoderBase : public ICA_ImageEncoder {
 public:
  int Encode(CCA_Dib* dib, ICA_StreamWriter* writer) final;

 protected:
  /// Writes the non-empty `dib`; false on any failure.
  virtual bool EncodeDib(const CCA_Dib& dib, ICA_StreamWriter& writer) = 0;
};

ICA_ImageDecoder* NewBmpDecoder();
ICA_ImageEncoder* NewBmpEncoder();
ICA_ImageDecoder* NewPngDecoder();
ICA_ImageEncoder* NewPngEncoder();
ICA_ImageDecoder* NewJpegDecoder();
ICA_ImageEncoder* NewJpegEncoder();
ICA_ImageDecoder* NewTiffDecoder();
ICA_ImageEncoder* NewTiffEncoder();
ICA_ImageDecoder* NewGifDecoder();
ICA_ImageEncoder* NewGifEncoder();
ICA_ImageDecoder* NewJpeg2000Decoder();
ICA_ImageEncoder* NewJpeg2000Encoder();

}  // namespace vxbase_image
