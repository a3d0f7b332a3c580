#pragma once
// What each system's VXSharedMemory file provides
// (unix/VXSharedMemory.inc, windows/VXSharedMemory.inc).

#include <string>

namespace detail {

/// A block opened by name: a system handle (-1 as none on POSIX, null on
/// Windows, kept as an integer either way) and whether this call made it.
struct SharedBlock {
  long long handle;
  bool madeHere;
};

/// The handle value that means "none".
extern const long long kNoSharedBlock;

/// Creates the block `name` with `size` bytes, or opens the existing one.
/// False with the system's error code.
bool CreateSharedBlock(const std::string& name, unsigned size, bool writable, SharedBlock& block, unsigned& error);
/// Opens the existing block `name`; false with the system's error code.
bool OpenSharedBlock(const std::string& name, bool writable, long long& handle, unsigned& error);
/// Maps the whole block; false with the system's error code.
bool MapSharedBlock(long long handle, bool writable, void*& view, unsigned long long& length, unsigned& error);
/// Unmaps a view made by MapSharedBlock.
void UnmapSharedBlock(void* view, unsigned long long length);
/// Closes the handle; when the block was made here, also removes its name.
void CloseSharedBlock(const std::string& name, const SharedBlock& block);

}  // namespace detail
