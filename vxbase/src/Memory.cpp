#include <vxbase/Memory.h>

#include <cstdlib>

void* CA_AllocMemory(std::size_t size) {
  return std::malloc(size == 0 ? 1 : size);
}

void* CA_ReallocMemory(void* block, std::size_t size) {
  return std::realloc(block, size == 0 ? 1 : size);
}

void CA_FreeMemory(void* block) {
  std::free(block);
}
