#pragma once
// What each system provides to the file streams.

#include <cstdint>
#include <cstdio>

namespace vxbase_stream {

/// Opens the regular file at the UTF-8 `utf8Path` for binary reading and
/// stores its size in `size`; null for a missing file or one that is not a
/// regular file.
std::FILE* OpenRegularFileForReading(const char* utf8Path, std::int64_t& size);
/// Creates or truncates the file at the UTF-8 `utf8Path` for binary writing;
/// null on failure.
std::FILE* OpenFileForWriting(const char* utf8Path);
/// Moves `file` to the absolute 64-bit `position`; false on failure.
bool SeekFile(std::FILE* file, std::int64_t position);
/// The 64-bit position of `file`; -1 on failure.
std::int64_t TellFile(std::FILE* file);

}  // namespace vxbase_stream
