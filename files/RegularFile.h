#pragma once
// Opening files that must be regular files. A FIFO, a directory or a device
// is refused without blocking, and before anything is created or emptied.

#include <cstdio>
#include <string>

namespace vxfiles_detail {

/// Opens the regular file `path` (local encoding) for binary reading; null
/// when it is missing, unreadable or not a regular file.
std::FILE* OpenRegularForReading(const std::string& path);

/// Opens `path` for binary writing, creating it or emptying an existing
/// regular file; null, with nothing emptied, when it cannot be opened or is
/// not a regular file.
std::FILE* OpenRegularForWriting(const std::string& path);

/// Creates the regular file `path` if it is missing and leaves an existing one
/// unchanged; false when it cannot be created or is not a regular file.
bool TouchRegularFile(const std::string& path);

}  // namespace vxfiles_detail
