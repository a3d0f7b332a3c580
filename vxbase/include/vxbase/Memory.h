#pragma once
/// The family's allocator: every growable base-library container takes its
/// storage from here.

#include <cstddef>

#include <vxbase/vxbase_export.h>

/// Allocates `size` bytes; returns nullptr when memory cannot be obtained
/// (a size of 0 still returns a unique, freeable pointer).
VXBASE_EXPORT void* CA_AllocMemory(std::size_t size);

/// Resizes a block from CA_AllocMemory (nullptr allocates); returns nullptr
/// and leaves `block` untouched when memory cannot be obtained.
VXBASE_EXPORT void* CA_ReallocMemory(void* block, std::size_t size);

/// Frees a block from CA_AllocMemory or CA_ReallocMemory; nullptr is ignored.
VXBASE_EXPORT void CA_FreeMemory(void* block);
