// Format detection by the signature at the start of a stream.

#include <vxbase/ImageFormat.h>

#include <cstring>

#include <vxbase/Stream.h>

namespace {

struct Signature {
  CA_ImageFormat format;
  const char* bytes;
  std::size_t length;
};

constexpr char kJp2Box[] = "\x00\x00\x00\x0C\x6A\x50\x20\x20\x0D\x0A\x87\x0A";
constexpr char kJ2kCodestream[] = "\xFF\x4F\xFF\x51";

const Signature kSignatures[] = {
    {CA_ImageFormat_PNG, "\x89PNG\r\n\x1A\n", 8},
    {CA_ImageFormat_JPEG, "\xFF\xD8\xFF", 3},
    {CA_ImageFormat_GIF, "GIF87a", 6},
    {CA_ImageFormat_GIF, "GIF89a", 6},
    {CA_ImageFormat_TIF, "II*\0", 4},
    {CA_ImageFormat_TIF, "MM\0*", 4},
    {CA_ImageFormat_TIF, "II+\0", 4},  // BigTIFF
    {CA_ImageFormat_TIF, "MM\0+", 4},
    {CA_ImageFormat_JPEG2000, kJp2Box, 12},
    {CA_ImageFormat_JPEG2000, kJ2kCodestream, 4},
    {CA_ImageFormat_BMP, "BM", 2},
};

constexpr std::size_t kLongestSignature = 12;

/// Reads the first bytes of `reader` into `head` and rewinds; the count read.
std::size_t ReadHead(ICA_StreamReader* reader, unsigned char (&head)[kLongestSignature]) {
  if (reader == nullptr || !reader->Seek(0)) return 0;
  std::size_t count = 0;
  while (count < kLongestSignature) {
    const std::size_t got = reader->Read(head + count, kLongestSignature - count);
    if (got == 0) break;
    count += got;
  }
  reader->Seek(0);
  return count;
}

}  // namespace

CA_ImageFormat CA_GetImageFormat(ICA_StreamReader* reader) {
  unsigned char head[kLongestSignature];
  const std::size_t count = ReadHead(reader, head);
  for (const Signature& signature : kSignatures) {
    if (count >= signature.length && std::memcmp(head, signature.bytes, signature.length) == 0) {
      return signature.format;
    }
  }
  return CA_ImageFormat_Unknown;
}

bool CA_IsRawJpeg2000(ICA_StreamReader* reader) {
  unsigned char head[kLongestSignature];
  const std::size_t count = ReadHead(reader, head);
  return count >= 4 && std::memcmp(head, kJ2kCodestream, 4) == 0;
}
