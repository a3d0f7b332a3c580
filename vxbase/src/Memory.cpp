#include <vxbase/Memory.h>

#include <cstdlib>

void* CA_AllocMemory(std::size_t size) {
  return std::malloc(size == 0 ? 1 : size);
}

void* CA_ReallocMemory(void* block, std::size_t size) {
  // A first allocation (every new string) skips realloc's own checks.
  if (block == nullptr) return std::malloc(size == 0 ? 1 : size);
  return std::realloc(block, size == 0 ? 1 : size);
}

void CA_FreeMemory(void* block) {
  std::free(block);
}
