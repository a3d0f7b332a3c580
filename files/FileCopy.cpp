// Byte-for-byte file copy in fixed blocks.

#include <vxutility/FileUtils.h>

#include <cstdio>

#include "files/LocalPath.h"
#include "files/NativePath.h"
#include "files/RegularFile.h"

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

// The source is checked to be a regular file before the target is touched:
// a directory or a FIFO as source leaves the target as it was.
void VXCopyFile(const char* source, const char* target) {
  std::string from, to;
  if (!vxfiles_detail::LocalPathOf(source, kNativePathSep, from) ||
      !vxfiles_detail::LocalPathOf(target, kNativePathSep, to)) {
    return;
  }
  std::FILE* in = vxfiles_detail::OpenRegularForReading(from);
  if (in == nullptr) return;
  std::FILE* out = vxfiles_detail::OpenRegularForWriting(to);
  if (out == nullptr) {
    std::fclose(in);
    return;
  }
  CopyBlocks(in, out);
  std::fclose(out);
  std::fclose(in);
}
