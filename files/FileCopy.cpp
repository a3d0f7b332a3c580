// Byte-for-byte file copy in fixed blocks.

#include <vxutility/FileUtils.h>

#include <cstdio>

#include <vxutility/Encoding.h>

namespace {

constexpr std::size_t kCopyBlockSize = 4096;

/// Copies block by block; a short read (end of file or error) or a failed
/// write ends the copy.
void CopyBlocks(std::FILE* in, std::FILE* out) {
  char block[kCopyBlockSize] = {};
  for (;;) {
    const std::size_t read = std::fread(block, 1, kCopyBlockSize, in);
    if (read == 0) return;
    if (std::fwrite(block, 1, read, out) != read || read < kCopyBlockSize) return;
  }
}

}  // namespace

void VXCopyFile(const char* source, const char* target) {
  const std::string from = Utf82Local(source, -1);
  const std::string to = Utf82Local(target, -1);
  std::FILE* in = std::fopen(from.c_str(), "rb");
  if (in == nullptr) return;
  std::FILE* out = std::fopen(to.c_str(), "wb");
  if (out == nullptr) {
    std::fclose(in);
    return;
  }
  CopyBlocks(in, out);
  std::fclose(out);
  std::fclose(in);
}
